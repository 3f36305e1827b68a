#include "framesplitter.h"

#include "framereader.h"

namespace canbox {

using canbus::FrameFamily;

namespace {

// Acknowledgements that the head unit sends as a single byte.
struct ByteReply
{
    FrameFamily family;
    quint8 value;
    LinkItem::Kind kind;
};
constexpr ByteReply kByteReplies[] = {
    {FrameFamily::Start2E, 0xFF, LinkItem::Ack},
    {FrameFamily::Start2E, 0xF0, LinkItem::Nack},
    {FrameFamily::Start5AA5, 0xFF, LinkItem::Ack},
    {FrameFamily::Start5AA5, 0xFE, LinkItem::Nack},
};

// Acknowledgements that are frames of their own: AA 55 01 FF <type> cs, FE to refuse.
struct FrameReply
{
    FrameFamily family;
    quint8 type;
    LinkItem::Kind kind;
};
constexpr FrameReply kFrameReplies[] = {
    {FrameFamily::StartAA55, 0xFF, LinkItem::Ack},
    {FrameFamily::StartAA55, 0xFE, LinkItem::Nack},
};
constexpr int kAA55TypeIndex = 3;
constexpr int kAA55ReplyLength = 6;

const ByteReply* byteReply(FrameFamily family, quint8 value)
{
    for (const ByteReply& r : kByteReplies) {
        if (r.family == family && r.value == value)
            return &r;
    }
    return nullptr;
}

LinkItem::Kind frameKind(FrameFamily family, const QByteArray& frame)
{
    for (const FrameReply& r : kFrameReplies) {
        if (r.family == family && frame.size() == kAA55ReplyLength
            && canbus::byteAt(frame, kAA55TypeIndex) == r.type)
            return r.kind;
    }
    return LinkItem::Frame;
}

void flushJunk(QByteArray& junk, QList<LinkItem>& items)
{
    if (junk.isEmpty())
        return;
    items.append({LinkItem::Junk, junk, {}});
    junk.clear();
}

} // namespace

QList<LinkItem> FrameSplitter::feed(const QByteArray& bytes)
{
    m_buffer.append(bytes);
    return take(m_buffer.size() > kMaxPending);
}

QList<LinkItem> FrameSplitter::flush()
{
    return take(true);
}

QList<LinkItem> FrameSplitter::take(bool final)
{
    QList<LinkItem> items;
    while (!m_buffer.isEmpty()) {
        if (const ByteReply* r = byteReply(m_family, canbus::byteAt(m_buffer, 0))) {
            flushJunk(m_junk, items);
            items.append({r->kind, m_buffer.left(1), {}});
            m_buffer.remove(0, 1);
            continue;
        }
        int length = 0;
        QByteArray reply;
        const int r = canbus::checkFrame(m_family, m_buffer, length, reply);
        if (r == canbus::FrameIncomplete && !final)
            break;
        const bool extentKnown = length > 0 && length <= m_buffer.size();
        if (r == canbus::FrameOk && extentKnown) {
            flushJunk(m_junk, items);
            const QByteArray frame = m_buffer.left(length);
            const LinkItem::Kind kind = frameKind(m_family, frame);
            items.append({kind, frame, kind == LinkItem::Frame ? reply : QByteArray()});
            m_buffer.remove(0, length);
            continue;
        }
        if (r == canbus::FrameInvalid && extentKnown) {
            flushJunk(m_junk, items);
            items.append({LinkItem::BadChecksum, m_buffer.left(length), reply});
            m_buffer.remove(0, length);
            continue;
        }
        // Not the start of a frame, or the start of one that will never be finished.
        m_junk.append(m_buffer.at(0));
        m_buffer.remove(0, 1);
    }
    // Junk is held back until something else comes or nothing more does, so that
    // one burst of noise is one item however it was read.
    if (final || m_junk.size() >= kMaxPending)
        flushJunk(m_junk, items);
    return items;
}

} // namespace canbox
