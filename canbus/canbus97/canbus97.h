#pragma once
// southeast "DX7/DX3/DX5", box by RuiZiCheng.
#include "recorddriver.h"

class Data97Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data97Info)

class Canbus97Obj : public RecordDriver<Data97Info>
{
    Q_OBJECT
public:
    explicit Canbus97Obj(QObject* parent = nullptr);
};
