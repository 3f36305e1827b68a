#pragma once
// bisu "M3/T3/T5", box by RuiZiCheng.
#include "recorddriver.h"

class Data84Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data84Info)

class Canbus84Obj : public RecordDriver<Data84Info>
{
    Q_OBJECT
public:
    explicit Canbus84Obj(QObject* parent = nullptr);
};
