#pragma once
// Toyota "compatible(Landscape)", box by RuiZiCheng: the Toyota box's frames, with
// climate commands as one frame of five flag bytes.
#include "../canbus30/variant30.h"

// The Toyota record under this driver's own type name.
class Data50Info : public Data30Info
{
public:
    void clear() { *this = Data50Info(); }
};
Q_DECLARE_METATYPE(Data50Info)

class Canbus50Obj : public Canbus30Variant<Data50Info>
{
    Q_OBJECT
public:
    explicit Canbus50Obj(QObject* parent = nullptr);

    void setCanbusState(const QString& type, const QString& value) override;
};
