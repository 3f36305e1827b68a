#pragma once
// Honda "compatible(Portrait)", box by RuiZiCheng. Keys, climate, doors, radar and the
// steering angle fill the shared records; vehicle settings, the trip computer's fuel
// pages, backlight, parking assistance, the factory radio and the power flow fill
// Data31Info; the vehicle's clock sets the head unit's. Out go climate commands as
// press and release, the clock, the language, the source with its texts, the vehicle
// variant, the reverse mode and screen touches.
#include <QByteArray>

#include "common/payloadcache.h"
#include "common/vehicleclock.h"
#include "data31info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus31Obj : public RecordDriver<Data31Info>
{
    Q_OBJECT
public:
    explicit Canbus31Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

    // On this box's scale of 8 bars any lit sensor shows the overlay.
    void RadarDisplay() override;

public slots:
    void exitSelectSlot() override;
    void setTcanBussend(int x, int y, int width, int height, int model) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers that extend this one.
    Canbus31Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    // What initData does but for the model timer: the records, the climate controls
    // shown and the vehicle variant.
    void initRecords();
    // The vehicle variant, repeated every two seconds for the driver's life.
    QTimer* startModelTimer();

private:
    static int getQtKeyFromValue(int value);
    static quint8 getRadarSegment(quint8 value);

    void onRadioStation(const FrameReader& f);
    void onRadioText(const FrameReader& f);
    void onTuner(const FrameReader& f);
    void onBacklight(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onParkBits(const FrameReader& f);
    void onSteering(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onVehicleSettings(const FrameReader& f);
    void onFuelPages(const FrameReader& f);
    void onByteOf(quint8 ParkingAssistStatus31::*field, quint8 value);
    void onPowerFlow(const FrameReader& f);
    void onVehicleClock(const FrameReader& f);
    void onParkFlags(const FrameReader& f);
    void onParkAngle(const FrameReader& f);
    void onSourceKey(const FrameReader& f);

    void reportMedia(int source, const QList<QVariant>& args);
    void reportPhone(const QList<QVariant>& args);
    void sendText(quint8 lead, const QByteArray& text);

    QTimer* selectTimer = nullptr;
    int currentKey = 0;
    canbus::PayloadCache airCache;   // the last climate frame's data bytes
    canbus::VehicleClock vehicleClock;
};
