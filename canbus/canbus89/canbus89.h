#pragma once
// jeep "18 Wrangler/Challenger/18 Grand Cherokee", box by RuiZiCheng.
// Reads as 88 but for the climate frame: the right side's vents and half degrees, the left set point two steps lower.
#include "../canbus88/canbus88.h"

class Canbus89Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus89Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
};
