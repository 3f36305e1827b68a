#pragma once
// Volkswagen "MQB(Golf)", box by RuiZiCheng: the richest of the 0x2E drivers. Besides
// climate, doors, body data, radar and keys it decodes the vehicle's settings pages,
// trip computer, reminders, service intervals, electric display and timers into
// Data28Info, and reports the clock, the source, media texts, the call state and the
// language to the box. Climate commands go out as [C6 02 code arg].
#include <QString>

#include "data28info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus28Obj : public RecordDriver<Data28Info>
{
    Q_OBJECT
public:
    explicit Canbus28Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setPowerOnState() override;
    void setPowerOffState() override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

    // This vehicle's sensors read "clear" at different distances front and rear.
    void RadarDisplay() override;

public slots:
    void onCountdown();
    void onPowerTimerOut();
    void languageChanged(QString language);

protected:
    // For the boxes that take this one's frames under a row, walk and link of their own.
    Canbus28Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

private:
    int getQtKeyFromValue(uchar value) const;
    int getQtKeyFromValue1(uchar value) const;
    quint8 getRadarRating(uchar value) const;
    QString getVehicleReminder(uchar value) const;
    QString getConv_ConsumersPromptMessage(uchar value) const;

    void onFrame14(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onSecondKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onParkBits(const FrameReader& f);
    void onOutdoorTemperature(const FrameReader& f);
    void onRearClimate(const FrameReader& f);
    void onSteering(const FrameReader& f);
    void onParkBand(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onSideRadar(const FrameReader& f, bool groupB);
    void onBodyPage(const FrameReader& f);
    void onDrivingData(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onElectronicDisplay(const FrameReader& f);
    void onElectronicDisplayText(const FrameReader& f);
    void onElectricManagement(const FrameReader& f);
    void onVehicleReminders(const FrameReader& f);
    void onConsumerPrompts(const FrameReader& f);
    void onInspection(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onTyreWarnings(const FrameReader& f);

    void reportMedia(quint8 source, const QList<QVariant>& args);
    void reportPhone(const QList<QVariant>& args);

    QTimer* powerTimer = nullptr;       // single shot: the climate popup waits after power on
    QTimer* countdownTimer = nullptr;   // asks for the steering angle while reversing
    bool airPopupAllowed = true;
    int currentKey = 0;
    qint16 lastSteering = 0;
};
