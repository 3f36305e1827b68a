#pragma once
// Chana Automobile "Auchan series", box by RuiZiCheng.
#include "recorddriver.h"

class Data64Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data64Info)

class Canbus64Obj : public RecordDriver<Data64Info>
{
    Q_OBJECT
public:
    explicit Canbus64Obj(QObject* parent = nullptr);
};
