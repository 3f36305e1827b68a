#pragma once
// SAIC "MG Roewe", box by RuiZiCheng: climate front and rear, doors, body flags,
// radar, steering, tyres, the trip computer, vehicle settings in four groups,
// warnings, the panoramic camera, driving modes, energy use and two trend curves. It
// reports radio, media, telephone, clock and language to the box, the chosen vehicle
// variant every 3 s, and gestures on the panoramic page.
//
// Most change signals of this box's frames go out only while the head unit is on.

#include "data72info.h"
#include "common/payloadcache.h"
#include "common/touchgrid.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus72Obj : public RecordDriver<Data72Info>
{
    Q_OBJECT
public:
    explicit Canbus72Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void exitSelectSlot() override;
    // One more second of the running call, reported to the box.
    void CallSelectSlot() override;
    // action 0: the touch went down; 2: it was released.
    void setTcanBussend(int x, int y, int width, int height, int action) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers that extend this one.
    Canbus72Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

private:
    void onRearClimate(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onOutdoorTemperature(const FrameReader& f);
    void onSettingsGroup(const FrameReader& f);
    // The bit-field pages 0x40, 0x41, 0x42, 0x44, 0x50 and 0x54.
    int onSetupFrame(const FrameReader& f);
    void onOilColour(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onDrivingMode(const FrameReader& f);
    void onEnergy(const FrameReader& f);
    void onRange(const FrameReader& f);
    void onBattery(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    int getQtKeyFromValue(int value) const;
    int carModel() const;
    void sendMediaReport(int source, const QList<QVariant>& args);
    void sendPhoneReport(const QList<QVariant>& args);
    void emitGated(void (CanbusInterface::*signal)());

    canbus::PayloadCache airFrameCache;       // data bytes of the last frame 0x21
    canbus::PayloadCache rearAirFrameCache;   // data bytes of the last frame 0x11
    QTimer* callTimer = nullptr;
    int keyState = 0;                         // state byte of the last key frame
    QString lastMediaTitle;
    QString lastMediaArtist;
    int callSeconds = 0;
    canbus::TouchPress touchPress;
};
