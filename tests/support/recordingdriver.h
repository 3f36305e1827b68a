#pragma once
// A driver that keeps every frame its walk hands over, for tests of the paths below
// the drivers. It takes the frame family and walk of the real row it stands in for.

#include <QList>
#include <QTime>
#include <functional>

#include "commondriver.h"
#include "driverfactory.h"

class RecordingDriver : public CommonDriver
{
    Q_OBJECT
public:
    RecordingDriver(int id, QObject* parent);

    int checkProtocolData(const QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCurrentTime(int hour, int minute, int second) override;
    bool callActive() const { return callState; }
    bool isPowerOn() const { return powerOn; }
    bool isReady() const { return ready; }

    QList<QByteArray> frames;
    QList<QPair<int, QList<QVariant>>> sources;
    QList<QTime> times;
    // Runs inside the parse, while the link holds its lock.
    std::function<void(const QByteArray&)> onFrame;

    // The last RecordingDriver made, for the test to reach.
    static RecordingDriver* last;
};

// Stands a RecordingDriver behind `id` with the family and walk of the real driver.
class RecordingDriverScope
{
public:
    explicit RecordingDriverScope(int id);
    RecordingDriver* driver() const { return RecordingDriver::last; }

private:
    canbus::DriverOverride m_override;
};
