// The two tools a user gets, run as the user runs them: canbox-sim plays a CAN box on
// a pseudo-terminal, canbus-host loads the built plug-in on it. The tests read what
// they print and what the simulated box writes on the wire.

#include <QtTest>

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "framefamily.h"

#ifdef CANBUS_HAVE_BOXSIM
#include <QSignalSpy>

#include "boxsimulator.h"
#include "framesplitter.h"
#include "hexbytes.h"
#endif

using canbus::FrameFamily;

namespace {

constexpr int kRunTimeoutMs = 60000;

QString toolPath(const char* name)
{
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QStringLiteral("../tools/%1/%1").arg(QLatin1String(name)));
}

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

struct Run
{
    bool finished = false;
    int exitCode = -1;
    QString out;
    QString err;
};

// A QProcess that starts its child with a plain fork. QProcess itself clones with a
// pidfd where the kernel has one; qemu's user-mode emulation, which runs this suite
// in a cross build, passes Qt's check for that but refuses the clone, and the start
// fails. With a subclass Qt falls back to fork(), which works natively and emulated.
class ToolProcess : public QProcess
{
protected:
    void setupChildProcess() override {}
};

// Starts a tool. In a cross build the suite itself runs under an emulator, which does
// not follow it into the programs it starts: they are started under it too.
void startTool(QProcess& p, const QString& program, const QStringList& args)
{
    const QStringList emulator =
        QString::fromLocal8Bit(qgetenv("CANBUS_TOOL_EMULATOR")).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (emulator.isEmpty())
        p.start(program, args);
    else
        p.start(emulator.first(), emulator.mid(1) + QStringList{program} + args);
}

Run run(const QString& program, const QStringList& args, const QByteArray& input = QByteArray())
{
    ToolProcess p;
    startTool(p, program, args);
    Run r;
    if (!p.waitForStarted(kRunTimeoutMs))
        return r;
    p.write(input);
    p.closeWriteChannel();
    r.finished = p.waitForFinished(kRunTimeoutMs) && p.exitStatus() == QProcess::NormalExit;
    r.exitCode = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

// A simulator running in the background on a new pseudo-terminal: canbox-sim by
// default, or mcu-sim, each of which names its port on a line of its own.
class Sim
{
public:
    Sim() = default;
    Sim(const char* tool, const QStringList& portLines)
        : m_tool(tool), m_portLines(portLines)
    {
    }

    ~Sim()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.terminate();
            if (!m_process.waitForFinished(5000))
                m_process.kill();
            m_process.waitForFinished(5000);
        }
    }

    // Starts it and waits for the line that names its port, a new pty or a device.
    bool start(const QStringList& args)
    {
        startTool(m_process, toolPath(m_tool), args);
        if (!m_process.waitForStarted(kRunTimeoutMs))
            return false;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < kRunTimeoutMs) {
            while (m_process.canReadLine()) {
                const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
                m_output += line + QLatin1Char('\n');
                for (const QString& kind : m_portLines) {
                    if (line.startsWith(kind)) {
                        m_port = line.mid(kind.size());
                        return true;
                    }
                }
            }
            if (!m_process.waitForReadyRead(1000) && m_process.state() == QProcess::NotRunning)
                return false;
        }
        return false;
    }

    QString port() const { return m_port; }

    // Everything it printed; stops it first so that nothing is missing.
    QString output()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.terminate();
            m_process.waitForFinished(kRunTimeoutMs);
        }
        m_output += QString::fromUtf8(m_process.readAllStandardOutput());
        return m_output;
    }

private:
    const char* m_tool = "canbox-sim";
    QStringList m_portLines{QStringLiteral("canbox-sim: pty "), QStringLiteral("canbox-sim: device ")};
    ToolProcess m_process;
    QString m_port;
    QString m_output;
};

Sim mcuSim()
{
    return Sim("mcu-sim", {QStringLiteral("MCU simulator on ")});
}

