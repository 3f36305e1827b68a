#pragma once
// Pentium "All X80 series", box by RuiZiCheng.
#include "recorddriver.h"

class Data83Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data83Info)

class Canbus83Obj : public RecordDriver<Data83Info>
{
    Q_OBJECT
public:
    explicit Canbus83Obj(QObject* parent = nullptr);
};
