#pragma once
#include <QByteArray>
#include <QObject>

class CanbusInterface;

// One frame sent once after a delay, on behalf of a driver. It is the driver's child,
// so a pending send dies with the driver; it deletes itself once it has fired.
class AutoEmitDataObject : public QObject
{
    Q_OBJECT
public:
    AutoEmitDataObject(int delayMs, const QByteArray& frame, CanbusInterface* owner);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    int timerId = 0;
    QByteArray data;
    CanbusInterface* owner = nullptr;
};
