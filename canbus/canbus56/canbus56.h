#pragma once
// Benz "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data56Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data56Info)

class Canbus56Obj : public RecordDriver<Data56Info>
{
    Q_OBJECT
public:
    explicit Canbus56Obj(QObject* parent = nullptr);
};
