// canbus-host: runs the canbus plug-in on a desktop, the way the head unit does, and
// shows live what it makes of a CAN box: records, keys, prompts and platform calls.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <tuple>

#include "host.h"
#include "hostoutput.h"
#include "hostsetup.h"
#include "installedpath.h"
#include "mcuhost.h"
#include "modulelog.h"
#include "quitonsignal.h"

namespace {

// The installed plug-in beside an installed host, else the one built with it.
QString defaultPlugin()
{
    return canbox::installedOrBuilt(CANBUS_HOST_INSTALLED_PLUGIN, CANBUS_HOST_PLUGIN);
}
constexpr double kMaxDurationS = 7 * 24 * 3600.0;

enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

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

struct Options
{
    QString plugin;
    int protocol = 0;   // 0: the stored one, else 27
    QString port;         // empty: no box, the MCU link alone
    QString mcuPort;
    QString mcuUpdate;
    QString dataDir;
    QString moduleLog;
    bool json = false;
    bool trace = false;
    double durationS = 0;
};

[[noreturn]] void usageError(const QString& text)
{
    std::fprintf(stderr, "canbus-host: error: %s\nTry 'canbus-host --help'.\n", qUtf8Printable(text));
    std::exit(ExitUsage);
}

int failure(const QString& text)
{
    std::fprintf(stderr, "canbus-host: error: %s\n", qUtf8Printable(text));
    return ExitFailure;
}

Options parseOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(kDescription));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {QStringLiteral("plugin"),
         QStringLiteral("The plug-in file to load (default: %1).").arg(defaultPlugin()),
         QStringLiteral("path")},
        {{QStringLiteral("p"), QStringLiteral("protocol")},
         QStringLiteral("Vehicle protocol to select, by its catalogue id; stored as CanIndex. "
                        "Default: the one stored in the data folder, else 27."),
         QStringLiteral("id")},
        {QStringLiteral("port"),
         QStringLiteral("Serial port of the CAN box (default: $CANBUS_BOX_PORT, else /dev/ttyS4)."),
         QStringLiteral("path")},
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
    o.plugin = parser.isSet(QStringLiteral("plugin")) ? parser.value(QStringLiteral("plugin"))
                                                      : defaultPlugin();
    if (parser.isSet(QStringLiteral("protocol"))) {
        bool ok = false;
        o.protocol = parser.value(QStringLiteral("protocol")).toInt(&ok);
        if (!ok || o.protocol < 1)
            usageError(QStringLiteral("there is no vehicle protocol '%1' in the catalogue").arg(parser.value(QStringLiteral("protocol"))));
    }
    o.mcuPort = parser.value(QStringLiteral("mcu-port"));
    if (parser.isSet(QStringLiteral("mcu-port")) && o.mcuPort.isEmpty())
        usageError(QStringLiteral("--mcu-port wants a path"));
    o.mcuUpdate = parser.value(QStringLiteral("mcu-update"));
    if (parser.isSet(QStringLiteral("mcu-update")) && o.mcuPort.isEmpty())
        usageError(QStringLiteral("--mcu-update needs --mcu-port"));
    const QByteArray envPort = qgetenv("CANBUS_BOX_PORT");
    if (parser.isSet(QStringLiteral("port"))) {
        o.port = parser.value(QStringLiteral("port"));
        if (o.port.isEmpty())
            usageError(QStringLiteral("--port wants a path"));
    } else if (!envPort.isEmpty()) {
        o.port = QString::fromLocal8Bit(envPort);
    } else if (o.mcuPort.isEmpty()) {
        o.port = QStringLiteral("/dev/ttyS4");
    }
    o.dataDir = parser.value(QStringLiteral("data-dir"));
    o.moduleLog = parser.value(QStringLiteral("module-log"));
    if (parser.isSet(QStringLiteral("module-log")) && o.moduleLog.isEmpty())
        usageError(QStringLiteral("--module-log wants a file"));
    o.json = parser.isSet(QStringLiteral("json"));
    o.trace = parser.isSet(QStringLiteral("trace"));
    if (parser.isSet(QStringLiteral("duration"))) {
        bool ok = false;
        o.durationS = parser.value(QStringLiteral("duration")).toDouble(&ok);
        if (!ok || !(o.durationS > 0) || o.durationS > kMaxDurationS)
            usageError(QStringLiteral("--duration wants seconds above 0, not '%1'").arg(parser.value(QStringLiteral("duration"))));
    }
    return o;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("canbus-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    const Options o = parseOptions(app);

    if (!QFileInfo::exists(o.plugin))
        return failure(QStringLiteral("no plug-in at %1 (build the target canbusmodule, or give --plugin)").arg(o.plugin));
    for (const auto& [port, option, simulator] : {std::make_tuple(o.port, "--port", "canbox-sim"),
                                                   std::make_tuple(o.mcuPort, "--mcu-port", "mcu-sim")}) {
        const QString problem = host::portProblem(port, option, simulator);
        if (!problem.isEmpty())
            return failure(problem);
    }

    // The platform reads these on first use: they are set before anything starts.
    std::unique_ptr<QTemporaryDir> scratch;
    QString dataDir;
    QString error;
    if (!host::setUpPlatform(o.dataDir, QStringLiteral("canbus-host"), o.port, o.mcuPort, scratch, &dataDir, &error))
        return failure(error);

    canbox::quitOnTerminationSignals();
    host::HostOutput output(o.json ? host::HostOutput::Json : host::HostOutput::Text);
    QFile moduleLog(o.moduleLog);
    if (!o.moduleLog.isEmpty() && !moduleLog.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return failure(QStringLiteral("cannot write %1: %2").arg(o.moduleLog, moduleLog.errorString()));
    host::routeModuleLog(&output, o.trace, o.moduleLog.isEmpty() ? nullptr : &moduleLog);

    const int protocol = host::chooseProtocol(o.protocol);
    host::Host host({o.plugin, protocol}, output);
    if (!o.port.isEmpty()) {
        output.info(QStringLiteral("protocol %1 on %2; data folder %3").arg(protocol).arg(o.port, dataDir));
        switch (host.start(&error)) {
        case host::Host::Started:
            break;
        case host::Host::NoSuchProtocol:
            usageError(error);
        case host::Host::Failed:
            return failure(error);
        }
    } else if (!host.load(&error)) {
        return failure(error);
    }

    std::unique_ptr<host::McuHost> mcu;
    if (!o.mcuPort.isEmpty()) {
        output.info(QStringLiteral("MCU link on %1").arg(o.mcuPort));
        mcu.reset(new host::McuHost(output));
        if (!mcu->start(host.pluginPath(), &error))
            return failure(error);
        if (!o.mcuUpdate.isEmpty()) {
            // The MCU's last frame is answered before the result is out; the answer
            // gets a moment on the wire before the port closes.
            QObject::connect(mcu.get(), &host::McuHost::updateFinished, &app, [](int result) {
                QTimer::singleShot(200, [result] { QCoreApplication::exit(result == 0 ? ExitOk : ExitFailure); });
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
