#pragma once
// Volkswagen "07-10 Old models", box by RuiZiCheng: the MQB box's frames, reports and commands on a
// box of its own row, walk and link forms. Unlike the MQB driver it keeps no climate
// popup back after power on, draws the radar overlay the common way and leaves the
// display's language alone.
#include "../canbus28/canbus28.h"

class Canbus34Obj : public Canbus28Obj
{
    Q_OBJECT
public:
    explicit Canbus34Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 28 || Canbus28Obj::inheritedById(id); }

    void setPowerOnState() override;
    void setPowerOffState() override;
    void RadarDisplay() override;

public slots:
    // Takes the head unit's language without telling the box.
    void languageChanged(QString language);
};
