#pragma once
// jeep "Freeman/Commander/19 Free Lights", box by RuiZiCheng.
#include "../canbus88/canbus88.h"

class Canbus90Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus90Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
};
