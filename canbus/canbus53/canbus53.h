#pragma once
// Honda "compatible(Landscape)", box by RuiZiCheng.
#include "../canbus31/canbus31.h"

class Canbus53Obj : public Canbus31Obj
{
    Q_OBJECT
public:
    explicit Canbus53Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 31 || Canbus31Obj::inheritedById(id); }
};
