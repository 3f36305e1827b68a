#pragma once
// The protocol manager: the one place that knows which vehicle protocol is in force.
// It owns the catalogue and the current driver and forwards the host's requests to it.

#include <QList>
#include <QObject>
#include <QVariant>

#include "canbuscatalogue.h"
#include "canbusinterface.h"

class CanbusModule;

class CanObj : public QObject
{
    Q_OBJECT
public:
    static CanObj* instance();
    static int id();
    static int getCanDataChecksum(const QByteArray& data, int& frameLength, QByteArray& reply);
    static void autoCalculateChecksum(QByteArray& frame);

    ~CanObj() override;

    void setModule(CanbusModule* facade) { module = facade; }
    CanbusModule* facade() const { return module; }
    CanbusInterface* currentDriver() const { return driver; }

    void setId(int id, bool sendConnect);
    int setData(const QByteArray& data);
    void getAckData(QByteArray& out) const;
    void getNackData(QByteArray& out) const;

    const QList<CanBusData>& getCanBusList() const { return canBusList; }
    CanBusData getCanBusDataById(int id) const;
    CanBusData& getCurrentCanBusData();

    void setRightDriver(const bool& value);
    void setShowReverseLine(bool value);
    void setInReverse(bool value);
    bool isRightDriver() const;
    bool isShowReverseLine() const;
    bool isInReverse() const;
    bool disableRadar() const;
    bool hadExInfo() const;
    bool hadReverseLine() const;
    bool needCanbusDataBeforeReady() const;
    AirData* getAirData() const;
    CardoorData* getCardoorData() const;
    CarbodyData* getCarbodyData() const;
    RadarData* getRadarData() const;
    QString getVersionData() const;
    void setCallState(bool active);
    void sendSrcStateToCan(int type, const QList<QVariant>& args);
    void sendEQStateToCan(int type, int value);
    void sendStateToCan(const QString& type, const QString& value);

    void sendCurrentTimeToCan();
    void setReady();
    void setPowerOnState();
    void setPowerOffState();
    void sendConnectData();
    void sendDisconnectData();

    QVariant getDataById(int id) const;
    void setDataById(const QVariant& value, int id);
    void* getDataPointerById(int id);

signals:
    void setBaudRateSig(int rate);
    void sendDataToCan(QByteArray frame);

public slots:
    void onDataChanged(int year, int month, int day);
    void onTimeChanged(int hour, int minute, int second);
    void initCanbusList();
    void TrajectoryStateChanged(bool value);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    CanObj();
    bool servesId(int id) const;
    void connectDriver();
    void stopConnectTimer();

    static CanObj* ins;

    CanbusModule* module = nullptr;
    CanbusInterface* driver = nullptr;
    QList<CanBusData> canBusList;
    int currentId = 0;
    bool powerOn = true;
    bool ready = false;
    int connectTimerId = 0;
};
