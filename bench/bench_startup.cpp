// Start-up and memory of the module in a host: loads the built plug-in as the head
// unit does, on a pseudo-terminal that plays the box, and prints one JSON line:
//
//   load_ms          QPluginLoader::load
//   started_ms       initial() and startup() have returned
//   first_frame_ms   the first bytes the module wrote to the box port reached the box
//   (all from the call of load; first_frame_cpu_ms is the CPU time this thread spent on
//   the way, which other work on the machine does not stretch), the first frame's
//   bytes, and the process's VmHWM and VmRSS before the load, right after it, and after
//   the module has run --run-ms with the driver while the box plays the driver's
//   scenarios at about the wire rate. A driver that greets the box with no frame
//   (it waits for the box to speak) reports first_frame_ms -1.
//
// The plug-in can be loaded once per process: bench/run.sh starts this program once for
// every measurement.
//
//   bench_startup --protocol 27 [--family AA55] [--run-ms 1000] [--plugin path]

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QPluginLoader>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <ctime>

#include "datasavecontrol.h"
#include "infomodule.h"
#include "module.h"
#include "modulemanager.h"
#include "nullinjector.h"
#include "peers.h"
#include "procstatus.h"
#include "ptypair.h"
#include "streams.h"

namespace {

using tqappframework::ModuleManager;

struct Options
{
    QString plugin;
    int protocol = 0;
    QString family;
    int runMs = 0;
};

Options parseOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.addOptions({
        {QStringLiteral("plugin"), QStringLiteral("The plug-in file."), QStringLiteral("path"),
         QStringLiteral(BENCH_PLUGIN)},
        {QStringLiteral("protocol"), QStringLiteral("Protocol id, stored as CanIndex."), QStringLiteral("id")},
        {QStringLiteral("family"), QStringLiteral("Frame family of the protocol, to play its scenarios."),
         QStringLiteral("name")},
        {QStringLiteral("run-ms"), QStringLiteral("Run the module this long after start-up."),
         QStringLiteral("ms"), QStringLiteral("0")},
    });
    parser.process(app);
    return {parser.value(QStringLiteral("plugin")), parser.value(QStringLiteral("protocol")).toInt(),
            parser.value(QStringLiteral("family")), parser.value(QStringLiteral("run-ms")).toInt()};
}

bool familyByName(const QString& name, canbus::FrameFamily& out)
{
    for (int f = 0; f <= int(canbus::FrameFamily::StartFCFD); ++f) {
        if (name == QLatin1String(canbus::familyName(canbus::FrameFamily(f)))) {
            out = canbus::FrameFamily(f);
            return true;
        }
    }
    return false;
}

void registerPeer(const char* name, QObject* object)
{
    const QString peerName = QLatin1String(name);
    ModuleManager::self()->registerModule(
        peerName, QSharedPointer<tqappframework::Module>(new tqappframework::PeerModule(peerName, object)));
}

double msSince(const QElapsedTimer& clock) { return double(clock.nsecsElapsed()) / 1e6; }

double threadCpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

// A driver with a greeting writes it during startup(); this long is more than enough.
constexpr int kFirstFrameWaitMs = 300;

// The box side while the module runs: a read's worth of the scenarios every 10 ms,
// about 38400 baud, and whatever the module writes read away.
class Box : public QObject
{
public:
    Box(PtyPair& port, const QList<QByteArray>& reads) : m_port(port), m_reads(reads)
    {
        connect(&m_sendTimer, &QTimer::timeout, this, [this] {
            if (m_reads.isEmpty())
                return;
            m_port.write(m_reads.at(m_next));
            m_next = (m_next + 1) % m_reads.size();
        });
        m_sendTimer.start(10);
        m_notifier = new QSocketNotifier(port.masterFd(), QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, [this] { m_port.readAvailable(); });
    }

private:
    PtyPair& m_port;
    QList<QByteArray> m_reads;
    int m_next = 0;
    QTimer m_sendTimer;
    QSocketNotifier* m_notifier = nullptr;
};

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

