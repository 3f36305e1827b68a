// The tools run as a user runs them: canbox-sim plays a CAN box on a pseudo-terminal,
// canbus-host loads the built plug-in on it, mcu-sim plays the MCU.

#include <QSerialPort>
#include <QtTest>

#include "framebuilders.h"
#include "ptypair.h"
#include "toolrun.h"

#ifdef CANBUS_HAVE_BOXSIM
#include "boxsimulator.h"
#endif

using canbus::FrameFamily;
using testframes::hex;

namespace {

using namespace toolrun;

// What arrives until at least `minBytes` are in or nothing more comes for `quietMs`.
QByteArray readPort(QSerialPort& port, int minBytes, int quietMs)
{
    QByteArray got = port.readAll();
    while ((minBytes == 0 || got.size() < minBytes) && port.waitForReadyRead(quietMs))
        got += port.readAll();
    return got;
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

// The viewer is left out of builds without Qt's widgets.
bool viewerBuilt()
{
    return QFileInfo(toolPath("canbus-viewer")).isExecutable();
}

// The viewer running in the background; what it printed is read as it comes.
class Viewer
{
public:
    // Under xvfb-run when `xvfb` is given, else on Qt's minimal platform.
    void start(const QStringList& args, const QString& xvfb = QString())
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        if (xvfb.isEmpty()) {
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("minimal"));
            m_process.setProcessEnvironment(env);
            startTool(m_process, toolPath("canbus-viewer"), args);
        } else {
            env.remove(QStringLiteral("QT_QPA_PLATFORM"));
            // The window needs neither OpenGL nor a session bus, and the libraries
            // behind them keep memory to the end that the sanitizer build reports.
            env.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), QStringLiteral("none"));
            env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/bus"));
            m_process.setProcessEnvironment(env);
            m_process.start(xvfb, QStringList{"-a", toolPath("canbus-viewer")} + args);
        }
    }
    QString output()
    {
        m_out += QString::fromUtf8(m_process.readAllStandardOutput());
        return m_out;
    }
    QString errors() { return QString::fromUtf8(m_process.readAllStandardError()); }
    // The exit code once it ended by itself, else -1.
    int finish()
    {
        const bool ended = m_process.waitForFinished(kRunTimeoutMs) && m_process.exitStatus() == QProcess::NormalExit;
        output();
        return ended ? m_process.exitCode() : -1;
    }
    ~Viewer()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished(5000);
        }
    }

private:
    ToolProcess m_process;
    QString m_out;
};

#ifdef QT_GUI_LIB
// Whether the image holds a pixel of this colour.
bool hasColour(const QImage& image, QRgb colour)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((image.pixel(x, y) & 0xffffff) == (colour & 0xffffff))
                return true;
        }
    }
    return false;
}
#endif

} // namespace

class TestTools : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void badArgumentsFail_data();
    void badArgumentsFail();
    void scenarioCheck_data();
    void scenarioCheck();
    void shippedScenariosAreSound();

    void boxAnswersTheHeadUnit_data();
    void boxAnswersTheHeadUnit();
    void simPlaysOnItsPort();
    void hostRunsWithTheBox();
    void hostUpdatesTheMcu();
    void hostShowsTheMcu();
    void viewerDrawsTheBox();
    void viewerSeesThePortGoAndReturn();
    void viewerOutlastsGarbage();

#ifdef CANBUS_HAVE_BOXSIM
    void simulatorWaitsForConnect();
#endif

private:
    QTemporaryDir m_dir;
    QString m_emptyScenarios;
};

