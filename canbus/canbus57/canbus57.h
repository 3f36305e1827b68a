#pragma once
// trumpchi "GS5 Super Bo", box by RuiZiCheng.
#include "../canbus33/canbus33.h"

class Canbus57Obj : public Canbus33Obj
{
    Q_OBJECT
public:
    explicit Canbus57Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 33 || Canbus33Obj::inheritedById(id); }
};
