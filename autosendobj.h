#pragma once
// Sends one frame to the MCU a number of times at a fixed interval, then removes
// itself. It is a child of the port it writes to, so a pending repeat dies with it.

#include <QByteArray>
#include <QObject>
#include <QPointer>

class QSerialPort;
class QTimer;

class AutoSendObj : public QObject
{
    Q_OBJECT
public:
    AutoSendObj(QSerialPort* port, const QByteArray& frame, int times, int intervalMs);

    // The first send happens at once, the others every interval.
    void start();

private slots:
    void onTimerOut();

private:
    QTimer* timer;
    QByteArray data;
    QPointer<QSerialPort> port;
    int remaining;
};
