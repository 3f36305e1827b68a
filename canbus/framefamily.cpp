#include "framefamily.h"

#include "framereader.h"

namespace canbus {

namespace {

// Sum of bytes first..last inclusive; bytes past the end count as 0.
unsigned sumBytes(const QByteArray& data, int first, int last)
{
    unsigned sum = 0;
    for (int i = first; i <= last; ++i)
        sum += byteAt(data, i);
    return sum;
}

void setByte(QByteArray& frame, int i, unsigned value)
{
    if (i >= 0 && i < frame.size())
        frame[i] = static_cast<char>(value & 0xFF);
}

int check2E(const QByteArray& data, int& frameLength, QByteArray& reply)
{
    const int size = data.size();
    if (byteAt(data, 0) != 0x2E)
        return FrameInvalid;
    if (size < 3)
        return FrameIncomplete;
    const int len = byteAt(data, 2);
    if (len == 0)
        return FrameInvalid;
    if (len + 3 >= size)
        return FrameIncomplete;
    const unsigned sum = sumBytes(data, 1, len + 2);
    frameLength = len + 4;
    if ((~sum & 0xFF) == byteAt(data, len + 3)) {
        makeAck(FrameFamily::Start2E, reply, 0xFF);
        return FrameOk;
    }
    makeNack(FrameFamily::Start2E, reply, 0xF0);
    return FrameInvalid;
}

// AA 55 and 5A A5 share the frame layout and checksum; they differ in how strictly
// the start is tested and in their acknowledgements.
int checkTwoByteStart(FrameFamily family, const QByteArray& data, int& frameLength,
                      QByteArray& reply)
{
    const int size = data.size();
    if (family == FrameFamily::StartAA55) {
        if (byteAt(data, 0) != 0xAA)
            return FrameInvalid;
        if (size == 1)
            return FrameIncomplete;
        if (byteAt(data, 1) != 0x55)
            return FrameInvalid;
        if (size == 2)
            return FrameIncomplete;
    } else {
        // The 5A A5 box is trusted on its second start byte.
        if (size < 3)
            return FrameIncomplete;
        if (byteAt(data, 0) != 0x5A)
            return FrameInvalid;
    }
    const int len = byteAt(data, 2);
    if (len == 0)
        return FrameInvalid;
    if (len + 4 >= size)
        return FrameIncomplete;
    const unsigned sum = sumBytes(data, 2, len + 3);
    frameLength = len + 5;
    const bool good = ((sum - 1) & 0xFF) == byteAt(data, len + 4);
    const quint8 type = byteAt(data, 3);
    const bool aa55 = family == FrameFamily::StartAA55;
    if (good) {
        makeAck(family, reply, aa55 ? type : ackValue(family));
        return FrameOk;
    }
    makeNack(family, reply, aa55 ? type : nackValue(family));
    return FrameInvalid;
}

bool fd8Sound(const QByteArray& data, int len)
{
    return (sumBytes(data, 1, len - 1) & 0xFF) == byteAt(data, len);
}

int checkFD(FrameFamily family, const QByteArray& data, int& frameLength)
{
    const int size = data.size();
    if (byteAt(data, 0) != 0xFD)
        return FrameInvalid;
    if (size < 3)
        return FrameIncomplete;
    const int len = byteAt(data, 1);
    if (len == 0)
        return FrameInvalid;
    if (len >= size)
        return FrameIncomplete;
    frameLength = len + 1;
    bool good;
    if (family == FrameFamily::StartFD16) {
        const unsigned sum = sumBytes(data, 1, len - 2) & 0xFFFF;
        good = sum == ((unsigned(byteAt(data, len - 1)) << 8) | byteAt(data, len));
    } else {
        good = fd8Sound(data, len);
    }
    return good ? FrameOk : FrameInvalid;
}

int checkFCFD(const QByteArray& data, int& frameLength)
{
    const int size = data.size();
    const quint8 start = byteAt(data, 0);
    if (start == 0xFC) {
        if (size < 3)
            return FrameIncomplete;
        const int len = byteAt(data, 1);
        if (len == 0)
            return FrameInvalid;
        if (len >= size)
            return FrameIncomplete;
        frameLength = len + 1;
        return fd8Sound(data, len) ? FrameOk : FrameInvalid;
    }
    if (start != 0xFD)
        return FrameInvalid;
    if (size < 3)
        return FrameIncomplete;
    int last;
    if (byteAt(data, 1) == 9) {
        // The 10-byte form is taken only once a further byte has arrived behind it.
        last = 9;
        frameLength = 10;
        if (size <= 10)
            return FrameIncomplete;
    } else {
        // Any other form: the whole buffer is one frame with its checksum at the end.
        last = size - 1;
        frameLength = size;
        if (size <= 5)
            return FrameIncomplete;
    }
    return (sumBytes(data, 1, last - 1) & 0xFF) == byteAt(data, last) ? FrameOk : FrameInvalid;
}

} // namespace

const char* familyName(FrameFamily family)
{
    switch (family) {
    case FrameFamily::Start2E: return "2E";
    case FrameFamily::StartAA55: return "AA55";
    case FrameFamily::Start5AA5: return "5AA5";
    case FrameFamily::StartFD8: return "FD8";
    case FrameFamily::StartFD16: return "FD16";
    case FrameFamily::StartFCFD: return "FCFD";
    }
    return "?";
}

int checkFrame(FrameFamily family, const QByteArray& data, int& frameLength, QByteArray& reply)
{
    switch (family) {
    case FrameFamily::Start2E:
        return check2E(data, frameLength, reply);
    case FrameFamily::StartAA55:
    case FrameFamily::Start5AA5:
        return checkTwoByteStart(family, data, frameLength, reply);
    case FrameFamily::StartFD8:
    case FrameFamily::StartFD16:
        return checkFD(family, data, frameLength);
    case FrameFamily::StartFCFD:
        return checkFCFD(data, frameLength);
    }
    return FrameInvalid;
}

void writeChecksum(FrameFamily family, QByteArray& frame)
{
    const int size = frame.size();
    switch (family) {
    case FrameFamily::Start2E:
        if (size >= 2)
            setByte(frame, size - 1, ~sumBytes(frame, 1, size - 2));
        break;
    case FrameFamily::StartAA55:
    case FrameFamily::Start5AA5:
        if (size >= 3)
            setByte(frame, size - 1, sumBytes(frame, 2, size - 2) - 1);
        break;
    case FrameFamily::StartFD8:
    case FrameFamily::StartFCFD:
        if (size >= 2)
            setByte(frame, size - 1, sumBytes(frame, 1, size - 2));
        break;
    case FrameFamily::StartFD16:
        if (size >= 3) {
            const unsigned sum = sumBytes(frame, 1, size - 3);
            setByte(frame, size - 2, sum >> 8);
            setByte(frame, size - 1, sum);
        }
        break;
    }
}

namespace {
void makeReply(FrameFamily family, QByteArray& out, quint8 value, quint8 aa55Code)
{
    switch (family) {
    case FrameFamily::Start2E:
    case FrameFamily::Start5AA5:
    // The FD boxes take no acknowledgement, so their check never makes one; asked
    // directly, these families give the plain one-byte form all the same.
    case FrameFamily::StartFD8:
    case FrameFamily::StartFD16:
    case FrameFamily::StartFCFD:
        out = QByteArray(1, static_cast<char>(value));
        break;
    case FrameFamily::StartAA55:
        out = QByteArray("\xAA\x55\x01\x00\x00\x00", 6);
        out[3] = static_cast<char>(aa55Code);
        out[4] = static_cast<char>(value);
        writeChecksum(family, out);
        break;
    }
}
} // namespace

void makeAck(FrameFamily family, QByteArray& out, quint8 value)
{
    makeReply(family, out, value, 0xFF);
}

void makeNack(FrameFamily family, QByteArray& out, quint8 value)
{
    makeReply(family, out, value, 0xFE);
}

quint8 ackValue(FrameFamily family)
{
    Q_UNUSED(family)
    return 0xFF;
}

quint8 nackValue(FrameFamily family)
{
    return family == FrameFamily::Start2E ? 0xF0 : 0xFE;
}

QByteArray buildFrame(FrameFamily family, quint8 type, const QByteArray& data)
{
    const int n = qMin(data.size(), 250);
    QByteArray frame;
    switch (family) {
    case FrameFamily::Start2E:
        frame.reserve(n + 4);
        frame.append('\x2E').append(char(type)).append(char(n));
        frame.append(data.constData(), n).append('\0');
        break;
    case FrameFamily::StartAA55:
    case FrameFamily::Start5AA5:
        frame.reserve(n + 5);
        frame.append(family == FrameFamily::StartAA55 ? "\xAA\x55" : "\x5A\xA5", 2);
        frame.append(char(n)).append(char(type));   // the length counts the data bytes
        frame.append(data.constData(), n).append('\0');
        break;
    case FrameFamily::StartFD8:
    case FrameFamily::StartFCFD:
        frame.reserve(n + 4);
        frame.append('\xFD').append(char(n + 3)).append(char(type));
        frame.append(data.constData(), n).append('\0');
        break;
    case FrameFamily::StartFD16:
        frame.reserve(n + 5);
        frame.append('\xFD').append(char(n + 4)).append(char(type));
        frame.append(data.constData(), n).append('\0').append('\0');
        break;
    }
    writeChecksum(family, frame);
    return frame;
}

QByteArray buildFrame(FrameFamily family, quint8 type, std::initializer_list<quint8> data)
{
    QByteArray bytes;
    bytes.reserve(int(data.size()));
    for (quint8 b : data)
        bytes.append(static_cast<char>(b));
    return buildFrame(family, type, bytes);
}

int walkMinimum(WalkVariant variant)
{
    switch (variant) {
    case WalkVariant::F: return 4;
    case WalkVariant::G: return 6;
    default: return 5;
    }
}

bool walkMarksConnected(WalkVariant variant)
{
    switch (variant) {
    case WalkVariant::A:
    case WalkVariant::D:
    case WalkVariant::E:
    case WalkVariant::F:
    case WalkVariant::H:
        return true;
    case WalkVariant::B:
    case WalkVariant::C:
    case WalkVariant::G:
        return false;
    }
    return false;
}

FrameWalker::FrameWalker(WalkVariant variant, const QByteArray& data)
    : m_data(data), m_variant(variant)
{
    if (data.size() < walkMinimum(variant))
        stop(0);
}

bool FrameWalker::stop(int consumed)
{
    m_consumed = consumed;
    m_done = true;
    return false;
}

bool FrameWalker::next()
{
    if (m_done)
        return false;
    const int size = m_data.size();
    const int pos = m_pos;
    if (m_stepped >= size)
        return stop(pos);   // pos differs from m_stepped only once it has wrapped
    const quint8 b0 = byteAt(m_data, pos);
    const quint8 b1 = byteAt(m_data, pos + 1);
    const quint8 b2 = byteAt(m_data, pos + 2);
    int length = 0;
    switch (m_variant) {
    case WalkVariant::A:
    case WalkVariant::B:
        if (b0 != 0x2E || b2 == 0 || pos + 3 + b2 >= size)
            return stop(size);   // junk or an incomplete tail is thrown away
        length = b2 + 4;
        break;
    case WalkVariant::C:
    case WalkVariant::D:
        if (pos + 2 >= size)
            return stop(pos);
        if (b0 != 0x2E || b2 == 0)
            return stop(size);
        if (pos + 3 + b2 >= size)
            return stop(pos);   // an incomplete tail waits for the rest
        length = b2 + 4;
        break;
    case WalkVariant::E:
        if (b0 != 0xFD || b1 == 0 || pos + b1 >= size)
            return stop(size);
        length = b1 + 1;
        break;
    case WalkVariant::F:
        if (b0 == 0xFD)
            length = b1 == 9 ? 10 : 6;   // fixed forms, taken even if short
        else if (b0 == 0xFC && b1 > 0 && pos + b1 < size)
            length = b1 + 1;
        else
            return stop(size);
        break;
    case WalkVariant::G:
        if (b0 != 0xAA || b1 != 0x55 || b2 == 0)
            return stop(size);
        // The first frame has passed the check; later ones must be whole.
        if (pos != 0 && pos + 4 + b2 >= size)
            return stop(pos);
        length = b2 + 5;
        break;
    case WalkVariant::H:
        if (b0 != 0x5A && b1 != 0xA5)
            return stop(size);
        if (b2 == 0 || pos + 4 + b2 >= size)
            return stop(size);
        length = b2 + 5;
        break;
    }
    m_start = pos;
    m_length = length;
    m_pos = (pos + length) & 0xFF;
    m_stepped += length;
    return true;
}

} // namespace canbus
