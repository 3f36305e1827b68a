#pragma once
// A SerialPortObj on the slave of a pseudo-terminal with the test playing the MCU on
// the master, and every key and touch event recorded instead of reaching a device.

#include <QByteArray>
#include <QScopedPointer>
#include <QSignalSpy>
#include <QString>

#include "inputinjector.h"
#include "ptypair.h"

class SerialPortObj;

class McuTestLink
{
public:
    McuTestLink();
    ~McuTestLink();
    McuTestLink(const McuTestLink&) = delete;
    McuTestLink& operator=(const McuTestLink&) = delete;

    // Creates the link on the pty (or on `portName` when given, such as a path that
    // doesn't exist). The recorder is installed first, so the touch device's open is
    // recorded too; paths told to fail with input().failOpen() before start() fail.
    bool start(const QString& portName = QString());
    void stop();

    SerialPortObj* link() const { return m_link.data(); }
    RecordingInputInjector& input() { return m_input; }
    PtyPair& pty() { return m_pty; }
    QSignalSpy& accSpy() { return *m_accSpy; }

    // Writes as the MCU.
    bool send(const QByteArray& bytes);
    // Puts a barrier frame behind what was sent and waits for it: all that went before
    // has then been parsed. Only good after whole frames or junk. The barrier sets
    // the link's MCU version.
    bool sync();
    // Sends a train of good frames until the last of them gets through, however the
    // bytes before left the link: true once it is back in step.
    bool resync();
    // Everything the head unit has written up to now. A heartbeat is asked for and
    // read back as the end mark, so nothing still in flight is missed.
    QByteArray takeSent(int timeoutMs = 3000);

    // Key ioctls that reached the MCU's key device, as (request, value).
    QList<QPair<unsigned long, unsigned long>> keyEvents() const;
    // Ioctls on the touch device.
    QList<RecordingInputInjector::Call> touchEvents() const;

private:
    QByteArray nextBarrier(QString& version);
    bool waitForVersion(const QString& version, int timeoutMs);

    PtyPair m_pty;
    RecordingInputInjector m_input;
    QScopedPointer<SerialPortObj> m_link;
    QScopedPointer<QSignalSpy> m_accSpy;
    quint8 m_barrier = 0;
};