// The head unit's end of the simulator's pty, opened raw as a serial port would be.
class HeadUnitEnd
{
public:
    explicit HeadUnitEnd(const QString& path)
        : HeadUnitEnd(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
    }
    // Takes over an open descriptor.
    explicit HeadUnitEnd(int fd)
        : m_fd(fd)
    {
        termios raw{};
        if (m_fd >= 0 && ::tcgetattr(m_fd, &raw) == 0) {
            ::cfmakeraw(&raw);
            ::tcsetattr(m_fd, TCSANOW, &raw);
        }
    }
    ~HeadUnitEnd()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }

    bool isOpen() const { return m_fd >= 0; }
    bool write(const QByteArray& bytes)
    {
        return ::write(m_fd, bytes.constData(), size_t(bytes.size())) == bytes.size();
    }
    // What arrives until at least `minBytes` are in or nothing more comes for `quietMs`.
    QByteArray read(int minBytes, int quietMs)
    {
        QByteArray got;
        for (;;) {
            pollfd p{m_fd, POLLIN, 0};
            if (::poll(&p, 1, quietMs) <= 0 || !(p.revents & POLLIN))
                return got;
            char chunk[256];
            const ssize_t n = ::read(m_fd, chunk, sizeof chunk);
            if (n <= 0)
                return got;
            got.append(chunk, int(n));
            if (minBytes > 0 && got.size() >= minBytes)
                return got;
        }
    }

private:
    int m_fd;
};

// The JSON objects of canbus-host --json whose "event" is `event`.
QList<QJsonObject> events(const QString& output, const QString& event)
{
    QList<QJsonObject> found;
    for (const QString& line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QJsonObject o = QJsonDocument::fromJson(line.toUtf8()).object();
        if (o.value(QLatin1String("event")).toString() == event)
            found.append(o);
    }
    return found;
}

bool hasRecord(const QString& output, const QString& record, const QString& field, const QJsonValue& value)
{
    for (const QJsonObject& o : events(output, QStringLiteral("record"))) {
        if (o.value(QLatin1String("record")).toString() == record
            && o.value(QLatin1String("changed")).toObject().value(field) == value)
            return true;
    }
    return false;
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(content);
}

} // namespace

class TestTools : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void badArgumentsFail_data();
    void badArgumentsFail();
    void malformedScenarioFails_data();
    void malformedScenarioFails();
    void scenarioMakesFrames_data();
    void scenarioMakesFrames();
    void shippedScenariosAreSound();

    void boxAnswersTheHeadUnit_data();
    void boxAnswersTheHeadUnit();

    void simLoopsAndLinks();
    void simPlaysOnADevice();

    void hostShowsClimateOfTheScenario();
    void hostShowsKeysAndSurvivesGarbage();
    void hostTakesCommands();
    void hostShowsRadarInReverse();
    void hostOutlivesTheBox();
    void hostUpdatesTheMcu_data();
    void hostUpdatesTheMcu();
    void hostShowsTheMcu();

#ifdef CANBUS_HAVE_BOXSIM
    void splitterCutsAnyWrite_data();
    void splitterCutsAnyWrite();
    void simulatorAcknowledgesAsTheFamily_data();
    void simulatorAcknowledgesAsTheFamily();
    void simulatorWaitsForConnect();
#endif

private:
    QTemporaryDir m_dir;
    QString m_emptyScenarios;
};

void TestTools::initTestCase()
{
    for (const char* tool : {"canbox-sim", "canbus-host"})
        QVERIFY2(QFileInfo(toolPath(tool)).isExecutable(), qPrintable(toolPath(tool) + QStringLiteral(" is not built")));
    QVERIFY(m_dir.isValid());
    // A scenario folder with nothing in it: the box only answers.
    m_emptyScenarios = m_dir.filePath(QStringLiteral("none"));
    QVERIFY(QDir().mkpath(m_emptyScenarios));
}

