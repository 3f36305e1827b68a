#pragma once
// Dongfeng "18 Scenery S560", box by RuiZiCheng: the S560's frames on a row of its own.
#include "../canbus73/canbus73.h"

class Canbus75Obj : public Canbus73Obj
{
    Q_OBJECT
public:
    explicit Canbus75Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 73 || Canbus73Obj::inheritedById(id); }
};
