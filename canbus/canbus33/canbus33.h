#pragma once
// GAC Trumpchi "compatible", box by RuiZiCheng. Front and rear climate with the
// panel's direct climate slots, doors, body values, eight radar sensors, parking
// trajectory, steering-wheel and panel keys (camera keys while reversing), the
// original-car settings, the new-energy pages, the trip computer and the function,
// voice, perception and vehicle-control pages. It reports clock, sources and language,
// the chosen vehicle variant, and touches on the camera picture.
//
// The box answers the connect frame with its version (frame 0x30); only then does the
// driver count it as connected. Drivers of later models of the make derive from it.

#include "common/climatebuttons.h"
#include "data33info.h"
#include "common/payloadcache.h"
#include "recorddriver.h"

class FrameReader;

class Canbus33Obj : public RecordDriver<Data33Info>
{
    Q_OBJECT
public:
    explicit Canbus33Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // The climate panel's buttons, each one command to the box.
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

    // Reports the chosen vehicle variant; every 2 s for the driver's life.
    void exitSelectSlot() override;
    // A touch on the camera picture (model 2: released).
    void setTcanBussend(int x, int y, int w, int h, int model) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers that extend this one.
    Canbus33Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    int carModel() const;
    bool reverseActive = false;   // the base's inReverse stays false: the radar is kept

private:
    // Frame handlers, one per type; `f` has passed the type's minimum size.
    void onFrontClimate(const FrameReader& f);
    void onRearClimate(const FrameReader& f);
    void onWheelKey(const FrameReader& f);
    void onPanelKey(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onSetting(const FrameReader& f);
    void onChargingSchedule(const FrameReader& f);
    void onChargingDisplay(const FrameReader& f);
    void onPerception(const FrameReader& f);
    void onVehicleControl(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    int getQtKeyFromValue(int value) const;
    int getQtPanelKeysValue(int value) const;
    int getRadarSegment(int value) const;
    // The frame a camera key sends to the box while reversing; false for other keys.
    bool sendCameraKey(int value);
    void AirConditioningCounterControl(int code, int value);
    void pressClimateButton(canbus::ClimateButton button);

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x10
};
