// The driver base class: what every driver inherits before it overrides anything.

#include <QtTest>

#include "autoemitdataobject.h"
#include "canbusinterface.h"
#include "datasavecontrol.h"
#include "infomodule.h"
#include "inputinjector.h"
#include "modulemanager.h"
#include "platform.h"

namespace {
using Keys = QList<QPair<int, int>>;

// (virtual keyboard number, pressed) of every ioctl on the key device.
Keys keysOf(const RecordingInputInjector& recorder)
{
    Keys keys;
    for (const auto& call : recorder.calls(RecordingInputInjector::Call::Ioctl))
        keys.append({int(call.request) - 768, int(call.arg)});
    return keys;
}
} // namespace

class TestCanbusInterface : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void initDataReadsSettings();
    void reverseOffClearsRadar();
    void safeWithoutRecords();
    void kkmapTable_data();
    void kkmapTable();
    void keyGoesToKeyDevice();
    void missingKeyDeviceIsSilent();
    void longPress();
    void secondPressReplacesFirst();
    void continueKeySendsRounds();
    void delayedSend();
    void mediaActivityOrder_data();
    void mediaActivityOrder();
    void connectionDefaults();
    void versionAlwaysSignalled();
    void destructorSendsEmptyFrame();

private:
    QTemporaryDir* dir = nullptr;
    RecordingInputInjector* recorder = nullptr;
};

void TestCanbusInterface::init()
{
    resetPlatformForTests();
    dir = new QTemporaryDir;
    qputenv("CANBUS_DATA_DIR", dir->path().toLocal8Bit());
    qputenv("CANBUS_KEY_DEVICE", "/test/kb");
    DataSaveControl::reload();
    recorder = new RecordingInputInjector;
    InputInjector::install(recorder);
}

void TestCanbusInterface::cleanup()
{
    InputInjector::install(nullptr);
    delete recorder;
    delete dir;
    tqappframework::ModuleManager::self()->clear();
}

void TestCanbusInterface::initDataReadsSettings()
{
    {
        CanbusInterface driver;
        driver.initData();
        QVERIFY(!driver.isDisableRadar());   // radar on unless the factory says otherwise
        QVERIFY(!driver.isShowReverseLine());
        QVERIFY(!driver.isRightDriver());
        QVERIFY(driver.getAirData() && driver.getRadarData());
    }
    DataSaveControl::saveFactoryData(QStringLiteral("CanRadarEnable"), false);
    DataSaveControl::saveSettingData(QStringLiteral("ParklineVisible"), true);
    DataSaveControl::saveSettingData(QStringLiteral("FactoryRightDriver"), true);
    CanbusInterface driver;
    driver.initData();
    QVERIFY(driver.isDisableRadar());
    QVERIFY(driver.isShowReverseLine());
    QVERIFY(driver.isRightDriver());
}

void TestCanbusInterface::reverseOffClearsRadar()
{
    CanbusInterface driver;
    driver.initData();
    RadarData* radar = driver.getRadarData();
    radar->radarLevels = 12;
    radar->radarRearLeft = 4;
    QSignalSpy changed(&driver, &CanbusInterface::radarDataChanged);
    driver.setInReverse(true);
    QVERIFY(driver.isInReverse());
    QCOMPARE(radar->radarRearLeft, quint8(4));
    QCOMPARE(changed.count(), 0);
    driver.setInReverse(false);
    QCOMPARE(radar->radarRearLeft, quint8(0));
    QCOMPARE(radar->radarOn, quint8(0));
    QCOMPARE(radar->radarLevels, quint8(12));
    QCOMPARE(changed.count(), 1);
    driver.setInReverse(false);   // signalled even when nothing had been set
    QCOMPARE(changed.count(), 2);
}

void TestCanbusInterface::safeWithoutRecords()
{
    CanbusInterface driver;   // no initData: no records, no timer
    QSignalSpy changed(&driver, &CanbusInterface::radarDataChanged);
    driver.setInReverse(false);
    QCOMPARE(changed.count(), 0);
    QVERIFY(!driver.getDataInfo().isValid());
    QVERIFY(!driver.checkKeyLongPressed(false, 5, 6));
    QVERIFY(driver.checkKeyLongPressed(true, 5, 6));
    QVERIFY(driver.checkKeyLongPressed(false, 5, 6));   // released before any timer: short key
    QCOMPARE(keysOf(*recorder), Keys({{5, 1}, {5, 0}}));
}

