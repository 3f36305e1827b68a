#pragma once
// Pentium "14 models of B70", box by RuiZiCheng.
#include "recorddriver.h"

class Data82Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data82Info)

class Canbus82Obj : public RecordDriver<Data82Info>
{
    Q_OBJECT
public:
    explicit Canbus82Obj(QObject* parent = nullptr);
};
