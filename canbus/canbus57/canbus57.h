#pragma once
// trumpchi "GS5 Super Bo", box by RuiZiCheng: the GAC Trumpchi box's frames, with its
// own buttons on the camera picture.
#include "../canbus33/canbus33.h"

class Canbus57Obj : public Canbus33Obj
{
    Q_OBJECT
public:
    explicit Canbus57Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 33 || Canbus33Obj::inheritedById(id); }

public slots:
    // A released touch (model 2) on the camera picture: the button under it, or the
    // frame that says none was hit.
    void setTcanBussend(int x, int y, int w, int h, int model) override;
};
