#pragma once
// Dongfeng "Jiangxi Isuzu", box by RuiZiCheng.
#include "recorddriver.h"

class Data77Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data77Info)

class Canbus77Obj : public RecordDriver<Data77Info>
{
    Q_OBJECT
public:
    explicit Canbus77Obj(QObject* parent = nullptr);
};
