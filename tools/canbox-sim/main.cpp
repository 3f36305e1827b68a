// canbox-sim: a CAN box on a pseudo-terminal or a serial port, for working on the
// head unit's canbus module without a car.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

#include "boxeventtext.h"
#include "boxlink.h"
#include "boxsimulator.h"
#include "canbuscatalogue.h"
#include "capturefile.h"
#include "driverfactory.h"
#include "hexbytes.h"
#include "installedpath.h"
#include "quitonsignal.h"
#include "scenario.h"

using namespace canbox;

namespace {

constexpr int kDefaultProtocol = 27;
constexpr double kMaxDurationS = 7 * 24 * 3600.0;

// The scenarios installed beside an installed simulator, else the source tree's.
QString defaultScenarioDir()
{
    return canbox::installedOrBuilt(CANBOX_INSTALLED_SCENARIO_DIR, CANBOX_SCENARIO_DIR);
}

enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

const char kDescription[] =
    "Plays a CAN box for the canbus module, so that a head unit can be tried without a car.\n"
    "\n"
    "By default it makes a new pseudo-terminal and prints its path on the first line:\n"
    "  canbox-sim: pty /dev/pts/7\n"
    "Point the head unit at it (canbus-host --port /dev/pts/7, or CANBUS_BOX_PORT=/dev/pts/7).\n"
    "As soon as the head unit opens the port the box plays its scenarios (for the 0x2E\n"
    "protocols: once the head unit has sent its connect frame). It acknowledges the head\n"
    "unit's frames as the protocol's frame family requires and prints every frame both\n"
    "ways: 'send' for what the box writes, 'recv' for what it reads.\n"
    "\n"
    "Scenarios are JSON files in <scenario-dir>/<protocol>/, e.g. scenarios/27/climate.json:\n"
    "  {\"steps\": [{\"delay\": 300, \"type\": \"73\", \"data\": \"48 40 16 16 63 63 78 00\",\n"
    "              \"note\": \"air on\"}]}\n"
    "'delay' is in ms before the step; strings are hex, numbers decimal; the box adds start,\n"
    "length and checksum. {\"raw\": \"12 34 56\"} sends bytes exactly as written;\n"
    "with \"sum\": true the family's checksum follows them.\n"
    "\n"
    "Examples:\n"
    "  canbox-sim                                 protocol 27, all its scenarios\n"
    "  canbox-sim --scenario climate --loop       one scenario, again and again\n"
    "  canbox-sim -p 28 --link /tmp/canbox        protocol 28; /tmp/canbox links to the pty\n"
    "  canbox-sim --device /dev/ttyUSB0           a real serial port at the protocol's rate\n"
    "  canbox-sim --record drive.cap              also keep what crossed the line, for canbus-replay\n"
    "  canbox-sim --check --scenario my.json      show the frames a scenario file makes";

struct Options
{
    int protocol = kDefaultProtocol;
    QStringList scenarios;
    QString scenarioDir;
    QString device;
    QString link;
    QString record;
    bool loop = false;
    bool noWait = false;
    bool quiet = false;
    bool check = false;
    bool list = false;
    double durationS = 0;
};

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void printLine(const QString& line)
{
    out() << line << '\n';
    out().flush();
}

void printError(const QString& text)
{
    std::fprintf(stderr, "canbox-sim: error: %s\n", qUtf8Printable(text));
}

// Usage errors end the program with the hint to --help.
[[noreturn]] void usageError(const QString& text)
{
    printError(text);
    std::fprintf(stderr, "Try 'canbox-sim --help'.\n");
    std::exit(ExitUsage);
}

int positiveInt(const QString& text, const char* option)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < 1)
        usageError(QStringLiteral("--%1 wants a positive whole number, not '%2'").arg(QLatin1String(option), text));
    return value;
}

