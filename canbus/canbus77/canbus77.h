#pragma once
// Dongfeng "Jiangxi Isuzu", box by RuiZiCheng: the Fengshen's frames on a row of its own.
#include "../canbus79/canbus79.h"

class Canbus77Obj : public Canbus79Obj
{
    Q_OBJECT
public:
    explicit Canbus77Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 79 || Canbus79Obj::inheritedById(id); }
};
