// The CAN box link over a real pseudo-terminal: the test plays the box on the master
// side while the module owns the slave as its serial port.

#include <QtTest>
#include <QSerialPort>

#include <unistd.h>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "framefamily.h"
#include "modulemanager.h"
#include "platform.h"
#include "ptypair.h"
#include "recordingdriver.h"

using canbus::buildFrame;
using canbus::FrameFamily;

namespace {

const QByteArray kConnect = buildFrame(FrameFamily::Start2E, 0x81, {0x01});

// The module with `canIndex` stored, started on the slave of `box`.
class Link
{
public:
    explicit Link(PtyPair& box, int canIndex, bool allModulesReady = true)
    {
        resetPlatformForTests();
        delete CanObj::instance();
        qputenv("CANBUS_DATA_DIR", dir.path().toLocal8Bit());
        qputenv("CANBUS_BOX_PORT", box.slavePath().toLocal8Bit());
        DataSaveControl::reload();
        if (canIndex)
            DataSaveControl::saveUserData(QStringLiteral("CanIndex"), canIndex);
        facade.initial();
        if (allModulesReady)
            tqappframework::ModuleManager::self()->setAllModuleStartupReady();
    }
    ~Link() { delete CanObj::instance(); }

    CanbusModuleImpl* impl() const { return facade.implementation(); }
    QByteArray& buffer() { return CanObj::instance()->getCurrentCanBusData().recvBuffer; }

    QTemporaryDir dir;
    CanbusModule facade;
};

// What the box received, without the handshake's repeats.
QByteArray withoutConnectFrames(QByteArray bytes)
{
    return bytes.replace(kConnect, QByteArray());
}

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class TestBoxLink : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void startupOpensPortAndConnects();
    void noProtocolKeepsPortClosed();
    void twoFramesInOneRead();
    void frameSplitInThreeReads();
    void freshFrameReplacesUnfinishedOne();
    void junkBeforeFrameInOneReadIsDropped();
    void junkThenPartialFrameRecovers();
    void badChecksumIsRefused();
    void ackReachesBoxBeforeFrameIsActedOn();
    void sixByteAckForAa55();
    void nothingBeforeAllModulesReady();
    void driverSendsFromInsideTheParse();
    void rawFrameFromFacadeReachesBox();
    void productionTestCountsEchoes();
};

void TestBoxLink::initTestCase()
{
    PtyPair probe;
    if (!probe.isOpen())
        QSKIP("no pseudo-terminals on this machine");
}

void TestBoxLink::startupOpensPortAndConnects()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    QSerialPort* port = link.impl()->port();
    QVERIFY(port->isOpen());
    QCOMPARE(port->baudRate(), 38400);
    QVERIFY(box.slavePath().endsWith(port->portName()));
    QCOMPARE(box.read(kConnect.size()), kConnect);
}

void TestBoxLink::noProtocolKeepsPortClosed()
{
    PtyPair box;
    Link link(box, 0);
    QVERIFY(!link.impl()->port()->isOpen());
    QCOMPARE(CanObj::id(), 0);
    link.impl()->onCheckCanbusData(hex("2e8101017c"));
    QVERIFY(link.buffer().isEmpty());
    QVERIFY(box.drain(50).isEmpty());
}

void TestBoxLink::twoFramesInOneRead()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    const QByteArray a = buildFrame(FrameFamily::Start2E, 0x21, {0x01, 0x02});
    const QByteArray b = buildFrame(FrameFamily::Start2E, 0x24, {0x05});
    box.write(a + b);
    QTRY_COMPARE(recording.driver()->frames.size(), 2);
    QCOMPARE(recording.driver()->frames.at(0), a);
    QCOMPARE(recording.driver()->frames.at(1), b);
    // One acknowledgement, for the first frame only.
    QCOMPARE(withoutConnectFrames(box.drain(100)), hex("ff"));
    QVERIFY(link.buffer().isEmpty());
}

void TestBoxLink::frameSplitInThreeReads()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    const QByteArray frame = buildFrame(FrameFamily::Start2E, 0x21, {0x10, 0x20, 0x30, 0x40});
    box.write(frame.left(2));
    box.drain(60);
    QCOMPARE(link.buffer(), frame.left(2));
    box.write(frame.mid(2, 3));
    QCOMPARE(withoutConnectFrames(box.drain(60)), QByteArray());
    QCOMPARE(link.buffer(), frame.left(5));
    QVERIFY(recording.driver()->frames.isEmpty());
    box.write(frame.mid(5));
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
    QCOMPARE(recording.driver()->frames.at(0), frame);
    QCOMPARE(withoutConnectFrames(box.drain(100)), hex("ff"));
    QVERIFY(link.buffer().isEmpty());
}

void TestBoxLink::freshFrameReplacesUnfinishedOne()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    const QByteArray unfinished = buildFrame(FrameFamily::Start2E, 0x21, {1, 2, 3}).left(4);
    const QByteArray whole = buildFrame(FrameFamily::Start2E, 0x24, {0x01});
    box.write(unfinished);
    box.drain(60);
    box.write(whole);
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
    QCOMPARE(recording.driver()->frames.at(0), whole);
    QVERIFY(link.buffer().isEmpty());
}

