#pragma once
// Honda "compatible(Landscape)", box by RuiZiCheng: the Honda box's frames and reports,
// with climate commands of its own that name the wanted state rather than a button,
// and a record of its own name.
#include "../canbus31/canbus31.h"

// The Honda record under this driver's own type name.
class Data53Info : public Data31Info
{
};
Q_DECLARE_METATYPE(Data53Info)

class Canbus53Obj : public Canbus31Obj
{
    Q_OBJECT
public:
    explicit Canbus53Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 31 || Canbus31Obj::inheritedById(id); }

    void initData() override;
    QVariant getDataInfo() const override;
    // Takes this driver's record, or the Honda record of a screen made for 31.
    void setDataInfo(const QVariant& value) override;
    void setCanbusState(const QString& type, const QString& value) override;

private:
    QTimer* variantSelectTimer = nullptr;
};
