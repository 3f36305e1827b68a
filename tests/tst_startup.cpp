// The module's start in its host: the order of what reaches the box and the platform,
// the peers found by name, and the events they carry to the driver.

#include <QtTest>
#include <QSerialPort>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "framefamily.h"
#include "module.h"
#include "modulemanager.h"
#include "platform.h"
#include "ptypair.h"
#include "recordingdriver.h"

using canbus::buildFrame;
using canbus::FrameFamily;

// Stands in for the sibling modules: the signals the module connects to by name.
class FakeMcu : public QObject
{
    Q_OBJECT
signals:
    void mcuConnected();
    void powerStateChanged(bool on);
    void canbusDataReady(QByteArray data);
};

class FakeSource : public QObject
{
    Q_OBJECT
signals:
    void sendSrcStateToCan(int type, QVariantList args);
    void callStateChanged(bool active);
};

class TestStartup : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void startWithStoredProtocol();
    void quietWithoutProtocol();
    void powerOffThenOn();
    void peersReachTheDriver();
    void clockReachesTheDriver();
    void facadeBeforeStartupIsInert();

private:
    void startModule(int canIndex);
    void registerPeers();

    QTemporaryDir* dir = nullptr;
    PtyPair* box = nullptr;
    CanbusModule* facade = nullptr;
    FakeMcu mcu;
    FakeSource radio;
    FakeSource bluetooth;
};

void TestStartup::init()
{
    resetPlatformForTests();
    delete CanObj::instance();
    dir = new QTemporaryDir;
    box = new PtyPair;
    qputenv("CANBUS_DATA_DIR", dir->path().toLocal8Bit());
    qputenv("CANBUS_BOX_PORT", box->slavePath().toLocal8Bit());
    DataSaveControl::reload();
}

void TestStartup::cleanup()
{
    delete facade;
    facade = nullptr;
    delete CanObj::instance();
    delete box;
    delete dir;
    tqappframework::ModuleManager::self()->clear();
}

void TestStartup::registerPeers()
{
    const QPair<QString, QObject*> peers[] = {{"mcu", &mcu}, {"radio", &radio}, {"bluetooth", &bluetooth}};
    for (const auto& peer : peers)
        tqappframework::ModuleManager::self()->registerModule(
            peer.first, QSharedPointer<tqappframework::Module>(new tqappframework::PeerModule(peer.first, peer.second)));
}

void TestStartup::startModule(int canIndex)
{
    if (canIndex)
        DataSaveControl::saveUserData(QStringLiteral("CanIndex"), canIndex);
    facade = new CanbusModule;
    QCOMPARE(facade->initial(), 0);
    QCOMPARE(facade->initial(), 0);   // a second call changes nothing
}

void TestStartup::startWithStoredProtocol()
{
    RecordingDriverScope recording(42);
    DataSaveControl::saveSettingData(QStringLiteral("CanBusReversingLinw"), true);
    startModule(42);
    // The driver exists, is ready, and its connect frame is the first thing on the wire.
    QVERIFY(recording.driver());
    QVERIFY(recording.driver()->isReady());
    const QSerialPort* port = facade->implementation()->port();
    QVERIFY(port->isOpen() && box->slavePath().endsWith(port->portName()));
    QCOMPARE(port->baudRate(), 38400);
    QCOMPARE(box->read(5), buildFrame(FrameFamily::Start2E, 0x81, {0x01}));
    QVERIFY(!DataSaveControl::readSettingData(QStringLiteral("CanBusReversingLinw"), true).toBool());
}

