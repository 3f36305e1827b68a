#pragma once
// Honda "DA Series", box by RuiZiCheng: the Honda box's frames and reports on a row of
// its own, with its own walk and link forms.
#include "../canbus31/canbus31.h"

class Canbus36Obj : public Canbus31Obj
{
    Q_OBJECT
public:
    explicit Canbus36Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 31 || Canbus31Obj::inheritedById(id); }
};