void TestTools::badArgumentsFail_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");

    const QString sim = QStringLiteral("canbox-sim");
    const QString host = QStringLiteral("canbus-host");
    QTest::addRow("sim unknown protocol") << sim << QStringList{"--protocol", "52"} << 2 << "no vehicle protocol 52";
    QTest::addRow("sim protocol not a number") << sim << QStringList{"-p", "x7"} << 2 << "positive whole number";
    QTest::addRow("sim unknown option") << sim << QStringList{"--bogus"} << 2 << "bogus";
    QTest::addRow("sim link with device") << sim << QStringList{"--device", "/dev/null", "--link", "/tmp/x"} << 2 << "--link";
    QTest::addRow("sim missing device") << sim << QStringList{"--device", "/nonexistent/ttyX"} << 1 << "cannot open";
    QTest::addRow("host protocol not a number") << host << QStringList{"--protocol", "x"} << 2 << "no vehicle protocol 'x'";
    // Known only once the module has looked for a driver.
    QTest::addRow("host unknown protocol") << host << QStringList{"--protocol", "99", "--port", "/dev/null"} << 2
                                           << "no vehicle protocol 99";
    QTest::addRow("host missing port") << host << QStringList{"--port", "/nonexistent/ttyX"} << 1 << "no serial port";
    QTest::addRow("host missing plug-in")
        << host << QStringList{"--plugin", "/nonexistent/p.so", "--port", "/dev/null"} << 1 << "no plug-in";
    // A file that exists but is no plug-in: the loader refuses it.
    QTest::addRow("host not a plug-in")
        << host << QStringList{"--plugin", toolPath("canbox-sim"), "--port", "/dev/null"} << 1 << "cannot load";
}

void TestTools::badArgumentsFail()
{
    QFETCH(QString, tool);
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const Run r = run(toolPath(qPrintable(tool)), args);
    QVERIFY2(r.finished, "a bad argument must end the tool, not crash or hang it");
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
}

void TestTools::malformedScenarioFails_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("message");

    QTest::addRow("cut short") << QByteArray("{\"steps\": [\n{\"type\": ") << "not valid JSON at line 2";
    QTest::addRow("no steps") << QByteArray("{}") << "no \"steps\"";
    QTest::addRow("unknown top key") << QByteArray("{\"stpes\": []}") << "unknown key \"stpes\"";
    QTest::addRow("unknown step key") << QByteArray("[{\"type\": \"73\"}, {\"type\": \"73\", \"dealy\": 5}]")
                                      << "step 2: unknown key \"dealy\"";
    QTest::addRow("neither type nor raw") << QByteArray("[{\"delay\": 5}]") << "needs either";
    QTest::addRow("data on a raw step") << QByteArray("[{\"raw\": \"00\", \"data\": \"01\"}]") << "belongs to a typed step";
    QTest::addRow("type above a byte") << QByteArray("[{\"type\": 300}]") << "from 0 to 255";
    QTest::addRow("data not hex") << QByteArray("[{\"type\": \"73\", \"data\": \"01 zz\"}]") << "'zz' is not hex bytes";
    QTest::addRow("negative delay") << QByteArray("[{\"type\": \"73\", \"delay\": -1}]") << "\"delay\" must be a whole number";
    QTest::addRow("empty raw") << QByteArray("[{\"raw\": \"\"}]") << "has no bytes";
    QTest::addRow("too much data") << "[{\"type\": \"73\", \"data\": \"" + QByteArray(251, 'a').replace("a", "00 ") + "\"}]"
                                   << "at most 250";
    QTest::addRow("bad handshake") << QByteArray("{\"steps\": [], \"handshake\": [{\"type\": \"x\"}]}") << "handshake step 1";
    QTest::addRow("other protocol") << QByteArray("{\"protocol\": 28, \"steps\": []}") << "written for protocol 28";
}

void TestTools::malformedScenarioFails()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, message);
    const QString path = m_dir.filePath(QStringLiteral("bad.json"));
    writeFile(path, json);
    const Run r = run(toolPath("canbox-sim"), {"--protocol", "27", "--check", "--scenario", path});
    QVERIFY(r.finished);
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
    QVERIFY2(r.err.contains(path), "the message names the file");
}

void TestTools::scenarioMakesFrames_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("wire");

    // Start, length and checksum come from the protocol's frame family.
    QTest::addRow("aa550273010277") << 27 << QByteArray("[{\"type\": \"73\", \"data\": \"01 02\"}]") << "aa 55 02 73 01 02 77";
    QTest::addRow("2e8101017c") << 28 << QByteArray("[{\"type\": 129, \"data\": [1]}]") << "2e 81 01 01 7c";
    QTest::addRow("fd0509020313") << 83 << QByteArray("[{\"type\": \"09\", \"data\": \"0x02,0x03\"}]") << "fd 05 09 02 03 13";
    QTest::addRow("5aa5023d020141") << 120 << QByteArray("[{\"type\": \"3d\", \"data\": [\"02\", 1]}]") << "5a a5 02 3d 02 01 41";
    // A raw step goes out as written, whatever the family.
    QTest::addRow("raw 1234") << 27 << QByteArray("[{\"raw\": \"12, 0x34\"}]") << "12 34";
}

