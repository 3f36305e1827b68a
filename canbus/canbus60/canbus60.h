#pragma once
// Great Wall "HAVAL", box by RuiZiCheng. Climate whose off state is shown only once it
// lasts, seat heating, cooling and massage, doors, body readings, radar, trajectory, the
// original-car setup, the vehicle's attitude, amplifier, CD changer, the panorama camera
// with its touch page and gestures, and prompts. It reports clock, sources, language and
// the chosen vehicle variant; commands go out as a press and, a moment later, a release.
//
// The box counts as connected once it sent its version (frame 0x7F). The H4 variants
// and the make's other boxes derive from it.

#include "common/payloadcache.h"
#include "data60info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus60Obj : public RecordDriver<Data60Info>
{
    Q_OBJECT
public:
    explicit Canbus60Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override { return true; }
    bool hadReverseLine() const override { return true; }
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // Tells the box the vehicle variant, and asks for the camera data while reversing.
    void onCountdown();
    void btCallStatesChangeSlot(bool call) override;
    // A touch on the panorama picture: model 0 pressed, 2 released.
    void setTcanBussend(int x, int y, int w, int h, int model) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers that extend this one.
    Canbus60Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    int carModel() const { return info() ? info()->body.carModel : 0; }
    // The reply to a touch on the panorama page: 2E 83 03 group item 00.
    void sendPanoramaTouch(quint8 group, quint8 item);
    // A button command: the code pressed now, released 150 ms later.
    void pressCommand(quint8 type, quint8 code);

    bool callActive = false;
    bool reverseActive = false;

private:
    // Frame handlers, one per type; `f` has passed the type's minimum size.
    void onKey(const FrameReader& f);
    void onPanelKey(const FrameReader& f);
    void onKnob(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onBodyReadings(const FrameReader& f);
    void onTrajectory(const FrameReader& f);
    void onSetup(const FrameReader& f);
    void onLevel(const FrameReader& f);
    void onSeats(const FrameReader& f);
    void onAttitude(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onDiscStatus(const FrameReader& f);
    void onDiscText(const FrameReader& f);
    void onFlags(const FrameReader& f);
    void onPanorama(const FrameReader& f);
    void onPrompt(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onClimateDistribution(quint8 value);
    void onSetPoints(const FrameReader& f);
    void onOutdoor(quint8 raw);

    int getQtKeyFromValue(int value) const;
    int getQtPanelButtonsValue(int value) const;

    canbus::PayloadCache airFrameCache;    // data bytes of the last frame 0x23
    canbus::PayloadCache seatFrameCache;   // data bytes of the last frame 0x35
    QTimer* countdownTimer = nullptr;
    quint8 lastKnobValue = 0;
    int touchStartX = 0;
    int touchStartY = 0;
};
