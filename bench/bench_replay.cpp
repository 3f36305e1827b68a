// Replay benchmarks: box traffic through the module's whole receive path, in reads of
// 8 to 64 bytes as a serial port delivers them.
//
//   replay/<stream>/log:<0|1>   throughput, logging off and on (into a handler that
//                               drops the text); bytes/s, frames/s, the ratio to the
//                               driver's wire rate, allocations and signals per frame
//   replay/<stream>/whole       the same frames one to a read, as a box that pauses
//                               between frames delivers them (logging off)
//   repeat/<id>/<n>:<type>      one frame of a scenario sent again and again, as a box
//                               repeats its state: signals and allocations per frame
//   scale/<stream>/<frames>     time per frame over 10^3 to 10^6 frames
//   heap/<stream>               heap in use before and after twice 10^6 frames
//
// A stream is either the frames of a driver's box scenarios or made-up valid frames of
// one frame family, for one driver of that family. Figures are measured and reported,
// never judged here: bench/report.py puts them in a table.
//
// Times and rates are CPU time: the replay makes no system call on its way (the box
// port is closed), and CPU time holds still on a machine shared with other work.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QSet>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "canbuscatalogue.h"
#include "driverfactory.h"
#include "heapcounter.h"
#include "replaymodule.h"
#include "streams.h"

