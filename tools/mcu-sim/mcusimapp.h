#pragma once
// The simulated MCU at work: plays a scenario to the head unit, answers a firmware
// update, and prints what goes either way.

#include <QObject>
#include <QString>
#include <QTextStream>

#include "mcuscenario.h"
#include "mcusimulator.h"

class McuLink;
class QTimer;

struct McuSimOptions
{
    bool haveScenario = false;
    McuScenario scenario;
    int startDelayMs = 0;
    bool waitForHeadUnit = false;   // start the scenario once the head unit has spoken
    bool once = false;              // quit when done instead of serving on
    bool askOutOfRange = false;
    QString saveImagePath;
    bool quiet = false;
};

class McuSimApp : public QObject
{
    Q_OBJECT
public:
    McuSimApp(McuLink* link, const McuSimOptions& options, QObject* parent = nullptr);

    void start();

signals:
    // With --once: the simulator is done; 0 when all went well.
    void finished(int exitCode);

private:
    void onReceived(const QByteArray& bytes);
    void onHeadUnitFrame(const QByteArray& frame);
    void startScenario();
    void playNext();
    void send(const QByteArray& bytes, const QString& label);
    void updateEnded();
    void finishIfDone();
    void print(const QString& line);

    McuLink* m_link;
    McuSimOptions m_options;
    mcusim::HeadUnitReader m_reader;
    mcusim::UpdateTarget m_update;
    QTimer* m_stepTimer;
    int m_next = 0;
    bool m_scenarioStarted = false;
    bool m_scenarioDone = false;
    bool m_updateSeen = false;
    int m_exitCode = 0;
    QTextStream m_out;
};