void TestStartup::quietWithoutProtocol()
{
    registerPeers();
    startModule(0);
    QVERIFY(!CanObj::instance()->currentDriver());
    QVERIFY(!facade->implementation()->port()->isOpen());
    facade->implementation()->onCheckCanbusData(QByteArray::fromHex("2e8101017c"));
    QVERIFY(CanObj::instance()->getCurrentCanBusData().recvBuffer.isEmpty());
    QVERIFY(!facade->getAirData());
    QVERIFY(facade->getVersionData().isEmpty());
    emit bluetooth.callStateChanged(true);   // no driver: nothing kept for later
    facade->sendCanbusStateToCan(QStringLiteral("AirAC"), QStringLiteral("1"));
    emit mcu.powerStateChanged(false);
    emit mcu.powerStateChanged(true);
    QVERIFY(box->drain(80).isEmpty());
    // A driver chosen later starts without the earlier call state.
    RecordingDriverScope recording(42);
    CanObj::instance()->setId(42, false);
    QVERIFY(!recording.driver()->callActive());
}

void TestStartup::powerOffThenOn()
{
    registerPeers();
    RecordingDriverScope recording(42);
    startModule(42);
    tqappframework::ModuleManager::self()->setAllModuleStartupReady();
    box->read(5);
    box->write(buildFrame(FrameFamily::Start2E, 0x21, {0x01}));   // the box answers
    QTRY_VERIFY(recording.driver()->isConnectedState());
    box->drain(50);
    emit mcu.powerStateChanged(false);
    QVERIFY(!recording.driver()->isPowerOn());
    emit mcu.powerStateChanged(true);
    QVERIFY(recording.driver()->isPowerOn());
    // Disconnect, then connect; the retry timer runs again until the box answers.
    const QByteArray off = buildFrame(FrameFamily::Start2E, 0x81, {0x00});
    const QByteArray on = buildFrame(FrameFamily::Start2E, 0x81, {0x01});
    QCOMPARE(box->read(10, 1000), off + on);
    QCOMPARE(box->read(5, 2500), on);
}

void TestStartup::peersReachTheDriver()
{
    registerPeers();
    RecordingDriverScope recording(42);
    startModule(42);
    tqappframework::ModuleManager::self()->setAllModuleStartupReady();
    RecordingDriver* driver = recording.driver();
    // Box data may also come from the microcontroller's module.
    const QByteArray frame = buildFrame(FrameFamily::Start2E, 0x21, {0x09});
    emit mcu.canbusDataReady(frame);
    QCOMPARE(driver->frames.size(), 1);
    QCOMPARE(driver->frames.at(0), frame);
    // Sources from the radio, calls from the phone.
    emit radio.sendSrcStateToCan(1, QVariantList{2, 8750});
    QCOMPARE(driver->sources.size(), 1);
    QCOMPARE(driver->sources.at(0).first, 1);
    QCOMPARE(driver->sources.at(0).second, (QList<QVariant>{2, 8750}));
    emit bluetooth.callStateChanged(true);
    QVERIFY(driver->callActive());
    emit bluetooth.callStateChanged(false);
    QVERIFY(!driver->callActive());
    // Facade slots reach the driver too.
    facade->sendSrcStateToCan(24, QVariantList{1});
    QCOMPARE(driver->sources.size(), 2);
}

void TestStartup::clockReachesTheDriver()
{
    RecordingDriverScope recording(42);
    startModule(42);
    DateTimeCtrl::getInstance()->setCurrentDateTime(QDate(2026, 11, 22), 7, 45, 30, 1);
    QVERIFY(!recording.driver()->times.isEmpty());
    QCOMPARE(recording.driver()->times.last(), QTime(7, 45, 30));
}

void TestStartup::facadeBeforeStartupIsInert()
{
    CanbusModule early;
    QVERIFY(!early.getAirData());
    QVERIFY(!early.getVersionData().isNull());
    early.sendCanbusData(QByteArray("\x01", 1));
    early.sendCanbusStateToCan(QStringLiteral("AirAC"), QStringLiteral("1"));
    early.reverseChanged(true);
    early.entryProductionTestMode(true, 42);
    QVERIFY(!early.implementation());
    QCOMPARE(CanObj::id(), 0);
    QVERIFY(box->drain(50).isEmpty());
}

QTEST_GUILESS_MAIN(TestStartup)
#include "tst_startup.moc"
