#pragma once
// Reads a fuzzer's byte string as a sequence of choices. Plain values come from the
// front; sizes that cut the input into reads come from the back, so that a mutation of
// the one leaves the other where it was. An exhausted input reads as zeroes and empty
// texts: every byte string is a valid case.
//
// Header only, without the fuzzing engine's headers, so that the regression suite can
// replay captured inputs with the ordinary compiler.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

namespace canbusfuzz {

class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : m_data(data), m_front(0), m_back(size)
    {
    }
    explicit FuzzInput(const QByteArray& bytes)
        : FuzzInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                    std::size_t(bytes.size()))
    {
    }

    bool empty() const { return m_front >= m_back; }
    std::size_t remaining() const { return m_back - m_front; }

    quint8 byte() { return empty() ? 0 : m_data[m_front++]; }
    quint8 backByte() { return empty() ? 0 : m_data[--m_back]; }
    bool flag() { return byte() & 1; }

    // Four bytes, least significant first; the whole int range is reachable.
    qint32 int32()
    {
        quint32 v = 0;
        for (int i = 0; i < 4; ++i)
            v |= quint32(byte()) << (8 * i);
        return qint32(v);
    }

    // Up to `n` bytes from the front.
    QByteArray bytes(std::size_t n)
    {
        const std::size_t take = n < remaining() ? n : remaining();
        QByteArray out(reinterpret_cast<const char*>(m_data + m_front), int(take));
        m_front += take;
        return out;
    }

    // The bytes up to the next 0 byte (which is consumed) or the end. A dictionary
    // word the engine inserts lands inside such a text as it is.
    QByteArray rawText()
    {
        std::size_t end = m_front;
        while (end < m_back && m_data[end] != 0)
            ++end;
        QByteArray out(reinterpret_cast<const char*>(m_data + m_front), int(end - m_front));
        m_front = end < m_back ? end + 1 : end;
        return out;
    }
    // As rawText, decoded as UTF-8: malformed sequences become replacement characters.
    QString text() { return QString::fromUtf8(rawText()); }

private:
    const std::uint8_t* m_data;
    std::size_t m_front;
    std::size_t m_back;
};

// The rest of an input as reads: the bytes from the front, the size of each read in
// turn from the back (1 to 255; 0 means "all the rest"). The two meet in the middle, so
// that a mutation of the bytes leaves the cut points alone and the other way round.
inline QList<QByteArray> takeReads(FuzzInput& in)
{
    QList<QByteArray> reads;
    while (!in.empty()) {
        const quint8 n = in.backByte();
        const QByteArray read = in.bytes(n == 0 ? in.remaining() : n);
        if (!read.isEmpty())
            reads.append(read);
    }
    return reads;
}

// The tail of an input that takeReads() reads as these reads; a read longer than 255
// bytes is cut in two.
inline QByteArray encodeReads(const QList<QByteArray>& reads)
{
    QByteArray stream;
    QByteArray sizes;
    for (const QByteArray& read : reads) {
        for (int pos = 0; pos < read.size(); pos += 255) {
            const QByteArray part = read.mid(pos, 255);
            stream += part;
            sizes.prepend(char(part.size()));
        }
    }
    return stream + sizes;
}

} // namespace canbusfuzz
