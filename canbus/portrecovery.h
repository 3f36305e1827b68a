#pragma once
// Brings a serial link back after its device went away and returned: a pulled USB
// adapter, a box that lost power with its cable, the far end of a pseudo-terminal
// closing. Both the CAN box link and the MCU link use it.
//
// Such a device reports its error again and again, thousands of times a second,
// until the port is closed, so the first report closes the port and logs one line.
// The same path is then tried once a second with the same settings until it opens,
// which logs one more line and hands over to the owner's resume step. A port that
// never opened is not watched: that failure belongs to whoever opened it.

#include <QBasicTimer>
#include <QObject>
#include <QSerialPort>
#include <QString>

#include <functional>

class QLoggingCategory;

class PortRecovery : public QObject
{
    Q_OBJECT
public:
    using LogCategory = const QLoggingCategory& (*)();
    // Opens the port again with the owner's settings; true when it is open.
    using Reopen = std::function<bool()>;
    // Runs once the port is open again, before any byte of the new device is read.
    using Resumed = std::function<void()>;

    static constexpr int kReopenPeriodMs = 1000;

    // Lives as long as the port: it is the port's child, so its steps never run on a
    // port that is gone. The owner of the steps must outlive the port.
    PortRecovery(QSerialPort* port, LogCategory category, const QString& tag, Reopen reopen,
                 Resumed resumed);

    // The errors that mean the device behind an open port is gone.
    static bool isLoss(QSerialPort::SerialPortError error);

    bool isRecovering() const { return m_timer.isActive(); }
    // Drops a recovery under way, for an owner that opens the port its own way.
    void cancel();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void onError(QSerialPort::SerialPortError error);
    void tryReopen();
    QString devicePath() const;

    QSerialPort* m_port;
    LogCategory m_category;
    QString m_tag;
    Reopen m_reopen;
    Resumed m_resumed;
    QBasicTimer m_timer;
};
