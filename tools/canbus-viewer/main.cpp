// canbus-viewer: runs the canbus plug-in on a desktop, as canbus-host does, and draws
// what it makes of a CAN box: the climate panel, the doors, the parking radar, the
// outdoor temperature, the last keys and prompts; command keys go the other way.

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <memory>

#include "host.h"
#include "hostcommandline.h"
#include "hostsetup.h"
#include "installedpath.h"
#include "modulelog.h"
#include "viewerevents.h"
#include "viewerstate.h"
#include "viewerwindow.h"

namespace {

constexpr double kDefaultScreenshotS = 3.0;

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

struct Options : host::CommonOptions
{
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

Options parseOptions()
{
    QCommandLineParser parser;
    Options o;
    host::parseCommandLine(parser, o, kDescription, defaultPlugin(),
        QStringLiteral("Vehicle protocol to select, by its catalogue id. Default: the one stored in "
                       "the data folder, else 27."), {
        {QStringLiteral("data-dir"),
         QStringLiteral("Folder for the platform's settings (default: a temporary one)."), QStringLiteral("path")},
        {QStringLiteral("screenshot"),
         QStringLiteral("Save a picture of the window (PNG) after --screenshot-after seconds, then exit."),
         QStringLiteral("file")},
        {QStringLiteral("screenshot-after"),
         QStringLiteral("Seconds before the screenshot (default: %1).").arg(kDefaultScreenshotS), QStringLiteral("s")},
        {QStringLiteral("reversing"), QStringLiteral("Start with the gear in reverse (most vehicles show the radar only then).")},
    });
    const QByteArray envPort = qgetenv("CANBUS_BOX_PORT");
    o.port = parser.isSet(QStringLiteral("port")) ? parser.value(QStringLiteral("port"))
        : envPort.isEmpty()                       ? QStringLiteral("/dev/ttyS4")
                                                  : QString::fromLocal8Bit(envPort);
    if (o.port.isEmpty())
        host::usageError(QStringLiteral("--port wants a path"));
    o.dataDir = parser.value(QStringLiteral("data-dir"));
    o.screenshot = parser.value(QStringLiteral("screenshot"));
    if (parser.isSet(QStringLiteral("screenshot")) && o.screenshot.isEmpty())
        host::usageError(QStringLiteral("--screenshot wants a file"));
    if (parser.isSet(QStringLiteral("screenshot-after"))) {
        if (o.screenshot.isEmpty())
            host::usageError(QStringLiteral("--screenshot-after needs --screenshot"));
        o.screenshotS = host::secondsAsked(parser, QStringLiteral("screenshot-after"));
    }
    o.reverse = parser.isSet(QStringLiteral("reversing"));
    o.durationS = host::secondsAsked(parser, QStringLiteral("duration"));
    return o;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    host::nameTool(QStringLiteral("canbus-viewer"));
    const Options o = parseOptions();

    std::unique_ptr<QTemporaryDir> scratch;
    QString dataDir;
    QString error;
    if (!host::setUpHost(o.plugin, o.port, QString(), o.dataDir, scratch, &dataDir, &error))
        return host::failure(error);

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
    if (!host::startModule(host, &error))
        return host::failure(error);
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
                host::failure(QStringLiteral("cannot save %1").arg(o.screenshot));
            QApplication::exit(saved ? host::ExitOk : host::ExitFailure);
        });
    }
    if (o.durationS > 0)
        QTimer::singleShot(int(o.durationS * 1000), &app, &QApplication::quit);
    return app.exec();
}
