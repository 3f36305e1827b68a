#pragma once
// Dongfeng "18 scenery S560 automatic high-end", box by RuiZiCheng: the make's smallest
// driver. Climate, doors, body flags, radar and keys in; touch gestures out.
#include "common/payloadcache.h"
#include "common/touchgrid.h"
#include "recorddriver.h"

class FrameReader;

class Data73Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data73Info)

class Canbus73Obj : public RecordDriver<Data73Info>
{
    Q_OBJECT
public:
    explicit Canbus73Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void exitSelectSlot() override;
    // action 0: the touch went down; 2: it was released.
    void setTcanBussend(int x, int y, int width, int height, int action) override;

protected:
    // For the drivers that extend this one.
    Canbus73Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

private:
    void onKey(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f);

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x23
    int keyValue = 0;
    int keyState = 0;
    canbus::TouchPress touchPress;
};
