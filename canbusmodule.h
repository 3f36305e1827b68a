#pragma once
// What applications and sibling modules hold: every signal that leaves the module and
// every slot that enters it. Nothing opens until initial() creates the implementation.

#include <QByteArray>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVariantList>

class AirData;
class CanbusModuleImpl;
class CarbodyData;
class CardoorData;
class RadarData;

class CanbusModule : public QObject
{
    Q_OBJECT
public:
    explicit CanbusModule(QObject* parent = nullptr);
    ~CanbusModule() override;

    int initial();
    // Invokable so that a host that loaded the plug-in can read them by name.
    Q_INVOKABLE AirData* getAirData() const;
    Q_INVOKABLE QString getVersionData() const;
    // The other shared records of the current driver; null while there is none.
    Q_INVOKABLE CardoorData* getCardoorData() const;
    Q_INVOKABLE CarbodyData* getCarbodyData() const;
    Q_INVOKABLE RadarData* getRadarData() const;
    CanbusModuleImpl* implementation() const { return impl.data(); }

public slots:
    void sendCanbusData(QByteArray data);
    void sendSrcStateToCan(int type, QVariantList args);
    void sendEQStateToCan(int type, int value);
    void sendCanbusStateToCan(QString type, QString value);
    void reverseChanged(bool on);
    void setShowReverseLine(bool show);
    void entryProductionTestMode(bool on, int id);

signals:
    void airConditionerVisibleChanged(bool visible);
    void airConditionerDataChanged();
    void cardoorDataChanged();
    void carbodyDataChanged();
    void radarDataChanged();
    void outdoorTemperatureChanged(QString text, int unit);
    void trajectoryDataChanged(int angle, int range, bool visible);
    void speedDataChanged(int speed, QString text);
    void warningDataChanged(bool a, bool b);
    void versionDataChanged(QString version);
    void canbusIllChanged(bool on);
    void canbusIllLevelChanged(float level);
    void sendCanbusDataToMcu(QByteArray data);
    void sendCanbusPortDataToMcu(QByteArray data);
    void dataChanged();
    void eqChanged(qint8 type, qint8 value);
    void message(int code, QString text);
    void requestActivity(QString name);

    // Climate panel commands; each reaches the driver's slot of the same name.
    void setAuto();
    void setinnerLoop();
    void SetleftPlus();
    void SetleftLess();
    void SetrightPlus();
    void SetrightLess();
    void SetDUAL();
    void SetAc();
    void SetfrontDefrostLeftL();
    void SetrearDefrostLeftL();
    void Setsmall();
    void SetGale();
    void SetSwitch();
    void LeftHeatingButton(int level);
    void RightHeatingButton(int level);
    void BlowOn(bool on);
    void MediumBlow(bool on);
    void BlowDown(bool on);
    void setTcanBussend(int a, int b, int c, int d, int e);

    void productionTestDataReady();

private:
    QSharedPointer<CanbusModuleImpl> impl;
};
