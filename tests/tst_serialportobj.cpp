// The MCU link over a real pseudo-terminal, the test playing the microcontroller:
// frames in, keys, touches, signals and platform calls out; commands in, bytes out.

#include <QDir>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>
#include <fcntl.h>

#include "activitymanager.h"
#include "autosendobj.h"
#include "datasavecontrol.h"
#include "framefamily.h"
#include "infomodule.h"
#include "mcuscenario.h"
#include "mcusimulator.h"
#include "mcutestlink.h"
#include "modulemanager.h"
#include "muteobj.h"
#include "platform.h"
#include "serialportobj.h"
#include "tqplatformcontrol.h"

using Call = RecordingInputInjector::Call;
using KeyEvents = QList<QPair<unsigned long, unsigned long>>;

namespace {

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

// A key event as it reaches the device: keyboard number + 768, 1 down or 0 up.
QPair<unsigned long, unsigned long> down(unsigned long number)
{
    return {number + 768, 1};
}

QPair<unsigned long, unsigned long> up(unsigned long number)
{
    return {number + 768, 0};
}

// The fixed frames of the head unit, as the firmware expects them byte for byte.
struct ExpectedCommand { int type; int param; const char* frame; int times; };
constexpr ExpectedCommand kExpectedCommands[] = {
    {0, -1, "ff550901030000f0010000fe", 1},
    {1, -1, "ff550903010000f0010000fe", 1},
    {2, -1, "ff550903020000f0010000ff", 1},
    {3, -1, "ff550903020100f001000000", 1},
    {4, -1, "ff550903030000f001000000", 1},
    {5, -1, "ff550903040000f001000001", 1},
    {6, -1, "ff550903030100f001000001", 1},
    {7, -1, "ff550903050000f001000002", 1},
    {8, -1, "ff550903060100f001000004", 1},
    {9, -1, "ff550903060000f001000003", 1},
    {10, -1, "ff550903070000f001000004", 3},
    {11, -1, "ff550903070100f001000005", 3},
    {12, -1, "ff550903070200f001000006", 3},
    {13, -1, "ff550903070300f001000007", 3},
    {14, -1, "ff550903070400f001000008", 3},
    {15, -1, "ff550903080000f001000005", 1},
    {16, -1, "ff550903090000f001000006", 1},
    {17, -1, "ff550903080100f001000006", 1},
    {18, -1, "ff550903090200f001000008", 1},
    {19, -1, "ff550903090400f00100000a", 1},
    {20, -1, "ff550903090500f00100000b", 1},
    {21, -1, "ff550903090600f00100000c", 1},
    {22, -1, "ff550903090700f00100000d", 1},
    {23, -1, "ff550903090800f00100000e", 1},
    {24, -1, "ff550903051000f001000012", 1},
    {25, -1, "ff550903052000f001000022", 1},
    {26, -1, "ff5509030a0000f001000007", 1},
    {27, -1, "ff5509030b0000f001000008", 1},
    {28, -1, "ff5509030c0000f001000009", 1},
    {29, -1, "ff5509030d0000f00100000a", 1},
    {30, 0, "ff5509030e0000f00100000b", 1},
    {30, 1, "ff5509030e0100f00100000c", 1},
    {30, 2, "ff5509030e0200f00100000d", 1},
    {31, -1, "ff5509030e0300f00100000e", 1},
    {32, -1, "ff5509030e0400f00100000f", 1},
    {33, -1, "ff5509030e0500f001000010", 1},
    {34, -1, "ff5509030e0600f001000011", 1},
    {35, 0, "ff5509030f0100f00100000d", 1},
    {35, 1, "ff5509030f0000f00100002b", 1},
    {35, 2, "ff5509030f0300f00100000f", 1},
    {35, 3, "ff5509030f0400f001000010", 1},
};

const char kHeartbeat[] = "ff5509030d0000f00100000a";

} // namespace

