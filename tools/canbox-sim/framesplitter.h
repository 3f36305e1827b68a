#pragma once
// Cuts what the head unit writes into frames, acknowledgements and junk, whatever
// the size of the reads: a frame split over several writes comes out whole once its
// last byte is in, and bytes that start no frame of the family come out as junk.

#include <QByteArray>
#include <QList>

#include "framefamily.h"

namespace canbox {

struct LinkItem
{
    enum Kind { Frame, Ack, Nack, BadChecksum, Junk };
    Kind kind = Junk;
    QByteArray bytes;
    // The family's answer: its acknowledgement of a frame, its refusal of a frame with
    // a bad checksum; empty where the family has none and for the other kinds.
    QByteArray reply;
};

class FrameSplitter
{
public:
    explicit FrameSplitter(canbus::FrameFamily family) : m_family(family) {}

    canbus::FrameFamily family() const { return m_family; }
    QList<LinkItem> feed(const QByteArray& bytes);
    // Nothing more is coming for what is buffered: whatever isn't a whole frame is junk.
    QList<LinkItem> flush();
    bool hasPending() const { return !m_buffer.isEmpty() || !m_junk.isEmpty(); }
    void clear()
    {
        m_buffer.clear();
        m_junk.clear();
    }

    // A frame longer than any family allows can't be waiting this long.
    static constexpr int kMaxPending = 1024;

private:
    QList<LinkItem> take(bool final);

    canbus::FrameFamily m_family;
    QByteArray m_buffer;
    QByteArray m_junk;   // noise read so far, reported with the next item or at a flush
};

} // namespace canbox
