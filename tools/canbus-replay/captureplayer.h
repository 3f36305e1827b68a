#pragma once
// Plays a capture's reads into a module, in order, as fast as it can or with the
// capture's own timing, and keeps the capture's time for the output lines.

#include "capturefile.h"
#include "replayedmodule.h"

namespace replay {

struct PlayOptions
{
    bool timed = false;     // wait between reads as the capture did
    int lingerMs = 0;       // after the last read, let the module's timers run this long
};

class CapturePlayer
{
public:
    CapturePlayer(ReplayedModule& module, const PlayOptions& options) : m_module(module), m_options(options) {}

    // Selects `protocol` and plays every read of `capture` into it; the writes the
    // capture holds were the head unit's, and are only counted.
    Summary play(const canbox::Capture& capture, int protocol);

    // The time of the read being played, in seconds of the capture.
    double seconds() const { return m_seconds; }
    int capturedWrites() const { return m_capturedWrites; }

private:
    void feed(const canbox::CaptureEntry& entry, canbox::FrameSplitter* raw);

    ReplayedModule& m_module;
    PlayOptions m_options;
    double m_seconds = 0;
    int m_capturedWrites = 0;
};

} // namespace replay