Options parseOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(kDescription));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {{QStringLiteral("p"), QStringLiteral("protocol")},
         QStringLiteral("Vehicle protocol: its id in the catalogue (default 27)."), QStringLiteral("id")},
        {{QStringLiteral("s"), QStringLiteral("scenario")},
         QStringLiteral("Scenario to play: a file, or a name in <scenario-dir>/<id>/. May be given "
                        "more than once. Default: every scenario of the protocol, by name."),
         QStringLiteral("file|name")},
        {QStringLiteral("scenario-dir"),
         QStringLiteral("Folder of scenarios, with one folder per protocol (default: %1).")
             .arg(defaultScenarioDir()),
         QStringLiteral("dir")},
        {QStringLiteral("device"),
         QStringLiteral("Use this serial device instead of a new pseudo-terminal; it runs at the "
                        "protocol's baud rate, 8N1."),
         QStringLiteral("path")},
        {QStringLiteral("link"), QStringLiteral("Also make a symlink at <path> to the pseudo-terminal."),
         QStringLiteral("path")},
        {QStringLiteral("record"),
         QStringLiteral("Write every read and write of the line to <file>, timed, as canbus-replay "
                        "reads it: 'in' what the head unit read, 'out' what it wrote."),
         QStringLiteral("file")},
        {QStringLiteral("loop"), QStringLiteral("Play the scenarios again and again.")},
        {QStringLiteral("no-wait"),
         QStringLiteral("Play as soon as the port is open, without waiting for the head unit's "
                        "connect frame (0x2E protocols).")},
        {QStringLiteral("duration"), QStringLiteral("Exit after <s> seconds."), QStringLiteral("s")},
        {QStringLiteral("quiet"), QStringLiteral("Print only the port line and errors.")},
        {QStringLiteral("check"),
         QStringLiteral("Read the scenarios, print the frames they make, and exit: 0 if they are "
                        "sound.")},
        {QStringLiteral("list"), QStringLiteral("List the protocol's scenarios and exit.")},
    });
    // parse() rather than process(): an unknown option must end with our exit code.
    if (!parser.parse(app.arguments()))
        usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(ExitOk);
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        usageError(QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().first()));

    Options o;
    if (parser.isSet(QStringLiteral("protocol")))
        o.protocol = positiveInt(parser.value(QStringLiteral("protocol")), "protocol");
    o.scenarios = parser.values(QStringLiteral("scenario"));
    o.scenarioDir = parser.isSet(QStringLiteral("scenario-dir")) ? parser.value(QStringLiteral("scenario-dir"))
                                                                 : defaultScenarioDir();
    o.device = parser.value(QStringLiteral("device"));
    o.link = parser.value(QStringLiteral("link"));
    o.record = parser.value(QStringLiteral("record"));
    if (parser.isSet(QStringLiteral("record")) && o.record.isEmpty())
        usageError(QStringLiteral("--record wants a file"));
    o.loop = parser.isSet(QStringLiteral("loop"));
    o.noWait = parser.isSet(QStringLiteral("no-wait"));
    o.quiet = parser.isSet(QStringLiteral("quiet"));
    o.check = parser.isSet(QStringLiteral("check"));
    o.list = parser.isSet(QStringLiteral("list"));
    if (parser.isSet(QStringLiteral("duration"))) {
        bool ok = false;
        o.durationS = parser.value(QStringLiteral("duration")).toDouble(&ok);
        if (!ok || !(o.durationS > 0) || o.durationS > kMaxDurationS)
            usageError(QStringLiteral("--duration wants seconds above 0, not '%1'").arg(parser.value(QStringLiteral("duration"))));
    }
    if (!o.device.isEmpty() && !o.link.isEmpty())
        usageError(QStringLiteral("--link is for the pseudo-terminal; it can't go with --device"));
    if (!canbus::findCatalogueRow(o.protocol) || !canbus::findDriver(o.protocol))
        usageError(QStringLiteral("there is no vehicle protocol %1 in the catalogue").arg(o.protocol));
    return o;
}

QString protocolDir(const Options& o)
{
    return QDir(o.scenarioDir).filePath(QString::number(o.protocol));
}

