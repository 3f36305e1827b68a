// canbus-replay: plays a capture of the line between a CAN box and the head unit
// through the canbus module's receive path, to see what the module made of it, or
// would have made of it with another protocol selected.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>

#include "canbuscatalogue.h"
#include "captureplayer.h"
#include "capturefile.h"
#include "driverfactory.h"
#include "hostoutput.h"
#include "linediff.h"
#include "ranking.h"
#include "replayedmodule.h"

namespace {

enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };
constexpr int kMaxLingerMs = 60 * 60 * 1000;

const char kDescription[] =
    "Plays a capture through the canbus module's receive path (reassembly, check,\n"
    "acknowledgement, the driver's parser) and shows what the module makes of it: records\n"
    "(the fields that changed), keys, prompts and other signals, and every frame the module\n"
    "sends back; then a summary: frames accepted, of unknown type, refused, bytes dropped.\n"
    "\n"
    "The capture may be a recording of canbox-sim --record, lines of hex bytes, the\n"
    "module's own debug log (canbus-host --module-log, or a head unit's log: its manager\n"
    "lines dump every frame received), or raw bytes. Lines that can't be read are named\n"
    "with their number on stderr and skipped.\n"
    "\n"
    "Examples:\n"
    "  canbox-sim -p 28 --record drive.cap ...    then\n"
    "  canbus-replay drive.cap                     the protocol the recording names\n"
    "  canbus-replay module.log                    the protocol the module selected\n"
    "  canbus-replay -p all headunit.log           which protocol does this box speak?\n"
    "  canbus-replay -p 28 --diff 30 drive.cap     what 30 makes of it unlike 28\n"
    "  canbus-replay --timed --json drive.cap      with the capture's timing, JSON lines";

struct Options
{
    QString file;
    int protocol = 0;   // 0: the one the capture names
    bool all = false;
    int diff = 0;
    bool json = false;
    bool timed = false;
    bool raw = false;
    bool quiet = false;
    int lingerMs = 0;
};

[[noreturn]] void usageError(const QString& text)
{
    std::fprintf(stderr, "canbus-replay: error: %s\nTry 'canbus-replay --help'.\n", qUtf8Printable(text));
    std::exit(ExitUsage);
}

int failure(const QString& text)
{
    std::fprintf(stderr, "canbus-replay: error: %s\n", qUtf8Printable(text));
    return ExitFailure;
}

bool isProtocol(int id)
{
    return canbus::findCatalogueRow(id) && canbus::findDriver(id);
}

int protocolId(const QString& text)
{
    bool ok = false;
    const int id = text.toInt(&ok);
    if (!ok || !isProtocol(id))
        usageError(QStringLiteral("there is no vehicle protocol '%1' in the catalogue").arg(text));
    return id;
}

