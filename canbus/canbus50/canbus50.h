#pragma once
// Toyota "compatible(Landscape)", box by RuiZiCheng.
#include "../canbus30/canbus30.h"

class Canbus50Obj : public Canbus30Obj
{
    Q_OBJECT
public:
    explicit Canbus50Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 30 || Canbus30Obj::inheritedById(id); }
};
