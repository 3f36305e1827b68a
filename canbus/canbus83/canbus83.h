#pragma once
// Pentium "All X80 series", box by RuiZiCheng: climate, keys, steering and the rear
// radar in; nothing out but what every driver sends.
#include "recorddriver.h"
#include "common/payloadcache.h"

class FrameReader;

class Data83Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data83Info)

class Canbus83Obj : public RecordDriver<Data83Info>
{
    Q_OBJECT
public:
    explicit Canbus83Obj(QObject* parent = nullptr);

    void initData() override;
    int checkProtocolData(const QByteArray& frame) override;

    int getQtKeyFromValue(int value);

private:
    void onClimate(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onRadar(const FrameReader& f);

    canbus::PayloadCache lastAirPayload{canbus::kDataOffsetFD};
    quint8 lastByte5 = 0;
};
