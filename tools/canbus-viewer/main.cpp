// canbus-viewer: runs the canbus plug-in on a desktop, as canbus-host does, and draws
// what it makes of a CAN box: the climate panel, the doors, the parking radar, the
// outdoor temperature, the last keys and prompts; command keys go the other way.

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "host.h"
#include "hostsetup.h"
#include "installedpath.h"
#include "modulelog.h"
#include "quitonsignal.h"
#include "viewerevents.h"
#include "viewerstate.h"
#include "viewerwindow.h"

namespace {

constexpr double kMaxDurationS = 7 * 24 * 3600.0;
constexpr double kDefaultScreenshotS = 3.0;

enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

const char kDescription[] =
    "Runs the canbus module on this machine as the head unit does, like canbus-host, and\n"
    "draws what it makes of the CAN box: the climate panel (set points, blower, modes), the\n"
    "car from above with its open doors, bonnet and tailgate, the eight parking sensors,\n"
    "the outdoor temperature, and the last keys and prompts. Command keys of the driver\n"
    "(AirAC 1 ...) are sent from the panel at the bottom. The status bar says when the\n"
    "box's port is lost and when it is back.\n"
    "\n"
    "Try it with the box simulator:\n"
    "  canbox-sim --link /tmp/canbox --loop &\n"
    "  canbus-viewer --port /tmp/canbox\n"
    "\n"
    "A picture of the window without a display:\n"
    "  xvfb-run -a canbus-viewer --port /tmp/canbox --screenshot viewer.png";

struct Options
{
    QString plugin;
    int protocol = 0;
    QString port;
    QString dataDir;
    QString screenshot;
    double screenshotS = kDefaultScreenshotS;
    double durationS = 0;
    bool reverse = false;
};

QString defaultPlugin()
{
    return canbox::installedOrBuilt(CANBUS_VIEWER_INSTALLED_PLUGIN, CANBUS_VIEWER_PLUGIN);
}

[[noreturn]] void usageError(const QString& text)
{
    std::fprintf(stderr, "canbus-viewer: error: %s\nTry 'canbus-viewer --help'.\n", qUtf8Printable(text));
    std::exit(ExitUsage);
}

int failure(const QString& text)
{
    std::fprintf(stderr, "canbus-viewer: error: %s\n", qUtf8Printable(text));
    return ExitFailure;
}

double seconds(const QCommandLineParser& parser, const QString& option)
{
    bool ok = false;
    const double value = parser.value(option).toDouble(&ok);
    if (!ok || !(value > 0) || value > kMaxDurationS)
        usageError(QStringLiteral("--%1 wants seconds above 0, not '%2'").arg(option, parser.value(option)));
    return value;
}

Options parseOptions(const QApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(kDescription));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {QStringLiteral("plugin"), QStringLiteral("The plug-in file to load (default: %1).").arg(defaultPlugin()),
         QStringLiteral("path")},
        {{QStringLiteral("p"), QStringLiteral("protocol")},
         QStringLiteral("Vehicle protocol to select, by its catalogue id. Default: the one stored in "
                        "the data folder, else 27."),
         QStringLiteral("id")},
        {QStringLiteral("port"),
         QStringLiteral("Serial port of the CAN box (default: $CANBUS_BOX_PORT, else /dev/ttyS4)."),
         QStringLiteral("path")},
        {QStringLiteral("data-dir"),
         QStringLiteral("Folder for the platform's settings (default: a temporary one)."), QStringLiteral("path")},
        {QStringLiteral("screenshot"),
         QStringLiteral("Save a picture of the window (PNG) after --screenshot-after seconds, then exit."),
         QStringLiteral("file")},
        {QStringLiteral("screenshot-after"),
         QStringLiteral("Seconds before the screenshot (default: %1).").arg(kDefaultScreenshotS), QStringLiteral("s")},
        {QStringLiteral("reversing"), QStringLiteral("Start with the gear in reverse (most vehicles show the radar only then).")},
        {QStringLiteral("duration"), QStringLiteral("Exit after <s> seconds."), QStringLiteral("s")},
    });
    if (!parser.parse(app.arguments()))
        usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(ExitOk);
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        usageError(QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().first()));

    Options o;
    o.plugin = parser.isSet(QStringLiteral("plugin")) ? parser.value(QStringLiteral("plugin")) : defaultPlugin();
    if (parser.isSet(QStringLiteral("protocol"))) {
        bool ok = false;
        o.protocol = parser.value(QStringLiteral("protocol")).toInt(&ok);
        if (!ok || o.protocol < 1)
            usageError(QStringLiteral("there is no vehicle protocol '%1' in the catalogue").arg(parser.value(QStringLiteral("protocol"))));
    }
    const QByteArray envPort = qgetenv("CANBUS_BOX_PORT");
    o.port = parser.isSet(QStringLiteral("port")) ? parser.value(QStringLiteral("port"))
        : envPort.isEmpty()                       ? QStringLiteral("/dev/ttyS4")
                                                  : QString::fromLocal8Bit(envPort);
    if (o.port.isEmpty())
        usageError(QStringLiteral("--port wants a path"));
    o.dataDir = parser.value(QStringLiteral("data-dir"));
    o.screenshot = parser.value(QStringLiteral("screenshot"));
    if (parser.isSet(QStringLiteral("screenshot")) && o.screenshot.isEmpty())
        usageError(QStringLiteral("--screenshot wants a file"));
    if (parser.isSet(QStringLiteral("screenshot-after"))) {
        if (o.screenshot.isEmpty())
            usageError(QStringLiteral("--screenshot-after needs --screenshot"));
        o.screenshotS = seconds(parser, QStringLiteral("screenshot-after"));
    }
    o.reverse = parser.isSet(QStringLiteral("reversing"));
    if (parser.isSet(QStringLiteral("duration")))
        o.durationS = seconds(parser, QStringLiteral("duration"));
    return o;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("canbus-viewer"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    const Options o = parseOptions(app);

    if (!QFileInfo::exists(o.plugin))
        return failure(QStringLiteral("no plug-in at %1 (build the target canbusmodule, or give --plugin)").arg(o.plugin));
    const QString problem = host::portProblem(o.port, "--port", "canbox-sim");
    if (!problem.isEmpty())
        return failure(problem);

    std::unique_ptr<QTemporaryDir> scratch;
    QString dataDir;
    QString error;
    if (!host::setUpPlatform(o.dataDir, QStringLiteral("canbus-viewer"), o.port, QString(), scratch, &dataDir, &error))
        return failure(error);

    canbox::quitOnTerminationSignals();
    viewer::ViewerState state;
    viewer::ViewerEvents events(state);
    host::routeModuleLog(&events, false);

    const int protocol = host::chooseProtocol(o.protocol);
    host::Host host({o.plugin, protocol}, events);
    viewer::ViewerWindow window(state, QStringLiteral("canbus-viewer: protocol %1 on %2").arg(protocol).arg(o.port));
    QObject::connect(&events, &viewer::ViewerEvents::changed, &window, &viewer::ViewerWindow::stateChanged);
    QObject::connect(&events, &viewer::ViewerEvents::status, &window, &viewer::ViewerWindow::showStatus);
    QObject::connect(&window, &viewer::ViewerWindow::command, &host, [&](const QString& key, const QString& value) {
        events.command(value.isEmpty() ? key : key + QLatin1Char(' ') + value);
        host.sendCommandKey(key, value);
    });

    QObject::connect(&window, &viewer::ViewerWindow::reverse, &host, [&](bool on) {
        host.runCommand(on ? QStringLiteral("reverse on") : QStringLiteral("reverse off"));
    });

    events.info(QStringLiteral("protocol %1 on %2; data folder %3").arg(protocol).arg(o.port, dataDir));
    switch (host.start(&error)) {
    case host::Host::Started:
        break;
    case host::Host::NoSuchProtocol:
        usageError(error);
    case host::Host::Failed:
        return failure(error);
    }
    // Through the panel's box, so that the box and the module agree from the start.
    window.setReverse(o.reverse);
    window.resize(760, 520);
    window.show();

    if (!o.screenshot.isEmpty()) {
        QTimer::singleShot(int(o.screenshotS * 1000), &window, [&] {
            const bool saved = window.picture().save(o.screenshot, "PNG");
            if (saved)
                events.info(QStringLiteral("screenshot %1").arg(o.screenshot));
            else
                std::fprintf(stderr, "canbus-viewer: error: cannot save %s\n", qUtf8Printable(o.screenshot));
            QApplication::exit(saved ? ExitOk : ExitFailure);
        });
    }
    if (o.durationS > 0)
        QTimer::singleShot(int(o.durationS * 1000), &app, &QApplication::quit);
    return app.exec();
}