class TestSerialPortObj : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void setChecksum_data();
    void setChecksum();
    void ackAndNackBytes();
    void commandFrames_data();
    void commandFrames();
    void typesWithoutFrameSendNothing_data();
    void typesWithoutFrameSendNothing();
    void closedPortSendsNothingAndStillWorks();

    void start2EFrames_data();
    void start2EFrames();
    void zeroLengthDropsWholeBuffer();
    void ff55BadChecksumIsDroppedSilently();
    void resynchronisesAfterJunk_data();
    void resynchronisesAfterJunk();
    void damagedFramesNeverStallTheLink_data();
    void damagedFramesNeverStallTheLink();
    void randomBytesSplitAnywhere();

    void keys_data();
    void keys();
    void shortPressGivesShortKeyOnRelease();
    void longPressGivesLongKeyAndReleaseDoesNothing();
    void missingKeyDeviceIsSilent();

    void touches_data();
    void touches();
    void shortTouchFrameIsIgnored();
    void touchDeviceOpenedOnceAndClosedAtTheEnd();
    void missingTouchDeviceIsSilent();

    void requests_data();
    void requests();
    void reversingMuteFollowsSetting_data();
    void reversingMuteFollowsSetting();
    void versionIsSavedAsText();
    void heartbeatAndBlink();

    void exampleScenariosPlay_data();
    void exampleScenariosPlay();
    void malformedScenariosAreRefused_data();
    void malformedScenariosAreRefused();
    void unreadableScenarioIsRefused();

private:
    QByteArray ff55(const char* bodyHex) const;

    QTemporaryDir m_dataDir;
    McuTestLink m_mcu;
};

void TestSerialPortObj::initTestCase()
{
    QVERIFY(m_dataDir.isValid());
    qputenv("CANBUS_DATA_DIR", m_dataDir.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("canbus.*.debug=false"));
}

void TestSerialPortObj::init()
{
    resetPlatformForTests();
    QVERIFY(m_mcu.pty().isOpen());
    QVERIFY(m_mcu.start());
}

void TestSerialPortObj::cleanup()
{
    m_mcu.stop();
    m_mcu.input().clear();
    for (const QByteArray& path : {mcuKeyDevicePath(), touchDevicePath()})
        m_mcu.input().failOpen(path, false);
    // Whatever the link still wrote must not reach the next case.
    for (int i = 0; i < 100 && !m_mcu.pty().drain(20).isEmpty(); ++i) {
    }
    tqappframework::ModuleManager::self()->clear();
    DataSaveControl::saveSettingData(QStringLiteral("ReversingMute"), true);
    resetPlatformForTests();
}

QByteArray TestSerialPortObj::ff55(const char* bodyHex) const
{
    return mcusim::ff55Frame(hex(bodyHex));
}

// ---- checksum and fixed frames ---------------------------------------------------

void TestSerialPortObj::setChecksum_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("expected");
    QTest::addRow("ff5509010300") << hex("ff550901030000f001000000") << hex("ff550901030000f0010000fe");
    QTest::addRow("ff55090102") << hex("ff550901020000f001000099") << hex("ff550901020000f0010000fd");
    QTest::addRow("sum wraps") << hex("ff5503ffff00") << hex("ff5503ffff01");
    QTest::addRow("three bytes") << hex("ff5577") << hex("ff5500");
    QTest::addRow("two bytes") << hex("ff55") << hex("ff55");
    QTest::addRow("empty") << QByteArray() << QByteArray();
}

void TestSerialPortObj::setChecksum()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, expected);
    SerialPortObj::setChecksum(frame);
    QCOMPARE(frame.toHex(), expected.toHex());
}

void TestSerialPortObj::ackAndNackBytes()
{
    m_mcu.link()->sendAckNack(true);
    m_mcu.link()->sendAckNack(false);
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray("fff0"));
}

void TestSerialPortObj::commandFrames_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("param");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("times");
    for (const ExpectedCommand& c : kExpectedCommands)
        QTest::addRow("%d/%d %s", c.type, c.param, c.frame) << c.type << c.param << hex(c.frame) << c.times;
}

