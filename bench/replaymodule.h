#pragma once
// The module as its host starts it, with a box port that cannot open: the receive
// path runs end to end (reassembly, check, acknowledgement, walk, the driver's parser,
// records, signals) and what it writes towards the box ends at the closed port. One
// object serves the whole benchmark process; each benchmark selects its driver afresh.
//
// It counts, for the figures per frame: the frames that reach the driver's parser,
// the signals the driver emits (all of them, the relayed data signals and the
// driver's own), the frames it sends towards the box, and the key events it injects.

#include <QByteArray>
#include <QObject>
#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <vector>

#include "driverfactory.h"
#include "nullinjector.h"

class CanbusModule;
class CanbusInterface;

namespace bench {

struct ReplayCounts
{
    std::uint64_t parsed = 0;    // frames handed to the driver's parser
    std::uint64_t emitted = 0;   // signals emitted by the driver, frames towards the box aside
    std::uint64_t writes = 0;    // frames towards the box (acknowledgements, answers)
    std::uint64_t keys = 0;      // key and touch events injected
};

// Receives every signal of the driver; a slot without parameters takes them all.
class SignalCounter : public QObject
{
    Q_OBJECT
public:
    std::uint64_t signalCount = 0;
    std::uint64_t writeCount = 0;
public slots:
    void onSignal() { ++signalCount; }
    void onWrite() { ++writeCount; }
};

class ReplayModule
{
public:
    ReplayModule();
    ~ReplayModule();
    ReplayModule(const ReplayModule&) = delete;
    ReplayModule& operator=(const ReplayModule&) = delete;

    // A new driver for `id`, started as the host starts one: selected, ready,
    // greeted, power on; an empty receive buffer.
    void select(int id);
    // One read from the box, as the port delivers it.
    void feed(const QByteArray& bytes);
    // One turn of the event loop: due timers fire, deleted objects go.
    void settle();

    ReplayCounts counts() const;

    // Debug lines of the module's categories off (as a head unit runs), or on and
    // built in full but dropped by the message handler.
    static void setDebugLogging(bool on);

private:
    void watchDriver();

    QTemporaryDir m_dataDir;
    NullInputInjector m_keys;
    std::unique_ptr<CanbusModule> m_facade;
    SignalCounter m_counter;
};

} // namespace bench
