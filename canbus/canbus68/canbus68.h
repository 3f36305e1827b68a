#pragma once
// Chery "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data68Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data68Info)

class Canbus68Obj : public RecordDriver<Data68Info>
{
    Q_OBJECT
public:
    explicit Canbus68Obj(QObject* parent = nullptr);
};
