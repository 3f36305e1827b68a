#include "ptypair.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

PtyPair::PtyPair()
{
    char name[256] = {};
    if (openpty(&m_master, &m_slave, name, nullptr, nullptr) != 0) {
        m_master = m_slave = -1;
        return;
    }
    termios raw{};
    tcgetattr(m_slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(m_slave, TCSANOW, &raw);
    fcntl(m_master, F_SETFL, fcntl(m_master, F_GETFL) | O_NONBLOCK);
    // Processes started meanwhile must not hold the pair open.
    fcntl(m_master, F_SETFD, FD_CLOEXEC);
    fcntl(m_slave, F_SETFD, FD_CLOEXEC);
    m_slavePath = QString::fromLocal8Bit(name);
}

PtyPair::~PtyPair()
{
    closeMaster();
    if (m_slave >= 0)
        ::close(m_slave);
}

void PtyPair::closeMaster()
{
    if (m_master >= 0)
        ::close(m_master);
    m_master = -1;
}

bool PtyPair::write(const QByteArray& bytes)
{
    if (m_master < 0)
        return false;
    const ssize_t n = ::write(m_master, bytes.constData(), size_t(bytes.size()));
    return n == bytes.size();
}

QByteArray PtyPair::read(int minBytes, int timeoutMs)
{
    QByteArray got;
    QElapsedTimer clock;
    clock.start();
    while (m_master >= 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        pollfd p{m_master, POLLIN, 0};
        if (::poll(&p, 1, 5) > 0 && (p.revents & POLLIN)) {
            char chunk[512];
            const ssize_t n = ::read(m_master, chunk, sizeof chunk);
            if (n > 0)
                got.append(chunk, int(n));
        }
        if ((minBytes > 0 && got.size() >= minBytes) || clock.elapsed() >= timeoutMs)
            break;
    }
    return got;
}

QByteArray PtyPair::drain(int ms)
{
    return read(0, ms);
}

QByteArray PtyPair::readAvailable()
{
    QByteArray got;
    char chunk[512];
    ssize_t n;
    while (m_master >= 0 && (n = ::read(m_master, chunk, sizeof chunk)) > 0)
        got.append(chunk, int(n));
    return got;
}

QByteArray PtyPair::waitForBytes(int timeoutMs)
{
    pollfd p{m_master, POLLIN, 0};
    if (m_master < 0 || ::poll(&p, 1, timeoutMs) <= 0 || !(p.revents & POLLIN))
        return QByteArray();
    return readAvailable();
}
