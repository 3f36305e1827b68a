#pragma once
// Korean-Hyundai Kia "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data67Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data67Info)

class Canbus67Obj : public RecordDriver<Data67Info>
{
    Q_OBJECT
public:
    explicit Canbus67Obj(QObject* parent = nullptr);
};
