#pragma once
// Mazda "old Mazda", box by RuiZiCheng: the one box on the FC/FD frames. 0xFC frames
// carry a type (flag, keys, steering, radar); 0xFD frames are either the untyped
// 6-byte climate frame or the 10-byte amplifier frame 0x31.
#include "data66info.h"
#include "common/payloadcache.h"
#include "recorddriver.h"

class FrameReader;

class Canbus66Obj : public RecordDriver<Data66Info>
{
    Q_OBJECT
public:
    explicit Canbus66Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void setTcanBussend(int a, int b, int c, int d, int e) override;

private:
    int getQtKeyFromValue(int value) const;

    int onTypedFrame(const FrameReader& f);
    int onUntypedFrame(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onRadar(const FrameReader& f);

    // climate66.cpp
    void onClimate(const FrameReader& f);
    void onOutdoor(const FrameReader& f);
    void onSetPoint(const FrameReader& f);
    void onAmplifier(const FrameReader& f);

    // Bytes 1 to 5 of the last climate frame.
    canbus::PayloadCache airFrameCache{1};
    float lastOutdoorValue = 0;
};
