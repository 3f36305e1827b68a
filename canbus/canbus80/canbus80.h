#pragma once
// Dongfeng "Kai Chen", box by RuiZiCheng.
#include "recorddriver.h"

class Data80Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data80Info)

class Canbus80Obj : public RecordDriver<Data80Info>
{
    Q_OBJECT
public:
    explicit Canbus80Obj(QObject* parent = nullptr);
};