void TestTools::scenarioMakesFrames()
{
    QFETCH(int, protocol);
    QFETCH(QByteArray, json);
    QFETCH(QString, wire);
    const QString path = m_dir.filePath(QStringLiteral("good.json"));
    writeFile(path, json);
    const Run r = run(toolPath("canbox-sim"), {"-p", QString::number(protocol), "--check", "-s", path});
    QVERIFY(r.finished);
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.out.contains(wire), qPrintable(r.out));
}

void TestTools::shippedScenariosAreSound()
{
    const QDir dir(QStringLiteral(CANBUS_SOURCE_DIR "/scenarios"));
    // A box's scenarios sit in a folder named by the protocol's id.
    QStringList protocols = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    protocols = protocols.filter(QRegularExpression(QStringLiteral("^[0-9]+$")));
    QVERIFY(protocols.contains(QLatin1String("27")));
    for (const QString& protocol : protocols) {
        const Run r = run(toolPath("canbox-sim"), {"-p", protocol, "--check", "--scenario-dir", dir.path()});
        QVERIFY(r.finished);
        QVERIFY2(r.exitCode == 0, qPrintable(protocol + QLatin1String(": ") + r.err));
        for (const QString& file : QDir(dir.filePath(protocol)).entryList({QStringLiteral("*.json")}))
            QVERIFY2(r.out.contains(file + QLatin1Char(':')), qPrintable(file));
    }
}

void TestTools::boxAnswersTheHeadUnit_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QList<QByteArray>>("writes");
    QTest::addColumn<QByteArray>("replyStart");
    QTest::addColumn<QString>("printed");

    // The connect frame, split over two writes: acknowledged, then the box's version.
    QTest::addRow("2e8101017c split") << 28 << QList<QByteArray>{hex("2e81"), hex("01017c")}
                                      << hex("ff2e300e") << "recv  2E 81: 01  (2e 81 01 01 7c)  connect";
    QTest::addRow("2e8101017d") << 28 << QList<QByteArray>{hex("2e8101017d")} << hex("f0") << "bad checksum";
    QTest::addRow("aa5501410041") << 27 << QList<QByteArray>{hex("aa5501"), hex("41"), hex("0041")}
                                  << hex("aa5501ff4140") << "recv  AA55 41: 00";
    QTest::addRow("aa5501410042") << 27 << QList<QByteArray>{hex("aa5501410042")} << hex("aa5501fe413f") << "bad checksum";
    QTest::addRow("5aa5023d020141") << 120 << QList<QByteArray>{hex("5aa5023d020141")} << hex("ff") << "recv  5AA5 3d: 02 01";
    // The FD boxes don't acknowledge: a later frame of the box would come first.
    QTest::addRow("fd0509020313") << 83 << QList<QByteArray>{hex("fd0509"), hex("020313")} << QByteArray()
                                  << "recv  FD8 09: 02 03";
    QTest::addRow("junk 1234") << 27 << QList<QByteArray>{hex("1234")} << QByteArray() << "recv  junk  (12 34)";
}

void TestTools::boxAnswersTheHeadUnit()
{
    QFETCH(int, protocol);
    QFETCH(QList<QByteArray>, writes);
    QFETCH(QByteArray, replyStart);
    QFETCH(QString, printed);

    Sim sim;
    QVERIFY(sim.start({"-p", QString::number(protocol), "--scenario-dir", m_emptyScenarios, "--duration", "20"}));
    HeadUnitEnd headUnit(sim.port());
    QVERIFY(headUnit.isOpen());
    for (const QByteArray& chunk : writes) {
        QVERIFY(headUnit.write(chunk));
        QTest::qWait(30);   // separate reads on the box's side
    }
    const QByteArray reply = headUnit.read(replyStart.size(), replyStart.isEmpty() ? 500 : 3000);
    QVERIFY2(reply.startsWith(replyStart), qPrintable(reply.toHex(' ')));
    if (replyStart.isEmpty())
        QVERIFY2(reply.isEmpty(), qPrintable(reply.toHex(' ')));
    const QString out = sim.output();
    QVERIFY2(out.contains(printed), qPrintable(out));
}

