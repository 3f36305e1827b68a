#pragma once
// jeep "Guides", box by RuiZiCheng.
#include "../canbus88/canbus88.h"

class Canbus91Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus91Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
};
