#include "portrecovery.h"

#include <QTimerEvent>

#include <utility>

#include "canbuslog.h"

PortRecovery::PortRecovery(QSerialPort* port, LogCategory category, const QString& tag,
                           Reopen reopen, Resumed resumed)
    : QObject(port)
    , m_port(port)
    , m_category(category)
    , m_tag(tag)
    , m_reopen(std::move(reopen))
    , m_resumed(std::move(resumed))
{
    connect(port, &QSerialPort::errorOccurred, this, &PortRecovery::onError);
}

bool PortRecovery::isLoss(QSerialPort::SerialPortError error)
{
    switch (error) {
    case QSerialPort::ResourceError:
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::DeviceNotFoundError:
        return true;
    default:
        return false;
    }
}

void PortRecovery::cancel()
{
    m_timer.stop();
}

// Only an open port is closed and watched: the failed opens of the retries report
// errors too, and those must neither log nor start anything.
void PortRecovery::onError(QSerialPort::SerialPortError error)
{
    if (!isLoss(error) || !m_port->isOpen())
        return;
    CB_ERROR(m_category, m_tag) << "port lost:" << m_port->errorString() << "- reopening every"
                                << kReopenPeriodMs << "ms";
    m_port->close();
    m_port->clearError();
    if (!m_timer.isActive())
        m_timer.start(kReopenPeriodMs, Qt::CoarseTimer, this);
}

void PortRecovery::tryReopen()
{
    if (!m_port->isOpen() && !m_reopen()) {
        m_port->clearError();
        return;
    }
    m_timer.stop();
    CB_ERROR(m_category, m_tag) << "port reopened:" << devicePath();
    if (m_resumed)
        m_resumed();
}

// QSerialPort keeps a device under /dev by its short name; the log shows the path
// that was opened.
QString PortRecovery::devicePath() const
{
    const QString name = m_port->portName();
    return name.contains(QLatin1Char('/')) ? name : QStringLiteral("/dev/") + name;
}

void PortRecovery::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId()) {
        tryReopen();
        return;
    }
    QObject::timerEvent(event);
}