void TestTools::simLoopsAndLinks()
{
    const QString scenario = m_dir.filePath(QStringLiteral("one.json"));
    writeFile(scenario, R"([{"delay": 100, "type": "47", "data": "01"}])");
    const QString link = m_dir.filePath(QStringLiteral("canbox"));
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", scenario, "--loop", "--link", link, "--duration", "30"}));
    QCOMPARE(QFileInfo(link).symLinkTarget(), sim.port());

    HeadUnitEnd headUnit(link);
    QVERIFY(headUnit.isOpen());
    const QByteArray frame = hex("aa5501470148");
    const QByteArray got = headUnit.read(3 * frame.size(), 5000);
    QVERIFY2(got.startsWith(frame + frame + frame), qPrintable(got.toHex(' ')));
    const QString out = sim.output();
    QVERIFY2(!QFileInfo(link).isSymLink(), "the link goes with the box");
    QVERIFY2(out.contains(QLatin1String("canbox-sim: link ")), qPrintable(out));
}

// A serial device counts as connected from the start: an AA 55 box talks at once.
void TestTools::simPlaysOnADevice()
{
    int master = -1;
    int slave = -1;
    char name[256] = {};
    if (::openpty(&master, &slave, name, nullptr, nullptr) != 0)
        QSKIP("no pseudo-terminals on this machine");
    ::close(slave);
    HeadUnitEnd headUnit(master);
    const QString scenario = m_dir.filePath(QStringLiteral("device.json"));
    writeFile(scenario, R"([{"delay": 100, "type": "f0", "data": "31"}])");
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--device", QString::fromLatin1(name), "--scenario", scenario, "--duration", "30"}));
    QCOMPARE(sim.port(), QString::fromLatin1(name));
    const QByteArray got = headUnit.read(6, 5000);
    QCOMPARE(got.toHex(' '), QByteArray("aa 55 01 f0 31 21"));
}

void TestTools::hostShowsClimateOfTheScenario()
{
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", QStringLiteral(CANBUS_SOURCE_DIR "/scenarios/27/climate.json"),
                       "--duration", "30"}));
    const Run host = run(toolPath("canbus-host"), {"-p", "27", "--port", sim.port(), "--json", "--duration", "3"});
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));
    // The scenario's first frame: off, 22 °C; its second: air on with A/C.
    QVERIFY2(hasRecord(host.out, "air", "tempLeft", "22"), qPrintable(host.out));
    QVERIFY2(hasRecord(host.out, "air", "airAC", 1), qPrintable(host.out));
    QVERIFY2(hasRecord(host.out, "body", "outdoorTempTenths", 200), qPrintable(host.out));
    const QString box = sim.output();
    QVERIFY2(box.contains(QLatin1String("recv  ack of 73  (aa 55 01 ff 73 72)")), qPrintable(box));
}

void TestTools::hostShowsKeysAndSurvivesGarbage()
{
    // Noise of every kind first, a key press and a climate frame behind it.
    const QString path = m_dir.filePath(QStringLiteral("garbage.json"));
    writeFile(path, R"([
        {"delay": 200, "raw": "00 ff 2e aa 55 aa 13 37 5a a5 fd"},
        {"delay": 50, "raw": "aa 55 00 73 00"},
        {"delay": 50, "raw": "aa 55 02 73 00 00 00"},
        {"delay": 50, "raw": "aa 55 08 73 00"},
        {"delay": 50, "raw": "aa 55 ff 73 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f"},
        {"delay": 300, "type": "72", "data": "00 00 01 00 00 00 ff ff ff ff ff ff ff ff"},
        {"delay": 100, "type": "72", "data": "00 00 00 00 00 00 ff ff ff ff ff ff ff ff"},
        {"delay": 100, "type": "73", "data": "40 40 19 19 00 00 78 00"}
    ])");
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", path, "--duration", "30"}));
    const Run host = run(toolPath("canbus-host"), {"-p", "27", "--port", sim.port(), "--json", "--duration", "4"});
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));
    QVERIFY2(hasRecord(host.out, "air", "tempLeft", "25"), qPrintable(host.out));

    QList<QPair<int, bool>> keys;
    for (const QJsonObject& o : events(host.out, QStringLiteral("key")))
        keys.append({o.value(QLatin1String("key")).toInt(), o.value(QLatin1String("pressed")).toBool()});
    // Key 1 of this vehicle is the head unit's virtual key 166: down, then up.
    QVERIFY2(keys.contains({166, true}) && keys.contains({166, false}), qPrintable(host.out));
    QVERIFY(keys.indexOf({166, true}) < keys.lastIndexOf({166, false}));
    QVERIFY2(sim.output().contains(QLatin1String("recv  nack of 73")), "the bad frame is refused");
}