// A name without a folder is looked up among the protocol's scenarios.
QString scenarioPath(const Options& o, const QString& given)
{
    if (QFileInfo::exists(given))
        return given;
    const QDir dir(protocolDir(o));
    for (const QString& candidate : {given, given + QStringLiteral(".json")}) {
        if (!given.contains(QLatin1Char('/')) && dir.exists(candidate))
            return dir.filePath(candidate);
    }
    return given;   // loading reports that it isn't there
}

QStringList scenarioPaths(const Options& o)
{
    QStringList paths;
    if (o.scenarios.isEmpty()) {
        const QDir dir(protocolDir(o));
        for (const QString& name : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name))
            paths.append(dir.filePath(name));
        return paths;
    }
    for (const QString& given : o.scenarios)
        paths.append(scenarioPath(o, given));
    return paths;
}

bool loadScenarios(const Options& o, QList<Scenario>& scenarios)
{
    for (const QString& path : scenarioPaths(o)) {
        Scenario s;
        QString error;
        if (!loadScenario(path, s, &error)) {
            printError(error);
            return false;
        }
        if (s.protocol != 0 && s.protocol != o.protocol) {
            printError(QStringLiteral("%1 is written for protocol %2, not %3").arg(path).arg(s.protocol).arg(o.protocol));
            return false;
        }
        scenarios.append(s);
    }
    return true;
}

void printScenarioFrames(const QList<Scenario>& scenarios, canbus::FrameFamily family)
{
    for (const Scenario& s : scenarios) {
        printLine(QStringLiteral("%1: %2 steps%3").arg(s.name).arg(s.steps.size())
                      .arg(s.description.isEmpty() ? QString() : QStringLiteral(" - ") + s.description));
        for (const ScenarioStep& step : s.handshake)
            printLine(QStringLiteral("  handshake  %1  %2").arg(spacedHex(step.wireBytes(family)), step.note));
        for (const ScenarioStep& step : s.steps)
            printLine(QStringLiteral("  +%1 ms  %2  %3").arg(step.delayMs).arg(spacedHex(step.wireBytes(family)), step.note));
    }
}

