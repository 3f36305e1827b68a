#pragma once
// Dongfeng "18 Scenery 580", box by RuiZiCheng.
#include "recorddriver.h"

class Data76Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data76Info)

class Canbus76Obj : public RecordDriver<Data76Info>
{
    Q_OBJECT
public:
    explicit Canbus76Obj(QObject* parent = nullptr);
};
