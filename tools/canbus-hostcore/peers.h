#pragma once
// Stand-ins for the sibling modules the canbus module connects to by name. They only
// carry the signals the module listens to, so that the host's commands can play the
// microcontroller (power), the telephone (calls) and the audio sources.

#include <QByteArray>
#include <QObject>
#include <QVariantList>

namespace host {

class McuStandIn : public QObject
{
    Q_OBJECT
signals:
    void mcuConnected();
    void powerStateChanged(bool on);
    void canbusDataReady(QByteArray data);
};

class PhoneStandIn : public QObject
{
    Q_OBJECT
signals:
    void callStateChanged(bool active);
    void sendSrcStateToCan(int type, QVariantList args);
};

class SourceStandIn : public QObject
{
    Q_OBJECT
signals:
    void sendSrcStateToCan(int type, QVariantList args);
};

} // namespace host