void TestTools::initTestCase()
{
    for (const char* tool : {"canbox-sim", "canbus-host", "mcu-sim"})
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
    QTest::addRow("sim link with device") << sim << QStringList{"--device", "/dev/null", "--link", "/tmp/x"} << 2 << "--link";
    QTest::addRow("sim missing device") << sim << QStringList{"--device", "/nonexistent/ttyX"} << 1 << "cannot open";
    QTest::addRow("sim record unwritable") << sim << QStringList{"--record", "/nonexistent/x.cap"} << 1 << "cannot write";
    QTest::addRow("host protocol not a number") << host << QStringList{"--protocol", "x"} << 2 << "no vehicle protocol 'x'";
    // Known only once the module has looked for a driver.
    QTest::addRow("host unknown protocol") << host << QStringList{"--protocol", "99", "--port", "/dev/null"} << 2
                                           << "no vehicle protocol 99";
    QTest::addRow("host module log unwritable")
        << host << QStringList{"--port", "/dev/null", "--module-log", "/nonexistent/x.log"} << 1 << "cannot write";
    QTest::addRow("host missing port") << host << QStringList{"--port", "/nonexistent/ttyX"} << 1 << "no serial port";
    QTest::addRow("host missing plug-in")
        << host << QStringList{"--plugin", "/nonexistent/p.so", "--port", "/dev/null"} << 1 << "no plug-in";
    // A file that exists but is no plug-in: the loader refuses it.
    QTest::addRow("host not a plug-in")
        << host << QStringList{"--plugin", toolPath("canbox-sim"), "--port", "/dev/null"} << 1 << "cannot load";
    if (!viewerBuilt())
        return;
    const QString viewer = QStringLiteral("canbus-viewer");
    QTest::addRow("viewer missing port") << viewer << QStringList{"--port", "/nonexistent/ttyX"} << 1 << "no serial port";
    QTest::addRow("viewer unknown protocol") << viewer << QStringList{"-p", "99", "--port", "/dev/null"} << 2
                                             << "no vehicle protocol 99";
    QTest::addRow("viewer delay without a screenshot") << viewer << QStringList{"--screenshot-after", "2"} << 2
                                                       << "needs --screenshot";
    QTest::addRow("viewer delay not seconds")
        << viewer << QStringList{"--screenshot", "x.png", "--screenshot-after", "0"} << 2 << "seconds above 0";
}

void TestTools::badArgumentsFail()
{
    QFETCH(QString, tool);
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const Run r = run(qPrintable(tool), args);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
}

void TestTools::scenarioCheck_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("printed");   // a frame on the wire, or the error
    QTest::addColumn<int>("exitCode");
    auto row = [](const char* name, int protocol, const QByteArray& json, const char* printed, int exitCode) {
        QTest::addRow("%s", name) << protocol << json << QString::fromUtf8(printed) << exitCode;
    };
    // The family of the protocol frames the steps; a raw step goes out as written.
    row("aa550273010277", 27, "[{\"type\": \"73\", \"data\": \"01 02\"}]", "aa 55 02 73 01 02 77", 0);
    row("2e8101017c", 28, "[{\"type\": 129, \"data\": [1]}]", "2e 81 01 01 7c", 0);
    row("fd0509020313", 83, "[{\"type\": \"09\", \"data\": \"0x02,0x03\"}]", "fd 05 09 02 03 13", 0);
    row("5aa5023d020141", 120, "[{\"type\": \"3d\", \"data\": [\"02\", 1]}]", "5a a5 02 3d 02 01 41", 0);
    row("raw 1234", 27, "[{\"raw\": \"12, 0x34\"}]", "12 34", 0);
    row("raw fc041201 summed", 66, "[{\"raw\": \"fc 04 12 01\", \"sum\": true}]", "fc 04 12 01 17", 0);

    row("cut short", 27, "{\"steps\": [\n{\"type\": ", "not valid JSON at line 2", 1);
    row("no steps", 27, "{}", "no \"steps\"", 1);
    row("unknown key", 27, "[{\"type\": \"73\"}, {\"type\": \"73\", \"dealy\": 5}]", "step 2: unknown key \"dealy\"", 1);
    row("neither type nor raw", 27, "[{\"delay\": 5}]", "needs either", 1);
    row("data on a raw step", 27, "[{\"raw\": \"00\", \"data\": \"01\"}]", "belongs to a typed step", 1);
    row("data not hex", 27, "[{\"type\": \"73\", \"data\": \"01 zz\"}]", "'zz' is not hex bytes", 1);
    row("negative delay", 27, "[{\"type\": \"73\", \"delay\": -1}]", "\"delay\" must be a whole number", 1);
    row("sum on a typed step", 66, "[{\"type\": \"31\", \"sum\": true}]", "on a raw step", 1);
    row("empty raw", 27, "[{\"raw\": \"\"}]", "has no bytes", 1);
    row("too much data", 27, "[{\"type\": \"73\", \"data\": \"" + QByteArray(251, 'a').replace("a", "00 ") + "\"}]",
        "at most 250", 1);
    row("bad handshake", 27, "{\"steps\": [], \"handshake\": [{\"type\": \"x\"}]}", "handshake step 1", 1);
    row("other protocol", 27, "{\"protocol\": 28, \"steps\": []}", "written for protocol 28", 1);
}

