#pragma once
// JAC "Refinery", box by RuiZiCheng: climate, doors, radar, tyres, battery values,
// energy use and the panoramic camera in; radio and media, the clock, the vehicle
// model and touch gestures out. The model (0..4) changes some keys.
#include "common/payloadcache.h"
#include "data69info.h"
#include "common/touchgrid.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus69Obj : public RecordDriver<Data69Info>
{
    Q_OBJECT
public:
    explicit Canbus69Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // The chosen vehicle model, every 3 s, for the models that need it.
    void exitSelectSlot() override;
    // One more second of a running call, reported to the box; nothing starts its timer.
    void CallSelectSlot() override;
    // action 0: the touch went down; 2: it was released.
    void setTcanBussend(int x, int y, int width, int height, int action) override;

private:
    int getQtKeyFromValue(int value) const;
    int getQtPanelButtonsValue(int value) const;
    void onKey(const FrameReader& f, bool panel);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onSettingItem(const FrameReader& f);
    void onBattery(const FrameReader& f);
    void onEnergy(const FrameReader& f);

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x11
    QTimer* callTimer = nullptr;
    int keyValue = 0;
    int keyState = 0;
    int callSeconds = 0;
    canbus::TouchPress touchPress;
};
