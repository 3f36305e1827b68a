#pragma once
// HaiMa "M5/M3/F5", box by RuiZiCheng.
#include "recorddriver.h"

class Data94Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data94Info)

class Canbus94Obj : public RecordDriver<Data94Info>
{
    Q_OBJECT
public:
    explicit Canbus94Obj(QObject* parent = nullptr);
};