void TestTools::scenarioCheck()
{
    QFETCH(int, protocol);
    QFETCH(QByteArray, json);
    QFETCH(QString, printed);
    QFETCH(int, exitCode);
    const QString path = m_dir.filePath(QStringLiteral("scenario.json"));
    writeFile(path, json);
    const Run r = run("canbox-sim", {"-p", QString::number(protocol), "--check", "--scenario", path});
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY2((exitCode ? r.err : r.out).contains(printed), qPrintable(r.out + r.err));
    QVERIFY2(!exitCode || r.err.contains(path), "the message names the file");
}

void TestTools::shippedScenariosAreSound()
{
    const QDir dir(QStringLiteral(CANBUS_SOURCE_DIR "/scenarios"));
    // A box's scenarios sit in a folder named by the protocol's id.
    const QStringList protocols = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot).filter(QRegularExpression("^[0-9]+$"));
    QVERIFY(protocols.contains(QLatin1String("27")));
    for (const QString& protocol : protocols) {
        const Run r = run("canbox-sim", {"-p", protocol, "--check", "--scenario-dir", dir.path()});
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
    QSerialPort headUnit(sim.port());
    QVERIFY(headUnit.open(QIODevice::ReadWrite));
    for (const QByteArray& chunk : writes) {
        QVERIFY(headUnit.write(chunk) == chunk.size() && headUnit.waitForBytesWritten(1000));
        QTest::qWait(30);   // separate reads on the box's side
    }
    const QByteArray reply = readPort(headUnit, replyStart.size(), replyStart.isEmpty() ? 500 : 3000);
    QVERIFY2(reply.startsWith(replyStart), qPrintable(reply.toHex(' ')));
    if (replyStart.isEmpty())
        QVERIFY2(reply.isEmpty(), qPrintable(reply.toHex(' ')));
    const QString out = sim.output();
    QVERIFY2(out.contains(printed), qPrintable(out));
}

// On a new pty behind a link, looping; on a device, connected from the start.
void TestTools::simPlaysOnItsPort()
{
    const QString scenario = m_dir.filePath(QStringLiteral("one.json"));
    writeFile(scenario, R"([{"delay": 100, "type": "47", "data": "01"}])");
    const QByteArray frame = hex("aa5501470148");
    const QString link = m_dir.filePath(QStringLiteral("canbox"));
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", scenario, "--loop", "--link", link, "--duration", "30"}));
    QCOMPARE(QFileInfo(link).symLinkTarget(), sim.port());
    QSerialPort headUnit(link);
    QVERIFY(headUnit.open(QIODevice::ReadWrite));
    const QByteArray got = readPort(headUnit, 3 * frame.size(), 5000);
    QVERIFY2(got.startsWith(frame + frame + frame), qPrintable(got.toHex(' ')));
    QVERIFY(sim.output().contains(QLatin1String("canbox-sim: link ")));
    QVERIFY2(!QFileInfo(link).isSymLink(), "the link goes with the box");

    PtyPair device;
    QVERIFY(device.isOpen());
    Sim onDevice;
    QVERIFY(onDevice.start({"-p", "27", "--device", device.slavePath(), "--scenario", scenario, "--duration", "30"}));
    QCOMPARE(onDevice.port(), device.slavePath());
    QCOMPARE(device.read(6, 5000).toHex(), frame.toHex());
}

