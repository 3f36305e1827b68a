#pragma once
// Audi "Audi", box by RuiZiCheng.
#include "recorddriver.h"

class Data40Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data40Info)

class Canbus40Obj : public RecordDriver<Data40Info>
{
    Q_OBJECT
public:
    explicit Canbus40Obj(QObject* parent = nullptr);
};