void TestTools::hostTakesCommands()
{
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario-dir", m_emptyScenarios, "--duration", "30"}));
    const QByteArray commands = "help\nraw 12 34\n!!\nreverse sideways\nreverse on\n";
    const Run host = run(toolPath("canbus-host"), {"-p", "27", "--port", sim.port(), "--json", "--duration", "2"}, commands);
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));

    int unknown = 0;
    int usage = 0;
    for (const QJsonObject& o : events(host.out, QStringLiteral("error"))) {
        const QString text = o.value(QLatin1String("text")).toString();
        unknown += text.contains(QLatin1String("unknown command '!!'"));
        usage += text.startsWith(QLatin1String("usage: reverse on|off"));
    }
    QCOMPARE(unknown, 1);
    QCOMPARE(usage, 1);
    QCOMPARE(events(host.out, QStringLiteral("command")).size(), 5);
    QVERIFY2(host.out.contains(QLatin1String("KEY VALUE")), "help lists the commands");
    QVERIFY2(sim.output().contains(QLatin1String("recv  junk  (12 34)")), "raw bytes reach the box as typed");
}

void TestTools::hostShowsRadarInReverse()
{
    // The radar of this vehicle only counts in reverse; the command comes first.
    const QString scenario = m_dir.filePath(QStringLiteral("radar.json"));
    writeFile(scenario, R"([{"delay": 800, "type": "72", "data": "00 00 00 00 00 00 ff c8 64 ff ff ff ff ff"}])");
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", scenario, "--duration", "30"}));
    const Run host = run(toolPath("canbus-host"), {"-p", "27", "--port", sim.port(), "--json", "--duration", "3"},
                         "reverse on\n");
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));
    QVERIFY2(hasRecord(host.out, "radar", "radarRearLeftMid", 8), qPrintable(host.out));
    QVERIFY2(hasRecord(host.out, "radar", "radarRearRightMid", 4), qPrintable(host.out));
}

void TestTools::hostOutlivesTheBox()
{
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", QStringLiteral(CANBUS_SOURCE_DIR "/scenarios/27/climate.json"),
                       "--duration", "1.5"}));
    const Run host = run(toolPath("canbus-host"), {"-p", "27", "--port", sim.port(), "--json", "--duration", "3"});
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));
    QVERIFY2(hasRecord(host.out, "air", "tempLeft", "22"), qPrintable(host.out));
}

#ifdef CANBUS_HAVE_BOXSIM

Q_DECLARE_METATYPE(canbox::LinkItem::Kind)
Q_DECLARE_METATYPE(canbus::FrameFamily)

void TestTools::splitterCutsAnyWrite_data()
{
    QTest::addColumn<FrameFamily>("family");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QList<canbox::LinkItem::Kind>>("kinds");
    using K = canbox::LinkItem;
    QTest::addRow("2e8101017c ff f0") << FrameFamily::Start2E << hex("2e8101017cfff0")
                                      << QList<K::Kind>{K::Frame, K::Ack, K::Nack};
    QTest::addRow("1234 2e8101017c") << FrameFamily::Start2E << hex("12342e8101017c") << QList<K::Kind>{K::Junk, K::Frame};
    QTest::addRow("2e8101017d 2e8101007d") << FrameFamily::Start2E << hex("2e8101017d2e8101007d")
                                           << QList<K::Kind>{K::BadChecksum, K::Frame};
    QTest::addRow("aa5501ff7372 aa5501410041") << FrameFamily::StartAA55 << hex("aa5501ff7372aa5501410041")
                                               << QList<K::Kind>{K::Ack, K::Frame};
    QTest::addRow("aa5501fe7371") << FrameFamily::StartAA55 << hex("aa5501fe7371") << QList<K::Kind>{K::Nack};
    QTest::addRow("ff 5aa5023d020141 fe") << FrameFamily::Start5AA5 << hex("ff5aa5023d020141fe")
                                          << QList<K::Kind>{K::Ack, K::Frame, K::Nack};
    QTest::addRow("fd0509020313 fd0509020313") << FrameFamily::StartFD8 << hex("fd0509020313fd0509020313")
                                               << QList<K::Kind>{K::Frame, K::Frame};
}

