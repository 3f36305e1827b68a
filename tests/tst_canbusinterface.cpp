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
    void kkmapTable_data();
    void kkmapTable();
    void keyGoesToKeyDevice();
    void longPress();
    void delayedSend();
    void mediaActivityOrder();
    void lastFrameIsEmpty();

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
        // The radar is on unless the factory says otherwise.
        QVERIFY(!driver.isDisableRadar() && !driver.isShowReverseLine() && !driver.isRightDriver());
    }
    DataSaveControl::saveFactoryData(QStringLiteral("CanRadarEnable"), false);
    DataSaveControl::saveSettingData(QStringLiteral("ParklineVisible"), true);
    DataSaveControl::saveSettingData(QStringLiteral("FactoryRightDriver"), true);
    CanbusInterface driver;
    driver.initData();
    QVERIFY(driver.isDisableRadar() && driver.isShowReverseLine() && driver.isRightDriver());
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
    QVERIFY(radar->radarRearLeft == 4 && changed.isEmpty());
    driver.setInReverse(false);
    QVERIFY(radar->radarRearLeft == 0 && radar->radarLevels == 12 && changed.count() == 1);
    driver.setInReverse(false);   // signalled even when nothing had been set
    QCOMPARE(changed.count(), 2);

    // Without initData: no records to clear, no data info, no long-press timer.
    CanbusInterface bare;
    QSignalSpy bareChanged(&bare, &CanbusInterface::radarDataChanged);
    bare.setInReverse(false);
    QVERIFY(bareChanged.isEmpty() && !bare.getDataInfo().isValid());
    QVERIFY(bare.checkKeyLongPressed(true, 5, 6) && bare.checkKeyLongPressed(false, 5, 6));
    QCOMPARE(keysOf(*recorder), Keys({{5, 1}, {5, 0}}));
}

void TestCanbusInterface::kkmapTable_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("number");
    QTest::addRow("first") << 0x1100023 << 149;
    QTest::addRow("last") << 0x1300060 << 360;
    QTest::addRow("gap 0x110003a") << 0x110003A << 0;
    QTest::addRow("zero") << 0 << 0;
    QTest::addRow("past the end") << 0x1300061 << 0;
}

void TestCanbusInterface::kkmapTable()
{
    QFETCH(int, code);
    QTEST(CanbusInterface().toKkmapKey(code), "number");
}

void TestCanbusInterface::keyGoesToKeyDevice()
{
    CanbusInterface driver;
    driver.sendKeyToQt(0, 1);   // an unmapped key still reaches the device, as 768
    driver.sendKeyToQt(166, 0);
    QCOMPARE(keysOf(*recorder), Keys({{0, 1}, {166, 0}}));
    // Each event opens the device and closes it again.
    QVERIFY(recorder->calls().size() == 6 && recorder->openDescriptors().isEmpty());
    QCOMPARE(recorder->calls().at(0).path, QByteArray("/test/kb"));

    // A knob's steps: rounds of press and release, none for 0.
    recorder->clear();
    driver.sendContinueKey(167, 2);
    driver.sendContinueKey(149, 0);
    QCOMPARE(keysOf(*recorder), Keys({{167, 1}, {167, 0}, {167, 1}, {167, 0}}));

    // Without the device no key goes anywhere, and nothing complains.
    recorder->clear();
    recorder->failOpen("/test/kb");
    driver.sendKeyToQt(149, 1);
    QVERIFY(keysOf(*recorder).isEmpty());
}

void TestCanbusInterface::longPress()
{
    CanbusInterface driver;
    driver.initData();
    // Short press: the short key on release.
    QVERIFY(driver.checkKeyLongPressed(true, 10, 20) && keysOf(*recorder).isEmpty());
    QVERIFY(driver.checkKeyLongPressed(false, 10, 20));
    QCOMPARE(keysOf(*recorder), Keys({{10, 1}, {10, 0}}));
    // Long press: the long key when the timer runs out, nothing on release.
    recorder->clear();
    QVERIFY(driver.checkKeyLongPressed(true, 10, 20));
    QTRY_COMPARE_WITH_TIMEOUT(keysOf(*recorder), Keys({{20, 1}, {20, 0}}), 3000);
    QVERIFY(!driver.checkKeyLongPressed(false, 10, 20));
    QCOMPARE(keysOf(*recorder).size(), 2);   // the release finds nothing pending
    // A long press without a long key sends nothing at all.
    recorder->clear();
    QVERIFY(driver.checkKeyLongPressed(true, 10, 0));
    QTest::qWait(1300);
    QVERIFY(!driver.checkKeyLongPressed(false, 10, 0));
    QVERIFY(keysOf(*recorder).isEmpty());
    // A second press replaces the first, which goes without a key.
    driver.checkKeyLongPressed(true, 10, 20);
    driver.checkKeyLongPressed(true, 11, 21);
    driver.checkKeyLongPressed(false, 11, 21);
    QCOMPARE(keysOf(*recorder), Keys({{11, 1}, {11, 0}}));
}

void TestCanbusInterface::delayedSend()
{
    CanbusInterface driver;
    QSignalSpy sent(&driver, &CanbusInterface::sendDataToCan);
    const QByteArray frame = QByteArray::fromHex("2e9002300040");
    driver.emitDataLater(frame, 30);
    driver.emitDataLater(QByteArray(), 10);
    QVERIFY(sent.isEmpty());
    // Both helpers go, the empty one without a send.
    QTRY_COMPARE(driver.findChildren<AutoEmitDataObject*>().size(), 0);
    QTest::qWait(20);
    QCOMPARE(sent, QList<QVariantList>{{frame}});
    // A pending send dies with its driver (the sanitizer build would see a late fire).
    {
        CanbusInterface shortLived;
        shortLived.emitDataLater(frame, 10);
    }
    QTest::qWait(40);
}

void TestCanbusInterface::mediaActivityOrder()
{
    CanbusInterface driver;
    QCOMPARE(driver.getMediaActivity(), QString());   // no "info" module at all
    auto info = QSharedPointer<InfoModule>::create();
    tqappframework::ModuleManager::self()->registerModule(QStringLiteral("info"), info);
    QCOMPARE(driver.getMediaActivity(), QString());
    // Each source set on is ahead of the ones before it: "usb", "card", "disc", "btMusicMode".
    for (const char* name : {"btMusicMode", "disc", "card", "usb"}) {
        info->setSysState(QLatin1String(name), true);
        QCOMPARE(driver.getMediaActivity(), QLatin1String(name));
    }
}

// A driver going away tells the box with an empty frame.
void TestCanbusInterface::lastFrameIsEmpty()
{
    QList<QByteArray> frames;
    {
        CanbusInterface shortLived;
        shortLived.initData();
        connect(&shortLived, &CanbusInterface::sendDataToCan, this,
                [&](const QByteArray& f) { frames.append(f); });
    }
    QCOMPARE(frames, QList<QByteArray>{QByteArray()});
}

QTEST_GUILESS_MAIN(TestCanbusInterface)
#include "tst_canbusinterface.moc"
