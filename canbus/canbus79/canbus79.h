#pragma once
// Dongfeng "Fengshen", box by RuiZiCheng: climate, doors, radar, steering, the trip
// computer, a settings page, and the energy use of the electric models with a
// history by day. The keys and the camera page depend on the vehicle model the user
// picked, which is reported to the box every 3 s. It reports the clock and the
// display language; no audio source, no call time.
//
// Most change signals of this box's frames go out only while the head unit is on.

#include "data79info.h"
#include "common/payloadcache.h"
#include "common/touchgrid.h"
#include "recorddriver.h"

class FrameReader;

class Canbus79Obj : public RecordDriver<Data79Info>
{
    Q_OBJECT
public:
    explicit Canbus79Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void exitSelectSlot() override;
    // Other boxes of this vendor are told a running call's time from here. This box's
    // protocol has no call-time frame and no source report, so nothing runs a call
    // timer and this stays empty on purpose (setSrcState is left to the base as well).
    void CallSelectSlot() override;
    // action 0: the touch went down; 2: it was released.
    void setTcanBussend(int x, int y, int width, int height, int action) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers of the make that extend this one.
    Canbus79Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

private:
    void onPanelKey(const FrameReader& f);
    void onWheelKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onSetup(const FrameReader& f);
    void onOutdoorTemperature(const FrameReader& f);
    void onEnergy(const FrameReader& f);
    void onHistory(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    int getQtKeyFromValue(int value) const;
    int getQtKeyPanelButtonsValue(int value) const;
    int carModel() const;
    void emitGated(void (CanbusInterface::*signal)());

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x23
    int panelKeyValue = 0;                // last nonzero key number of frame 0x20
    canbus::TouchPress touchPress;
};