// Whatever the size of the reads, the same items come out.
void TestTools::splitterCutsAnyWrite()
{
    QFETCH(FrameFamily, family);
    QFETCH(QByteArray, stream);
    QFETCH(QList<canbox::LinkItem::Kind>, kinds);
    for (int cut = 1; cut <= stream.size(); ++cut) {
        canbox::FrameSplitter splitter(family);
        QList<canbox::LinkItem> items;
        for (int at = 0; at < stream.size(); at += cut)
            items += splitter.feed(stream.mid(at, cut));
        items += splitter.flush();
        QList<canbox::LinkItem::Kind> got;
        QByteArray joined;
        for (const canbox::LinkItem& item : items) {
            got.append(item.kind);
            joined += item.bytes;
        }
        QVERIFY2(got == kinds, qPrintable(QStringLiteral("reads of %1 bytes").arg(cut)));
        QCOMPARE(joined.toHex(), stream.toHex());
    }
}

void TestTools::simulatorAcknowledgesAsTheFamily_data()
{
    QTest::addColumn<FrameFamily>("family");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("reply");
    QTest::addRow("2e2101017c") << FrameFamily::Start2E << canbus::buildFrame(FrameFamily::Start2E, 0x21, {0x01}) << hex("ff");
    QTest::addRow("aa5501410041") << FrameFamily::StartAA55 << hex("aa5501410041") << hex("aa5501ff4140");
    QTest::addRow("5aa5023d020141") << FrameFamily::Start5AA5 << hex("5aa5023d020141") << hex("ff");
    QTest::addRow("fd0509020313") << FrameFamily::StartFD8 << hex("fd0509020313") << QByteArray();
    QTest::addRow("aa5501ff7372") << FrameFamily::StartAA55 << hex("aa5501ff7372") << QByteArray();   // an ack is not answered
}

void TestTools::simulatorAcknowledgesAsTheFamily()
{
    QFETCH(FrameFamily, family);
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, reply);
    canbox::BoxSimulator box(family);
    box.setWaitForConnect(false);
    QSignalSpy sent(&box, &canbox::BoxSimulator::transmit);
    box.linkUp();
    box.receive(frame);
    QTest::qWait(2 * canbox::BoxSimulator::kWriteGapMs);
    QCOMPARE(sent.size(), reply.isEmpty() ? 0 : 1);
    if (!reply.isEmpty())
        QCOMPARE(sent.at(0).at(0).toByteArray().toHex(), reply.toHex());
}

void TestTools::simulatorWaitsForConnect()
{
    canbox::Scenario scenario;
    canbox::ScenarioStep step;
    step.type = 0x24;
    step.data = hex("05");
    scenario.steps = {step};
    canbox::BoxSimulator box(FrameFamily::Start2E);
    box.setScenarios({scenario});
    QSignalSpy sent(&box, &canbox::BoxSimulator::transmit);
    box.linkUp();
    QTest::qWait(100);
    QVERIFY2(sent.isEmpty(), "a 0x2E box is quiet until the head unit connects");
    QVERIFY(!box.isPlaying());

    box.receive(canbus::buildFrame(FrameFamily::Start2E, 0x81, {0x01}));
    QTRY_COMPARE(sent.size(), 3);
    QCOMPARE(sent.at(0).at(0).toByteArray().toHex(), QByteArray("ff"));
    QCOMPARE(quint8(sent.at(1).at(0).toByteArray().at(1)), quint8(0x30));   // the version frame
    QCOMPARE(sent.at(2).at(0).toByteArray().toHex(), canbus::buildFrame(FrameFamily::Start2E, 0x24, {0x05}).toHex());

    // A request for the version frame gets it again.
    sent.clear();
    box.receive(canbus::buildFrame(FrameFamily::Start2E, 0x90, {0x30, 0x00}));
    QTRY_COMPARE(sent.size(), 2);
    QCOMPARE(quint8(sent.at(1).at(0).toByteArray().at(1)), quint8(0x30));
}

