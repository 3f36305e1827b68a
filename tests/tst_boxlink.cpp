// The CAN box link over a real pseudo-terminal: the test plays the box on the master
// side while the module owns the slave as its serial port.

#include <QtTest>
#include <QSerialPort>

#include <unistd.h>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "framebuilders.h"
#include "framefamily.h"
#include "modulemanager.h"
#include "platform.h"
#include "ptypair.h"
#include "recordingdriver.h"

using canbus::buildFrame;
using canbus::FrameFamily;
using testframes::hex;

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

} // namespace

// A link on a box of the 0x2E form that has taken the connect frame.
struct Box42
{
    Box42() { box.read(kConnect.size()); }
    QList<QByteArray>& frames() { return recording.driver()->frames; }

    PtyPair box;
    RecordingDriverScope recording{42};
    Link link{box, 42};
};

class TestBoxLink : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void reassembly_data();
    void reassembly();
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

// Bytes in separate reads: what the driver gets and what the box is answered.
void TestBoxLink::reassembly_data()
{
    QTest::addColumn<QByteArray>("leftover");   // already in the buffer
    QTest::addColumn<QList<QByteArray>>("reads");
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<QByteArray>("answers");
    const QByteArray a = buildFrame(FrameFamily::Start2E, 0x21, {0x10, 0x20, 0x30, 0x40});
    const QByteArray b = buildFrame(FrameFamily::Start2E, 0x24, {0x05});
    QByteArray bad = buildFrame(FrameFamily::Start2E, 0x21, {0x01, 0x02});
    bad[bad.size() - 1] = char(bad.at(bad.size() - 1) ^ 0x55);
    using L = QList<QByteArray>;
    // Only the first frame of a read is acknowledged.
    QTest::addRow("two frames in one read") << QByteArray() << L{a + b} << L{a, b} << hex("ff");
    QTest::addRow("split 2+3+rest") << QByteArray() << L{a.left(2), a.mid(2, 3), a.mid(5)} << L{a} << hex("ff");
    QTest::addRow("fresh frame replaces an unfinished one") << QByteArray() << L{a.left(4), b} << L{b} << hex("ff");
    // Junk at the front of a read takes the whole read with it.
    QTest::addRow("0102 before a frame") << QByteArray() << L{hex("0102") + b, a} << L{a} << hex("ff");
    QTest::addRow("0506 left, frame in two") << hex("0506") << L{a.left(3), a.mid(3)} << L{a} << hex("ff");
    QTest::addRow("bad checksum") << QByteArray() << L{bad} << L{} << hex("f0");
}

void TestBoxLink::reassembly()
{
    QFETCH(QByteArray, leftover);
    QFETCH(QList<QByteArray>, reads);
    QFETCH(QList<QByteArray>, frames);
    QFETCH(QByteArray, answers);
    Box42 t;
    t.link.buffer() = leftover;
    QByteArray wire;
    for (const QByteArray& read : reads) {
        t.box.write(read);
        wire += t.box.drain(80);
    }
    QTRY_COMPARE(t.frames().size(), frames.size());
    QCOMPARE(t.frames(), frames);
    QCOMPARE(withoutConnectFrames(wire + t.box.drain(100)).toHex(), answers.toHex());
    QVERIFY(t.link.buffer().isEmpty());
}

void TestBoxLink::ackReachesBoxBeforeFrameIsActedOn()
{
    Box42 t;
    QByteArray seenByBoxDuringParse;
    t.recording.driver()->onFrame = [&](const QByteArray&) {
        char chunk[64];
        const ssize_t n = ::read(t.box.masterFd(), chunk, sizeof chunk);
        if (n > 0)
            seenByBoxDuringParse.append(chunk, int(n));
    };
    t.box.write(buildFrame(FrameFamily::Start2E, 0x21, {0x01}));
    QTRY_COMPARE(t.frames().size(), 1);
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
    Box42 t;
    const QByteArray answer = buildFrame(FrameFamily::Start2E, 0xC6, {0x01, 0x01});
    t.recording.driver()->onFrame = [&](const QByteArray&) { emit t.recording.driver()->sendDataToCan(answer); };
    t.box.write(buildFrame(FrameFamily::Start2E, 0x21, {0x01}));
    QCOMPARE(withoutConnectFrames(t.box.read(1 + answer.size(), 1000)), hex("ff") + answer);
}

void TestBoxLink::rawFrameFromFacadeReachesBox()
{
    Box42 t;
    const QByteArray raw = hex("2e9002300040");
    t.link.facade.sendCanbusData(raw);
    QCOMPARE(withoutConnectFrames(t.box.read(raw.size(), 1000)), raw);
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
