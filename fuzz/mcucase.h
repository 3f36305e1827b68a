#pragma once
// An MCU case: what the microcontroller sends, in reads, to a fresh link on a
// pseudo-terminal, with or without a firmware update under way.
//
//   byte 0, 1        bit 0 of byte 0: an update runs; the rest of the two bytes, read
//                    as (byte0 >> 1) | byte1 << 7, modulo 4097: the firmware's size
//   then             the byte stream, from the front
//   from the back    the size of each read in turn, 1 to 255; 0 means "all the rest"
//
// Header only, so that the regression suite builds it with the ordinary compiler.

#include <QByteArray>
#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QList>
#include <QTemporaryDir>

#include <memory>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "datasavecontrol.h"
#include "fuzzinput.h"
#include "inputinjector.h"
#include "serialportobj.h"

namespace canbusfuzz {

constexpr int kMaxFirmwareSize = 4096;   // 32 packets: every part of the dialogue, quickly

struct McuCase
{
    bool update = false;
    int firmwareSize = 0;
    QList<QByteArray> reads;
};

inline McuCase decodeMcu(FuzzInput in)
{
    McuCase c;
    const quint8 low = in.byte();
    const quint8 high = in.byte();
    c.update = low & 1;
    c.firmwareSize = ((low >> 1) | (high << 7)) % (kMaxFirmwareSize + 1);
    c.reads = takeReads(in);
    return c;
}

// The input that decodes to this case; a read longer than 255 bytes is cut in two.
inline QByteArray encodeMcu(bool update, int firmwareSize, const QList<QByteArray>& reads)
{
    QByteArray head;
    head.append(char((update ? 1 : 0) | ((firmwareSize & 0x7F) << 1)));
    head.append(char(firmwareSize >> 7));
    return head + encodeReads(reads);
}

// The link's world: a pseudo-terminal for its port (so that it opens, and the update
// dialogue runs), a recorder for its keys and touches, a settings folder of its own.
class McuFuzzLink
{
public:
    McuFuzzLink()
    {
        char name[256] = {};
        if (::openpty(&m_master, &m_slave, name, nullptr, nullptr) == 0) {
            termios raw{};
            ::tcgetattr(m_slave, &raw);
            ::cfmakeraw(&raw);
            ::tcsetattr(m_slave, TCSANOW, &raw);
            qputenv("CANBUS_MCU_PORT", name);
        }
        qputenv("CANBUS_DATA_DIR", m_dir.path().toLocal8Bit());
        DataSaveControl::reload();
        InputInjector::install(&m_input);
        m_firmwarePath = m_dir.filePath(QStringLiteral("firmware.bin"));
    }
    ~McuFuzzLink()
    {
        InputInjector::install(nullptr);
        if (m_master >= 0)
            ::close(m_master);
        if (m_slave >= 0)
            ::close(m_slave);
    }
    McuFuzzLink(const McuFuzzLink&) = delete;
    McuFuzzLink& operator=(const McuFuzzLink&) = delete;

    QString dataDir() const { return m_dir.path(); }

    // A new link for each case, so that a captured case replays alone.
    void run(const McuCase& c)
    {
        auto link = std::make_unique<SerialPortObj>();
        if (c.update) {
            QFile firmware(m_firmwarePath);
            if (firmware.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
                QByteArray bytes(c.firmwareSize, Qt::Uninitialized);
                for (int i = 0; i < bytes.size(); ++i)
                    bytes[i] = char(i * 31 + 7);
                firmware.write(bytes);
            }
            firmware.close();
            link->startMcuUpdate(m_firmwarePath);
        }
        for (const QByteArray& read : c.reads)
            link->receive(read);
        link->onKeyLongPressed();   // a key held past its time, whatever is pressed
        QCoreApplication::processEvents();   // what the link wrote leaves the port
        link.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        drain();
        m_input.clear();
    }

private:
    void drain()
    {
        char chunk[4096];
        while (m_master >= 0) {
            fd_set in;
            FD_ZERO(&in);
            FD_SET(m_master, &in);
            timeval none{0, 0};
            if (::select(m_master + 1, &in, nullptr, nullptr, &none) <= 0 || ::read(m_master, chunk, sizeof chunk) <= 0)
                return;
        }
    }

    QTemporaryDir m_dir;
    RecordingInputInjector m_input;
    QString m_firmwarePath;
    int m_master = -1;
    int m_slave = -1;
};

} // namespace canbusfuzz
