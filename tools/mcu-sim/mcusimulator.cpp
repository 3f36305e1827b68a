#include "mcusimulator.h"

#include "framefamily.h"
#include "framereader.h"
#include "serialportobj.h"

#include <initializer_list>

using canbus::byteAt;

namespace mcusim {

namespace {

constexpr int kPacketSize = 128;
constexpr quint8 kHeadUnitUpdate = 0x86;
constexpr quint8 kMcuUpdate = 0x08;

QByteArray bytes(std::initializer_list<quint8> list)
{
    QByteArray out;
    for (quint8 b : list)
        out.append(char(b));
    return out;
}

QByteArray bigEndian32(quint32 value)
{
    return bytes({quint8(value >> 24), quint8(value >> 16), quint8(value >> 8), quint8(value)});
}

// A short update frame of the MCU: FF 55 09 08 <step> 00 ... <checksum>.
QByteArray mcuUpdateFrame(quint8 step)
{
    QByteArray body(8, '\0');
    body[0] = char(kMcuUpdate);
    body[1] = char(step);
    return ff55Frame(body);
}

// Command types the head unit sends with a meaning worth telling.
struct Named { int type; const char* text; };
constexpr Named kNamedCommands[] = {
    {0, "source: other"},
    {5, "source: usb or card"},
    {8, "projection: on"},
    {9, "projection: off"},
    {17, "source: carlife"},
    {18, "source: carplay"},
    {19, "request acknowledged"},
    {29, "heartbeat"},
    {30, "selection"},
    {35, "reversing mute"},
};

QString commandName(int type, int param)
{
    for (const Named& n : kNamedCommands) {
        if (n.type != type)
            continue;
        QString text = QStringLiteral("command %1 (%2)").arg(type).arg(QLatin1String(n.text));
        if (type == 30 || type == 35)
            text += QStringLiteral(" %1").arg(param);
        return text;
    }
    return QStringLiteral("command %1").arg(type);
}

} // namespace

QByteArray keyFrame(quint8 number, quint8 state)
{
    return canbus::buildFrame(canbus::FrameFamily::Start2E, 0x06, {number, state});
}

QByteArray ignitionFrame(bool on)
{
    return canbus::buildFrame(canbus::FrameFamily::Start2E, 0x09, {quint8(on ? 1 : 0)});
}

QByteArray nightModeFrame(bool night)
{
    return canbus::buildFrame(canbus::FrameFamily::Start2E, 0x08, {quint8(night ? 1 : 0), 0xFF});
}

quint32 updateNumber(const QByteArray& frame)
{
    quint32 value = 0;
    for (int i = 11; i < 15; ++i)
        value = (value << 8) | byteAt(frame, i);
    return value;
}

QByteArray ff55Frame(const QByteArray& body)
{
    const int length = qMin(body.size() + 1, 255);
    QByteArray frame = bytes({0xFF, 0x55, quint8(length)});
    frame.append(body.left(length - 1));
    frame.append('\0');
    SerialPortObj::setChecksum(frame);
    return frame;
}

QByteArray touchFrame(quint8 action, int x, int y)
{
    const int cx = qBound(0, x, 0xFFF);
    const int cy = qBound(0, y, 0xFFF);
    return ff55Frame(bytes({0x05, action, quint8(cx & 0xFF), quint8(((cx >> 4) & 0xF0) | (cy >> 8)),
                            quint8(cy & 0xFF), 0x00, 0x00, 0x00}));
}

QByteArray requestFrame(quint8 a, quint8 b)
{
    return ff55Frame(bytes({0x01, a, b, 0x00, 0xF0, 0x01, 0x00, 0x00}));
}

QByteArray versionFrame(quint8 b4, quint8 b5, quint8 b6)
{
    return ff55Frame(bytes({0x02, b4, b5, b6, 0xF0, 0x01, 0x00, 0x00}));
}

QByteArray updateReadyFrame()
{
    return mcuUpdateFrame(0x01);
}

QByteArray updateDoneFrame()
{
    return mcuUpdateFrame(0x03);
}

QByteArray packetRequestFrame(quint32 number)
{
    QByteArray body(8, '\0');
    body[0] = char(kMcuUpdate);
    body[1] = char(0x02);
    body.append(bigEndian32(number));
    return ff55Frame(body);
}

// ---- HeadUnitReader ----

void HeadUnitReader::feed(const QByteArray& bytes)
{
    m_buffer.append(bytes);
}

bool HeadUnitReader::next(HeadUnitMessage& message)
{
    if (m_buffer.isEmpty())
        return false;
    const quint8 first = byteAt(m_buffer, 0);
    int take = 1;
    HeadUnitMessage::Kind kind = HeadUnitMessage::Junk;
    if (first == 0xF0) {
        kind = HeadUnitMessage::Nack;
    } else if (first == 0xFF) {
        if (m_buffer.size() < 2)
            return false;
        if (byteAt(m_buffer, 1) != 0x55) {
            kind = HeadUnitMessage::Ack;
        } else {
            if (m_buffer.size() < 3)
                return false;
            const int length = byteAt(m_buffer, 2);
            if (length > 0) {
                if (m_buffer.size() < length + 3)
                    return false;
                take = length + 3;
                QByteArray check = m_buffer.left(take);
                SerialPortObj::setChecksum(check);
                kind = check == m_buffer.left(take) ? HeadUnitMessage::Frame : HeadUnitMessage::BadFrame;
            }
        }
    }
    message.kind = kind;
    message.bytes = m_buffer.left(take);
    m_buffer.remove(0, take);
    return true;
}

QString describe(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (f.at(0) != 0xFF || f.at(1) != 0x55)
        return QStringLiteral("not a frame");
    if (f.at(3) == kHeadUnitUpdate) {
        switch (f.at(4)) {
        case 0x00: return QStringLiteral("update: start");
        case 0x01: return QStringLiteral("update: %1 packets").arg(updateNumber(frame));
        case 0x02: return QStringLiteral("update: packet %1").arg(updateNumber(frame));
        case 0x03: return QStringLiteral("update: finished");
        default: return QStringLiteral("update: unknown step %1").arg(f.at(4));
        }
    }
    for (int type = 0; type <= 35; ++type) {
        for (int param = 0; param <= 3; ++param) {
            if (SerialPortObj::commandFrame(type, param) == frame)
                return commandName(type, param);
        }
    }
    return QStringLiteral("unknown frame");
}

// ---- UpdateTarget ----

bool UpdateTarget::inProgress() const
{
    return m_state == State::WaitingForSize || m_state == State::Receiving
        || m_state == State::WaitingForConfirmation;
}

QList<QByteArray> UpdateTarget::fail(const QString& why)
{
    m_state = State::Failed;
    m_error = why;
    return {};
}

QList<QByteArray> UpdateTarget::handle(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (f.at(0) != 0xFF || f.at(1) != 0x55 || f.at(3) != kHeadUnitUpdate)
        return {};
    const quint8 step = f.at(4);

    if (step == 0x00) {
        if (frame.size() != 12)
            return fail(QStringLiteral("start frame of %1 bytes").arg(frame.size()));
        m_state = State::WaitingForSize;
        m_count = 0;
        m_image.clear();
        m_error.clear();
        return {updateReadyFrame()};
    }
    if (step == 0x01) {
        if (m_state != State::WaitingForSize)
            return fail(QStringLiteral("packet count without a start"));
        if (frame.size() != 16)
            return fail(QStringLiteral("size frame of %1 bytes").arg(frame.size()));
        m_count = updateNumber(frame);
        if (m_count == 0) {
            m_state = State::WaitingForConfirmation;
            return {updateDoneFrame()};
        }
        m_state = State::Receiving;
        QList<QByteArray> replies;
        if (m_askOutOfRange)
            replies << packetRequestFrame(m_count);
        replies << packetRequestFrame(0);
        return replies;
    }
    if (step == 0x02) {
        if (m_state != State::Receiving)
            return fail(QStringLiteral("a packet nobody asked for"));
        if (frame.size() != 15 + kPacketSize + 1)
            return fail(QStringLiteral("packet frame of %1 bytes").arg(frame.size()));
        const quint32 number = updateNumber(frame);
        const quint32 expected = packetsReceived();
        if (number != expected)
            return fail(QStringLiteral("packet %1 where %2 was asked for").arg(number).arg(expected));
        m_image.append(frame.mid(15, kPacketSize));
        if (packetsReceived() < m_count)
            return {packetRequestFrame(packetsReceived())};
        m_state = State::WaitingForConfirmation;
        return {updateDoneFrame()};
    }
    if (step == 0x03) {
        if (m_state != State::WaitingForConfirmation)
            return fail(QStringLiteral("finished before all packets arrived"));
        m_state = State::Done;
        return {};
    }
    return {};
}

QList<QByteArray> UpdateTarget::handleBadFrame()
{
    if (m_state == State::Receiving)
        return {packetRequestFrame(packetsReceived())};
    return {};
}

} // namespace mcusim
