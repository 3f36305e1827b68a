#pragma once
// Korean-Hyundai Kia "compatible", box by RuiZiCheng, on FD frames with 16-bit sums:
// climate, doors, radar, tyres, the outdoor temperature, the multiplexed status
// frames, the panoramic camera, vehicle setup and the pages of the electric drive. It
// reports the clock, the source and, at every connect call, the language and the
// amplifier values; the chosen vehicle variant every 3 s; taps and swipes on the
// panoramic page. No frame is acknowledged.

#include "common/payloadcache.h"
#include "common/touchgrid.h"
#include "data67info.h"
#include "recorddriver.h"

class FrameReader;

class Canbus67Obj : public RecordDriver<Data67Info>
{
    Q_OBJECT
public:
    explicit Canbus67Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

    // Vehicle key number -> head-unit key code, 0 for a number without a key.
    int getQtKeyFromValue(int value) const;

public slots:
    // The chosen vehicle variant, told to the box every 3 s.
    void exitSelectSlot() override;
    // action 0: the touch went down; 2: it was released.
    void setTcanBussend(int x, int y, int width, int height, int action) override;
    void languageChanged(const QString& language);

private:
    void onOutdoorTemperature(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onTyreDetail(const FrameReader& f);
    void onPanorama(const FrameReader& f);
    void onBodyBits(const FrameReader& f);
    void onSetup(const FrameReader& f);
    void onChargeSchedule(const FrameReader& f);
    void onConsumption(const FrameReader& f);
    void onRange(const FrameReader& f);
    void onEnergyFlow(const FrameReader& f);
    void onEnergyPage(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);
    void emitGated(void (CanbusInterface::*signal)());
    void sendMediaReport(int source, const QList<QVariant>& args);

    canbus::PayloadCache airFrameCache{canbus::kDataOffsetFD};   // data bytes of the last 0x03
    canbus::TouchPress touchPress;
};
