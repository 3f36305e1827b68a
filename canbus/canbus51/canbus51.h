#pragma once
// Toyota "compatible(Portrait)", box by RuiZiCheng: the Toyota box's frames, with
// climate commands as a press and a release of a button code, and seat heating shown.
#include "../canbus30/variant30.h"

// The Toyota record under this driver's own type name.
class Data51Info : public Data30Info
{
public:
    void clear() { *this = Data51Info(); }
};
Q_DECLARE_METATYPE(Data51Info)

class Canbus51Obj : public Canbus30Variant<Data51Info>
{
    Q_OBJECT
public:
    explicit Canbus51Obj(QObject* parent = nullptr);

    void initData() override;
    void setCanbusState(const QString& type, const QString& value) override;
};