void TestCanbusInterface::kkmapTable_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("number");
    QTest::addRow("first") << 0x1100023 << 149;
    QTest::addRow("0x110002c") << 0x110002C << 314;
    QTest::addRow("last of 0x11") << 0x110004E << 349;
    QTest::addRow("0x1200026 shares 314") << 0x1200026 << 314;
    QTest::addRow("0x1200081") << 0x1200081 << 199;
    QTest::addRow("last") << 0x1300060 << 360;
    QTest::addRow("gap 0x110003a") << 0x110003A << 0;
    QTest::addRow("zero") << 0 << 0;
    QTest::addRow("negative") << -1 << 0;
    QTest::addRow("past the end") << 0x1300061 << 0;
}

void TestCanbusInterface::kkmapTable()
{
    QFETCH(int, code);
    QFETCH(int, number);
    CanbusInterface driver;
    QCOMPARE(driver.toKkmapKey(code), number);
}

void TestCanbusInterface::keyGoesToKeyDevice()
{
    CanbusInterface driver;
    driver.sendKeyToQt(0, 1);   // an unmapped key still reaches the device, as 768
    driver.sendKeyToQt(driver.toKkmapKey(0x1100025), 0);
    const auto calls = recorder->calls();
    QCOMPARE(calls.size(), 6);
    QCOMPARE(calls.at(0).kind, RecordingInputInjector::Call::Open);
    QCOMPARE(calls.at(0).path, QByteArray("/test/kb"));
    QCOMPARE(calls.at(1).request, 768ul);
    QCOMPARE(calls.at(1).arg, 1ul);
    QCOMPARE(calls.at(2).kind, RecordingInputInjector::Call::Close);
    QCOMPARE(calls.at(4).request, 166ul + 768ul);
    QCOMPARE(calls.at(4).arg, 0ul);
    QVERIFY(recorder->openDescriptors().isEmpty());
}

void TestCanbusInterface::missingKeyDeviceIsSilent()
{
    recorder->failOpen("/test/kb");
    CanbusInterface driver;
    driver.sendKeyToQt(149, 1);
    QVERIFY(keysOf(*recorder).isEmpty());
}

void TestCanbusInterface::longPress()
{
    CanbusInterface driver;
    driver.initData();
    // Short press: the short key on release.
    QVERIFY(driver.checkKeyLongPressed(true, 10, 20));
    QVERIFY(keysOf(*recorder).isEmpty());
    QVERIFY(driver.checkKeyLongPressed(false, 10, 20));
    QCOMPARE(keysOf(*recorder), Keys({{10, 1}, {10, 0}}));
    // Long press: the long key when the timer runs out, nothing on release.
    recorder->clear();
    QVERIFY(driver.checkKeyLongPressed(true, 10, 20));
    QTRY_COMPARE_WITH_TIMEOUT(keysOf(*recorder), Keys({{20, 1}, {20, 0}}), 3000);
    QVERIFY(!driver.checkKeyLongPressed(false, 10, 20));
    QCOMPARE(keysOf(*recorder).size(), 2);
    // A long press without a long key sends nothing at all.
    recorder->clear();
    QVERIFY(driver.checkKeyLongPressed(true, 10, 0));
    QTest::qWait(1300);
    QVERIFY(!driver.checkKeyLongPressed(false, 10, 0));
    QVERIFY(keysOf(*recorder).isEmpty());
    // A release with no press pending.
    QVERIFY(!driver.checkKeyLongPressed(false, 10, 20));
    QVERIFY(keysOf(*recorder).isEmpty());
}

void TestCanbusInterface::secondPressReplacesFirst()
{
    CanbusInterface driver;
    driver.initData();
    driver.checkKeyLongPressed(true, 10, 20);
    driver.checkKeyLongPressed(true, 11, 21);
    driver.checkKeyLongPressed(false, 11, 21);
    QCOMPARE(keysOf(*recorder), Keys({{11, 1}, {11, 0}}));
}

