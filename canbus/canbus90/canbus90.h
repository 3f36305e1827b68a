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

protected:
    // For 91 and 92, which read the climate frame as this one does.
    Canbus90Obj(int driverId, QObject* parent);
};