// The whole road: noise, a key and climate in, typed commands out; the host outlives the box.
void TestTools::hostRunsWithTheBox()
{
    const QString path = m_dir.filePath(QStringLiteral("garbage.json"));
    writeFile(path, R"([
        {"delay": 200, "raw": "00 ff 2e aa 55 aa 13 37 5a a5 fd"},
        {"delay": 50, "raw": "aa 55 00 73 00"},
        {"delay": 50, "raw": "aa 55 02 73 00 00 00"},
        {"delay": 50, "raw": "aa 55 08 73 00"},
        {"delay": 50, "raw": "aa 55 ff 73 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f"},
        {"delay": 300, "type": "72", "data": "00 00 01 00 00 00 ff ff ff ff ff ff ff ff"},
        {"delay": 100, "type": "72", "data": "00 00 00 00 00 00 ff ff ff ff ff ff ff ff"},
        {"delay": 100, "type": "73", "data": "48 40 19 19 00 00 78 00"}
    ])");
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", path, "--duration", "3"}));
    const QByteArray commands = "help\nraw 12 34\n!!\nreverse sideways\nreverse on\n";
    const Run host = run("canbus-host", {"-p", "27", "--port", sim.port(), "--json", "--duration", "5"}, commands);
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));
    QVERIFY2(hasRecord(host.out, "air", "tempLeft", "25"), qPrintable(host.out));
    QVERIFY2(hasRecord(host.out, "air", "airAC", 1), qPrintable(host.out));
    QVERIFY2(hasRecord(host.out, "body", "outdoorTempTenths", 200), qPrintable(host.out));

    QList<QPair<int, bool>> keys;
    for (const QJsonObject& o : events(host.out, QStringLiteral("key")))
        keys.append({o.value(QLatin1String("key")).toInt(), o.value(QLatin1String("pressed")).toBool()});
    // Key 1 of this vehicle is the head unit's virtual key 166: down, then up.
    QVERIFY2(keys.contains({166, true}) && keys.contains({166, false}), qPrintable(host.out));
    QVERIFY(keys.indexOf({166, true}) < keys.lastIndexOf({166, false}));

    QStringList errors;
    for (const QJsonObject& o : events(host.out, QStringLiteral("error")))
        errors << o.value(QLatin1String("text")).toString();
    QCOMPARE(errors.filter(QStringLiteral("unknown command '!!'")).size(), 1);
    QCOMPARE(errors.filter(QRegularExpression(QStringLiteral("^usage: reverse on\\|off"))).size(), 1);
    QCOMPARE(events(host.out, QStringLiteral("command")).size(), 5);
    QVERIFY2(host.out.contains(QLatin1String("KEY VALUE")), "help lists the commands");

    const QString box = sim.output();
    QVERIFY2(box.contains(QLatin1String("recv  ack of 73  (aa 55 01 ff 73 72)")), qPrintable(box));
    QVERIFY2(box.contains(QLatin1String("recv  nack of 73")), "the bad frame is refused");
    QVERIFY2(box.contains(QLatin1String("recv  junk  (12 34)")), "raw bytes reach the box as typed");
}