#endif // CANBUS_HAVE_BOXSIM

void TestTools::hostUpdatesTheMcu_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("packets");
    QTest::newRow("one byte") << 1 << 1;
    QTest::newRow("one packet and a byte") << 129 << 2;
    QTest::newRow("several thousand bytes") << 5000 << 40;
}

void TestTools::hostUpdatesTheMcu()
{
    QFETCH(int, size);
    QFETCH(int, packets);
    QByteArray firmware(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        firmware[i] = char(i * 7 + i / 256);
    const QString firmwarePath = m_dir.filePath(QStringLiteral("firmware.bin"));
    const QString imagePath = m_dir.filePath(QStringLiteral("image.bin"));
    writeFile(firmwarePath, firmware);
    QFile::remove(imagePath);

    Sim mcu = mcuSim();
    QVERIFY(mcu.start({"--once", "--save-image", imagePath}));
    const Run host = run(toolPath("canbus-host"), {"--mcu-port", mcu.port(), "--mcu-update", firmwarePath});
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.out + host.err));
    // Not a terminal: the bar is drawn a line for each new value, the last one full.
    QVERIFY2(host.out.contains(QLatin1String("update  [") + QString(30, QLatin1Char('#')) + QLatin1String("] 100%")),
             qPrintable(host.out));
    QVERIFY2(host.out.contains(QLatin1String("text=\"Successed\"")), qPrintable(host.out));
    QVERIFY(host.out.contains(QLatin1String("firmware update finished")));

    // The MCU got every packet, the last one filled up with zeroes.
    QVERIFY2(mcu.output().contains(QStringLiteral("update done: %1 packets received").arg(packets)), qPrintable(mcu.output()));
    QFile image(imagePath);
    QVERIFY(image.open(QIODevice::ReadOnly));
    QCOMPARE(image.readAll(), firmware + QByteArray(packets * 128 - size, '\0'));
}

void TestTools::hostShowsTheMcu()
{
    const QString scenario = m_dir.filePath(QStringLiteral("mcu.json"));
    writeFile(scenario, R"({"steps": [
        {"ignition": true},
        {"wait": 100, "key": 14},
        {"wait": 100, "night": true}
    ]})");
    Sim mcu = mcuSim();
    QVERIFY(mcu.start({"--scenario", scenario, "--wait-for-head-unit"}));
    const Run host = run(toolPath("canbus-host"), {"--mcu-port", mcu.port(), "--json", "--duration", "3"});
    QVERIFY(host.finished);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));

    QStringList mcuSignals;
    for (const QJsonObject& o : events(host.out, QStringLiteral("signal"))) {
        if (o.value(QLatin1String("source")).toString() == QLatin1String("mcu"))
            mcuSignals.append(o.value(QLatin1String("name")).toString());
    }
    QVERIFY2(mcuSignals.contains(QLatin1String("accStateChanged")), qPrintable(host.out));
    QVERIFY2(mcuSignals.contains(QLatin1String("setNightModeSig")), qPrintable(host.out));
    const QList<QJsonObject> keys = events(host.out, QStringLiteral("key"));
    QVERIFY2(keys.size() == 2, qPrintable(host.out));
    QCOMPARE(keys.at(0).value(QLatin1String("key")), keys.at(1).value(QLatin1String("key")));
    QVERIFY(keys.at(0).value(QLatin1String("pressed")).toBool());
    QVERIFY(!keys.at(1).value(QLatin1String("pressed")).toBool());

    // The update that can't start: no file.
    const Run missing = run(toolPath("canbus-host"), {"--mcu-port", mcu.port(), "--mcu-update", m_dir.filePath(QStringLiteral("none.bin"))});
    QVERIFY(missing.finished);
    QCOMPARE(missing.exitCode, 1);
    QVERIFY2(missing.out.contains(QLatin1String("Please check file")), qPrintable(missing.out));
}

QTEST_GUILESS_MAIN(TestTools)
#include "tst_tools.moc"