void TestCanbusInterface::continueKeySendsRounds()
{
    CanbusInterface driver;
    driver.sendContinueKey(167, 3);
    QCOMPARE(keysOf(*recorder), Keys({{167, 1}, {167, 0}, {167, 1}, {167, 0}, {167, 1}, {167, 0}}));
    recorder->clear();
    driver.sendContinueKey(167, 0);
    QVERIFY(keysOf(*recorder).isEmpty());
}

void TestCanbusInterface::delayedSend()
{
    CanbusInterface driver;
    QSignalSpy sent(&driver, &CanbusInterface::sendDataToCan);
    const QByteArray frame = QByteArray::fromHex("2e9002300040");
    driver.emitDataLater(frame, 30);
    driver.emitDataLater(QByteArray(), 10);
    QCOMPARE(driver.findChildren<AutoEmitDataObject*>().size(), 2);
    QCOMPARE(sent.count(), 0);
    QTRY_COMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toByteArray(), frame);
    // Both helpers are gone, the empty one without a send.
    QTRY_COMPARE(driver.findChildren<AutoEmitDataObject*>().size(), 0);
    QTest::qWait(50);
    QCOMPARE(sent.count(), 1);
    // A pending send dies with its driver (the sanitizer build would see a late fire).
    {
        CanbusInterface shortLived;
        shortLived.emitDataLater(frame, 10);
    }
    QTest::qWait(40);
}

void TestCanbusInterface::mediaActivityOrder_data()
{
    QTest::addColumn<QStringList>("trueStates");
    QTest::addColumn<QString>("expected");
    QTest::addRow("usb and disc") << QStringList{"disc", "usb"} << "usb";
    QTest::addRow("card before disc") << QStringList{"disc", "card"} << "card";
    QTest::addRow("bt music alone") << QStringList{"btMusicMode"} << "btMusicMode";
    QTest::addRow("none") << QStringList{} << "";
}

void TestCanbusInterface::mediaActivityOrder()
{
    QFETCH(QStringList, trueStates);
    QFETCH(QString, expected);
    CanbusInterface driver;
    QCOMPARE(driver.getMediaActivity(), QString());   // no "info" module at all
    QSharedPointer<InfoModule> info(new InfoModule);
    for (const char* name : {"usb", "card", "disc", "btMusicMode"})
        info->setSysState(QLatin1String(name), false);
    for (const QString& name : trueStates)
        info->setSysState(name, true);
    tqappframework::ModuleManager::self()->registerModule(QStringLiteral("info"), info);
    QCOMPARE(driver.getMediaActivity(), expected);
}

void TestCanbusInterface::connectionDefaults()
{
    CanbusInterface driver;
    int interval = 0;
    QByteArray frame;
    QVERIFY(driver.needSendConnect(interval, frame));
    QCOMPARE(interval, 0);
    QVERIFY(frame.isEmpty());
    driver.setConnectedState(true);
    QVERIFY(!driver.needSendConnect(interval, frame));
    QVERIFY(driver.needSendDisconnect(frame));
    QVERIFY(frame.isEmpty());
    QVERIFY(!driver.isConnectedState());
    QCOMPARE(driver.checkCanDataChecksum(QByteArray("\x2e", 1), interval, frame), -1);
    QCOMPARE(driver.setCanbusData(QByteArray(7, 'x')), 7);
}

void TestCanbusInterface::versionAlwaysSignalled()
{
    CanbusInterface driver;
    QSignalSpy version(&driver, &CanbusInterface::versionDataChanged);
    driver.setVersionData(QStringLiteral("A"));
    driver.setVersionData(QStringLiteral("A"));
    QCOMPARE(version.count(), 2);
    QCOMPARE(driver.getVersionData(), QStringLiteral("A"));
}

void TestCanbusInterface::destructorSendsEmptyFrame()
{
    QList<QByteArray> frames;
    {
        CanbusInterface driver;
        driver.initData();
        connect(&driver, &CanbusInterface::sendDataToCan, this,
                [&](const QByteArray& f) { frames.append(f); });
    }
    QCOMPARE(frames, QList<QByteArray>{QByteArray()});
}

QTEST_GUILESS_MAIN(TestCanbusInterface)
#include "tst_canbusinterface.moc"
