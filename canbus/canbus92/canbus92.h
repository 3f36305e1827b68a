#pragma once
// jeep "16-20 Guides", box by RuiZiCheng.
// Reads as 88 but for the climate and outdoor frames as 91 and a steering word centred on 0x700.
#include "../canbus88/canbus88.h"

class Canbus92Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus92Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
    int checkProtocolData(const QByteArray& frame) override;

private:
    canbus::PayloadCache variantAirCache;   // data bytes of the last frame 0x05
};
