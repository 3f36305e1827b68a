#pragma once
// SAIC "Roewe", box by RuiZiCheng.
#include "recorddriver.h"

class Data71Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data71Info)

class Canbus71Obj : public RecordDriver<Data71Info>
{
    Q_OBJECT
public:
    explicit Canbus71Obj(QObject* parent = nullptr);
};
