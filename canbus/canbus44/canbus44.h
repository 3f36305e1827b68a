#pragma once
// BAIC "BJ40", box by RuiZiCheng.
#include "recorddriver.h"

class Data44Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data44Info)

class Canbus44Obj : public RecordDriver<Data44Info>
{
    Q_OBJECT
public:
    explicit Canbus44Obj(QObject* parent = nullptr);
};
