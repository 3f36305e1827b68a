#pragma once
// SAIC "MAXUS", box by RuiZiCheng.
#include "recorddriver.h"

class Data70Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data70Info)

class Canbus70Obj : public RecordDriver<Data70Info>
{
    Q_OBJECT
public:
    explicit Canbus70Obj(QObject* parent = nullptr);
};
