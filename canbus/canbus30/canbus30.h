#pragma once
// Toyota "compatible", box by RuiZiCheng. Besides climate, doors, radar, tyres and keys
// it decodes the trip and fuel values, the fuel history, the body and vehicle
// settings, the hybrid state, the amplifier, the power use and the factory multimedia
// unit into Data30Info. It tells the box the playing source in fixed-size UTF-16
// frames, the language, the vehicle variant the user picked, and touches on the
// vehicle's screen. Climate commands go out as [87 02 code arg].
#include <QString>

#include "common/payloadcache.h"
#include "data30info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

namespace toyota {
// The box's link, walked as the driver says: its version (0x30) is asked for behind
// every connect call, and the disconnect frame goes out whatever the state.
constexpr canbus::DriverProfile linkProfile(canbus::WalkVariant walk)
{
    return canbus::DriverProfile{canbus::FrameFamily::Start2E, walk}
        .requesting(0x30, 0x00)
        .disconnecting(canbus::DisconnectForm::Always);
}
} // namespace toyota

class Canbus30Obj : public RecordDriver<Data30Info>
{
    Q_OBJECT
public:
    explicit Canbus30Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    int checkProtocolData(const QByteArray& frame) override;

    // The overlay follows the scale the radar frames set: bars, or distances.
    void RadarDisplay() override;

public slots:
    void languageChanged(QString language);
    // Tells the box the vehicle variant the user picked; repeats every three seconds.
    void exitSelectSlot() override;
    void setTcanBussend(int x, int y, int width, int height, int model) override;

protected:
    // For the drivers that extend this one.
    Canbus30Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

private:
    int getQtKeyFromValue(int value) const;
    int getPanelButtonInfo(int value) const;
    int getSteeringMediaSourceKeyInfo(int value) const;
    int getAirConditioningPanelButtons(int value) const;

    void onRadar(const FrameReader& f, bool front);
    void onRearRadar(const FrameReader& f);
    void onHybrid(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onPanelKey(const FrameReader& f, int (Canbus30Obj::*codeOf)(int) const);
    void onClimateKeys(const FrameReader& f);
    void onMileage(const FrameReader& f);
    void onFuel(const FrameReader& f);
    void onFuelHistory(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onBodySettings(const FrameReader& f);
    void onPastFuel(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onOutdoorByte(quint8 value);
    void onSteering(const FrameReader& f);
    void onPower(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onSettingBits(const FrameReader& f);
    void onSettings(const FrameReader& f);
    void onSettingFlags(const FrameReader& f);
    void onSeatsAndFan(const FrameReader& f);
    void onMediaFlags(const FrameReader& f);
    void onMultimedia(const FrameReader& f);
    void onMediaState(const FrameReader& f);

    void reportRadio(const QList<QVariant>& args);
    void reportMedia(quint8 code, const QList<QVariant>& args);

    QTimer* selectTimer = nullptr;
    int lastPanelKey = 0;   // shared by the three panel key frames
    int currentKey = 0;
    canbus::PayloadCache lastAirPayload;
};
