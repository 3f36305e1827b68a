#pragma once
// Selects one driver through CanObj, as the module does, and records what it does:
// frames it sends, keys it injects, replies of the frame check. Each harness starts
// from a fresh manager, a fresh settings directory and a recording input device.

#include <QList>
#include <QPair>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "canobj.h"
#include "inputinjector.h"

class DriverHarness
{
public:
    explicit DriverHarness(int id, bool sendConnect = false);
    ~DriverHarness();

    CanObj* manager() const { return CanObj::instance(); }
    CanbusInterface* driver() const { return CanObj::instance()->currentDriver(); }

    // Passes bytes as the link would: the frame check, its reply, then the walk.
    // Returns the check's result code.
    int feed(const QByteArray& bytes);

    // Frames the manager sent towards the box (driver frames, connect, disconnect).
    QList<QByteArray> sentFrames() const;
    void clearSent() { m_sent->clear(); }
    QList<QByteArray> replies;
    // (virtual keyboard number, pressed) for every key that reached the key device.
    QList<QPair<int, int>> keys() const;
    // The same, flattened: number, pressed, number, pressed, ...
    QList<int> keyEvents() const;
    RecordingInputInjector& injector() { return m_injector; }

    // Everything the current driver does from now on: each of its signals, each key it
    // injects and each frame it sends; activity() counts them all.
    void watchActivity();
    int activity() const;

private:
    QTemporaryDir m_dataDir;
    RecordingInputInjector m_injector;
    std::unique_ptr<QSignalSpy> m_sent;
    std::vector<std::unique_ptr<QSignalSpy>> m_driverSignals;
    int m_keysBefore = 0;
    int m_sentBefore = 0;
};
