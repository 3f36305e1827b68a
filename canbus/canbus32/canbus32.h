#pragma once
// NISSAN "compatible", box by RuiZiCheng. Climate, doors, radar, steering, trip and
// engine values, the factory amplifier and multimedia, vehicle settings and the
// multiplexed status frame in; wheel keys whose short and long press the box tells
// apart at the release, and a clock the wheel can set, both ways. Out: climate buttons
// as press and release, the clock, the language, the vehicle model, screen taps and
// the source reports.
#include "common/vehicleclock.h"
#include "data32info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus32Obj : public RecordDriver<Data32Info>
{
    Q_OBJECT
public:
    explicit Canbus32Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setPowerOnState() override;
    void setPowerOffState() override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

    // The display counts bars here: the overlay is up while any sensor shows one.
    void RadarDisplay() override;

public slots:
    // The chosen vehicle model, every 2 s, once one is chosen.
    void exitSelectSlot() override;
    // Asks the box for the doors a moment after power on.
    void getCardoorState();
    void setTcanBussend(int x, int y, int width, int height, int model) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers that extend this one.
    Canbus32Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    int getQtKeyFromValue(uchar value) const;
    int getQtKeyTelephoneValue(uchar value) const;

    int currentKey = 0;

private:
    // Change signals go out only while the unit is on.
    void notify(void (CanbusInterface::*signal)());

    // Keys and the clock (keys32.cpp, clock32.cpp).
    void onWheelKey(const FrameReader& f);
    void releaseHeldKey();
    void onPanelKey(const FrameReader& f);
    void onPhoneKey(const FrameReader& f);
    void pressAndRelease(int code);
    void onVehicleClock(const FrameReader& f);
    void onClockKeys(const FrameReader& f);
    void confirmClock(int hour, int minute, bool hour24);

    // Climate and body (body32.cpp).
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onEngineSpeed(const FrameReader& f);
    void onMileage(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onSteering(const FrameReader& f);
    void onSpeed(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    // The factory multimedia, amplifier and settings (media32.cpp).
    void onMediaBits(const FrameReader& f);
    void onRadio(const FrameReader& f);
    void onAudio(const FrameReader& f);
    void onPlayState(const FrameReader& f);
    void onSettingValue(const FrameReader& f);
    void onTray(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onSettings(const FrameReader& f);

    // Reports to the box (reports32.cpp).
    void reportMedia(int source, const QList<QVariant>& args);
    void reportPhone(const QList<QVariant>& args);

    QTimer* selectTimer = nullptr;
    QTimer* doorRequestTimer = nullptr;
    int pressState = 0;          // how the held wheel key went down: 1 short, 2 long
    QByteArray lastAirPayload;   // data bytes of the last climate frame
    canbus::VehicleClock vehicleClock;
};
