#pragma once
#include <QByteArray>
#include <QtGlobal>

// Bounds-safe reads of a received frame. Any index outside the frame reads as 0, so a
// handler that looks further than a short frame reaches never leaves the buffer.
class FrameReader
{
public:
    explicit FrameReader(const QByteArray& frame, int dataOffset = 3)
        : m_data(frame.constData()), m_size(frame.size()), m_dataOffset(dataOffset) {}

    int size() const { return m_size; }
    // Byte i counted from the frame's first byte.
    quint8 at(int i) const
    {
        return (i >= 0 && i < m_size) ? static_cast<quint8>(m_data[i]) : quint8(0);
    }
    // Data byte n (D0 is the first byte behind the header of the frame's family).
    quint8 d(int n) const { return at(m_dataOffset + n); }
    bool bit(int i, int b) const { return (at(i) >> b) & 1; }
    // Big-endian 16-bit value from bytes i and i + 1.
    quint16 be16(int i) const { return quint16((at(i) << 8) | at(i + 1)); }
    quint16 le16(int i) const { return quint16((at(i + 1) << 8) | at(i)); }

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
}
