#include "boxsimulator.h"

#include "frameparts.h"

namespace canbox {

namespace {

// What a box of the 0x2E families says first: its version, frame 0x30, which is the
// frame most of their drivers take as the sign that the box is there.
ScenarioStep defaultHandshake()
{
    ScenarioStep step;
    step.type = 0x30;
    step.data = QByteArrayLiteral("CANBOX-SIM 1.0");
    step.note = QStringLiteral("version: the box answers the connect frame");
    return step;
}

// A loop whose pass has no delay at all still waits this long before it repeats.
constexpr int kEmptyPassPauseMs = 1000;

} // namespace

BoxSimulator::BoxSimulator(canbus::FrameFamily family, QObject* parent)
    : QObject(parent), m_family(family), m_splitter(family),
      m_waitForConnect(hasConnectHandshake(family))
{
    qRegisterMetaType<canbox::BoxEvent>();
    m_stepTimer.setSingleShot(true);
    connect(&m_stepTimer, &QTimer::timeout, this, &BoxSimulator::playStep);
    m_writeTimer.setSingleShot(true);
    connect(&m_writeTimer, &QTimer::timeout, this, &BoxSimulator::writeNext);
    m_quietTimer.setSingleShot(true);
    m_quietTimer.setInterval(kQuietMs);
    connect(&m_quietTimer, &QTimer::timeout, this, [this] {
        for (const LinkItem& item : m_splitter.flush())
            handle(item);
    });
}

void BoxSimulator::setScenarios(const QList<Scenario>& scenarios)
{
    m_scenarios = scenarios;
    m_handshake.clear();
    m_stepCount = 0;
    for (const Scenario& s : scenarios) {
        m_handshake += s.handshake;
        m_stepCount += s.steps.size();
    }
    if (m_handshake.isEmpty() && hasConnectHandshake(m_family))
        m_handshake.append(defaultHandshake());
    if (!scenarios.isEmpty() && scenarios.first().waitForConnect >= 0)
        m_waitForConnect = scenarios.first().waitForConnect == 1;
}

void BoxSimulator::linkUp()
{
    m_linkUp = true;
    if (!m_waitForConnect)
        startPlaying();
}

void BoxSimulator::linkDown()
{
    m_linkUp = false;
    m_connected = false;
    stopPlaying();
    m_outbox.clear();
    m_writeTimer.stop();
    m_quietTimer.stop();
    m_splitter.clear();
}

void BoxSimulator::receive(const QByteArray& bytes)
{
    for (const LinkItem& item : m_splitter.feed(bytes))
        handle(item);
    if (m_splitter.hasPending())
        m_quietTimer.start();
    else
        m_quietTimer.stop();
}

void BoxSimulator::handle(const LinkItem& item)
{
    BoxEvent e;
    e.bytes = item.bytes;
    switch (item.kind) {
    case LinkItem::Frame:
        onHeadUnitFrame(item);
        return;
    case LinkItem::Ack:
        e.kind = BoxEvent::AckReceived;
        break;
    case LinkItem::Nack:
        e.kind = BoxEvent::NackReceived;
        break;
    case LinkItem::BadChecksum:
        e.kind = BoxEvent::BadChecksum;
        emit happened(e);
        if (!item.reply.isEmpty())
            queue(item.reply, BoxEvent{BoxEvent::NackSent, 0, {}, item.reply, {}, false});
        return;
    case LinkItem::Junk:
        e.kind = BoxEvent::Junk;
        break;
    }
    emit happened(e);
}

void BoxSimulator::onHeadUnitFrame(const LinkItem& item)
{
    const FrameParts parts = frameParts(m_family, item.bytes);
    emit happened(BoxEvent{BoxEvent::Received, parts.type, parts.data, item.bytes,
                           linkMeaning(m_family, parts), false});
    // The acknowledgement goes out first, then whatever the frame asks for.
    if (!item.reply.isEmpty())
        queue(item.reply, BoxEvent{BoxEvent::AckSent, parts.type, {}, item.reply, {}, false});

    if (isConnectFrame(m_family, parts)) {
        answerHandshake(-1);
        // The head unit repeats its connect frame until it hears the box: only the
        // first one starts the scenarios.
        if (!m_connected) {
            m_connected = true;
            emit happened(BoxEvent{BoxEvent::Connected, parts.type, parts.data, item.bytes, {}, false});
            if (m_waitForConnect)
                startPlaying();
        }
    } else if (isDisconnectFrame(m_family, parts)) {
        m_connected = false;
        emit happened(BoxEvent{BoxEvent::Disconnected, parts.type, parts.data, item.bytes, {}, false});
        if (m_waitForConnect)
            stopPlaying();
    } else {
        const int wanted = requestedType(m_family, parts);
        if (wanted >= 0)
            answerHandshake(wanted);
    }
}

// All handshake frames, or those of the one type that a request asked for.
void BoxSimulator::answerHandshake(int onlyType)
{
    for (const ScenarioStep& step : m_handshake) {
        if (onlyType < 0 || (!step.raw && step.type == onlyType)) {
            const QByteArray bytes = step.wireBytes(m_family);
            queue(bytes, sentEvent(step, bytes));
        }
    }
}

BoxEvent BoxSimulator::sentEvent(const ScenarioStep& step, const QByteArray& bytes) const
{
    BoxEvent e{BoxEvent::Sent, step.type, step.data, bytes, step.note, step.raw};
    if (!step.raw)
        return e;
    const FrameParts parts = frameParts(m_family, bytes);
    e.type = parts.type;
    e.data = parts.data;
    return e;
}

void BoxSimulator::queue(const QByteArray& bytes, const BoxEvent& e)
{
    if (!m_linkUp)
        return;
    m_outbox.append({bytes, e});
    if (!m_writeTimer.isActive())
        writeNext();
}

void BoxSimulator::writeNext()
{
    if (m_outbox.isEmpty())
        return;
    const qint64 since = m_sinceWrite.isValid() ? m_sinceWrite.elapsed() : kWriteGapMs;
    if (since < kWriteGapMs) {
        m_writeTimer.start(int(kWriteGapMs - since));
        return;
    }
    const auto next = m_outbox.takeFirst();
    emit transmit(next.first);
    m_sinceWrite.start();
    emit happened(next.second);
    if (!m_outbox.isEmpty())
        m_writeTimer.start(kWriteGapMs);
}

void BoxSimulator::startPlaying()
{
    if (m_playing)
        return;
    m_playing = true;
    m_scenario = 0;
    m_step = 0;
    m_passDelayMs = 0;
    scheduleStep();
}

void BoxSimulator::stopPlaying()
{
    m_playing = false;
    m_stepTimer.stop();
}

// Finds the next step to play, across scenario ends and loops, and arms the timer.
void BoxSimulator::scheduleStep()
{
    int extraDelay = 0;
    while (m_playing) {
        if (m_scenario >= m_scenarios.size()) {
            if (!m_loop || m_stepCount == 0) {   // nothing to repeat
                m_playing = false;
                emit happened(BoxEvent{BoxEvent::Finished, 0, {}, {}, {}, false});
                return;
            }
            if (m_passDelayMs == 0)
                extraDelay = kEmptyPassPauseMs;   // don't spin on a pass without delays
            m_scenario = 0;
            m_step = 0;
            m_passDelayMs = 0;
        }
        const Scenario& s = m_scenarios.at(m_scenario);
        if (m_step == 0) {
            QString text = s.name.isEmpty() ? QStringLiteral("scenario") : s.name;
            if (!s.description.isEmpty())
                text += QStringLiteral(": ") + s.description;
            emit happened(BoxEvent{BoxEvent::ScenarioStarted, 0, {}, {}, text, false});
        }
        if (m_step < s.steps.size()) {
            const int delay = s.steps.at(m_step).delayMs;
            m_passDelayMs += delay;
            m_stepTimer.start(delay + extraDelay);
            return;
        }
        ++m_scenario;
        m_step = 0;
    }
}

void BoxSimulator::playStep()
{
    if (!m_playing)
        return;
    if (m_scenario >= m_scenarios.size())
        return;
    const Scenario& s = m_scenarios.at(m_scenario);
    if (m_step < s.steps.size()) {
        const ScenarioStep& step = s.steps.at(m_step);
        const QByteArray bytes = step.wireBytes(m_family);
        queue(bytes, sentEvent(step, bytes));
    }
    ++m_step;
    scheduleStep();
}

} // namespace canbox
