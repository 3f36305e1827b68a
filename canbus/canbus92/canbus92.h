#pragma once
// jeep "16-20 Guides", box by RuiZiCheng.
#include "../canbus88/canbus88.h"

class Canbus92Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus92Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
};
