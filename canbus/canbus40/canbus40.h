#pragma once
// Audi "Audi", box by RuiZiCheng: the Audi Q3's frames on a box of its own row, walk and
// link forms.
#include "../canbus41/canbus41.h"

class Canbus40Obj : public Canbus41Obj
{
    Q_OBJECT
public:
    explicit Canbus40Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 41 || Canbus41Obj::inheritedById(id); }
};
