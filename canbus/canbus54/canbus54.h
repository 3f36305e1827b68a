#pragma once
// NISSAN "Murano", box by RuiZiCheng.
#include "../canbus32/canbus32.h"

class Canbus54Obj : public Canbus32Obj
{
    Q_OBJECT
public:
    explicit Canbus54Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 32 || Canbus32Obj::inheritedById(id); }
};
