#pragma once
// jeep "18 Wrangler/Challenger/18 Grand Cherokee", box by RuiZiCheng.
#include "../canbus88/canbus88.h"

class Canbus89Obj : public Canbus88Obj
{
    Q_OBJECT
public:
    explicit Canbus89Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 88 || Canbus88Obj::inheritedById(id); }
};
