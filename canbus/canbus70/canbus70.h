#pragma once
// SAIC "MAXUS", box by RuiZiCheng: the MG Roewe's frames on a row of its own.
#include "../canbus72/canbus72.h"

class Canbus70Obj : public Canbus72Obj
{
    Q_OBJECT
public:
    explicit Canbus70Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 72 || Canbus72Obj::inheritedById(id); }
};
