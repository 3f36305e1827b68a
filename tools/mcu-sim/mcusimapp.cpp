#include "mcusimapp.h"

#include <QFile>
#include <QTimer>

#include "mculink.h"

using mcusim::HeadUnitMessage;
using mcusim::UpdateTarget;

namespace {

// The MCU's update frames in words.
QString describeReply(const QByteArray& frame)
{
    if (frame == mcusim::updateReadyFrame())
        return QStringLiteral("update: ready");
    if (frame == mcusim::updateDoneFrame())
        return QStringLiteral("update: all packets written");
    return QStringLiteral("update: ask for packet %1").arg(mcusim::updateNumber(frame));
}

} // namespace

McuSimApp::McuSimApp(McuLink* link, const McuSimOptions& options, QObject* parent)
    : QObject(parent)
    , m_link(link)
    , m_options(options)
    , m_stepTimer(new QTimer(this))
    , m_out(stdout)
{
    m_stepTimer->setSingleShot(true);
    m_update.setAskOutOfRangeFirst(options.askOutOfRange);
    connect(m_stepTimer, &QTimer::timeout, this, &McuSimApp::playNext);
    connect(m_link, &McuLink::received, this, &McuSimApp::onReceived);
}

void McuSimApp::start()
{
    if (!m_options.haveScenario) {
        m_scenarioDone = true;
        return;
    }
    if (!m_options.scenario.description.isEmpty())
        print(QStringLiteral("scenario: %1").arg(m_options.scenario.description));
    if (m_options.waitForHeadUnit)
        print(QStringLiteral("waiting for the head unit to speak"));
    else
        QTimer::singleShot(m_options.startDelayMs, this, &McuSimApp::startScenario);
}

void McuSimApp::startScenario()
{
    if (m_scenarioStarted)
        return;
    m_scenarioStarted = true;
    m_next = 0;
    m_stepTimer->start(m_options.scenario.frames.value(0).delayMs);
}

void McuSimApp::playNext()
{
    const QList<McuScenarioFrame>& frames = m_options.scenario.frames;
    if (m_next < frames.size()) {
        const McuScenarioFrame& frame = frames.at(m_next++);
        if (!frame.bytes.isEmpty())
            send(frame.bytes, frame.label);
    }
    if (m_next >= frames.size()) {
        if (!m_options.scenario.loop) {
            m_scenarioDone = true;
            print(QStringLiteral("scenario played"));
            finishIfDone();
            return;
        }
        m_next = 0;
    }
    m_stepTimer->start(frames.at(m_next).delayMs);
}

void McuSimApp::send(const QByteArray& bytes, const QString& label)
{
    if (!m_link->write(bytes)) {
        m_out << "error: cannot write to " << m_link->name() << Qt::endl;
        return;
    }
    print(QStringLiteral("-> %1: %2").arg(label, QString::fromLatin1(bytes.toHex(' '))));
}

void McuSimApp::onReceived(const QByteArray& bytes)
{
    if (m_options.waitForHeadUnit && m_options.haveScenario)
        startScenario();
    m_reader.feed(bytes);
    HeadUnitMessage message;
    while (m_reader.next(message)) {
        switch (message.kind) {
        case HeadUnitMessage::Ack:
            print(QStringLiteral("<- ack"));
            break;
        case HeadUnitMessage::Nack:
            print(QStringLiteral("<- nack: the head unit refused a frame"));
            break;
        case HeadUnitMessage::Frame:
            onHeadUnitFrame(message.bytes);
            break;
        case HeadUnitMessage::BadFrame:
            print(QStringLiteral("<- frame with a bad checksum: %1").arg(QString::fromLatin1(message.bytes.toHex(' '))));
            for (const QByteArray& reply : m_update.handleBadFrame())
                send(reply, QStringLiteral("ask again for packet %1").arg(m_update.packetsReceived()));
            break;
        case HeadUnitMessage::Junk:
            print(QStringLiteral("<- stray byte %1").arg(QString::fromLatin1(message.bytes.toHex(' '))));
            break;
        }
    }
}

void McuSimApp::onHeadUnitFrame(const QByteArray& frame)
{
    const QString what = mcusim::describe(frame);
    // A packet frame is long; its number says enough.
    const bool packet = frame.size() > 16;
    print(QStringLiteral("<- %1%2").arg(what, packet ? QString() : QStringLiteral(": ") + QString::fromLatin1(frame.toHex(' '))));

    const UpdateTarget::State before = m_update.state();
    const QList<QByteArray> replies = m_update.handle(frame);
    for (const QByteArray& reply : replies)
        send(reply, describeReply(reply));
    if (m_update.inProgress())
        m_updateSeen = true;
    if (m_update.state() != before
        && (m_update.state() == UpdateTarget::State::Done || m_update.state() == UpdateTarget::State::Failed))
        updateEnded();
}

void McuSimApp::updateEnded()
{
    m_updateSeen = true;
    if (m_update.state() == UpdateTarget::State::Failed) {
        m_out << "update failed: " << m_update.error() << Qt::endl;
        m_exitCode = 2;
    } else {
        print(QStringLiteral("update done: %1 packets received").arg(m_update.packetsReceived()));
        if (!m_options.saveImagePath.isEmpty()) {
            QFile image(m_options.saveImagePath);
            if (image.open(QIODevice::WriteOnly) && image.write(m_update.image()) == m_update.image().size()) {
                print(QStringLiteral("image written to %1").arg(m_options.saveImagePath));
            } else {
                m_out << "error: cannot write " << m_options.saveImagePath << ": " << image.errorString() << Qt::endl;
                m_exitCode = 1;
            }
        }
    }
    finishIfDone();
}

void McuSimApp::finishIfDone()
{
    if (!m_options.once || !m_scenarioDone || m_update.inProgress())
        return;
    // Without a scenario, --once waits for an update to come and go.
    if (!m_options.haveScenario && !m_updateSeen)
        return;
    emit finished(m_exitCode);
}

void McuSimApp::print(const QString& line)
{
    if (!m_options.quiet)
        m_out << line << Qt::endl;
}