namespace {

using canbus::FrameFamily;

constexpr int kPassBytes = 64 * 1024;        // one benchmark iteration of the replay
constexpr int kSettleEvery = 64;             // reads between two turns of the event loop
constexpr int kSyntheticFrames = 512;
constexpr int kRepeatIterations = 20000;
constexpr std::int64_t kWarmUpFrames = 100000;
constexpr std::int64_t kHeapFrames = 1000000;

bench::ReplayModule* g_module = nullptr;

struct ReplayStream
{
    std::string name;
    int driverId = 0;
    FrameFamily family = FrameFamily::Start2E;
    double wireBytesPerSecond = 0;   // 8N1: ten bits a byte
    QList<QByteArray> reads;         // one pass: whole laps of the stream's frames
    QList<QByteArray> frameReads;    // the same pass, one frame a read
    std::vector<int> framesEnded;    // frames whose last byte is in each read
    std::int64_t framesPerPass = 0;
    std::int64_t bytesPerPass = 0;
};

ReplayStream makeStream(const std::string& name, int id, FrameFamily family,
                        const QList<QByteArray>& lap)
{
    ReplayStream s;
    s.name = name;
    s.driverId = id;
    s.family = family;
    const canbus::CatalogueRow* row = canbus::findCatalogueRow(id);
    s.wireBytesPerSecond = row ? row->baudRate / 10.0 : 0;

    QByteArray pass;
    std::vector<int> ends;
    while (pass.size() < kPassBytes) {
        for (const QByteArray& frame : lap) {
            pass += frame;
            s.frameReads.append(frame);
            ends.push_back(pass.size());
            ++s.framesPerPass;
        }
    }
    s.bytesPerPass = pass.size();
    s.reads = bench::cutIntoReads(pass, quint32(id));
    std::size_t next = 0;
    int pos = 0;
    for (const QByteArray& read : s.reads) {
        pos += read.size();
        int n = 0;
        while (next < ends.size() && ends[next] <= pos) {
            ++n;
            ++next;
        }
        s.framesEnded.push_back(n);
    }
    return s;
}

QString scenarioDir()
{
    const QByteArray fromEnv = qgetenv("CANBUS_BENCH_SCENARIOS");
    return fromEnv.isEmpty() ? QStringLiteral(BENCH_SCENARIO_DIR) : QString::fromLocal8Bit(fromEnv);
}

bool hasScenario(int id)
{
    const QDir dir(scenarioDir() + QLatin1Char('/') + QString::number(id));
    return !dir.entryList({QStringLiteral("*.json")}, QDir::Files).isEmpty();
}

// The drivers with box scenarios, in the order of the factory table: a driver gets its
// benchmarks by getting a scenario.
std::vector<const canbus::DriverEntry*> scenarioDrivers()
{
    int count = 0;
    const canbus::DriverEntry* entries = canbus::driverEntries(&count);
    std::vector<const canbus::DriverEntry*> out;
    for (int i = 0; i < count; ++i) {
        if (hasScenario(entries[i].id))
            out.push_back(&entries[i]);
    }
    return out;
}

// One driver of each frame family for made-up frames: the first in the factory table
// that has no box scenario of its own, else the family's first.
std::vector<const canbus::DriverEntry*> familyPicks()
{
    int count = 0;
    const canbus::DriverEntry* entries = canbus::driverEntries(&count);
    std::vector<const canbus::DriverEntry*> out;
    for (int i = 0; i < count; ++i) {
        const canbus::DriverEntry* e = &entries[i];
        auto same = std::find_if(out.begin(), out.end(), [e](const canbus::DriverEntry* p) { return p->family == e->family; });
        if (same == out.end())
            out.push_back(e);
        else if (hasScenario((*same)->id) && !hasScenario(e->id))
            *same = e;
    }
    return out;
}

// Feeds a whole pass of reads, the event loop turning now and then as the host's does.
void replayPass(const QList<QByteArray>& reads)
{
    for (int i = 0; i < reads.size(); ++i) {
        g_module->feed(reads.at(i));
        if (i % kSettleEvery == kSettleEvery - 1)
            g_module->settle();
    }
    g_module->settle();
}

// Feeds reads from `cursor` on, round the pass, until `frames` frames have arrived.
void replayFrames(const ReplayStream& s, std::int64_t frames, int& cursor)
{
    std::int64_t fed = 0;
    for (int k = 1; fed < frames; ++k) {
        g_module->feed(s.reads.at(cursor));
        fed += s.framesEnded[std::size_t(cursor)];
        if (++cursor == s.reads.size())
            cursor = 0;
        if (k % kSettleEvery == 0)
            g_module->settle();
    }
}

void perFrame(benchmark::State& state, const char* name, double count, double frames)
{
    state.counters[name] = frames > 0 ? count / frames : 0;
}

// What a run cost, per frame: between the counts before (c0, h0) and after (c1, h1).
void countsPerFrame(benchmark::State& state, const bench::ReplayCounts& c0, const bench::ReplayCounts& c1,
                    const bench::HeapCount& h0, const bench::HeapCount& h1, double frames)
{
    perFrame(state, "delivered", double(c1.parsed - c0.parsed), frames);
    perFrame(state, "signals_per_frame", double(c1.emitted - c0.emitted), frames);
    perFrame(state, "writes_per_frame", double(c1.writes - c0.writes), frames);
    perFrame(state, "keys_per_frame", double(c1.keys - c0.keys), frames);
    perFrame(state, "allocs_per_frame", double(h1.allocations - h0.allocations), frames);
    perFrame(state, "news_per_frame", double(h1.news - h0.news), frames);
}

void replay(benchmark::State& state, const ReplayStream* s, bool debugLog, bool wholeFrames)
{
    const QList<QByteArray>& reads = wholeFrames ? s->frameReads : s->reads;
    bench::ReplayModule::setDebugLogging(debugLog);
    g_module->select(s->driverId);
    replayPass(reads);   // records filled, buffers grown: the steady state
    const bench::ReplayCounts c0 = g_module->counts();
    const bench::HeapCount h0 = bench::heapCount();
    for (auto _ : state)
        replayPass(reads);
    const bench::HeapCount h1 = bench::heapCount();
    const bench::ReplayCounts c1 = g_module->counts();
    bench::ReplayModule::setDebugLogging(false);

    const double frames = double(state.iterations()) * double(s->framesPerPass);
    const double bytes = double(state.iterations()) * double(s->bytesPerPass);
    state.SetBytesProcessed(std::int64_t(bytes));
    state.counters["frames_per_second"] = benchmark::Counter(frames, benchmark::Counter::kIsRate);
    state.counters["wire_ratio"] =
        benchmark::Counter(bytes / s->wireBytesPerSecond, benchmark::Counter::kIsRate);
    state.counters["wire_bytes_per_second"] = s->wireBytesPerSecond;
    countsPerFrame(state, c0, c1, h0, h1, frames);
}

void repeat(benchmark::State& state, int id, const QByteArray& frame)
{
    bench::ReplayModule::setDebugLogging(false);
    g_module->select(id);
    // The first copies change the records; from then on the box only repeats itself.
    for (int i = 0; i < 3; ++i)
        g_module->feed(frame);
    g_module->settle();
    const bench::ReplayCounts c0 = g_module->counts();
    const bench::HeapCount h0 = bench::heapCount();
    for (auto _ : state)
        g_module->feed(frame);
    const bench::HeapCount h1 = bench::heapCount();
    const bench::ReplayCounts c1 = g_module->counts();
    g_module->settle();

    const double frames = double(state.iterations());
    state.SetLabel(frame.toHex(' ').toStdString());
    countsPerFrame(state, c0, c1, h0, h1, frames);
}

void scale(benchmark::State& state, const ReplayStream* s)
{
    bench::ReplayModule::setDebugLogging(false);
    g_module->select(s->driverId);
    int cursor = 0;
    const std::int64_t frames = state.range(0);
    for (auto _ : state)
        replayFrames(*s, frames, cursor);
    g_module->settle();
    state.counters["seconds_per_frame"] = benchmark::Counter(
        double(frames), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Heap in use after a warm-up, after 10^6 frames and after 10^6 more. What a driver
// has pending at the moment of a reading (a delayed send, a held key) moves the figure
// by a few dozen bytes either way; memory that grows with the frames grows in both.
void heap(benchmark::State& state, const ReplayStream* s)
{
    bench::ReplayModule::setDebugLogging(false);
    g_module->select(s->driverId);
    int cursor = 0;
    replayFrames(*s, kWarmUpFrames, cursor);
    g_module->settle();
    std::size_t inUse[3] = {bench::heapInUse(), 0, 0};
    for (auto _ : state) {
        for (int i = 1; i <= 2; ++i) {
            replayFrames(*s, kHeapFrames, cursor);
            g_module->settle();
            inUse[i] = bench::heapInUse();
        }
    }
    state.counters["heap_before"] = double(inUse[0]);
    state.counters["heap_growth_first"] = double(inUse[1]) - double(inUse[0]);
    state.counters["heap_growth_second"] = double(inUse[2]) - double(inUse[1]);
}

std::vector<ReplayStream> makeStreams()
{
    const QString dir = scenarioDir();
    std::vector<ReplayStream> streams;
    for (const canbus::DriverEntry* e : scenarioDrivers()) {
        const QList<QByteArray> frames = bench::scenarioFrames(dir, e->id, e->family);
        if (frames.isEmpty()) {
            std::fprintf(stderr, "no scenario frames for driver %d in %s\n", e->id, qPrintable(dir));
            continue;
        }
        streams.push_back(makeStream("scenario" + std::to_string(e->id), e->id, e->family, frames));
    }
    for (const canbus::DriverEntry* e : familyPicks()) {
        const QList<QByteArray> templates = bench::scenarioFrames(dir, e->id, e->family);
        const QList<QByteArray> frames =
            bench::syntheticFrames(e->family, templates, kSyntheticFrames, quint32(e->id));
        streams.push_back(makeStream(std::string("family") + canbus::familyName(e->family) + "-"
                                         + std::to_string(e->id),
                                     e->id, e->family, frames));
    }
    return streams;
}

void registerBenchmarks(const std::vector<ReplayStream>& streams)
{
    for (const ReplayStream& s : streams) {
        for (bool log : {false, true}) {
            benchmark::RegisterBenchmark(("replay/" + s.name + "/log:" + (log ? "1" : "0")).c_str(),
                                         replay, &s, log, false)
                    ->Unit(benchmark::kMillisecond);
        }
        benchmark::RegisterBenchmark(("replay/" + s.name + "/whole").c_str(), replay, &s, false, true)
            ->Unit(benchmark::kMillisecond);
    }
    const QString dir = scenarioDir();
    for (const canbus::DriverEntry* e : scenarioDrivers()) {
        const int id = e->id;
        QSet<QByteArray> seen;
        int n = 0;
        for (const QByteArray& frame : bench::scenarioFrames(dir, id, e->family)) {
            if (seen.contains(frame))
                continue;
            seen.insert(frame);
            char name[64];
            std::snprintf(name, sizeof name, "repeat/%d/%02d:%02x", id, n++,
                          bench::frameType(e->family, frame));
            benchmark::RegisterBenchmark(name, repeat, id, frame)
                ->Iterations(kRepeatIterations)
                    ->Unit(benchmark::kMicrosecond);
        }
    }
    for (const ReplayStream& s : streams) {
        if (s.name.rfind("scenario", 0) != 0)
            continue;
        // Five runs of each size, judged by their median: one run of 10^6 frames is a
        // single iteration, which a burst of other work on the machine would stretch
        // (bench/run.sh also interleaves the runs, so that such a burst is shared out).
        benchmark::RegisterBenchmark(("scale/" + s.name).c_str(), scale, &s)
            ->RangeMultiplier(10)
            ->Range(1000, 1000000)
            ->Repetitions(5)
            ->ReportAggregatesOnly(true)
            ->MinTime(0.2)
            ->Unit(benchmark::kMillisecond);
    }
    for (const ReplayStream& s : streams) {
        benchmark::RegisterBenchmark(("heap/" + s.name).c_str(), heap, &s)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
}

// Debug lines are built in full when their category is on, and dropped here; warnings
// (the box port that cannot open) would only clutter the benchmark's output.
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

// bench_replay --list: "id:family" of every driver the benchmarks replay, one a line,
// for bench/run.sh to measure their start-up and memory too.
int listDrivers()
{
    std::vector<const canbus::DriverEntry*> all = scenarioDrivers();
    for (const canbus::DriverEntry* e : familyPicks()) {
        if (std::find(all.begin(), all.end(), e) == all.end())
            all.push_back(e);
    }
    for (const canbus::DriverEntry* e : all)
        std::printf("%d:%s\n", e->id, canbus::familyName(e->family));
    return 0;
}

int main(int argc, char** argv)
{
    if (argc == 2 && std::string(argv[1]) == "--list")
        return listDrivers();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    // The environment's rules would take precedence over the ones the benchmarks set.
    qunsetenv("QT_LOGGING_RULES");
    QCoreApplication app(argc, argv);
    qInstallMessageHandler(dropMessage);

    bench::ReplayModule module;
    g_module = &module;
    const std::vector<ReplayStream> streams = makeStreams();
    registerBenchmarks(streams);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    g_module = nullptr;
    return 0;
}
