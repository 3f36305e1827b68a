#pragma once
// jeep "Guides", box by RuiZiCheng.
// Reads as 88 but for the climate frame as 90 and the outdoor frame offset by 85.
#include "../canbus88/canbus88.h"

class Canbus91Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus91Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
    int checkProtocolData(const QByteArray& frame) override;

private:
    canbus::PayloadCache variantAirCache;   // data bytes of the last frame 0x05
};
