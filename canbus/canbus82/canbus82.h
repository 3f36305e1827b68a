#pragma once
// Pentium "14 models of B70", box by RuiZiCheng: the Pentium box's frames on a row of
// its own, with its own link frames.
#include "../canbus81/canbus81.h"

class Canbus82Obj : public Canbus81Obj
{
    Q_OBJECT
public:
    explicit Canbus82Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 81 || Canbus81Obj::inheritedById(id); }
};
