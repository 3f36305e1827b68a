#pragma once
// TATA "TATA", box by Hiworld, on 5A A5 frames. The box talks from the first moment,
// without a handshake, so the driver counts as connected from its construction. It
// reads climate, doors, rear radar, steering angle, body values, steering-wheel and
// panel keys and two rotary knobs, and sends only the climate button commands.
#include "data120info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus120Obj : public RecordDriver<Data120Info>
{
    Q_OBJECT
public:
    explicit Canbus120Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setCanbusState(const QString& type, const QString& value) override;
    int checkProtocolData(const QByteArray& frame) override;

    void RadarDisplay() override;
    int getQtKeyFromValue(int value) const;
    int getQtKeyPanelButtonsValue(int value) const;

private:
    void onBodyAndSteering(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onBodyValue(const FrameReader& f);
    void onPanelKey(const FrameReader& f);
    void onKnob(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onSpeeds(const FrameReader& f);
    void onRadar(const FrameReader& f);
    void onVersion(const FrameReader& f);

    // A whole key stroke, down and up, of a head-unit key code; code 0 sends nothing.
    void tapKey(int code, int times = 1);

    QTimer* callSelectTimer = nullptr;
    int volumeCounter = 0;   // each knob's last running counter
    int tuneCounter = 0;
};
