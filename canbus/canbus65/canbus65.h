#pragma once
// Mazda "new mazda", box by RuiZiCheng. A reporting box: it tells the car's state
// (radar, tyres, doors, steering, trip computer, service, settings, fuel history,
// i-stop, the factory disc player, amplifier and radio, security settings) and its
// buttons, and takes nothing from the head unit but the link frames and the language.
// Climate, source, clock, reverse and touch reports keep the base's empty forms.
#include "data65info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus65Obj : public RecordDriver<Data65Info>
{
    Q_OBJECT
public:
    explicit Canbus65Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    // The box draws its radar whatever the gear: the reverse state changes nothing here.
    void setInReverse(bool value) override;
    int checkProtocolData(const QByteArray& frame) override;

    // This box counts bars on a display of 8: the overlay is up while any sensor shows one.
    void RadarDisplay() override;

public slots:
    void languageChanged(const QString& language);

private:
    int getQtKeyFromValue(int value) const;
    int getQtKeyPanelButtonsValue(int value) const;

    // Buttons (keys65.cpp).
    void onHeldKey(const FrameReader& f);
    void onPanelKey(const FrameReader& f);
    void tap(int code);

    // The car itself (vehicle65.cpp).
    void onTyres(const FrameReader& f);
    void onClockText(const FrameReader& f);
    void onRearRadar(const FrameReader& f);
    void onFrontRadar(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onSteering(const FrameReader& f);
    void onBasic(const FrameReader& f);
    void onMaintenance(const FrameReader& f);
    void onDrivingDisplay(const FrameReader& f);
    void onSetItems(const FrameReader& f);
    void onSecurity(const FrameReader& f);

    // Trip texts and the factory entertainment (media65.cpp).
    void onAverageFuel(const FrameReader& f);
    void onFuelHistory(const FrameReader& f);
    void onIStop(const FrameReader& f);
    void onDiscPower(const FrameReader& f);
    void onDisc(const FrameReader& f);
    void onDiscText(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onAmplifierMore(const FrameReader& f);
    void onRadio(const FrameReader& f);
    void onPreset(const FrameReader& f);

    // The status frames shared with the Nissan family's boxes.
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    QTimer* selectTimer = nullptr;
    int pressState = 0;   // the last hold byte of either key frame: 1 short, 2 long
};
