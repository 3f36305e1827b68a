#pragma once
// Mitsubishi car series "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data96Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data96Info)

class Canbus96Obj : public RecordDriver<Data96Info>
{
    Q_OBJECT
public:
    explicit Canbus96Obj(QObject* parent = nullptr);
};