int fail(const char* what, const QString& why)
{
    std::printf("{\"error\": \"%s: %s\"}\n", what, qPrintable(QString(why).replace(QLatin1Char('"'), QLatin1Char('\''))));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    qunsetenv("QT_LOGGING_RULES");
    QCoreApplication app(argc, argv);
    const Options o = parseOptions(app);
    // As a head unit runs: the module's debug lines off, nothing printed.
    QLoggingCategory::setFilterRules(QStringLiteral("canbus.*.debug=false"));
    qInstallMessageHandler(dropMessage);

    PtyPair box;
    QTemporaryDir dataDir;
    if (!box.isOpen() || !dataDir.isValid())
        return fail("setup", QStringLiteral("no pseudo-terminal or temporary folder"));
    qputenv("CANBUS_DATA_DIR", dataDir.path().toLocal8Bit());
    qputenv("CANBUS_BOX_PORT", box.slavePath().toLocal8Bit());
    DataSaveControl::reload();
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), o.protocol);

    // The host's side, as canbus-host sets it up: no device nodes, the sibling modules.
    bench::NullInputInjector keys;
    InputInjector::install(&keys);
    host::McuStandIn mcu;
    host::PhoneStandIn phone;
    host::SourceStandIn radio, media;
    registerPeer("mcu", &mcu);
    registerPeer("bluetooth", &phone);
    registerPeer("radio", &radio);
    registerPeer("mediaplay", &media);
    ModuleManager::self()->registerModule(QStringLiteral("info"),
                                          QSharedPointer<tqappframework::Module>(new InfoModule));

    // The box's bytes are made before anything is measured: the scenario reader's
    // memory is the benchmark's, not the module's. One turn of the event loop sets up
    // what any running host already has.
    QList<QByteArray> reads;
    int played = 0;
    canbus::FrameFamily family;
    if (o.runMs > 0 && familyByName(o.family, family)) {
        const QList<QByteArray> frames =
            bench::scenarioFrames(QStringLiteral(BENCH_SCENARIO_DIR), o.protocol, family);
        reads = bench::cutIntoReads(frames.join(), quint32(o.protocol));
        played = frames.size();
    }
    QTimer warmUp;
    warmUp.start(0);
    QCoreApplication::processEvents();
    warmUp.stop();

    const long hwmBefore = bench::statusKiB("VmHWM");
    const long rssBefore = bench::statusKiB("VmRSS");

    const double cpuStart = threadCpuMs();
    QElapsedTimer clock;
    clock.start();
    QPluginLoader loader(o.plugin);
    if (!loader.load())
        return fail("load", loader.errorString());
    const double loadMs = msSince(clock);
    const long rssLoaded = bench::statusKiB("VmRSS");
    auto* module = qobject_cast<tqappframework::Module*>(loader.instance());
    if (!module)
        return fail("load", QStringLiteral("not a head-unit module"));
    module->initial();
    module->startup();
    const double startedMs = msSince(clock);
    const double startedCpuMs = threadCpuMs() - cpuStart;

    QByteArray first;
    double firstMs = -1, firstCpuMs = -1;
    while (first.isEmpty() && clock.elapsed() < kFirstFrameWaitMs) {
        QCoreApplication::processEvents();
        first = box.waitForBytes(1);
    }
    if (!first.isEmpty()) {
        firstMs = msSince(clock);
        firstCpuMs = threadCpuMs() - cpuStart;
    }
    // The rest of that frame, if it came in pieces.
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
        first += box.waitForBytes(1);
    }

    ModuleManager::self()->setAllModuleStartupReady();
    long hwmAfter = -1, rssAfter = -1;
    if (o.runMs > 0) {
        Box player(box, reads);
        QTimer::singleShot(o.runMs, &app, &QCoreApplication::quit);
        app.exec();
        hwmAfter = bench::statusKiB("VmHWM");
        rssAfter = bench::statusKiB("VmRSS");
    }

    std::printf("{\"protocol\": %d, \"load_ms\": %.3f, \"started_ms\": %.3f, \"started_cpu_ms\": %.3f, "
                "\"first_frame_ms\": %.3f, \"first_frame_cpu_ms\": %.3f, "
                "\"first_frame\": \"%s\", \"scenario_frames\": %d, \"run_ms\": %d, "
                "\"hwm_before_kib\": %ld, \"rss_before_kib\": %ld, \"rss_loaded_kib\": %ld, "
                "\"hwm_after_kib\": %ld, \"rss_after_kib\": %ld}\n",
                o.protocol, loadMs, startedMs, startedCpuMs, firstMs, firstCpuMs, first.toHex(' ').constData(),
                played, o.runMs, hwmBefore, rssBefore, rssLoaded, hwmAfter, rssAfter);
    std::fflush(stdout);

    module->final();
    ModuleManager::self()->clear();
    InputInjector::install(nullptr);
    return 0;
}
