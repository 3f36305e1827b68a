#pragma once
// Mazda "old Mazda", box by RuiZiCheng.
#include "recorddriver.h"

class Data66Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data66Info)

class Canbus66Obj : public RecordDriver<Data66Info>
{
    Q_OBJECT
public:
    explicit Canbus66Obj(QObject* parent = nullptr);
};
