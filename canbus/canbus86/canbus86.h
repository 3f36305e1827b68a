#pragma once
// Peugeot "Peugeot(Keep the original car displayb)", box by RuiZiCheng.
#include "recorddriver.h"

class Data86Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data86Info)

class Canbus86Obj : public RecordDriver<Data86Info>
{
    Q_OBJECT
public:
    explicit Canbus86Obj(QObject* parent = nullptr);
};
