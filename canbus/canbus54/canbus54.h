#pragma once
// NISSAN "Murano", box by RuiZiCheng: the Nissan box's frames and commands, with two
// wheel buttons of its own. The telephone button gives "answer" when tapped and
// "hang up" when held; the mode button keeps its own key only where the playing
// source or a phone projection can take it, and is the source-switch key elsewhere.
#include "../canbus32/canbus32.h"

class Canbus54Obj : public Canbus32Obj
{
    Q_OBJECT
public:
    explicit Canbus54Obj(QObject* parent = nullptr);
    ~Canbus54Obj() override;

    bool inheritedById(int id) const override { return id == 32 || Canbus32Obj::inheritedById(id); }
    int checkProtocolData(const QByteArray& frame) override;

private:
    int modeButtonKey() const;
};