void TestTools::hostUpdatesTheMcu()
{
    const QByteArray firmware = QByteArray("firmware").repeated(17).left(129);
    const QString firmwarePath = m_dir.filePath(QStringLiteral("firmware.bin"));
    const QString imagePath = m_dir.filePath(QStringLiteral("image.bin"));
    writeFile(firmwarePath, firmware);

    Sim mcu("mcu-sim");
    QVERIFY(mcu.start({"--once", "--save-image", imagePath}));
    const Run host = run("canbus-host", {"--mcu-port", mcu.port(), "--mcu-update", firmwarePath});
    QVERIFY2(host.exitCode == 0, qPrintable(host.out + host.err));
    // Not a terminal: the bar is drawn a line for each new value, the last one full.
    QVERIFY2(host.out.contains(QLatin1String("update  [") + QString(30, QLatin1Char('#')) + QLatin1String("] 100%")),
             qPrintable(host.out));
    QVERIFY2(host.out.contains(QLatin1String("text=\"Successed\"")), qPrintable(host.out));
    QVERIFY(host.out.contains(QLatin1String("firmware update finished")));

    // The MCU got both packets, the last one filled up with zeroes.
    QVERIFY2(mcu.output().contains(QStringLiteral("update done: 2 packets received")), qPrintable(mcu.output()));
    QFile image(imagePath);
    QVERIFY(image.open(QIODevice::ReadOnly));
    QCOMPARE(image.readAll(), firmware + QByteArray(127, '\0'));
}

void TestTools::hostShowsTheMcu()
{
    const QString scenario = m_dir.filePath(QStringLiteral("mcu.json"));
    writeFile(scenario, R"({"steps": [
        {"ignition": true},
        {"wait": 100, "key": 14},
        {"wait": 100, "night": true}
    ]})");
    Sim mcu("mcu-sim");
    QVERIFY(mcu.start({"--scenario", scenario, "--wait-for-head-unit"}));
    const Run host = run("canbus-host", {"--mcu-port", mcu.port(), "--json", "--duration", "3"});
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));

    QStringList mcuSignals;
    for (const QJsonObject& o : events(host.out, QStringLiteral("signal"))) {
        if (o.value(QLatin1String("source")).toString() == QLatin1String("mcu"))
            mcuSignals.append(o.value(QLatin1String("name")).toString());
    }
    QVERIFY2(mcuSignals.contains(QLatin1String("accStateChanged")), qPrintable(host.out));
    QVERIFY2(mcuSignals.contains(QLatin1String("setNightModeSig")), qPrintable(host.out));
    QStringList keys;
    for (const QJsonObject& o : events(host.out, QStringLiteral("key")))
        keys << QStringLiteral("%1 %2").arg(o.value("key").toInt()).arg(o.value("pressed").toBool());
    QCOMPARE(keys, QStringList({"167 1", "167 0"}));   // down, then up

    // The update that can't start: no file.
    const Run missing = run("canbus-host", {"--mcu-port", mcu.port(), "--mcu-update", m_dir.filePath("none.bin")});
    QCOMPARE(missing.exitCode, 1);
    QVERIFY2(missing.out.contains(QLatin1String("Please check file")), qPrintable(missing.out));
}

// Under a real X server: the window is drawn from what the box sent and saved.
void TestTools::viewerDrawsTheBox()
{
    if (!viewerBuilt())
        QSKIP("canbus-viewer is not built here (no Qt widgets)");
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("xvfb-run"));
    if (xvfb.isEmpty())
        QSKIP("xvfb-run is not installed (Debian package xvfb)");
    const QString picture = m_dir.filePath(QStringLiteral("viewer.png"));
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", QStringLiteral(CANBUS_TEST_DATA_DIR "/viewer.json"), "--duration", "30"}));
    Viewer viewer;
    viewer.start({"-p", "27", "--port", sim.port(), "--reversing", "--screenshot", picture, "--screenshot-after", "3"}, xvfb);
    QCOMPARE(viewer.finish(), 0);
    QVERIFY2(viewer.output().contains(QLatin1String("port: receiving")), qPrintable(viewer.output()));
    QVERIFY2(!viewer.output().contains(QLatin1String("error:")), qPrintable(viewer.output()));

