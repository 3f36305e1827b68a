// The MCU link over a pseudo-terminal, the test playing the microcontroller.

#include <QtTest>

#include <cstring>
#include <fcntl.h>

#include "activitymanager.h"
#include "autosendobj.h"
#include "datasavecontrol.h"
#include "framebuilders.h"
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
using testframes::hex;

namespace {

// A key event as it reaches the device: keyboard number + 768, 1 down or 0 up.
QPair<unsigned long, unsigned long> down(unsigned long number) { return {number + 768, 1}; }
QPair<unsigned long, unsigned long> up(unsigned long number) { return {number + 768, 0}; }

QByteArray ff55(const char* bodyHex) { return mcusim::ff55Frame(hex(bodyHex)); }

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
    void commandFrames_data();
    void commandFrames();
    void ackAndNackBytes();
    void closedPortSendsNothingAndStillWorks();

    void mcuFrames_data();
    void mcuFrames();
    void randomBytesSplitAnywhere();

    void longAndShortPress();
    void missingDevicesAreSilent();
    void heartbeatAndBlink();

    void exampleScenariosPlay();
    void malformedScenariosAreRefused_data();
    void malformedScenariosAreRefused();

private:
    QString effects();

    QTemporaryDir m_dataDir;
    McuTestLink m_mcu;
    QScopedPointer<QSignalSpy> m_night, m_started, m_front, m_mute, m_unmute;
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
    QVERIFY(m_mcu.start());
    auto* activities = tqappframework::ActivityManager::getInstance();
    m_night.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::setNightModeSig));
    m_started.reset(new QSignalSpy(activities, &tqappframework::ActivityManager::activityStarted));
    m_front.reset(new QSignalSpy(activities, &tqappframework::ActivityManager::activityBroughtToFront));
    m_mute.reset(new QSignalSpy(MuteObj::getInstance(), &MuteObj::muteRequested));
    m_unmute.reset(new QSignalSpy(MuteObj::getInstance(), &MuteObj::unMuteRequested));
}

void TestSerialPortObj::cleanup()
{
    m_night.reset();
    m_mcu.stop();
    m_mcu.input().clear();
    for (const QByteArray& path : {mcuKeyDevicePath(), touchDevicePath()})
        m_mcu.input().failOpen(path, false);
    // Whatever the link still wrote must not reach the next case.
    for (int i = 0; i < 100 && !m_mcu.pty().drain(20).isEmpty(); ++i) {
    }
    QFile::remove(DataSaveControl::filePath());   // settings back to their defaults
    resetPlatformForTests();
}

// What the link did, by kind: signals and platform calls, key and touch events, bytes sent.
QString TestSerialPortObj::effects()
{
    QStringList out;
    const QPair<const char*, QSignalSpy*> spies[] = {{"acc", &m_mcu.accSpy()}, {"night", m_night.data()},
        {"start", m_started.data()}, {"front", m_front.data()}, {"mute", m_mute.data()}, {"unmute", m_unmute.data()}};
    for (const auto& spy : spies) {
        for (const QVariantList& args : *spy.second) {
            QStringList words;
            for (const QVariant& v : args)
                words << (v.userType() != QMetaType::QObjectStar ? v.toString()
                          : v.value<QObject*>() == m_mcu.link() ? "link" : "other");
            out << QLatin1String(spy.first) + QLatin1Char(' ') + words.join(QLatin1Char('/'));
        }
    }
    for (const auto& k : m_mcu.keyEvents())
        out << QStringLiteral("key %1 %2").arg(long(k.first) - 768).arg(k.second == 1 ? "down" : k.second ? "?" : "up");
    for (const Call& t : m_mcu.touchEvents()) {
        struct { int x; int y; } p{-1, -1};
        if (t.data.size() == int(sizeof p))
            std::memcpy(&p, t.data.constData(), sizeof p);
        out << QStringLiteral("touch %1 %2,%3").arg(t.request, 0, 16).arg(p.x, 0, 16).arg(p.y, 0, 16);
    }
    const QByteArray sent = m_mcu.takeSent();
    if (!sent.isEmpty())
        out << QStringLiteral("sent ") + QString::fromLatin1(sent.toHex());
    return out.join(QStringLiteral(", "));
}

void TestSerialPortObj::setChecksum_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("expected");
    QTest::addRow("sum wraps") << hex("ff5503ffff00") << hex("ff5503ffff01");
    QTest::addRow("three bytes") << hex("ff5577") << hex("ff5500");
    QTest::addRow("two bytes") << hex("ff55") << hex("ff55");
    QTest::addRow("null") << QByteArray() << QByteArray();
}

void TestSerialPortObj::setChecksum()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, expected);
    SerialPortObj::setChecksum(frame);
    QCOMPARE(frame.toHex(), expected.toHex());
}

