#pragma once
// JAC "Refinery", box by RuiZiCheng.
#include "recorddriver.h"

class Data69Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data69Info)

class Canbus69Obj : public RecordDriver<Data69Info>
{
    Q_OBJECT
public:
    explicit Canbus69Obj(QObject* parent = nullptr);
};
