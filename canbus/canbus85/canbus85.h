#pragma once
// Pentium "18 models of CX65", box by RuiZiCheng: the Pentium box in all but the text of
// its source reports, which is UTF-16 with codes of its own.
#include "../canbus81/canbus81.h"

class Canbus85Obj : public Canbus81Obj
{
    Q_OBJECT
public:
    explicit Canbus85Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 81 || Canbus81Obj::inheritedById(id); }

protected:
    TextForm textForm() const override;
};
