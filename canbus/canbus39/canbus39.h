#pragma once
// Buick "GL8(Business Edition)", box by RuiZiCheng.
#include "recorddriver.h"

class Data39Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data39Info)

class Canbus39Obj : public RecordDriver<Data39Info>
{
    Q_OBJECT
public:
    explicit Canbus39Obj(QObject* parent = nullptr);
};
