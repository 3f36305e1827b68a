#pragma once
// Benz "compatible", box by RuiZiCheng. Climate, doors and body flags, eight radar
// sensors, parking trajectory, three key sources (steering wheel, central control,
// mouse) and a knob, body options, the outdoor temperature and range, and the
// multiplexed trip computer and function pages. It reports clock, sources and
// language, and the chosen vehicle variant.
//
// Every whole frame counts as a sign of life (walk A). While the head unit is off the
// record keeps being updated, but most change signals stay silent until it is on;
// the climate, keys, radar, doors and speeds are told in any case.

#include "data56info.h"
#include "common/payloadcache.h"
#include "recorddriver.h"

class FrameReader;

class Canbus56Obj : public RecordDriver<Data56Info>
{
    Q_OBJECT
public:
    explicit Canbus56Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCurrentData(int year, int month, int day) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // Reports the chosen vehicle variant; every 3 s for the driver's life.
    void exitSelectSlot() override;
    void languageChanged(const QString& language);

private:
    // Frame handlers, one per type; `f` has passed the type's minimum size.
    void onSpeed(const FrameReader& f);
    void onEngineSpeed(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onBodyBits(const FrameReader& f);
    void onTrajectory(const FrameReader& f);
    void onWheelKey(const FrameReader& f);
    void onCentralKey(const FrameReader& f);
    void onMouseOrKnob(const FrameReader& f);
    void onMouse(const FrameReader& f);
    void onKnob(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onOptions(const FrameReader& f);
    void onBodyPage(const FrameReader& f);
    void onWarningsAndDoors(const FrameReader& f);
    void onOutdoorAndRange(const FrameReader& f);
    void onVariant(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    // dataChanged while the head unit is on; the handled-frame result.
    int endStep();
    void emitIfPowered(void (CanbusInterface::*signal)());

    int getQtKeyFromValue(int value) const;
    int getCentralControlButton(int value) const;
    int getMouseButton(int value) const;
    // A key frame's press (1) or release (0) of `code`, whatever the table gave.
    void pressKey(int code, int pressed);
    void sendClock();

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x21, less the last
    int lastMouseState = 0;               // 1 short, 2 long press of the last mouse key
};