Options parseOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(kDescription));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("capture"), QStringLiteral("The capture file; - for standard input."));
    parser.addOptions({
        {{QStringLiteral("p"), QStringLiteral("protocol")},
         QStringLiteral("Vehicle protocol by its catalogue id, or 'all' to rank every protocol by the "
                        "frames it takes from the capture. Default: the one a recording names, or "
                        "the first one a module log selects."),
         QStringLiteral("id|all")},
        {QStringLiteral("diff"),
         QStringLiteral("Also play the capture with protocol <id> and show the lines the two make "
                        "differently: '-' the first protocol's, '+' this one's."),
         QStringLiteral("id")},
        {QStringLiteral("json"), QStringLiteral("One JSON object per line instead of text.")},
        {QStringLiteral("timed"),
         QStringLiteral("Play with the capture's timing (the module's timers run in between); "
                        "default: as fast as it goes.")},
        {QStringLiteral("linger"),
         QStringLiteral("After the last read let the module's timers run <ms> more."), QStringLiteral("ms")},
        {QStringLiteral("raw"), QStringLiteral("Take the file as raw bytes off the port, whatever it looks like.")},
        {QStringLiteral("quiet"), QStringLiteral("Show the summary only.")},
    });
    if (!parser.parse(app.arguments()))
        usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(ExitOk);
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    const QStringList files = parser.positionalArguments();
    if (files.size() != 1)
        usageError(files.isEmpty() ? QStringLiteral("which capture? give a file")
                                   : QStringLiteral("unexpected argument '%1'").arg(files.at(1)));
    Options o;
    o.file = files.first();
    const QString protocol = parser.value(QStringLiteral("protocol"));
    o.all = protocol == QLatin1String("all");
    if (parser.isSet(QStringLiteral("protocol")) && !o.all)
        o.protocol = protocolId(protocol);
    if (parser.isSet(QStringLiteral("diff")))
        o.diff = protocolId(parser.value(QStringLiteral("diff")));
    if (o.all && o.diff)
        usageError(QStringLiteral("--diff compares two protocols; it can't go with --protocol all"));
    o.json = parser.isSet(QStringLiteral("json"));
    o.timed = parser.isSet(QStringLiteral("timed"));
    o.raw = parser.isSet(QStringLiteral("raw"));
    o.quiet = parser.isSet(QStringLiteral("quiet"));
    if (parser.isSet(QStringLiteral("linger"))) {
        bool ok = false;
        o.lingerMs = parser.value(QStringLiteral("linger")).toInt(&ok);
        if (!ok || o.lingerMs < 0 || o.lingerMs > kMaxLingerMs)
            usageError(QStringLiteral("--linger wants milliseconds from 0 to %1, not '%2'")
                           .arg(kMaxLingerMs).arg(parser.value(QStringLiteral("linger"))));
    }
    return o;
}

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void printJson(const QJsonObject& o)
{
    out() << QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Compact)) << '\n';
}

void reportProblem(const QString& file, int line, const QString& text)
{
    if (line > 0)
        std::fprintf(stderr, "canbus-replay: %s:%d: %s\n", qUtf8Printable(file), line, qUtf8Printable(text));
    else
        std::fprintf(stderr, "canbus-replay: %s: %s\n", qUtf8Printable(file), qUtf8Printable(text));
}

QJsonObject summaryJson(const replay::Summary& s)
{
    return {{QStringLiteral("protocol"), s.protocol},
            {QStringLiteral("bytesIn"), double(s.bytesIn)},
            {QStringLiteral("accepted"), double(s.accepted)},
            {QStringLiteral("unknown"), double(s.unknown)},
            {QStringLiteral("refused"), double(s.refused)},
            {QStringLiteral("dropped"), double(s.dropped)},
            {QStringLiteral("sent"), double(s.sent)},
            {QStringLiteral("events"), double(s.events)}};
}

QString vehicle(int id)
{
    const canbus::CatalogueRow* row = canbus::findCatalogueRow(id);
    return row ? QStringLiteral("%1 %2 (%3)").arg(QString::fromUtf8(row->make), QString::fromUtf8(row->model),
                                                 QString::fromUtf8(row->vendor))
               : QString();
}

int rankAll(const canbox::Capture& capture, const Options& o)
{
    replay::ReplayedModule module(nullptr);
    if (!module.isReady())
        return failure(module.error());
    replay::CapturePlayer player(module, {o.timed, o.lingerMs});
    QList<replay::Summary> summaries;
    for (const canbus::CatalogueRow& row : canbus::kCatalogue) {
        if (isProtocol(row.id))
            summaries.append(player.play(capture, row.id));
    }
    const QList<replay::Summary> order = replay::ranked(summaries);
    if (!o.json)
        out() << QStringLiteral("rank  protocol  understood  events  accepted  unknown  refused  dropped  vehicle\n");
    for (int i = 0; i < order.size(); ++i) {
        const replay::Summary& s = order.at(i);
        if (o.json) {
            QJsonObject line = summaryJson(s);
            line.insert(QStringLiteral("event"), QStringLiteral("rank"));
            line.insert(QStringLiteral("rank"), i + 1);
            line.insert(QStringLiteral("understood"), double(s.understood()));
            line.insert(QStringLiteral("vehicle"), vehicle(s.protocol));
            printJson(line);
        } else {
            out() << QStringLiteral("%1  %2  %3  %4  %5  %6  %7  %8  %9\n")
                         .arg(i + 1, 4).arg(s.protocol, 8).arg(s.understood(), 10).arg(s.events, 6).arg(s.accepted, 8)
                         .arg(s.unknown, 7).arg(s.refused, 7).arg(s.dropped, 7).arg(vehicle(s.protocol));
        }
    }
    out().flush();
    return ExitOk;
}

