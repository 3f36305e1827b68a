#pragma once
// Great Wall "20 models(replacement H4/F7/H9)", box by RuiZiCheng.
#include "../canbus60/canbus60.h"

class Canbus62Obj : public Canbus60Obj
{
    Q_OBJECT
public:
    explicit Canbus62Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 60 || Canbus60Obj::inheritedById(id); }
};
