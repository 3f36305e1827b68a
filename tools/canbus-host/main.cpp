// canbus-host: runs the canbus plug-in on a desktop, the way the head unit does, and
// shows live what it makes of a CAN box: records, keys, prompts and platform calls.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

#include "host.h"
#include "hostcommandline.h"
#include "hostoutput.h"
#include "hostsetup.h"
#include "installedpath.h"
#include "mcuhost.h"
#include "modulelog.h"

namespace {

// The installed plug-in beside an installed host, else the one built with it.
QString defaultPlugin()
{
    return canbox::installedOrBuilt(CANBUS_HOST_INSTALLED_PLUGIN, CANBUS_HOST_PLUGIN);
}

const char kDescription[] =
    "Runs the canbus module on this machine as the head unit does: it loads the plug-in,\n"
    "gives it the desktop platform and its sibling modules, selects a vehicle protocol,\n"
    "points it at a serial port and starts it. Then it shows, one line each, what the\n"
    "module does: records (air, doors, body, radar: the fields that changed), keys\n"
    "(virtual keyboard number, down/up), prompts and other platform calls, and with\n"
    "--trace every frame it reads and writes.\n"
    "\n"
    "Commands typed on standard input go to the module, one a line:\n"
    "  AirAC 1                  a command key of the driver and its value\n"
    "  raw 2e 81 01 01 7c       bytes written to the box as they are\n"
    "  reverse on|off, power on|off, call on|off, language ko, source 1 2 9850, help, quit\n"
    "\n"
    "Try it with the box simulator:\n"
    "  canbox-sim --link /tmp/canbox &\n"
    "  canbus-host --port /tmp/canbox --trace\n"
    "\n"
    "With --mcu-port it also runs the microcontroller link of the plug-in on that port\n"
    "(alone, unless a box port is given too) and shows its ignition, night mode, keys,\n"
    "touches and requests; --mcu-update sends a firmware file with a progress bar:\n"
    "  mcu-sim --once        (prints its port, say /dev/pts/7)\n"
    "  canbus-host --mcu-port /dev/pts/7 --mcu-update firmware.bin";

struct Options : host::CommonOptions
{
    QString port;         // empty: no box, the MCU link alone
    QString mcuPort;
    QString mcuUpdate;
    QString dataDir;
    QString moduleLog;
    bool json = false;
    bool trace = false;
    double durationS = 0;
};

Options parseOptions()
{
    QCommandLineParser parser;
    Options o;
    host::parseCommandLine(parser, o, kDescription, defaultPlugin(),
        QStringLiteral("Vehicle protocol to select, by its catalogue id; stored as CanIndex. "
                       "Default: the one stored in the data folder, else 27."), {
        {QStringLiteral("mcu-port"),
         QStringLiteral("Also run the MCU link on this serial port; without --port (or "
                        "$CANBUS_BOX_PORT) the MCU link runs alone."),
         QStringLiteral("path")},
        {QStringLiteral("mcu-update"),
         QStringLiteral("With --mcu-port: send this firmware file to the MCU, show the progress "
                        "and exit when it is done (0) or failed (1)."),
         QStringLiteral("file")},
        {QStringLiteral("data-dir"),
         QStringLiteral("Folder of the module's settings; kept across runs. Default: a new "
                        "temporary folder, removed at the end."),
         QStringLiteral("dir")},
        {QStringLiteral("module-log"),
         QStringLiteral("Also write the module's own log, debug lines included, to <file>, as a "
                        "head unit keeps it; canbus-replay plays such a file again."),
         QStringLiteral("file")},
        {QStringLiteral("json"), QStringLiteral("One JSON object per line instead of text.")},
        {QStringLiteral("trace"), QStringLiteral("Also show every frame the module reads and writes.")},
    });
    o.mcuPort = parser.value(QStringLiteral("mcu-port"));
    if (parser.isSet(QStringLiteral("mcu-port")) && o.mcuPort.isEmpty())
        host::usageError(QStringLiteral("--mcu-port wants a path"));
    o.mcuUpdate = parser.value(QStringLiteral("mcu-update"));
    if (parser.isSet(QStringLiteral("mcu-update")) && o.mcuPort.isEmpty())
        host::usageError(QStringLiteral("--mcu-update needs --mcu-port"));
    const QByteArray envPort = qgetenv("CANBUS_BOX_PORT");
    if (parser.isSet(QStringLiteral("port"))) {
        o.port = parser.value(QStringLiteral("port"));
        if (o.port.isEmpty())
            host::usageError(QStringLiteral("--port wants a path"));
    } else if (!envPort.isEmpty()) {
        o.port = QString::fromLocal8Bit(envPort);
    } else if (o.mcuPort.isEmpty()) {
        o.port = QStringLiteral("/dev/ttyS4");
    }
    o.dataDir = parser.value(QStringLiteral("data-dir"));
    o.moduleLog = parser.value(QStringLiteral("module-log"));
    if (parser.isSet(QStringLiteral("module-log")) && o.moduleLog.isEmpty())
        host::usageError(QStringLiteral("--module-log wants a file"));
    o.json = parser.isSet(QStringLiteral("json"));
    o.trace = parser.isSet(QStringLiteral("trace"));
    o.durationS = host::secondsAsked(parser, QStringLiteral("duration"));
    return o;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    host::nameTool(QStringLiteral("canbus-host"));
    const Options o = parseOptions();

    std::unique_ptr<QTemporaryDir> scratch;
    QString dataDir;
    QString error;
    if (!host::setUpHost(o.plugin, o.port, o.mcuPort, o.dataDir, scratch, &dataDir, &error))
        return host::failure(error);

    host::HostOutput output(o.json ? host::HostOutput::Json : host::HostOutput::Text);
    QFile moduleLog(o.moduleLog);
    if (!o.moduleLog.isEmpty() && !moduleLog.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return host::failure(QStringLiteral("cannot write %1: %2").arg(o.moduleLog, moduleLog.errorString()));
    host::routeModuleLog(&output, o.trace, o.moduleLog.isEmpty() ? nullptr : &moduleLog);

    const int protocol = host::chooseProtocol(o.protocol);
    host::Host host({o.plugin, protocol}, output);
    if (!o.port.isEmpty()) {
        output.info(QStringLiteral("protocol %1 on %2; data folder %3").arg(protocol).arg(o.port, dataDir));
        if (!host::startModule(host, &error))
            return host::failure(error);
    } else if (!host.load(&error)) {
        return host::failure(error);
    }

    std::unique_ptr<host::McuHost> mcu;
    if (!o.mcuPort.isEmpty()) {
        output.info(QStringLiteral("MCU link on %1").arg(o.mcuPort));
        mcu.reset(new host::McuHost(output));
        if (!mcu->start(host.pluginPath(), &error))
            return host::failure(error);
        if (!o.mcuUpdate.isEmpty()) {
            // The MCU's last frame is answered before the result is out; the answer
            // gets a moment on the wire before the port closes.
            QObject::connect(mcu.get(), &host::McuHost::updateFinished, &app, [](int result) {
                QTimer::singleShot(200, [result] { QCoreApplication::exit(result == 0 ? host::ExitOk : host::ExitFailure); });
            });
            mcu->startUpdate(o.mcuUpdate);
        }
    }
    if (!o.port.isEmpty()) {
        host.readCommands();
        output.info(QStringLiteral("running; type 'help' for commands"));
    }
    if (o.durationS > 0)
        QTimer::singleShot(int(o.durationS * 1000), &app, &QCoreApplication::quit);
    return app.exec();
}
