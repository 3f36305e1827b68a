#pragma once
// Pentium "18 models of CX65", box by RuiZiCheng.
#include "../canbus81/canbus81.h"

class Canbus85Obj : public Canbus81Obj
{
    Q_OBJECT
public:
    explicit Canbus85Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 81 || Canbus81Obj::inheritedById(id); }
};