void TestBoxLink::junkBeforeFrameInOneReadIsDropped()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    box.write(hex("0102") + buildFrame(FrameFamily::Start2E, 0x21, {0x01}));
    QCOMPARE(withoutConnectFrames(box.drain(150)), QByteArray());
    QVERIFY(recording.driver()->frames.isEmpty());
    QVERIFY(link.buffer().isEmpty());
    // The next clean frame gets through.
    const QByteArray next = buildFrame(FrameFamily::Start2E, 0x21, {0x02});
    box.write(next);
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
    QCOMPARE(recording.driver()->frames.at(0), next);
}

void TestBoxLink::junkThenPartialFrameRecovers()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    link.buffer() = hex("0506");   // junk left in the buffer
    const QByteArray frame = buildFrame(FrameFamily::Start2E, 0x22, {0x07, 0x08});
    box.write(frame.left(3));
    box.drain(60);
    QCOMPARE(link.buffer(), frame.left(3));
    box.write(frame.mid(3));
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
    QCOMPARE(recording.driver()->frames.at(0), frame);
}

void TestBoxLink::badChecksumIsRefused()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    QByteArray bad = buildFrame(FrameFamily::Start2E, 0x21, {0x01, 0x02});
    bad[bad.size() - 1] = char(bad.at(bad.size() - 1) ^ 0x55);
    box.write(bad);
    QCOMPARE(withoutConnectFrames(box.read(1, 500)), hex("f0"));
    QVERIFY(recording.driver()->frames.isEmpty());
    QVERIFY(link.buffer().isEmpty());
}

void TestBoxLink::ackReachesBoxBeforeFrameIsActedOn()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    QByteArray seenByBoxDuringParse;
    recording.driver()->onFrame = [&](const QByteArray&) {
        char chunk[64];
        const ssize_t n = ::read(box.masterFd(), chunk, sizeof chunk);
        if (n > 0)
            seenByBoxDuringParse.append(chunk, int(n));
    };
    box.write(buildFrame(FrameFamily::Start2E, 0x21, {0x01}));
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
    QVERIFY(withoutConnectFrames(seenByBoxDuringParse).startsWith(hex("ff")));
}

void TestBoxLink::sixByteAckForAa55()
{
    PtyPair box;
    RecordingDriverScope recording(27);
    Link link(box, 27);
    const QByteArray frame = buildFrame(FrameFamily::StartAA55, 0x41, {0x01, 0x02});
    box.write(frame);
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
    QCOMPARE(box.read(6, 500), hex("aa5501ff4140"));
    QByteArray bad = frame;
    bad[bad.size() - 1] = char(bad.at(bad.size() - 1) + 1);
    box.write(bad);
    QCOMPARE(box.read(6, 500), hex("aa5501fe413f"));
    QCOMPARE(recording.driver()->frames.size(), 1);
}

void TestBoxLink::nothingBeforeAllModulesReady()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42, false);
    box.read(kConnect.size());
    const QByteArray frame = buildFrame(FrameFamily::Start2E, 0x21, {0x01});
    box.write(frame.left(3));
    box.drain(80);
    QVERIFY(link.buffer().isEmpty());   // lost, not kept for later
    tqappframework::ModuleManager::self()->setAllModuleStartupReady();
    box.write(frame.mid(3));
    box.drain(80);
    QVERIFY(recording.driver()->frames.isEmpty());
    box.write(frame);
    QTRY_COMPARE(recording.driver()->frames.size(), 1);
}

void TestBoxLink::driverSendsFromInsideTheParse()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    const QByteArray answer = buildFrame(FrameFamily::Start2E, 0xC6, {0x01, 0x01});
    recording.driver()->onFrame = [&](const QByteArray&) {
        emit recording.driver()->sendDataToCan(answer);
    };
    box.write(buildFrame(FrameFamily::Start2E, 0x21, {0x01}));
    QCOMPARE(withoutConnectFrames(box.read(1 + answer.size(), 1000)), hex("ff") + answer);
}

void TestBoxLink::rawFrameFromFacadeReachesBox()
{
    PtyPair box;
    RecordingDriverScope recording(42);
    Link link(box, 42);
    box.read(kConnect.size());
    const QByteArray raw = hex("2e9002300040");
    link.facade.sendCanbusData(raw);
    QCOMPARE(withoutConnectFrames(box.read(raw.size(), 1000)), raw);
}

void TestBoxLink::productionTestCountsEchoes()
{
    PtyPair box;
    Link link(box, 0);
    QSignalSpy reports(&link.facade, &CanbusModule::productionTestDataReady);
    link.facade.entryProductionTestMode(true, 42);
    QCOMPARE(CanObj::id(), 42);
    QVERIFY(link.impl()->port()->isOpen());
    // The test pattern goes out each second, between the handshake's repeats.
    QByteArray wire;
    QElapsedTimer clock;
    clock.start();
    while (!wire.contains("0123") && clock.elapsed() < 3000)
        wire += box.read(1, 200);
    QVERIFY(wire.contains("0123"));
    // Nine bytes at once: five are dropped from the front, four count as one echo.
    box.write("xxxxx0123");
    QTRY_COMPARE(reports.count(), 1);
    box.write("ab");
    box.drain(80);
    QCOMPARE(reports.count(), 1);
    box.write("cd");
    QTRY_COMPARE(reports.count(), 2);
    link.facade.entryProductionTestMode(false, 42);
    box.drain(50);
    box.write("0123");
    box.drain(100);
    QCOMPARE(reports.count(), 2);
}

QTEST_GUILESS_MAIN(TestBoxLink)
#include "tst_boxlink.moc"
