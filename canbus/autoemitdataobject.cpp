#include "autoemitdataobject.h"

#include <QTimerEvent>

#include "canbusinterface.h"

AutoEmitDataObject::AutoEmitDataObject(int delayMs, const QByteArray& frame, CanbusInterface* owner)
    : QObject(owner), data(frame), owner(owner)
{
    timerId = startTimer(delayMs, Qt::CoarseTimer);
}

void AutoEmitDataObject::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != timerId) {
        QObject::timerEvent(event);
        return;
    }
    killTimer(timerId);
    timerId = 0;
    event->accept();
    if (owner && !data.isEmpty())
        emit owner->sendDataToCan(data);
    deleteLater();
}