// Fixed frames the requests below don't check: repeated ones, parameters, the odd checksum.
void TestSerialPortObj::commandFrames_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("param");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("times");
    struct Row { int type; int param; const char* frame; int times; };
    constexpr Row rows[] = {
        {1, -1, "ff550903010000f0010000fe", 1},  {10, -1, "ff550903070000f001000004", 3},
        {14, -1, "ff550903070400f001000008", 3}, {15, -1, "ff550903080000f001000005", 1},
        {30, 1, "ff5509030e0100f00100000c", 1},  {34, 7, "ff5509030e0600f001000011", 1},
        {35, 1, "ff5509030f0000f00100002b", 1},  {35, 3, "ff5509030f0400f001000010", 1},
        {36, 0, "", 0}, {-1, -1, "", 0}, {30, -1, "", 0}, {30, 3, "", 0}, {35, 4, "", 0},
    };
    for (const Row& r : rows)
        QTest::addRow("%d/%d %s", r.type, r.param, *r.frame ? r.frame : "nothing") << r.type << r.param << hex(r.frame)
                                                                                   << r.times;
}

void TestSerialPortObj::commandFrames()
{
    QFETCH(int, type);
    QFETCH(int, param);
    QFETCH(QByteArray, frame);
    QFETCH(int, times);
    m_mcu.link()->sendDataToSerialPort(type, param);
    if (times > 0)
        QCOMPARE(m_mcu.pty().read(frame.size() * times, 3000).toHex(), frame.repeated(times).toHex());
    // Every repeat is out once the repeater is gone; nothing more may follow.
    QTRY_VERIFY(m_mcu.link()->findChildren<AutoSendObj*>().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestSerialPortObj::ackAndNackBytes()
{
    m_mcu.link()->sendAckNack(true);
    m_mcu.link()->sendAckNack(false);
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray("fff0"));
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

void TestSerialPortObj::mcuFrames_data()
{
    QTest::addColumn<QByteArray>("frames");
    QTest::addColumn<QString>("setup");   // "source=<name>": the info module's source; "<setting>=false"
    QTest::addColumn<QString>("effects");
    auto row = [](const QByteArray& frames, const char* effects, const char* setup = "", const char* note = "") {
        const QByteArray name = (frames.toHex() + ' ' + setup + ' ' + note).simplified();
        QTest::addRow("%s", name.constData()) << frames << QString::fromLatin1(setup) << QString::fromLatin1(effects);
    };
    const QByteArray on = mcusim::ignitionFrame(true);
    using mcusim::keyFrame;
    using mcusim::requestFrame;

    // 0x2E frames: good ones are not acknowledged, bad ones refused with 0xF0.
    row(on, "acc true");
    row(hex("2e090102f3"), "", "", "ignition 2");
    row(hex("2e090101f5") + mcusim::ignitionFrame(false), "acc false, sent f0", "", "bad checksum");
    row(mcusim::nightModeFrame(true) + mcusim::nightModeFrame(false), "night true, night false");
    row(hex("2e080201fef6"), "", "", "not confirmed");
    row(hex("2e080101f5"), "", "", "night too short");
    row(hex("2e0900aaaa") + on, "sent f0", "", "zero length: all buffered goes");
    // Junk before a frame: one byte dropped at a time, and the frame found.
    row(hex("ff00") + on, "acc true");
    row(hex("ff5500") + on, "acc true", "", "no length");
    QByteArray bad = requestFrame(0x06, 0x00);   // would be answered by type 19
    bad[11] = char(bad.at(11) ^ 0x01);
    row(bad + on, "acc true", "", "bad checksum, dropped silently");

    // Keys: the table's ends; 49 and 50 go up at once (the release repeats it); unknown ones are 0.
    row(keyFrame(3, 1) + keyFrame(3, 0), "key 250 down, key 250 up");
    row(keyFrame(49, 1) + keyFrame(49, 0), "key 348 down, key 348 up, key 348 up");
    row(keyFrame(50, 1), "key 349 down, key 349 up");
    row(keyFrame(16, 1) + keyFrame(16, 0), "key 0 down, key 0 up");
    row(keyFrame(14, 2), "", "", "state 2");
    // The release goes to the key pressed last, whichever key it names.
    row(keyFrame(14, 1) + keyFrame(15, 1) + keyFrame(15, 0), "key 167 down, key 166 down, key 166 up");
    row(keyFrame(14, 1) + keyFrame(15, 0), "key 167 down, key 167 up");

    // Touches: x = byte 5 + byte 6's high nibble times 16, y = byte 6's low nibble above byte 7.
    row(ff55("0501341256000000"), "touch 40044be8 134,256");
    row(ff55("0502203158000000"), "touch 40044be9 320,158");
    row(ff55("0503ffffff000000"), "touch 40044bea fff,fff");
    row(ff55("0500010203000000"), "touch 0 1,203");
    row(ff55("050110") + ff55("05011010"), "", "", "too short for a point");

    // The MCU's requests.
    row(requestFrame(0x02, 0x00), "start carplay/1");
    row(requestFrame(0x01, 0x00), "start carlife/0");
    row(requestFrame(0x04, 0x00), "sent ff550903040000f001000001", "source=usb");
    row(requestFrame(0x04, 0x00), "sent ff550903090200f001000008", "source=carplay");
    row(requestFrame(0x04, 0x00), "sent ff550901030000f0010000fe", "", "no info module");
    row(requestFrame(0x05, 0x00), "sent ff550903060100f001000004", "source=carlife");
    row(requestFrame(0x05, 0x00), "sent ff550903060100f001000004", "source=carplay");
    row(requestFrame(0x05, 0x00), "sent ff550903060000f001000003", "source=usb");
    row(requestFrame(0x07, 0x00), "sent ff550903090400f00100000a");
    row(requestFrame(0x09, 0x00), "front carplay");
    row(requestFrame(0x0A, 0x02), "sent ff5509030e0200f00100000d");
    row(requestFrame(0x0A, 0x03), "");
    row(requestFrame(0x0B, 0x01), "mute link/0, sent ff5509030f0100f00100000d", "", "reversing mute by default");
    row(requestFrame(0x0B, 0x01), "sent ff5509030f0100f00100000d", "ReversingMute=false");
    row(requestFrame(0x0B, 0x00), "unmute link/0, sent ff5509030f0300f00100000f", "ReversingMute=false");
    row(requestFrame(0x0C, 0x00), "");
    row(ff55("0104000001010000"), "", "source=usb", "not the fixed bytes");
}

void TestSerialPortObj::mcuFrames()
{
    QFETCH(QByteArray, frames);
    QFETCH(QString, setup);
    QFETCH(QString, effects);
    const QString name = setup.section(QLatin1Char('='), 0, 0);
    const QString value = setup.section(QLatin1Char('='), 1);
    if (name == QLatin1String("source")) {
        auto info = QSharedPointer<InfoModule>::create();
        info->setCurrentSource(value);
        tqappframework::ModuleManager::self()->registerModule(QStringLiteral("info"), info);
    } else if (!name.isEmpty()) {
        DataSaveControl::saveSettingData(name, value == QLatin1String("true"));
    }
    QVERIFY(m_mcu.send(frames));
    QVERIFY(m_mcu.resync());
    QCOMPARE(this->effects(), effects);
    // The version of the frames that brought the link back in step is kept as text.
    QCOMPARE(DataSaveControl::readTempData(QStringLiteral("MCUVERSION")).toString(), m_mcu.link()->getMcuVersion());
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
        for (int at = 0, n = 0; at < bytes.size(); at += n) {
            n = 1 + int(random.bounded(40));
            QVERIFY(m_mcu.send(bytes.mid(at, n)));
            if (random.bounded(4) == 0)
                QCoreApplication::processEvents();
        }
        QVERIFY2(m_mcu.resync(), qPrintable(QStringLiteral("round %1").arg(round)));
    }
    // Whether a touch survives the noise depends on where the reads broke, so one more
    // comes clean: the touch device is then surely in use.
    QVERIFY(m_mcu.send(mcusim::touchFrame(2, 10, 20)));
    QVERIFY(m_mcu.sync());
    // Whatever was found in the noise reached the devices sanely: each key event opens
    // the key device read-write and closes it, the touch device is opened once and kept.
    QList<int> touchFds;
    for (const Call& call : m_mcu.input().calls(Call::Open)) {
        QVERIFY(call.flags == O_RDWR && (call.path == mcuKeyDevicePath() || call.path == touchDevicePath()));
        if (call.path == touchDevicePath())
            touchFds << call.fd;
    }
    QCOMPARE(m_mcu.input().calls(Call::Open).size() - touchFds.size(), m_mcu.keyEvents().size());
    QCOMPARE(m_mcu.input().openDescriptors(), touchFds);
    QVERIFY(touchFds.size() == 1 && !m_mcu.touchEvents().isEmpty());
    for (const Call& call : m_mcu.touchEvents())
        QCOMPARE(call.fd, touchFds.at(0));
    m_mcu.stop();
    QVERIFY(m_mcu.input().openDescriptors().isEmpty());
}

void TestSerialPortObj::longAndShortPress()
{
    // Held: the long key goes down and up, and the release falls to the last key.
    QVERIFY(m_mcu.send(mcusim::keyFrame(15, 1)));
    QVERIFY(m_mcu.sync());
    QVERIFY(m_mcu.link()->checkKeyLongPressed(true, 149, 167));
    QTRY_COMPARE_WITH_TIMEOUT(m_mcu.keyEvents(), KeyEvents({down(166), down(167), up(167)}), 5000);
    QVERIFY(m_mcu.send(mcusim::keyFrame(15, 0)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.keyEvents().mid(3), KeyEvents({up(166)}));
    // Let go in time: the release takes the pending short key, not the last key's up.
    QVERIFY(m_mcu.link()->checkKeyLongPressed(true, 149, 167));
    QCOMPARE(m_mcu.keyEvents().size(), 4);
    QVERIFY(m_mcu.send(mcusim::keyFrame(14, 0)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(m_mcu.keyEvents().mid(4), KeyEvents({down(149), up(149)}));
    QVERIFY(!m_mcu.link()->checkKeyLongPressed(false, 0, 0));   // nothing pending any more
    QCOMPARE(m_mcu.keyEvents().size(), 6);
}

void TestSerialPortObj::missingDevicesAreSilent()
{
    m_mcu.input().failOpen(mcuKeyDevicePath());
    m_mcu.input().failOpen(touchDevicePath());
    QVERIFY(m_mcu.start());
    m_mcu.input().clear();
    QVERIFY(m_mcu.send(mcusim::keyFrame(14, 1) + mcusim::keyFrame(14, 0) + mcusim::keyFrame(49, 1)
                       + mcusim::touchFrame(1, 100, 100) + mcusim::touchFrame(3, 100, 100)));
    QVERIFY(m_mcu.sync());
    QVERIFY(m_mcu.input().calls(Call::Ioctl).isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
    m_mcu.stop();
    QVERIFY(m_mcu.input().calls(Call::Close).isEmpty());
}

void TestSerialPortObj::heartbeatAndBlink()
{
    auto* control = tqplfctrl::TQPlatformControl::peekInstance();
    QSignalSpy gpio(control, &tqplfctrl::TQPlatformControl::gpioWritten);
    m_mcu.link()->startOnFirstFrameReady();
    m_mcu.link()->startOnFirstFrameReady();   // a second call starts nothing more

    QCOMPARE(m_mcu.pty().read(12, 5000).toHex(), QByteArray("ff5509030d0000f00100000a"));
    QTRY_VERIFY_WITH_TIMEOUT(gpio.count() >= 2, 5000);
    // The LED line goes on and off in turn, and the instance is always given back.
    QCOMPARE(gpio.mid(0, 2), QList<QVariantList>({{1, 60, 1}, {1, 60, 0}}));
    QCOMPARE(control->references(), 0);
}

void TestSerialPortObj::exampleScenariosPlay()
{
    const QDir dir(QStringLiteral(CANBUS_SOURCE_DIR "/scenarios/mcu"));
    const QStringList files = dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    QVERIFY(!files.isEmpty());
    McuScenario scenario;
    QString error;
    for (const QString& file : files) {
        QVERIFY2(loadMcuScenario(dir.filePath(file), scenario, error), qPrintable(error));
        QVERIFY(!scenario.description.isEmpty() && !scenario.frames.isEmpty());
        // Played without its pauses, whatever it sends leaves the link in step.
        for (const McuScenarioFrame& frame : scenario.frames)
            QVERIFY(!frame.label.isEmpty() && m_mcu.send(frame.bytes));
        QVERIFY2(m_mcu.resync(), qPrintable(file));
    }
    const QString missing = m_dataDir.filePath(QStringLiteral("no-such-scenario.json"));
    QVERIFY(!loadMcuScenario(missing, scenario, error));
    QVERIFY2(error.startsWith(missing + QStringLiteral(": cannot read")), qPrintable(error));
}

void TestSerialPortObj::malformedScenariosAreRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    auto row = [](const char* json, const char* error) {
        QTest::addRow("%s", *json ? json : "(empty)") << QByteArray(json) << QString::fromUtf8(error);
    };
    row("", "not valid JSON");
    row("{}", "\"steps\" must be a list");
    row("{\"stepz\": [{\"key\": 1}]}", "unknown field \"stepz\"");
    row("{\"steps\": [{\"key\": 1}], \"loop\": \"yes\"}", "\"loop\" must be true or false");
    row("{\"steps\": [{}]}", "step 1: nothing to send");
    row("{\"steps\": [{\"key\": 300}]}", "step 1: \"key\" must be a whole number from 0 to 255");
    row("{\"steps\": [{\"key\": 1, \"touch\": \"down\"}]}", "step 1: \"key\" and \"touch\" in one step");
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

QTEST_GUILESS_MAIN(TestSerialPortObj)
#include "tst_serialportobj.moc"