// One protocol's lines, kept in `lines` if given, else shown.
replay::Summary playOne(replay::ReplayedModule& module, const canbox::Capture& capture, const Options& o,
                        int protocol, QString* lines)
{
    // Shown as it comes, unless it is kept for a comparison.
    const host::HostOutput::Format format = o.json ? host::HostOutput::Json : host::HostOutput::Text;
    host::HostOutput shown(format);
    host::HostOutput kept(format, lines);
    host::HostOutput& output = lines ? kept : shown;
    replay::CapturePlayer player(module, {o.timed, o.lingerMs});
    output.setClock([&player] { return player.seconds(); });
    module.setOutput(o.quiet ? nullptr : &output);
    const replay::Summary s = player.play(capture, protocol);
    module.setOutput(nullptr);
    QJsonObject json = summaryJson(s);
    json.insert(QStringLiteral("capturedWrites"), player.capturedWrites());
    output.event(QStringLiteral("summary"), replay::summaryText(s), json);
    return s;
}

int playAndShow(const canbox::Capture& capture, const Options& o, int protocol)
{
    replay::ReplayedModule module(nullptr);
    if (!module.isReady())
        return failure(module.error());
    if (!o.diff) {
        playOne(module, capture, o, protocol, nullptr);
        return ExitOk;
    }
    QString first;
    QString second;
    playOne(module, capture, o, protocol, &first);
    playOne(module, capture, o, o.diff, &second);
    const QStringList diff = replay::lineDiff(first.split(QLatin1Char('\n'), Qt::SkipEmptyParts),
                                              second.split(QLatin1Char('\n'), Qt::SkipEmptyParts));
    if (!o.json)
        out() << QStringLiteral("--- protocol %1\n+++ protocol %2\n").arg(protocol).arg(o.diff);
    for (const QString& line : diff)
        out() << line << '\n';
    out().flush();
    return ExitOk;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("canbus-replay"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    const Options o = parseOptions(app);

    QFile file(o.file);
    const bool opened = o.file == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                     : file.open(QIODevice::ReadOnly);
    if (!opened)
        return failure(QStringLiteral("cannot read %1: %2").arg(o.file, file.errorString()));
    const canbox::Capture capture = canbox::readCapture(file.readAll(), o.raw);
    for (const canbox::CaptureProblem& p : capture.problems)
        reportProblem(o.file, p.line, p.text);
    if (capture.entries.isEmpty())
        reportProblem(o.file, 0, QStringLiteral("nothing to play: no bytes in the capture"));

    const bool namedKnown = capture.protocol != 0 && isProtocol(capture.protocol);
    if (capture.protocol != 0 && !namedKnown)
        reportProblem(o.file, capture.protocolLine,
                      QStringLiteral("there is no vehicle protocol %1 in the catalogue").arg(capture.protocol));
    if (o.all)
        return rankAll(capture, o);
    const int protocol = o.protocol != 0 ? o.protocol : (namedKnown ? capture.protocol : 0);
    if (protocol == 0)
        return failure(QStringLiteral("%1 names no protocol of the catalogue: give --protocol <id>, or --protocol all "
                                      "to find it").arg(o.file));
    return playAndShow(capture, o, protocol);
}