#ifdef QT_GUI_LIB
    QImage image(picture);
    QVERIFY2(!image.isNull(), "a PNG was saved");
    QVERIFY(image.width() >= 400 && image.height() >= 300);
    // The scenario opens the bonnet and two doors and puts something behind the car
    // one bar away: the open colour and the nearest bar's red are on the picture.
    QVERIFY2(hasColour(image, qRgb(0xe0, 0x40, 0x30)), "open doors are drawn");
    QVERIFY2(hasColour(image, QColor::fromHsvF(0.0, 0.85, 0.95).rgb()), "the nearest radar bar is drawn");
#else
    QVERIFY(QFileInfo(picture).size() > 0);
#endif
}

// The box goes (its pseudo-terminal closes) and a new one comes on the same link.
void TestTools::viewerSeesThePortGoAndReturn()
{
    if (!viewerBuilt())
        QSKIP("canbus-viewer is not built here (no Qt widgets)");
    const QString link = m_dir.filePath(QStringLiteral("viewerbox"));
    const QStringList box{"-p", "27", "--scenario", "doors", "--loop", "--link", link};
    Viewer viewer;
    {
        Sim first;
        QVERIFY(first.start(box));
        viewer.start({"-p", "27", "--port", link, "--duration", "60"});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.output().contains(QLatin1String("port: receiving")), kRunTimeoutMs);
    }
    QTRY_VERIFY_WITH_TIMEOUT(viewer.output().contains(QLatin1String("port: port lost")), kRunTimeoutMs);
    Sim second;
    QVERIFY(second.start(box));
    QTRY_VERIFY_WITH_TIMEOUT(viewer.output().contains(QLatin1String("port: port back")), kRunTimeoutMs);
    const QString out = viewer.output();
    const int lost = out.indexOf(QLatin1String("port: port lost"));
    QTRY_VERIFY_WITH_TIMEOUT(viewer.output().indexOf(QLatin1String("port: receiving"), lost) > lost, kRunTimeoutMs);
    QVERIFY2(second.output().contains(QLatin1String("the head unit opened the port")), "the viewer reopened the link");
}

// Noise without end and no frame in it: the window still answers, and is saved on time.
void TestTools::viewerOutlastsGarbage()
{
    if (!viewerBuilt())
        QSKIP("canbus-viewer is not built here (no Qt widgets)");
    QByteArray steps;
    quint32 seed = 12345;
    for (int i = 0; i < 64; ++i) {
        QByteArray noise;
        for (int j = 0; j < 48; ++j) {
            seed = seed * 1103515245u + 12345u;
            noise.append(char(seed >> 24));
        }
        steps += QByteArray(steps.isEmpty() ? "" : ",\n") + "{\"delay\": 0, \"raw\": \"" + noise.toHex(' ') + "\"}";
    }
    const QString path = m_dir.filePath(QStringLiteral("noise.json"));
    writeFile(path, "[" + steps + "]");
    const QString picture = m_dir.filePath(QStringLiteral("noise.png"));
    Sim sim;
    QVERIFY(sim.start({"-p", "27", "--scenario", path, "--loop", "--no-wait", "--quiet", "--duration", "30"}));
    Viewer viewer;
    viewer.start({"-p", "27", "--port", sim.port(), "--screenshot", picture, "--screenshot-after", "2"});
    QCOMPARE(viewer.finish(), 0);
    QVERIFY2(QFileInfo(picture).size() > 0, qPrintable(viewer.output() + viewer.errors()));
    QVERIFY2(viewer.output().contains(QLatin1String("screenshot ")), qPrintable(viewer.output()));
}

#ifdef CANBUS_HAVE_BOXSIM

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

QTEST_GUILESS_MAIN(TestTools)
#include "tst_tools.moc"