void TestSerialPortObj::commandFrames()
{
    QFETCH(int, type);
    QFETCH(int, param);
    QFETCH(QByteArray, frame);
    QFETCH(int, times);

    m_mcu.link()->sendDataToSerialPort(type, param);
    const QByteArray sent = m_mcu.pty().read(frame.size() * times, 3000);
    QCOMPARE(sent.toHex(), frame.repeated(times).toHex());
    // Every repeat is out once the repeater is gone; nothing more may follow.
    QTRY_VERIFY(m_mcu.link()->findChildren<AutoSendObj*>().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestSerialPortObj::typesWithoutFrameSendNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("param");
    QTest::addRow("type -1") << -1 << -1;
    QTest::addRow("type 36") << 36 << 0;
    QTest::addRow("selection without choice") << 30 << -1;
    QTest::addRow("selection 3") << 30 << 3;
    QTest::addRow("reversing mute 4") << 35 << 4;
}

void TestSerialPortObj::typesWithoutFrameSendNothing()
{
    QFETCH(int, type);
    QFETCH(int, param);
    m_mcu.link()->sendDataToSerialPort(type, param);
    QVERIFY(m_mcu.link()->findChildren<AutoSendObj*>().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestSerialPortObj::closedPortSendsNothingAndStillWorks()
{
    QVERIFY(m_mcu.start(QStringLiteral("/nonexistent/ttyMCU")));
    SerialPortObj* link = m_mcu.link();
    link->sendDataToSerialPort(10, -1);   // a repeated one
    link->sendDataToSerialPort(29, -1);
    link->sendAckNack(false);
    QTRY_VERIFY(link->findChildren<AutoSendObj*>().isEmpty());
    QCOMPARE(m_mcu.pty().drain(50), QByteArray());
    // Without a port there is no long-press timer, but a short press still works.
    QVERIFY(link->checkKeyLongPressed(true, 149, 167));
    QVERIFY(link->checkKeyLongPressed(false, 0, 0));
    QCOMPARE(m_mcu.keyEvents(), KeyEvents({down(149), up(149)}));
}

// ---- 0x2E frames ---------------------------------------------------------------------

void TestSerialPortObj::start2EFrames_data()
{
    QTest::addColumn<QByteArray>("frames");
    QTest::addColumn<QVariantList>("acc");
    QTest::addColumn<QVariantList>("night");
    QTest::addColumn<QByteArray>("sent");

    const QVariantList none;
    QTest::addRow("2e090101f4") << hex("2e090101f4") << QVariantList{true} << none << QByteArray();
    QTest::addRow("2e090102f3 ignition 2 ignored") << hex("2e090102f3") << none << none << QByteArray();
    QTest::addRow("2e080201fff5") << hex("2e080201fff5") << none << QVariantList{true} << QByteArray();
    QTest::addRow("2e080201fef6 not confirmed") << hex("2e080201fef6") << none << none << QByteArray();
    QTest::addRow("2e080101f5 too short") << hex("2e080101f5") << none << none << QByteArray();
    QTest::addRow("2e090101f5 bad checksum") << hex("2e090101f5") << none << none << hex("f0");
    QTest::addRow("2e090101f5 2e090100f5") << hex("2e090101f5" "2e090100f5") << QVariantList{false} << none
                                           << hex("f0");
    QTest::addRow("on off on") << hex("2e090101f4" "2e090100f5" "2e090101f4") << QVariantList{true, false, true}
                               << none << QByteArray();
}

void TestSerialPortObj::start2EFrames()
{
    QFETCH(QByteArray, frames);
    QFETCH(QVariantList, acc);
    QFETCH(QVariantList, night);
    QFETCH(QByteArray, sent);

    QSignalSpy nightSpy(m_mcu.link(), &SerialPortObj::setNightModeSig);
    QVERIFY(m_mcu.send(frames));
    QVERIFY(m_mcu.sync());
    QVariantList accSeen;
    for (const QVariantList& args : m_mcu.accSpy())
        accSeen << args.value(0);
    QVariantList nightSeen;
    for (const QVariantList& args : nightSpy)
        nightSeen << args.value(0);
    QCOMPARE(accSeen, acc);
    QCOMPARE(nightSeen, night);
    // Good frames are not acknowledged; bad ones are refused with 0xF0.
    QCOMPARE(m_mcu.takeSent().toHex(), sent.toHex());
    QVERIFY(m_mcu.keyEvents().isEmpty());
}

void TestSerialPortObj::zeroLengthDropsWholeBuffer()
{
    // Everything that arrived with the zero-length frame goes with it.
    QVERIFY(m_mcu.send(hex("2e0900aaaa") + mcusim::ignitionFrame(true)));
    QCOMPARE(m_mcu.pty().read(1).toHex(), QByteArray("f0"));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.accSpy().count(), 0);
    // And the link carries on with what comes next.
    QVERIFY(m_mcu.send(mcusim::ignitionFrame(true)));
    QTRY_COMPARE(m_mcu.accSpy().count(), 1);
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestSerialPortObj::ff55BadChecksumIsDroppedSilently()
{
    QByteArray frame = mcusim::requestFrame(0x06, 0x00);   // would be answered by type 19
    frame[frame.size() - 1] = char(frame.at(frame.size() - 1) ^ 0x01);
    QVERIFY(m_mcu.send(frame));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestSerialPortObj::resynchronisesAfterJunk_data()
{
    QTest::addColumn<QByteArray>("junk");
    QTest::addColumn<QByteArray>("sent");
    QTest::addRow("ff00") << hex("ff00") << QByteArray();
    QTest::addRow("ffff55 then junk") << hex("ffff0155") << QByteArray();
    QTest::addRow("0102030405") << hex("0102030405") << QByteArray();
    QTest::addRow("55aa") << hex("55aa") << QByteArray();
    QTest::addRow("ff5500 no length") << hex("ff5500") << QByteArray();
    QTest::addRow("2e090101f5 bad checksum") << hex("2e090101f5") << hex("f0");
    QTest::addRow("ff55 bad checksum") << hex("ff55090101000000f00100ff") << QByteArray();
    QTest::addRow("two bad 2e") << hex("2e090101f52e090100f4") << hex("f0f0");
}

void TestSerialPortObj::resynchronisesAfterJunk()
{
    QFETCH(QByteArray, junk);
    QFETCH(QByteArray, sent);
    // The very next good frame is taken.
    QVERIFY(m_mcu.send(junk + mcusim::ignitionFrame(true)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.accSpy().count(), 1);
    QCOMPARE(m_mcu.takeSent().toHex(), sent.toHex());
}

void TestSerialPortObj::damagedFramesNeverStallTheLink_data()
{
    QTest::addColumn<QByteArray>("damaged");
    QTest::addRow("truncated 2e of 255") << hex("2e06ff");
    QTest::addRow("truncated ff55 of 255") << hex("ff55ff05");
    QTest::addRow("lone 2e") << hex("2e");
    QTest::addRow("lone ff55") << hex("ff55");
    QTest::addRow("ff55 short of its length") << hex("ff550c050134125600");
    QTest::addRow("2e claiming more than it has") << hex("2e0608010203");
    QTest::addRow("oversized 2e") << canbus::buildFrame(canbus::FrameFamily::Start2E, 0x06, QByteArray(250, '\x0e'));
    QTest::addRow("oversized ff55") << mcusim::ff55Frame(QByteArray(254, '\x05'));
    QTest::addRow("zero length with more behind") << hex("2e0600") + mcusim::keyFrame(14, 1);
    QByteArray corrupted = mcusim::touchFrame(1, 100, 200);
    corrupted[2] = char(0x30);   // the length byte hit
    QTest::addRow("corrupted length") << corrupted;
}

void TestSerialPortObj::damagedFramesNeverStallTheLink()
{
    QFETCH(QByteArray, damaged);
    QVERIFY(m_mcu.send(damaged));
    QVERIFY(m_mcu.resync());
    // And it still does its work.
    QVERIFY(m_mcu.send(mcusim::keyFrame(14, 1)));
    QTRY_VERIFY(m_mcu.keyEvents().contains(down(167)));
}

void TestSerialPortObj::randomBytesSplitAnywhere()
{
    QRandomGenerator random(20240611);
    const QByteArray good = mcusim::keyFrame(13, 1) + mcusim::touchFrame(2, 10, 20) + mcusim::nightModeFrame(true);
    for (int round = 0; round < 40; ++round) {
        QByteArray bytes = good;
        const int junk = int(random.bounded(300));
        for (int i = 0; i < junk; ++i) {
            // Mostly start bytes and lengths, so that frames begin and break off often.
            static const char likely[] = {'\x2E', '\xFF', '\x55', '\x00', '\x06', '\x09', '\x05', '\x08'};
            bytes.insert(int(random.bounded(bytes.size() + 1)),
                         random.bounded(2) ? likely[random.bounded(int(sizeof likely))] : char(random.bounded(256)));
        }
        // Split anywhere: the link has to reassemble across reads.
        int at = 0;
        while (at < bytes.size()) {
            const int n = 1 + int(random.bounded(40));
            QVERIFY(m_mcu.send(bytes.mid(at, n)));
            at += n;
            if (random.bounded(4) == 0)
                QCoreApplication::processEvents();
        }
        QVERIFY2(m_mcu.resync(), qPrintable(QStringLiteral("round %1").arg(round)));
    }
    // Whatever was found in the noise reached the devices sanely.
    for (const Call& call : m_mcu.input().calls(Call::Open))
        QVERIFY(call.path == mcuKeyDevicePath() || call.path == touchDevicePath());
    QCOMPARE(m_mcu.input().openDescriptors().size(), 1);   // only the touch device stays open
}

// ---- keys ----------------------------------------------------------------------------

void TestSerialPortObj::keys_data()
{
    QTest::addColumn<QByteArray>("frames");
    QTest::addColumn<KeyEvents>("events");

    // MCU key numbers with their keyboard numbers, pressed and released: the ends of
    // the table and one that shares its keyboard number with another.
    struct Row { quint8 number; unsigned long keyboard; };
    constexpr Row table[] = {{3, 250}, {22, 347}, {25, 314}};
    for (const Row& r : table) {
        const QByteArray frames = mcusim::keyFrame(r.number, 1) + mcusim::keyFrame(r.number, 0);
        QTest::addRow("%s", frames.toHex().constData()) << frames << KeyEvents{down(r.keyboard), up(r.keyboard)};
    }
    // 49 and 50 are momentary: up at once, and the release repeats the up.
    QTest::addRow("2e06023101c5 2e06023100c6") << hex("2e06023101c5" "2e06023100c6")
                                              << KeyEvents{down(348), up(348), up(348)};
    QTest::addRow("2e06023201c4") << hex("2e06023201c4") << KeyEvents{down(349), up(349)};
    QTest::addRow("2e06020e02e7 state 2 ignored") << hex("2e06020e02e7") << KeyEvents{};
    // A number without a key still reaches the device, as keyboard number 0.
    QTest::addRow("2e06021001e6 unknown") << hex("2e06021001e6" "2e06021000e7") << KeyEvents{down(0), up(0)};
    // The release goes to the key pressed last.
    QTest::addRow("press 14, press 15, release")
        << mcusim::keyFrame(14, 1) + mcusim::keyFrame(15, 1) + mcusim::keyFrame(15, 0)
        << KeyEvents{down(167), down(166), up(166)};
    QTest::addRow("release of 15 after 14") << mcusim::keyFrame(14, 1) + mcusim::keyFrame(15, 0)
                                            << KeyEvents{down(167), up(167)};
}

void TestSerialPortObj::keys()
{
    QFETCH(QByteArray, frames);
    QFETCH(KeyEvents, events);
    QVERIFY(m_mcu.send(frames));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.keyEvents(), events);
    // Each event opens the device read-write and closes it again.
    int opens = 0;
    for (const Call& call : m_mcu.input().calls(Call::Open)) {
        if (call.path == mcuKeyDevicePath()) {
            ++opens;
            QCOMPARE(call.flags, O_RDWR);
        }
    }
    QCOMPARE(opens, events.size());
    QCOMPARE(m_mcu.input().openDescriptors().size(), 1);   // the touch device's
    QVERIFY(m_mcu.touchEvents().isEmpty());
}

void TestSerialPortObj::shortPressGivesShortKeyOnRelease()
{
    QVERIFY(m_mcu.link()->checkKeyLongPressed(true, 149, 167));
    QVERIFY(m_mcu.keyEvents().isEmpty());
    // The release takes the pending short key, not the last key's up.
    QVERIFY(m_mcu.send(mcusim::keyFrame(14, 0)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.keyEvents(), KeyEvents({down(149), up(149)}));
    // Nothing is pending any more.
    QVERIFY(!m_mcu.link()->checkKeyLongPressed(false, 0, 0));
    QCOMPARE(m_mcu.keyEvents().size(), 2);
}

void TestSerialPortObj::longPressGivesLongKeyAndReleaseDoesNothing()
{
    QVERIFY(m_mcu.send(mcusim::keyFrame(15, 1)));
    QVERIFY(m_mcu.sync());
    QVERIFY(m_mcu.link()->checkKeyLongPressed(true, 149, 167));
    QTRY_COMPARE_WITH_TIMEOUT(m_mcu.keyEvents(), KeyEvents({down(166), down(167), up(167)}), 5000);
    // The press was used up by the long key: the release falls to the last key.
    QVERIFY(m_mcu.send(mcusim::keyFrame(15, 0)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.keyEvents(), KeyEvents({down(166), down(167), up(167), up(166)}));
}

void TestSerialPortObj::missingKeyDeviceIsSilent()
{
    m_mcu.input().failOpen(mcuKeyDevicePath());
    QVERIFY(m_mcu.send(mcusim::keyFrame(14, 1) + mcusim::keyFrame(14, 0) + mcusim::keyFrame(49, 1)));
    QVERIFY(m_mcu.sync());
    QVERIFY(m_mcu.keyEvents().isEmpty());
    QCOMPARE(m_mcu.input().calls(Call::Close).size(), 0);
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

// ---- touches -------------------------------------------------------------------------

void TestSerialPortObj::touches_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<unsigned long>("request");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    // x = byte 5 + the high nibble of byte 6 above it; y = the low nibble of byte 6
    // above byte 7.
    QTest::addRow("down 0534125600") << ff55("05013412560000 00") << 0x40044BE8ul << 0x134 << 0x256;
    QTest::addRow("up 0503ffffff") << ff55("0503ffffff0000 00") << 0x40044BEAul << 0xFFF << 0xFFF;
    QTest::addRow("down 0501203158") << ff55("05012031580000 00") << 0x40044BE8ul << 800 << 0x158;
    QTest::addRow("action 0") << ff55("0500010203000000") << 0ul << 0x01 << 0x203;
}

void TestSerialPortObj::touches()
{
    QFETCH(QByteArray, frame);
    QFETCH(unsigned long, request);
    QFETCH(int, x);
    QFETCH(int, y);
    QVERIFY(m_mcu.send(frame));
    QVERIFY(m_mcu.sync());
    const QList<Call> events = m_mcu.touchEvents();
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.at(0).request, request);
    struct { int x; int y; } point;
    QCOMPARE(events.at(0).data.size(), int(sizeof point));
    std::memcpy(&point, events.at(0).data.constData(), sizeof point);
    QCOMPARE(point.x, x);
    QCOMPARE(point.y, y);
    QVERIFY(m_mcu.keyEvents().isEmpty());
}

void TestSerialPortObj::shortTouchFrameIsIgnored()
{
    // Too short to hold a point: byte 6 would be its checksum.
    QVERIFY(m_mcu.send(ff55("050110") + ff55("05011010")));
    QVERIFY(m_mcu.sync());
    QVERIFY(m_mcu.touchEvents().isEmpty());
}

void TestSerialPortObj::touchDeviceOpenedOnceAndClosedAtTheEnd()
{
    QVERIFY(m_mcu.send(mcusim::touchFrame(1, 1, 1) + mcusim::touchFrame(2, 2, 2) + mcusim::touchFrame(3, 3, 3)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.touchEvents().size(), 3);
    QList<Call> opens;
    for (const Call& call : m_mcu.input().calls(Call::Open)) {
        if (call.path == touchDevicePath())
            opens << call;
    }
    QCOMPARE(opens.size(), 1);
    QCOMPARE(opens.at(0).flags, O_RDWR);
    for (const Call& call : m_mcu.touchEvents())
        QCOMPARE(call.fd, opens.at(0).fd);
    m_mcu.stop();
    QVERIFY(m_mcu.input().openDescriptors().isEmpty());
}

void TestSerialPortObj::missingTouchDeviceIsSilent()
{
    m_mcu.input().failOpen(touchDevicePath());
    QVERIFY(m_mcu.start());
    m_mcu.input().clear();
    QVERIFY(m_mcu.send(mcusim::touchFrame(1, 100, 100) + mcusim::touchFrame(3, 100, 100)));
    QVERIFY(m_mcu.sync());
    QVERIFY(m_mcu.input().calls().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
    m_mcu.stop();
    QVERIFY(m_mcu.input().calls(Call::Close).isEmpty());
}

// ---- the MCU's requests ----------------------------------------------------------------

void TestSerialPortObj::requests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("source");   // "-" for no info module
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("started");  // activity started, "name/flag"
    QTest::addColumn<QString>("front");    // activity brought to front

    auto row = [](quint8 a, quint8 b, const char* source, const char* reply, const char* started,
                  const char* front) {
        const QByteArray request = mcusim::requestFrame(a, b);
        QTest::addRow("%s %s", request.toHex().constData(), source)
            << request << QString::fromLatin1(source) << hex(reply) << QString::fromLatin1(started)
            << QString::fromLatin1(front);
    };
    row(0x02, 0x00, "-", "", "carplay/1", "");
    row(0x04, 0x00, "usb", "ff550903040000f001000001", "", "");
    row(0x04, 0x00, "carplay", "ff550903090200f001000008", "", "");
    row(0x04, 0x00, "radio", "ff550901030000f0010000fe", "", "");
    row(0x05, 0x00, "carlife", "ff550903060100f001000004", "", "");
    row(0x05, 0x00, "usb", "ff550903060000f001000003", "", "");
    row(0x06, 0x00, "-", "ff550903090400f00100000a", "", "");
    row(0x08, 0x00, "-", "", "", "");
    row(0x09, 0x00, "-", "", "", "carplay");
    row(0x0A, 0x00, "-", "ff5509030e0000f00100000b", "", "");
    row(0x0A, 0x02, "-", "ff5509030e0200f00100000d", "", "");
    row(0x0A, 0x03, "-", "", "", "");
    row(0x0C, 0x00, "-", "", "", "");
    // The same bytes with anything else in the fixed part are not requests.
    QTest::addRow("ff55090104000001 not fixed") << ff55("0104000001010000") << QStringLiteral("usb")
                                                 << QByteArray() << QString() << QString();
}

void TestSerialPortObj::requests()
{
    QFETCH(QByteArray, request);
    QFETCH(QString, source);
    QFETCH(QByteArray, reply);
    QFETCH(QString, started);
    QFETCH(QString, front);

    if (source != QLatin1String("-")) {
        auto info = QSharedPointer<InfoModule>::create();
        info->setCurrentSource(source);
        tqappframework::ModuleManager::self()->registerModule(QStringLiteral("info"), info);
    }
    auto* activities = tqappframework::ActivityManager::getInstance();
    QSignalSpy frontSpy(activities, &tqappframework::ActivityManager::activityBroughtToFront);

    QVERIFY(m_mcu.send(request));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.takeSent().toHex(), reply.toHex());
    const QStringList startedList = activities->startedActivities();
    QCOMPARE(startedList.isEmpty() ? QString()
                                   : QStringLiteral("%1/%2").arg(startedList.last()).arg(activities->lastStartFlag()),
             started);
    QCOMPARE(frontSpy.isEmpty() ? QString() : frontSpy.last().value(0).toString(), front);
    QVERIFY(!MuteObj::isMuted());
}

void TestSerialPortObj::reversingMuteFollowsSetting_data()
{
    QTest::addColumn<QVariant>("setting");   // invalid: never set
    QTest::addColumn<bool>("mutes");
    QTest::addRow("default") << QVariant() << true;
    QTest::addRow("on") << QVariant(true) << true;
    QTest::addRow("off") << QVariant(false) << false;
}

void TestSerialPortObj::reversingMuteFollowsSetting()
{
    QFETCH(QVariant, setting);
    QFETCH(bool, mutes);
    if (setting.isValid())
        DataSaveControl::saveSettingData(QStringLiteral("ReversingMute"), setting);

    QVERIFY(m_mcu.send(mcusim::requestFrame(0x0B, 0x01)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray("ff5509030f0100f00100000d"));
    QCOMPARE(MuteObj::isMutedBy(m_mcu.link(), 0), mutes);

    // Out of reverse the mute is let go of in any case.
    QVERIFY(m_mcu.send(mcusim::requestFrame(0x0B, 0x00)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray("ff5509030f0300f00100000f"));
    QVERIFY(!MuteObj::isMuted());
}

void TestSerialPortObj::versionIsSavedAsText()
{
    QCOMPARE(m_mcu.link()->getMcuVersion(), QString());
    QVERIFY(m_mcu.send(hex("ff550902010afff001000006")));
    QTRY_COMPARE(m_mcu.link()->getMcuVersion(), QStringLiteral("010AFF"));
    QCOMPARE(DataSaveControl::readTempData(QStringLiteral("MCUVERSION")).toString(), QStringLiteral("010AFF"));
    QVERIFY(m_mcu.send(mcusim::versionFrame(0x00, 0x00, 0x07)));
    QTRY_COMPARE(m_mcu.link()->getMcuVersion(), QStringLiteral("000007"));
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestSerialPortObj::heartbeatAndBlink()
{
    auto* control = tqplfctrl::TQPlatformControl::peekInstance();
    QSignalSpy gpio(control, &tqplfctrl::TQPlatformControl::gpioWritten);
    m_mcu.link()->startOnFirstFrameReady();
    m_mcu.link()->startOnFirstFrameReady();   // a second call starts nothing more

    QCOMPARE(m_mcu.pty().read(12, 5000).toHex(), QByteArray(kHeartbeat));
    QTRY_VERIFY_WITH_TIMEOUT(gpio.count() >= 2, 5000);
    // The LED line goes on and off in turn, and the instance is always given back.
    QCOMPARE(gpio.at(0), QVariantList({1, 60, 1}));
    QCOMPARE(gpio.at(1), QVariantList({1, 60, 0}));
    QCOMPARE(control->references(), 0);
}

// ---- the simulated MCU's scenarios -------------------------------------------------------

void TestSerialPortObj::exampleScenariosPlay_data()
{
    QTest::addColumn<QString>("path");
    const QDir dir(QStringLiteral(CANBUS_SOURCE_DIR "/scenarios/mcu"));
    const QStringList files = dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    QVERIFY(!files.isEmpty());
    for (const QString& file : files)
        QTest::addRow("%s", qPrintable(file)) << dir.filePath(file);
}

void TestSerialPortObj::exampleScenariosPlay()
{
    QFETCH(QString, path);
    McuScenario scenario;
    QString error;
    QVERIFY2(loadMcuScenario(path, scenario, error), qPrintable(error));
    QVERIFY(!scenario.description.isEmpty());
    QVERIFY(!scenario.frames.isEmpty());
    // Played without its pauses, whatever it sends leaves the link in step.
    for (const McuScenarioFrame& frame : scenario.frames) {
        QVERIFY(!frame.label.isEmpty());
        QVERIFY(m_mcu.send(frame.bytes));
    }
    QVERIFY(m_mcu.resync());
}

void TestSerialPortObj::malformedScenariosAreRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    auto row = [](const char* json, const char* error) {
        QTest::addRow("%s", *json ? json : "(empty)") << QByteArray(json) << QString::fromUtf8(error);
    };
    row("", "not valid JSON");
    row("[]", "must be a JSON object");
    row("{}", "\"steps\" must be a list");
    row("{\"stepz\": [{\"key\": 1}]}", "unknown field \"stepz\"");
    row("{\"steps\": [{\"key\": 1}], \"loop\": \"yes\"}", "\"loop\" must be true or false");
    row("{\"steps\": [1]}", "step 1: must be an object");
    row("{\"steps\": [{}]}", "step 1: nothing to send");
    row("{\"steps\": [{\"key\": 300}]}", "step 1: \"key\" must be a whole number from 0 to 255");
    row("{\"steps\": [{\"key\": 1, \"action\": \"hold\"}]}", "step 1: \"action\" must be one of");
    row("{\"steps\": [{\"key\": 1, \"touch\": \"down\"}]}", "step 1: \"key\" and \"touch\" in one step");
    row("{\"steps\": [{\"touch\": \"down\", \"x\": 5000, \"y\": 1}]}", "step 1: \"x\" must be");
    row("{\"steps\": [{\"raw\": \"2e0\"}]}", "step 1: \"raw\" must be hexadecimal bytes");
    row("{\"steps\": [{\"version\": \"0102\"}]}", "step 1: \"version\" must be 3 bytes in hexadecimal");
    row("{\"steps\": [{\"ignition\": true}, {\"request\": \"make-coffee\"}]}", "step 2: \"request\" must be one of");
}

void TestSerialPortObj::malformedScenariosAreRefused()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    McuScenario scenario;
    scenario.description = QStringLiteral("untouched");
    QString message;
    QVERIFY(!parseMcuScenario(json, scenario, message));
    QVERIFY2(message.contains(error), qPrintable(message));
    QCOMPARE(scenario.description, QStringLiteral("untouched"));
}

void TestSerialPortObj::unreadableScenarioIsRefused()
{
    McuScenario scenario;
    QString error;
    const QString missing = m_dataDir.filePath(QStringLiteral("no-such-scenario.json"));
    QVERIFY(!loadMcuScenario(missing, scenario, error));
    QVERIFY2(error.startsWith(missing + QStringLiteral(": cannot read")), qPrintable(error));
    QVERIFY(!loadMcuScenario(m_dataDir.path(), scenario, error));
    QVERIFY2(error.startsWith(m_dataDir.path()), qPrintable(error));
}

QTEST_GUILESS_MAIN(TestSerialPortObj)
#include "tst_serialportobj.moc"
