#include "mculink.h"

#include <QSerialPort>
#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace {
constexpr qint32 kMcuBaudRate = 115200;
constexpr int kMaxStalls = 50;   // of 100 ms each
}

McuLink::McuLink(QObject* parent)
    : QObject(parent)
{
}

McuLink::~McuLink()
{
    if (m_master >= 0)
        ::close(m_master);
    if (m_slave >= 0)
        ::close(m_slave);
}

bool McuLink::openPty()
{
    char name[256] = {};
    if (openpty(&m_master, &m_slave, name, nullptr, nullptr) != 0) {
        m_error = QStringLiteral("cannot create a pseudo-terminal: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        m_master = m_slave = -1;
        return false;
    }
    termios raw{};
    tcgetattr(m_slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(m_slave, TCSANOW, &raw);
    fcntl(m_master, F_SETFL, fcntl(m_master, F_GETFL) | O_NONBLOCK);
    m_name = QString::fromLocal8Bit(name);
    m_notifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &McuLink::onMasterReadable);
    return true;
}

bool McuLink::openDevice(const QString& path)
{
    m_port = new QSerialPort(path, this);
    m_port->setBaudRate(kMcuBaudRate, QSerialPort::AllDirections);
    m_port->setDataBits(QSerialPort::Data8);
    m_port->setStopBits(QSerialPort::OneStop);
    m_port->setParity(QSerialPort::NoParity);
    if (!m_port->open(QIODevice::ReadWrite)) {
        m_error = QStringLiteral("cannot open %1: %2").arg(path, m_port->errorString());
        return false;
    }
    m_name = path;
    connect(m_port, &QSerialPort::readyRead, this, [this] { emit received(m_port->readAll()); });
    return true;
}

bool McuLink::write(const QByteArray& bytes)
{
    if (m_port)
        return m_port->write(bytes) == bytes.size();
    if (m_master < 0)
        return false;
    qint64 done = 0;
    int stalls = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (n > 0) {
            done += n;
            continue;
        }
        if (n < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        // The head unit is slow to read: wait until the pty takes more, but not for ever.
        if (++stalls > kMaxStalls)
            return false;
        pollfd p{m_master, POLLOUT, 0};
        ::poll(&p, 1, 100);
    }
    return true;
}

void McuLink::onMasterReadable()
{
    char chunk[512];
    const ssize_t n = ::read(m_master, chunk, sizeof chunk);
    if (n > 0)
        emit received(QByteArray(chunk, int(n)));
}
