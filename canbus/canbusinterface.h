#pragma once
// The base class of every vehicle driver: the interface through which CanObj uses a
// driver, the shared records it owns, and the helpers all drivers use (delayed sends,
// key injection, long presses, the active media source).

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

#include "airdata.h"
#include "carbodydata.h"
#include "cardoordata.h"
#include "dataidinfo.h"
#include "radardata.h"

class LongPressKey;

class CanbusInterface : public QObject
{
    Q_OBJECT
public:
    // Audio source numbers as they reach setSrcState.
    enum srctype {
        SRC_RADIO = 1,
        SRC_EXTRA2 = 2,
        SRC_EXTRA3 = 3,
        SRC_MEDIA1_A = 13,   // first media pair
        SRC_MEDIA1_B = 14,
        SRC_MEDIA2_A = 16,   // second media pair
        SRC_MEDIA2_B = 17,
        SRC_EXTRA18 = 18,
        SRC_MEDIA3 = 22,
        SRC_PHONE = 24,
    };
    Q_ENUM(srctype)

    explicit CanbusInterface(QObject* parent = nullptr);
    ~CanbusInterface() override;

    virtual int canbusId() const;
    virtual bool inheritedById(int id) const;
    virtual void initData();
    virtual int checkCanDataChecksum(const QByteArray& data, int& frameLength, QByteArray& reply);
    virtual int setCanbusData(const QByteArray& data);
    virtual void setRightDriver(const bool& value);
    virtual void setShowReverseLine(bool value);
    virtual void setInReverse(bool value);
    virtual bool isRightDriver() const;
    virtual bool isShowReverseLine() const;
    virtual bool isInReverse() const;
    virtual bool isDisableRadar() const;
    virtual bool hadExInfo() const;
    virtual bool hadReverseLine() const;
    virtual bool needCanbusDataBeforeReady() const;
    virtual void setDataInfo(const QVariant& value);
    virtual QVariant getDataInfo() const;
    virtual void* getDataInfoPointer();
    virtual AirData* getAirData() const;
    virtual CardoorData* getCardoorData() const;
    virtual CarbodyData* getCarbodyData() const;
    virtual RadarData* getRadarData() const;
    virtual QString getVersionData() const;
    virtual void setReady(bool value);
    virtual bool needSendConnect(int& intervalMs, QByteArray& frame);
    virtual bool needSendDisconnect(QByteArray& frame);
    virtual void setConnectedState(bool value);
    virtual void setPowerOnState();
    virtual void setPowerOffState();
    virtual void setCallState(bool active);
    virtual void setSrcState(srctype type, const QList<QVariant>& args);
    virtual void setEQState(int type, int value);
    virtual void setCanbusState(const QString& type, const QString& value);
    virtual void setCurrentData(int year, int month, int day);
    virtual void setCurrentTime(int hour, int minute, int second);
    virtual void autoCalculateChecksum(QByteArray& frame) const;
    virtual void createAckData(QByteArray& out, unsigned char value) const;
    virtual void createNackData(QByteArray& out, unsigned char value) const;
    virtual int checkProtocolData(const QByteArray& frame);

    bool isConnectedState() const { return connected; }
    void setVersionData(const QString& text);
    // Sends `frame` after delayMs; the pending send dies with the driver.
    void emitDataLater(const QByteArray& frame, int delayMs);
    // `key` is a virtual-keyboard number (toKkmapKey), pressed 1 down, 0 up.
    void sendKeyToQt(int key, int pressed);
    bool checkKeyLongPressed(bool pressed, int key, int longKey);
    void sendContinueKey(int key, int times);
    // Head-unit key code -> virtual-keyboard number; 0 for a code it doesn't know.
    int toKkmapKey(int key) const;
    void startActivity(const QString& name);
    QString getMediaActivity();

signals:
    void airConditionerVisibleChanged(bool visible);
    void airConditionerDataChanged();
    void cardoorDataChanged();
    void carbodyDataChanged();
    void radarDataChanged();
    void speedDataChanged(int speed, QString text);
    void outdoorTemperatureChanged(QString text, int unit);
    void warningDataChanged(bool a, bool b);
    void trajectoryDataChanged(int angle, int range, bool visible);
    void versionDataChanged(QString version);
    void sendDataToCan(QByteArray frame);
    void illChanged(bool on);
    void illLevelChanged(float level);
    void dataChanged();
    void eqChanged(qint8 type, qint8 value);
    void requestActivity(QString name);

public slots:
    void onKeyLongPressed();

protected:
    int id = 0;
    bool rightDriver = false;
    bool showReverseLine = false;
    bool inReverse = false;
    bool radarEnabled = false;
    bool powerOn = true;
    bool ready = false;
    bool callState = false;
    LongPressKey* longPress = nullptr;   // the hold timer is armed by initData
    quint8 lastKeyFlag = 0;
    quint8 lastKey = 255;
    AirData* airData = nullptr;
    CardoorData* cardoorData = nullptr;
    CarbodyData* carbodyData = nullptr;
    RadarData* radarData = nullptr;
    DataIdInfo* dataInfo = nullptr;
    int clientId = 0;
    bool connected = false;
    QString versionData;
};
