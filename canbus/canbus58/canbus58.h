#pragma once
// Great Wall "2014 payment C30", box by RuiZiCheng.
#include "recorddriver.h"

class Data58Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data58Info)

class Canbus58Obj : public RecordDriver<Data58Info>
{
    Q_OBJECT
public:
    explicit Canbus58Obj(QObject* parent = nullptr);
};
