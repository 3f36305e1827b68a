#pragma once
// The microcontroller's side of the MCU link: the frames it sends, a reader for what
// the head unit sends back, and the MCU's part of a firmware update. The mcu-sim tool
// plays an MCU with it, and the link's tests play the MCU with it over a pty.

#include <QByteArray>
#include <QList>
#include <QString>

namespace mcusim {

// ---- frames the MCU sends ----

// 0x2E frames.
QByteArray keyFrame(quint8 number, quint8 state);     // state 1 pressed, 0 released
QByteArray ignitionFrame(bool on);
QByteArray nightModeFrame(bool night);

// 0xFF 0x55 frames: FF 55 <length> <bytes...> <checksum>, `body` being everything
// from byte 3 up to the checksum.
QByteArray ff55Frame(const QByteArray& body);
// action 1 down, 2 move, 3 up; x and y are 12-bit.
QByteArray touchFrame(quint8 action, int x, int y);
// FF 55 09 01 <a> <b> 00 F0 01 00 00 <checksum>: a request to the head unit.
QByteArray requestFrame(quint8 a, quint8 b);
QByteArray versionFrame(quint8 b4, quint8 b5, quint8 b6);
QByteArray updateReadyFrame();
QByteArray updateDoneFrame();
QByteArray packetRequestFrame(quint32 number);

// The packet count or number in bytes 11 to 14 of an update frame, high byte first.
quint32 updateNumber(const QByteArray& frame);

// ---- what the head unit sends ----

struct HeadUnitMessage
{
    enum Kind {
        Ack,        // the single byte 0xFF
        Nack,       // the single byte 0xF0
        Frame,      // an FF 55 frame with a good checksum
        BadFrame,   // an FF 55 frame whose checksum is wrong
        Junk,       // a byte that starts nothing
    };
    Kind kind = Junk;
    QByteArray bytes;
};

// Cuts the head unit's byte stream into acknowledgements and frames. A lone 0xFF
// at the end of what has arrived is held back until the next byte tells whether
// it is an acknowledgement or the start of a frame.
class HeadUnitReader
{
public:
    void feed(const QByteArray& bytes);
    // The next whole message, false when more bytes are needed.
    bool next(HeadUnitMessage& message);
    int pending() const { return m_buffer.size(); }

private:
    QByteArray m_buffer;
};

// A head-unit frame in words, for people watching the link.
QString describe(const QByteArray& frame);

// ---- the MCU's side of a firmware update ----

class UpdateTarget
{
public:
    enum class State { Idle, WaitingForSize, Receiving, WaitingForConfirmation, Done, Failed };

    // Replies to one frame of the head unit (an empty list when none is due).
    QList<QByteArray> handle(const QByteArray& frame);
    // A frame of the head unit whose checksum failed: a packet is asked for again.
    QList<QByteArray> handleBadFrame();

    // Before the first packet, ask once for the packet number one past the end; the
    // head unit must refuse it and carry on.
    void setAskOutOfRangeFirst(bool on) { m_askOutOfRange = on; }

    State state() const { return m_state; }
    bool inProgress() const;
    quint32 packetCount() const { return m_count; }
    quint32 packetsReceived() const { return quint32(m_image.size() / 128); }
    // The packets received so far, padding included.
    QByteArray image() const { return m_image; }
    QString error() const { return m_error; }

private:
    QList<QByteArray> fail(const QString& why);

    State m_state = State::Idle;
    quint32 m_count = 0;
    QByteArray m_image;
    QString m_error;
    bool m_askOutOfRange = false;
};

} // namespace mcusim
