#include "boxlink.h"

#include <QSerialPort>
#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace canbox {

BoxLink::BoxLink(QObject* parent)
    : QObject(parent)
{
    connect(&m_watch, &QTimer::timeout, this, &BoxLink::watchPty);
}

BoxLink::~BoxLink()
{
    delete m_reader;
    if (m_master >= 0)
        ::close(m_master);
}

bool BoxLink::openPty(QString* error)
{
    int slave = -1;
    char name[256] = {};
    if (::openpty(&m_master, &slave, name, nullptr, nullptr) != 0) {
        if (error)
            *error = QStringLiteral("cannot create a pseudo-terminal: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        m_master = -1;
        return false;
    }
    // Raw from the start, so that nothing is echoed or translated before the head
    // unit's serial port sets its own mode. The setting outlives this descriptor.
    termios raw{};
    if (::tcgetattr(slave, &raw) == 0) {
        ::cfmakeraw(&raw);
        ::tcsetattr(slave, TCSANOW, &raw);
    }
    // Closing our copy of the slave lets the master report, by a hang-up, whether
    // anyone else holds it open.
    ::close(slave);
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    ::fcntl(m_master, F_SETFD, FD_CLOEXEC);
    m_peerPath = QString::fromLocal8Bit(name);

    m_reader = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    m_reader->setEnabled(false);
    connect(m_reader, &QSocketNotifier::activated, this, &BoxLink::readPty);
    m_watch.start(kWatchMs);
    return true;
}

bool BoxLink::openDevice(const QString& path, int baudRate, QString* error)
{
    m_port = new QSerialPort(path, this);
    m_port->setBaudRate(baudRate);
    m_port->setDataBits(QSerialPort::Data8);
    m_port->setParity(QSerialPort::NoParity);
    m_port->setStopBits(QSerialPort::OneStop);
    m_port->setFlowControl(QSerialPort::NoFlowControl);
    if (!m_port->open(QIODevice::ReadWrite)) {
        if (error)
            *error = QStringLiteral("cannot open %1: %2").arg(path, m_port->errorString());
        return false;
    }
    m_peerPath = path;
    connect(m_port, &QSerialPort::readyRead, this, [this] { emit received(m_port->readAll()); });
    connect(m_port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError e) {
        if (e == QSerialPort::ResourceError) {
            setPresent(false);
            emit failed(m_port->errorString());
        }
    });
    // A device has no way to tell that the far end listens: take it as there.
    QTimer::singleShot(0, this, [this] { setPresent(true); });
    return true;
}

bool BoxLink::write(const QByteArray& bytes)
{
    if (!m_present)
        return false;
    if (m_port)
        return m_port->write(bytes) == bytes.size();
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;   // the head unit doesn't read: the rest is lost, as on a wire
        done += n;
    }
    return true;
}

void BoxLink::watchPty()
{
    pollfd p{m_master, POLLIN, 0};
    if (::poll(&p, 1, 0) < 0)
        return;
    setPresent(!(p.revents & POLLHUP));
}

void BoxLink::readPty()
{
    char chunk[512];
    for (;;) {
        const ssize_t n = ::read(m_master, chunk, sizeof chunk);
        if (n > 0) {
            emit received(QByteArray(chunk, int(n)));
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            return;
        setPresent(false);   // EIO: the last holder of the slave closed it
        return;
    }
}

void BoxLink::setPresent(bool present)
{
    if (present == m_present)
        return;
    m_present = present;
    if (m_reader)
        m_reader->setEnabled(present);
    if (present)
        emit peerOpened();
    else
        emit peerClosed();
}

} // namespace canbox
