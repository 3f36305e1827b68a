#pragma once
// Buick "GM general series", box by RuiZiCheng. Climate with the panel's direct slots
// (blow modes and seat heating among them), rear climate, seat cooling, doors, body
// flags, radar levels, parking trajectory, steering-wheel and panel keys (two camera
// keys while reversing), the body and climate settings pages, the hybrid page, the
// automatic parking page with its prompts, the OnStar page, tyre pressures and the
// trip computer. It reports clock, sources, language and touches, and keeps telling
// the box the chosen vehicle variant and the wheel's button set.
//
// The box answers the connect frame with its version (frame 0x30); only then does the
// driver count it as connected. The make's other rows derive from it.

#include "common/climatebuttons.h"
#include "common/payloadcache.h"
#include "data37info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus37Obj : public RecordDriver<Data37Info>
{
    Q_OBJECT
public:
    explicit Canbus37Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void btCallStatesChangeSlot(bool call) override;
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
    void LeftHeatingButton(int heating);
    void RightHeatingButton(int heating);
    void BlowOn(bool Left);
    void MediumBlow(bool Left);
    void BlowDown(bool Left);

    // Every 2 s for the driver's life: the vehicle variant and the wheel's button set.
    void onCountdown();
    void languageChanged(const QString& language);
    // A touch on the vehicle's screen as the head unit draws it.
    void setTcanBussend(int x, int y, int w, int h, int model) override;

protected:
    // For the drivers of the make's other rows.
    Canbus37Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    int carModel() const;
    int wheelButtonType() const;

    bool reverseActive = false;
    bool callActive = false;   // kept for the record; the keys follow the base's callState

private:
    // Frame handlers, one per type; `f` has passed the type's minimum size.
    void onWheelKey(const FrameReader& f);
    void onPanelKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRearClimate(const FrameReader& f);
    void onSeatCooling(const FrameReader& f);
    void onBodyByte(const FrameReader& f);
    void onSpeed(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onPhoneNumber(const FrameReader& f);
    void onOnStarText(const FrameReader& f, QString OnStarInformation37::*field, const char* label);
    void onParking(const FrameReader& f);
    void onVehiclePages(const FrameReader& f);
    void onTrip(const FrameReader& f);
    // The page frames whose fields are bit tables.
    void onBitPage(const FrameReader& f);

    int getQtKeyFromValue(int value) const;
    int getQtPanelkeysValue(int value) const;
    QString getPhoneData(uchar digit) const;
    void AirConditioningCounterControl(int code, int value);
    void pressClimateButton(canbus::ClimateButton button);

    canbus::PayloadCache airFrameCache;   // data bytes of the last climate frame 0x03
    bool airWasOn = false;                // the climate was on at the last frame 0x03
    const quint8 parkPromptGuard = 0;     // a prompt equal to it keeps the shown one
    QTimer* countdownTimer = nullptr;
};
