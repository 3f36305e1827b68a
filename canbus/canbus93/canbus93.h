#pragma once
// HaiMa "M8", box by RuiZiCheng.
#include "recorddriver.h"

class Data93Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data93Info)

class Canbus93Obj : public RecordDriver<Data93Info>
{
    Q_OBJECT
public:
    explicit Canbus93Obj(QObject* parent = nullptr);
};
