#pragma once
// Audi "Audi Q3", box by RuiZiCheng.
#include "recorddriver.h"

class Data41Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data41Info)

class Canbus41Obj : public RecordDriver<Data41Info>
{
    Q_OBJECT
public:
    explicit Canbus41Obj(QObject* parent = nullptr);
};
