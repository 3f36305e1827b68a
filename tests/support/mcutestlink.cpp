#include "mcutestlink.h"

#include <QtTest>

#include "mcusimulator.h"
#include "serialportobj.h"

namespace {
constexpr int kTrainFrames = 32;   // 384 bytes: more than the longest frame can swallow
}

McuTestLink::McuTestLink() = default;

McuTestLink::~McuTestLink()
{
    stop();
}

bool McuTestLink::start(const QString& portName)
{
    stop();
    if (!m_pty.isOpen())
        return false;
    qputenv("CANBUS_MCU_PORT", (portName.isEmpty() ? m_pty.slavePath() : portName).toLocal8Bit());
    InputInjector::install(&m_input);
    m_link.reset(new SerialPortObj);
    m_accSpy.reset(new QSignalSpy(m_link.data(), &SerialPortObj::accStateChanged));
    return true;
}

void McuTestLink::stop()
{
    // The link closes its touch descriptor through the recorder: it goes first.
    m_accSpy.reset();
    m_link.reset();
    if (InputInjector::instance() == &m_input)
        InputInjector::install(nullptr);
}

bool McuTestLink::send(const QByteArray& bytes)
{
    return m_pty.write(bytes);
}

// The barriers are version frames: nothing else reacts to them, and none of their
// bytes but the start can be taken for the start of a frame, so a train of them
// resynchronises cleanly wherever it is cut.
QByteArray McuTestLink::nextBarrier(QString& version)
{
    for (;;) {
        const quint8 mark = m_barrier++;
        const QByteArray frame = mcusim::versionFrame(0x42, 0x41, mark);
        const QByteArray tail = frame.mid(2);
        if (!tail.contains('\x2E') && !tail.contains('\xFF') && !tail.contains('\x55')) {
            version = QString::fromLatin1(frame.mid(4, 3).toHex().toUpper());
            return frame;
        }
    }
}

bool McuTestLink::waitForVersion(const QString& version, int timeoutMs)
{
    return QTest::qWaitFor([&] { return m_link->getMcuVersion() == version; }, timeoutMs);
}

bool McuTestLink::sync()
{
    QString version;
    const QByteArray barrier = nextBarrier(version);
    return send(barrier) && waitForVersion(version, 3000);
}

bool McuTestLink::resync()
{
    // A zero-length frame may have thrown away a train that arrived with it; the next
    // one then finds an empty buffer.
    for (int attempt = 0; attempt < 3; ++attempt) {
        QString version;
        QByteArray train;
        for (int i = 0; i < kTrainFrames; ++i)
            train += nextBarrier(version);
        if (!send(train))
            return false;
        if (waitForVersion(version, 2000))
            return true;
    }
    return false;
}

QByteArray McuTestLink::takeSent(int timeoutMs)
{
    const QByteArray mark = SerialPortObj::commandFrame(29, -1);
    m_link->sendDataToSerialPort(29, -1);
    QByteArray got;
    QElapsedTimer clock;
    clock.start();
    while (!got.endsWith(mark) && clock.elapsed() < timeoutMs)
        got += m_pty.read(1, 50);
    if (!got.endsWith(mark))
        return QByteArray("(no end mark) ") + got.toHex();
    got.chop(mark.size());
    return got;
}

QList<QPair<unsigned long, unsigned long>> McuTestLink::keyEvents() const
{
    QList<QPair<unsigned long, unsigned long>> events;
    for (const auto& call : m_input.calls(RecordingInputInjector::Call::Ioctl)) {
        if (call.path == mcuKeyDevicePath())
            events.append({call.request, call.arg});
    }
    return events;
}

QList<RecordingInputInjector::Call> McuTestLink::touchEvents() const
{
    QList<RecordingInputInjector::Call> events;
    for (const auto& call : m_input.calls(RecordingInputInjector::Call::Ioctl)) {
        if (call.path == touchDevicePath())
            events.append(call);
    }
    return events;
}
