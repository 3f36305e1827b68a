#pragma once
// Great Wall "20 models of H4 (portrait)", box by RuiZiCheng: the HAVAL's frames, with
// button commands of its own (frame 0xE0).
#include "../canbus60/canbus60.h"

class Canbus61Obj : public Canbus60Obj
{
    Q_OBJECT
public:
    explicit Canbus61Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 60 || Canbus60Obj::inheritedById(id); }
    int checkProtocolData(const QByteArray& frame) override { return Canbus60Obj::checkProtocolData(frame); }
    void setCanbusState(const QString& type, const QString& value) override;
};
