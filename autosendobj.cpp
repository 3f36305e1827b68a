#include "autosendobj.h"

#include <QSerialPort>
#include <QTimer>

#include "canbuslog.h"

namespace {
const char TAG[] = "[MCU SerialPortObj]";
}

AutoSendObj::AutoSendObj(QSerialPort* port, const QByteArray& frame, int times, int intervalMs)
    : QObject(port)
    , timer(new QTimer(this))
    , data(frame)
    , port(port)
    , remaining(times)
{
    timer->setInterval(qMax(0, intervalMs));
    connect(timer, &QTimer::timeout, this, &AutoSendObj::onTimerOut);
}

void AutoSendObj::start()
{
    if (remaining <= 0) {
        deleteLater();
        return;
    }
    timer->start();
    onTimerOut();
}

void AutoSendObj::onTimerOut()
{
    if (port && port->isOpen()) {
        CB_DEBUG(lcCanbusMcu, TAG) << "send:" << canbus::hexDump(data);
        port->write(data);
    }
    if (--remaining <= 0) {
        timer->stop();
        deleteLater();
    }
}
