#pragma once
// Great Wall "20 models(replacement H4/F7/H9)", box by RuiZiCheng: the HAVAL's frames,
// with a panorama picture of two settings pages that takes touches of its own.
#include "../canbus60/canbus60.h"

class Canbus62Obj : public Canbus60Obj
{
    Q_OBJECT
public:
    explicit Canbus62Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 60 || Canbus60Obj::inheritedById(id); }
    int checkProtocolData(const QByteArray& frame) override { return Canbus60Obj::checkProtocolData(frame); }

public slots:
    // Released touches only (model 2), by the open settings page.
    void setTcanBussend(int x, int y, int w, int h, int model) override;
};
