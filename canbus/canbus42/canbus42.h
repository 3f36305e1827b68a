#pragma once
// Baojun "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data42Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data42Info)

class Canbus42Obj : public RecordDriver<Data42Info>
{
    Q_OBJECT
public:
    explicit Canbus42Obj(QObject* parent = nullptr);
};
