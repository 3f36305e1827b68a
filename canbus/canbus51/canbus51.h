#pragma once
// Toyota "compatible(Portrait)", box by RuiZiCheng.
#include "../canbus30/canbus30.h"

class Canbus51Obj : public Canbus30Obj
{
    Q_OBJECT
public:
    explicit Canbus51Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 30 || Canbus30Obj::inheritedById(id); }
};
