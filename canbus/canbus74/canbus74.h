#pragma once
// Dongfeng "scenery", box by RuiZiCheng.
#include "recorddriver.h"

class Data74Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data74Info)

class Canbus74Obj : public RecordDriver<Data74Info>
{
    Q_OBJECT
public:
    explicit Canbus74Obj(QObject* parent = nullptr);
};
