#pragma once
// The behaviour of a CAN box, apart from any port: it plays scenarios, answers the
// head unit's connect frame, acknowledges its frames as the family requires, and
// reports all it does and hears as BoxEvents. A BoxLink or a test moves the bytes.

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QTimer>

#include "framefamily.h"
#include "framesplitter.h"
#include "scenario.h"

namespace canbox {

struct BoxEvent
{
    enum Kind {
        Sent,              // a scenario or handshake frame went out
        AckSent,           // the box accepted a frame of the head unit
        NackSent,          // the box refused one (bad checksum)
        Received,          // a frame of the head unit; text: what it means on the link
        AckReceived,       // the head unit accepted a frame of the box
        NackReceived,
        BadChecksum,       // a frame of the head unit that failed its checksum
        Junk,              // bytes that start no frame
        Connected,         // the head unit's first connect frame
        Disconnected,      // its disconnect frame
        ScenarioStarted,   // text: the scenario's name and description
        Finished,          // every scenario played and no loop
    };
    Kind kind = Sent;
    quint8 type = 0;
    QByteArray data;
    QByteArray bytes;   // as on the wire
    QString text;
    bool raw = false;   // a raw scenario step, sent as written
};

class BoxSimulator : public QObject
{
    Q_OBJECT
public:
    explicit BoxSimulator(canbus::FrameFamily family, QObject* parent = nullptr);

    canbus::FrameFamily family() const { return m_family; }

    // The scenarios play one after another. A handshake given by none of them is, for
    // the families with a connect frame, one version frame (0x30).
    void setScenarios(const QList<Scenario>& scenarios);
    void setLoop(bool loop) { m_loop = loop; }
    // Whether playing waits for the head unit's connect frame. The default follows the
    // first scenario, else the family.
    void setWaitForConnect(bool wait) { m_waitForConnect = wait; }
    bool waitsForConnect() const { return m_waitForConnect; }
    bool isPlaying() const { return m_playing; }
    QList<ScenarioStep> handshake() const { return m_handshake; }

    // Writes of the box are spaced by this much, so that the head unit reads each
    // frame on its own, as it would from a real box.
    static constexpr int kWriteGapMs = 20;
    // Bytes that wait this long without completing a frame are junk.
    static constexpr int kQuietMs = 200;

public slots:
    // The head unit has the port open / has let go of it.
    void linkUp();
    void linkDown();
    void receive(const QByteArray& bytes);

signals:
    void transmit(QByteArray bytes);
    void happened(const canbox::BoxEvent& event);

private:
    void handle(const LinkItem& item);
    void onHeadUnitFrame(const LinkItem& item);
    void answerHandshake(int onlyType);
    void queue(const QByteArray& bytes, const BoxEvent& event);
    void writeNext();
    void startPlaying();
    void stopPlaying();
    void scheduleStep();
    void playStep();
    BoxEvent sentEvent(const ScenarioStep& step, const QByteArray& bytes) const;

    canbus::FrameFamily m_family;
    FrameSplitter m_splitter;
    QList<Scenario> m_scenarios;
    QList<ScenarioStep> m_handshake;
    int m_stepCount = 0;
    bool m_loop = false;
    bool m_waitForConnect;
    bool m_linkUp = false;
    bool m_connected = false;   // the head unit's connect frame came, no disconnect since
    bool m_playing = false;
    int m_scenario = 0;
    int m_step = 0;
    qint64 m_passDelayMs = 0;   // delay summed over one pass, to pace an empty loop
    QTimer m_stepTimer;
    QTimer m_writeTimer;
    QTimer m_quietTimer;
    QElapsedTimer m_sinceWrite;
    QList<QPair<QByteArray, BoxEvent>> m_outbox;
};

} // namespace canbox

Q_DECLARE_METATYPE(canbox::BoxEvent)
