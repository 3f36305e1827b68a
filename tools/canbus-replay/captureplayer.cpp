#include "captureplayer.h"

#include <QElapsedTimer>

#include <algorithm>

#include <memory>

namespace replay {

namespace {
constexpr int kRawReadSize = 256;
}

Summary CapturePlayer::play(const canbox::Capture& capture, int protocol)
{
    m_seconds = 0;
    m_capturedWrites = 0;
    if (!m_module.select(protocol))
        return Summary();
    // Raw bytes came off the port in reads nobody kept: they are cut where frames of
    // the protocol's family begin and end, as a port would mostly deliver them.
    std::unique_ptr<canbox::FrameSplitter> raw;
    if (capture.kind == canbox::Capture::Raw)
        raw.reset(new canbox::FrameSplitter(m_module.family()));

    QElapsedTimer clock;
    clock.start();
    const double start = capture.entries.isEmpty() ? 0 : std::max(0.0, capture.entries.first().seconds);
    for (const canbox::CaptureEntry& entry : capture.entries) {
        if (entry.seconds >= 0) {
            m_seconds = entry.seconds;
            const qint64 due = qint64((entry.seconds - start) * 1000);
            if (m_options.timed && due > clock.elapsed())
                m_module.run(int(due - clock.elapsed()));
        }
        feed(entry, raw.get());
    }
    if (raw) {
        for (const canbox::LinkItem& item : raw->flush())
            m_module.feed(item.bytes);
    }
    if (m_options.lingerMs > 0)
        m_module.run(m_options.lingerMs);
    m_module.finish();
    return m_module.summary();
}

void CapturePlayer::feed(const canbox::CaptureEntry& entry, canbox::FrameSplitter* raw)
{
    if (entry.direction == canbox::CaptureEntry::Out) {
        ++m_capturedWrites;
        return;
    }
    if (!raw) {
        m_module.feed(entry.bytes);
        return;
    }
    // A few hundred bytes at a time, as reads come: the splitter's buffer stays short.
    for (int at = 0; at < entry.bytes.size(); at += kRawReadSize) {
        for (const canbox::LinkItem& item : raw->feed(entry.bytes.mid(at, kRawReadSize)))
            m_module.feed(item.bytes);
    }
}

} // namespace replay
