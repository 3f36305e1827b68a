// The module as the head unit meets it: the plug-in file loaded with QPluginLoader,
// started through its module interface, a box on a pseudo-terminal, and the records
// read through the facade's meta-object. The test links none of the module's code.

#include <QPluginLoader>
#include <QtTest>

#include "airdata.h"
#include "datasavecontrol.h"
#include "inputinjector.h"
#include "module.h"
#include "modulemanager.h"
#include "platform.h"
#include "ptypair.h"

namespace {

// An AA 55 frame with its checksum: the length counts the data bytes.
QByteArray aa55(quint8 type, const QByteArray& data)
{
    QByteArray frame = QByteArray("\xAA\x55", 2) + char(data.size()) + char(type) + data + '\0';
    unsigned sum = 0;
    for (int i = 2; i < frame.size() - 1; ++i)
        sum += quint8(frame.at(i));
    frame[frame.size() - 1] = char((sum - 1) & 0xFF);
    return frame;
}

} // namespace

class TestPlugin : public QObject
{
    Q_OBJECT
private slots:
    void loadsAsModule();
    void volkswagenEndToEnd();
};

void TestPlugin::loadsAsModule()
{
    QPluginLoader loader(QStringLiteral(CANBUS_PLUGIN_FILE));
    const QJsonObject meta = loader.metaData();
    QCOMPARE(meta.value(QStringLiteral("IID")).toString(), QStringLiteral("module/0.1"));
    QCOMPARE(meta.value(QStringLiteral("className")).toString(), QStringLiteral("CanbusModulePlugin"));
    QCOMPARE(meta.value(QStringLiteral("MetaData")).toObject().value(QStringLiteral("name")).toString(),
             QStringLiteral("canbus"));
    auto* module = qobject_cast<tqappframework::Module*>(loader.instance());
    QVERIFY2(module, qPrintable(loader.errorString()));
    QCOMPARE(module->getProperty()->name(), QStringLiteral("canbus"));
    QVERIFY(module->getProperty()->dependencies()->isEmpty());
}

void TestPlugin::volkswagenEndToEnd()
{
    PtyPair box;
    if (!box.isOpen())
        QSKIP("no pseudo-terminals on this machine");
    QTemporaryDir dir;
    resetPlatformForTests();
    qputenv("CANBUS_DATA_DIR", dir.path().toLocal8Bit());
    qputenv("CANBUS_BOX_PORT", box.slavePath().toLocal8Bit());
    DataSaveControl::reload();
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), 27);
    RecordingInputInjector keys;
    InputInjector::install(&keys);

    QPluginLoader loader(QStringLiteral(CANBUS_PLUGIN_FILE));
    auto* module = qobject_cast<tqappframework::Module*>(loader.instance());
    QVERIFY2(module, qPrintable(loader.errorString()));
    QVERIFY(!module->getModuleObj());
    QCOMPARE(module->initial(), 0);
    QCOMPARE(module->startup(), 0);
    QObject* facade = module->getModuleObj();
    QVERIFY(facade);
    tqappframework::ModuleManager::self()->setAllModuleStartupReady();

    QSignalSpy climate(facade, SIGNAL(airConditionerDataChanged()));
    QSignalSpy doors(facade, SIGNAL(cardoorDataChanged()));
    QSignalSpy outdoor(facade, SIGNAL(outdoorTemperatureChanged(QString,int)));

    // Climate on, A/C on, 22 and 24 degrees, fan 3, outdoor 20 °C, doors closed.
    const QByteArray climateFrame = aa55(0x73, QByteArray::fromHex("4040161803037800"));
    box.write(climateFrame);
    QCOMPARE(box.read(6, 2000), QByteArray::fromHex("aa5501ff7372"));
    QTRY_COMPARE(climate.count(), 1);
    QCOMPARE(doors.count(), 0);
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(outdoor.at(0).at(0).toString(), QString::fromUtf8("20℃"));

    AirData* air = nullptr;
    QVERIFY(QMetaObject::invokeMethod(facade, "getAirData", Q_RETURN_ARG(AirData*, air)));
    QVERIFY(air);
    QCOMPARE(air->id, 27);
    QCOMPARE(air->airPower, quint8(1));
    QCOMPARE(air->airAC, quint8(1));
    QCOMPARE(air->tempLeft, QStringLiteral("22"));
    QCOMPARE(air->tempRight, QStringLiteral("24"));
    QCOMPARE(air->airWindSpeedLeft, quint8(3));

    // The same frame again changes nothing; the left front door opening does.
    box.write(climateFrame);
    box.read(6, 1000);
    QCOMPARE(climate.count(), 1);
    box.write(aa55(0x73, QByteArray::fromHex("4040161803037840")));
    QCOMPARE(box.read(6, 2000).size(), 6);
    QTRY_COMPARE(doors.count(), 1);
    QCOMPARE(climate.count(), 1);

    // A raw frame from an application goes straight to the box.
    const QByteArray raw = QByteArray::fromHex("aa5501fe1112");
    QVERIFY(QMetaObject::invokeMethod(facade, "sendCanbusData", Q_ARG(QByteArray, raw)));
    QCOMPARE(box.read(raw.size(), 2000), raw);

    QCOMPARE(module->final(), 0);
    InputInjector::install(nullptr);
}

QTEST_GUILESS_MAIN(TestPlugin)
#include "tst_plugin.moc"
