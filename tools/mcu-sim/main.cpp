// mcu-sim: a stand-in for the head unit's microcontroller, for working on the MCU
// link without a head unit. See --help.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include "mculink.h"
#include "mcuscenario.h"
#include "mcusimapp.h"

namespace {

const char kDescription[] =
    "Plays the head unit's microcontroller (MCU) on a serial line.\n"
    "\n"
    "Without --device it creates a new pseudo-terminal and prints the name of its\n"
    "slave side; point the head unit's MCU link at it, for example:\n"
    "\n"
    "  mcu-sim --scenario scenarios/mcu/steering-keys.json --wait-for-head-unit\n"
    "  CANBUS_MCU_PORT=/dev/pts/7 <your host program>\n"
    "\n"
    "It sends what the scenario says (keys, touches, ignition, night mode, requests),\n"
    "prints every frame going either way, and answers a firmware update started on\n"
    "the head unit: it asks for each packet, checks it, and reports the update done.";

int fail(const QString& message)
{
    QTextStream(stderr) << "mcu-sim: " << message << Qt::endl;
    return 1;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mcu-sim"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kDescription));
    parser.addHelpOption();
    const QCommandLineOption device({QStringLiteral("d"), QStringLiteral("device")},
        QStringLiteral("Use this serial device (at 115200 baud) instead of a new pseudo-terminal."),
        QStringLiteral("path"));
    const QCommandLineOption scenario({QStringLiteral("s"), QStringLiteral("scenario")},
        QStringLiteral("Play this scenario file (JSON; examples in scenarios/mcu/)."), QStringLiteral("file"));
    const QCommandLineOption check(QStringLiteral("check"),
        QStringLiteral("Only read the scenario, list the frames it would send, and exit."));
    const QCommandLineOption startDelay(QStringLiteral("start-delay"),
        QStringLiteral("Wait this long before the scenario's first step (default 0)."), QStringLiteral("ms"),
        QStringLiteral("0"));
    const QCommandLineOption waitForHeadUnit(QStringLiteral("wait-for-head-unit"),
        QStringLiteral("Start the scenario when the head unit first sends something (its heartbeat)."));
    const QCommandLineOption once(QStringLiteral("once"),
        QStringLiteral("Quit when the scenario has played and no update is running; without a scenario, "
                       "quit after the first firmware update. Exit code 2 if an update failed."));
    const QCommandLineOption outOfRange(QStringLiteral("out-of-range-request"),
        QStringLiteral("During an update, first ask for a packet that does not exist."));
    const QCommandLineOption saveImage(QStringLiteral("save-image"),
        QStringLiteral("Write the firmware received by an update to this file."), QStringLiteral("file"));
    const QCommandLineOption quiet({QStringLiteral("q"), QStringLiteral("quiet")},
        QStringLiteral("Print only the port's name and errors."));
    parser.addOptions({device, scenario, check, startDelay, waitForHeadUnit, once, outOfRange, saveImage, quiet});

    if (!parser.parse(QCoreApplication::arguments()))
        return fail(parser.errorText() + QStringLiteral("\nTry mcu-sim --help."));
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    if (!parser.positionalArguments().isEmpty())
        return fail(QStringLiteral("unexpected argument \"%1\"; try mcu-sim --help.")
                        .arg(parser.positionalArguments().constFirst()));

    McuSimOptions options;
    bool numeric = false;
    options.startDelayMs = parser.value(startDelay).toInt(&numeric);
    if (!numeric || options.startDelayMs < 0)
        return fail(QStringLiteral("--start-delay takes a number of milliseconds, not \"%1\".").arg(parser.value(startDelay)));
    options.waitForHeadUnit = parser.isSet(waitForHeadUnit);
    options.once = parser.isSet(once);
    options.askOutOfRange = parser.isSet(outOfRange);
    options.saveImagePath = parser.value(saveImage);
    options.quiet = parser.isSet(quiet);

    if (parser.isSet(scenario)) {
        QString error;
        if (!loadMcuScenario(parser.value(scenario), options.scenario, error))
            return fail(error);
        options.haveScenario = true;
    } else if (parser.isSet(check)) {
        return fail(QStringLiteral("--check needs a --scenario to read."));
    }
    if (parser.isSet(check)) {
        QTextStream out(stdout);
        for (const McuScenarioFrame& frame : options.scenario.frames) {
            out << "+" << frame.delayMs << " ms  " << frame.label;
            if (!frame.bytes.isEmpty())
                out << ": " << frame.bytes.toHex(' ');
            out << Qt::endl;
        }
        return 0;
    }

    McuLink link;
    const bool opened = parser.isSet(device) ? link.openDevice(parser.value(device)) : link.openPty();
    if (!opened)
        return fail(link.errorString());
    QTextStream(stdout) << "MCU simulator on " << link.name() << Qt::endl
                        << "(run the head unit with CANBUS_MCU_PORT=" << link.name() << ")" << Qt::endl;

    McuSimApp sim(&link, options);
    QObject::connect(&sim, &McuSimApp::finished, &app, &QCoreApplication::exit);
    sim.start();
    return app.exec();
}
