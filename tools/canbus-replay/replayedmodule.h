#pragma once
// The module in this process, as its host starts it, with a capture's bytes handed to
// its receive path as the port would deliver them: reassembly, check, acknowledgement,
// walk, the driver's parser, records, keys and signals. Its port is one end of a
// pseudo-terminal whose other end this object reads, so that every byte the module
// writes (acknowledgements, refusals, answers, requests) is seen as it leaves.
//
// One object serves the whole process (the module's manager is a singleton); each
// select() starts a driver afresh, so one capture can be played with protocol after
// protocol.

#include <QByteArray>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

#include "capturefile.h"
#include "framesplitter.h"
#include "hostoutput.h"
#include "inputinjector.h"
#include "keyrecorder.h"
#include "recordwatch.h"

class CanbusModule;
class CanbusInterface;

namespace replay {

struct Summary
{
    int protocol = 0;
    quint64 bytesIn = 0;     // bytes handed to the receive path
    quint64 accepted = 0;    // frames the walk handed to the driver's parser
    quint64 unknown = 0;     // of those, frames of a type the driver doesn't know
    quint64 refused = 0;     // frames the module refused (a refusal went back to the box)
    quint64 dropped = 0;     // bytes the reassembly threw away
    quint64 sent = 0;        // frames and acknowledgements the module wrote
    quint64 events = 0;      // records, keys and other signals shown

    // Frames the driver took and understood: what tells protocols apart.
    quint64 understood() const { return accepted - unknown; }
};

// Swallows the key events of the driver that only classifies frames.
class NoKeys : public InputInjector
{
public:
    int open(const char*, int) override { return 100; }
    int ioctl(int, unsigned long, unsigned long) override { return 0; }
    int ioctlData(int, unsigned long, void*, std::size_t) override { return 0; }
    int close(int) override { return 0; }
};

class ReplayedModule : public QObject
{
    Q_OBJECT
public:
    // Shows records, keys, signals and sent frames on `out`; with none it only counts.
    explicit ReplayedModule(host::HostOutput* out);
    ~ReplayedModule() override;
    void setOutput(host::HostOutput* out) { m_out = out; }

    // Whether the module and its port could be set up; if not, `error()` says why.
    bool isReady() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }

    // A new driver for `id`, started as a host starts one: selected, ready, greeted,
    // power on; an empty receive buffer and a fresh summary. False for an id that
    // names no protocol of the catalogue.
    bool select(int id);
    // One read of the port; the module's writes are taken in afterwards.
    void feed(const QByteArray& bytes);
    // Lets the module's timers run for `ms` (keys released late, answers sent later).
    void run(int ms);
    // Nothing more comes: what the module still wrote is taken in.
    void finish();

    Summary summary() const { return m_summary; }
    canbus::FrameFamily family() const;

    // Called with every line of the module's manager log; counts the frames the
    // reassembly handed on.
    void onReceivedDump(const QByteArray& buffer);

private:
    void tapFacade();
    void takeWrites();
    QByteArray readWrites();
    void settle();

    host::HostOutput* m_out;
    QString m_error;
    QTemporaryDir m_dataDir;
    int m_master = -1;
    int m_slave = -1;
    std::unique_ptr<host::KeyRecorder> m_keys;
    NoKeys m_noKeys;
    std::unique_ptr<CanbusModule> m_facade;
    std::unique_ptr<CanbusInterface> m_classifier;   // a second driver, asked only for frame types
    std::unique_ptr<canbox::FrameSplitter> m_writes;
    host::RecordWatch m_records;
    Summary m_summary;
    quint64 m_parsedBefore = 0;
    QByteArray m_handedOn;   // the buffer the reassembly handed on during the current feed
    bool m_handed = false;
};

} // namespace replay
