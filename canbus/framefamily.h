#pragma once
// The six kinds of link frame between the head unit and a CAN box. A family fixes a
// frame's start, length rule, checksum and acknowledgement; what a type byte means is
// the driver's business. Each family is written here once and drivers only name theirs.

#include <QByteArray>
#include <initializer_list>

namespace canbus {

enum class FrameFamily : quint8 {
    Start2E,     // 2E type len data.. cs              cs = ~sum(type..data)
    StartAA55,   // AA 55 len type data.. cs           cs = sum(len..data) - 1, 6-byte acks
    Start5AA5,   // 5A A5 len type data.. cs           checksum as AA 55, one-byte acks
    StartFD8,    // FD len type data.. cs              cs = sum(len..data), no acks
    StartFD16,   // FD len type data.. csHi csLo       16-bit sum, no acks
    StartFCFD,   // FC as FD8; FD with fixed 10- or 6-byte forms, no acks
};

// How a driver walks a checked buffer. The variants differ in what they do with an
// incomplete tail (drop it or wait for it) and in whether every frame marks the box
// as connected.
enum class WalkVariant : quint8 { A, B, C, D, E, F, G, H };

// Result codes of checkFrame.
enum CheckResult : int {
    FrameOk = 0,
    FrameIncomplete = 1,
    FrameInvalid = -1,
};

const char* familyName(FrameFamily family);

// Looks at the first frame in `data`: 0 good, 1 incomplete, -1 not a frame or bad
// checksum. frameLength is set once the frame's extent is known; reply gets the ack
// or nack where the family has them.
int checkFrame(FrameFamily family, const QByteArray& data, int& frameLength, QByteArray& reply);

// Writes the checksum into the last byte(s) of a frame that has its final length.
void writeChecksum(FrameFamily family, QByteArray& frame);

// Acknowledgement of a frame: one byte `value`, except AA 55 where `value` is the type
// of the frame answered and the reply is AA 55 01 FF type cs (FE for a refusal).
// The FD families give the plain one-byte form too, though their check never asks
// for a reply: the boxes of those families don't expect one.
void makeAck(FrameFamily family, QByteArray& out, quint8 value);
void makeNack(FrameFamily family, QByteArray& out, quint8 value);
// The byte values a check puts into makeAck / makeNack for a given frame.
quint8 ackValue(FrameFamily family);
quint8 nackValue(FrameFamily family);

// Outbound frame: start, length as the family counts it, type, data, checksum.
QByteArray buildFrame(FrameFamily family, quint8 type, const QByteArray& data);
QByteArray buildFrame(FrameFamily family, quint8 type, std::initializer_list<quint8> data);

// Minimal buffer size below which a walk does nothing and reports 0 bytes used.
int walkMinimum(WalkVariant variant);
bool walkMarksConnected(WalkVariant variant);

// Iterates over the frames of a buffer whose first frame has passed checkFrame.
//
//   FrameWalker walk(variant, buffer);
//   while (walk.next()) handle(buffer.mid(walk.frameStart(), walk.frameLength()));
//   return walk.consumed();
//
// Positions are kept in 8 bits, as the boxes' firmware counterparts do: a buffer of
// more than 255 bytes of frames makes the consumed count wrap. To stay finite on such
// a buffer the walk ends once it has stepped over as many bytes as the buffer holds.
class FrameWalker
{
public:
    FrameWalker(WalkVariant variant, const QByteArray& data);

    bool next();
    int frameStart() const { return m_start; }
    int frameLength() const { return m_length; }
    // Bytes the caller may drop from the front; valid once next() returned false.
    int consumed() const { return m_consumed; }

private:
    bool stop(int consumed);

    const QByteArray& m_data;
    WalkVariant m_variant;
    int m_pos = 0;
    int m_stepped = 0;
    int m_start = 0;
    int m_length = 0;
    int m_consumed = 0;
    bool m_done = false;
};

} // namespace canbus
