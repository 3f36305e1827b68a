#pragma once
// jeep "Freeman/Commander/19 Free Lights", box by RuiZiCheng.
// Reads as 88 but for the climate frame: the right side's vents and half degrees from byte 1.
#include "../canbus88/canbus88.h"

class Canbus90Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus90Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
    int checkProtocolData(const QByteArray& frame) override;

private:
    canbus::PayloadCache variantAirCache;   // data bytes of the last frame 0x05
};
