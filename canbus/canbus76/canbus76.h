#pragma once
// Dongfeng "18 Scenery 580", box by RuiZiCheng: the S560's frames on a row of its own.
#include "../canbus73/canbus73.h"

class Canbus76Obj : public Canbus73Obj
{
    Q_OBJECT
public:
    explicit Canbus76Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 73 || Canbus73Obj::inheritedById(id); }
};
