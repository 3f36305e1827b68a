#pragma once
#include <QByteArray>
#include <QtGlobal>

// Bounds-safe reads of a received frame. Any index outside the frame reads as 0, so a
// handler that looks further than a short frame reaches never leaves the buffer (and
// several vehicles' handlers do read past a type's minimum on purpose).
//
// Indexes count from the frame's first byte; d(n) counts data bytes, D0 being the first
// byte behind the header of the frame's family (byte 3 for 0x2E and FD frames, byte 4
// for AA 55 and 5A A5 frames).
class FrameReader
{
public:
    explicit FrameReader(const QByteArray& frame, int dataOffset = 3)
        : m_data(frame.constData()), m_size(frame.size()), m_dataOffset(dataOffset) {}
    // The reader only looks at the frame: it must not outlive it.
    FrameReader(QByteArray&&, int = 3) = delete;

    int size() const { return m_size; }
    // Number of data bytes present behind the header.
    int dataSize() const { return m_size > m_dataOffset ? m_size - m_dataOffset : 0; }
    bool has(int i) const { return i >= 0 && i < m_size; }

    quint8 at(int i) const { return has(i) ? static_cast<quint8>(m_data[i]) : quint8(0); }
    quint8 d(int n) const { return at(m_dataOffset + n); }

    // Bit b (0 = least significant) of byte i.
    bool bit(int i, int b) const { return (at(i) >> b) & 1; }
    // `count` bits of byte i starting at bit `low`.
    quint8 bits(int i, int low, int count) const
    {
        return quint8((at(i) >> low) & ((1u << count) - 1u));
    }
    quint8 highNibble(int i) const { return quint8(at(i) >> 4); }
    quint8 lowNibble(int i) const { return quint8(at(i) & 0x0F); }

    // Multi-byte values starting at byte i, most significant byte first (be) or last (le).
    quint16 be16(int i) const { return quint16((at(i) << 8) | at(i + 1)); }
    quint16 le16(int i) const { return quint16((at(i + 1) << 8) | at(i)); }
    quint32 be24(int i) const { return (quint32(at(i)) << 16) | (quint32(at(i + 1)) << 8) | at(i + 2); }
    quint32 le24(int i) const { return (quint32(at(i + 2)) << 16) | (quint32(at(i + 1)) << 8) | at(i); }
    quint32 be32(int i) const { return (quint32(be16(i)) << 16) | be16(i + 2); }
    quint32 le32(int i) const { return (quint32(le16(i + 2)) << 16) | le16(i); }

    // Two's complement forms.
    qint8 s8(int i) const { return static_cast<qint8>(at(i)); }
    qint16 sbe16(int i) const { return static_cast<qint16>(be16(i)); }
    qint16 sle16(int i) const { return static_cast<qint16>(le16(i)); }
    // Sign and magnitude, big-endian: 15 bits of value, bit 7 of byte i set for the
    // positive side (the steering angle of several boxes).
    int signMagnitude16(int i) const
    {
        const int value = be16(i) & 0x7FFF;
        return bit(i, 7) ? value : -value;
    }

    // `count` bytes from byte i, cut at the frame's end.
    QByteArray bytes(int i, int count) const
    {
        if (i < 0 || count <= 0 || i >= m_size)
            return QByteArray();
        return QByteArray(m_data + i, qMin(count, m_size - i));
    }
    // Everything from byte i to the end, without the last `trailer` bytes (a checksum).
    QByteArray tail(int i, int trailer = 1) const { return bytes(i, m_size - trailer - i); }

private:
    const char* m_data;
    int m_size;
    int m_dataOffset;
};

namespace canbus {
inline quint8 byteAt(const QByteArray& bytes, int i)
{
    return (i >= 0 && i < bytes.size()) ? static_cast<quint8>(bytes.at(i)) : quint8(0);
}
// Where D0 sits in a frame of each family.
constexpr int kDataOffset2E = 3;
constexpr int kDataOffsetFD = 3;
constexpr int kDataOffsetAA55 = 4;
}