// The symlink of --link, removed again when the box goes away.
class LinkName
{
public:
    bool make(const QString& path, const QString& target, QString* error)
    {
        const QFileInfo existing(path);
        if (existing.exists() || existing.isSymLink()) {
            if (!existing.isSymLink()) {
                *error = QStringLiteral("%1 exists and is not a symlink; not replacing it").arg(path);
                return false;
            }
            QFile::remove(path);
        }
        if (!QFile::link(target, path)) {
            *error = QStringLiteral("cannot make the symlink %1").arg(path);
            return false;
        }
        m_path = path;
        m_target = target;
        return true;
    }
    ~LinkName()
    {
        if (!m_path.isEmpty() && QFileInfo(m_path).symLinkTarget() == m_target)
            QFile::remove(m_path);
    }

private:
    QString m_path;
    QString m_target;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("canbox-sim"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    const Options o = parseOptions(app);

    const canbus::CatalogueRow* row = canbus::findCatalogueRow(o.protocol);
    const canbus::FrameFamily family = canbus::findDriver(o.protocol)->family;

    if (o.list) {
        for (const QString& path : scenarioPaths(o)) {
            Scenario s;
            QString error;
            printLine(loadScenario(path, s, &error) ? QStringLiteral("%1  %2").arg(s.name, s.description)
                                                    : QStringLiteral("%1  (unreadable: %2)").arg(QFileInfo(path).fileName(), error));
        }
        return ExitOk;
    }

    QList<Scenario> scenarios;
    if (!loadScenarios(o, scenarios))
        return ExitFailure;
    if (o.check) {
        printScenarioFrames(scenarios, family);
        return ExitOk;
    }

    quitOnTerminationSignals();
    BoxLink link;
    QString error;
    const bool opened = o.device.isEmpty() ? link.openPty(&error) : link.openDevice(o.device, row->baudRate, &error);
    if (!opened) {
        printError(error);
        return ExitFailure;
    }
    // The link is there before the first line, which scripts wait for: the port the
    // head unit is to open.
    LinkName linkName;
    if (!o.link.isEmpty() && !linkName.make(o.link, link.peerPath(), &error)) {
        printError(error);
        return ExitFailure;
    }
    printLine(QStringLiteral("canbox-sim: %1 %2").arg(o.device.isEmpty() ? QStringLiteral("pty") : QStringLiteral("device"), link.peerPath()));
    if (!o.link.isEmpty())
        printLine(QStringLiteral("canbox-sim: link %1 -> %2").arg(o.link, link.peerPath()));

    QFile record(o.record);
    if (!o.record.isEmpty()) {
        if (!record.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            printError(QStringLiteral("cannot write %1: %2").arg(o.record, record.errorString()));
            return ExitFailure;
        }
        record.write(captureHeader(o.protocol, QStringLiteral("%1 %2 %3, %4 frames")
                                                   .arg(QString::fromUtf8(row->make), QString::fromUtf8(row->model),
                                                        QString::fromUtf8(row->vendor),
                                                        QString::fromLatin1(canbus::familyName(family)))));
        record.flush();
    }

    BoxSimulator box(family);
    box.setScenarios(scenarios);
    box.setLoop(o.loop);
    if (o.noWait)
        box.setWaitForConnect(false);

    QElapsedTimer clock;
    clock.start();
    auto say = [&](const QString& text) {
        if (!o.quiet)
            printLine(QStringLiteral("%1  %2").arg(clock.elapsed() / 1000.0, 7, 'f', 3).arg(text));
    };
    QObject::connect(&box, &BoxSimulator::transmit, &link, &BoxLink::write);
    QObject::connect(&link, &BoxLink::received, &box, &BoxSimulator::receive);
    if (record.isOpen()) {
        // Each line as it crosses, flushed: a box stopped by a signal keeps its recording.
        auto keep = [&](CaptureEntry::Direction direction, const QByteArray& bytes) {
            record.write(captureLine(clock.elapsed() / 1000.0, direction, bytes));
            record.flush();
        };
        // What the box sends reaches the head unit only while it holds the port.
        QObject::connect(&box, &BoxSimulator::transmit, &record, [&, keep](const QByteArray& bytes) {
            if (link.isPeerPresent())
                keep(CaptureEntry::In, bytes);
        });
        QObject::connect(&link, &BoxLink::received, &record,
                         [keep](const QByteArray& bytes) { keep(CaptureEntry::Out, bytes); });
    }
    QObject::connect(&box, &BoxSimulator::happened, &app, [&](const BoxEvent& e) { say(eventText(e, family)); });
    QObject::connect(&link, &BoxLink::peerOpened, &box, [&] {
        say(box.waitsForConnect() ? QStringLiteral("----  the head unit opened the port; waiting for its connect frame")
                                  : QStringLiteral("----  the head unit opened the port"));
        box.linkUp();
    });
    QObject::connect(&link, &BoxLink::peerClosed, &box, [&] {
        say(QStringLiteral("----  the head unit closed the port"));
        box.linkDown();
    });
    QObject::connect(&link, &BoxLink::failed, &app, [&](const QString& reason) {
        printError(QStringLiteral("the serial port failed: %1").arg(reason));
        QCoreApplication::exit(ExitFailure);
    });

    say(QStringLiteral("----  protocol %1: %2 %3 (%4), %5 frames, %6 baud; %7 scenario(s)")
            .arg(o.protocol)
            .arg(QString::fromUtf8(row->make), QString::fromUtf8(row->model), QString::fromUtf8(row->vendor),
                 QString::fromLatin1(canbus::familyName(family)))
            .arg(row->baudRate)
            .arg(scenarios.size()));
    if (o.durationS > 0)
        QTimer::singleShot(int(o.durationS * 1000), &app, &QCoreApplication::quit);
    return app.exec();
}
