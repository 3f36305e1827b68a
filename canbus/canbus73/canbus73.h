#pragma once
// Dongfeng "18 scenery S560 automatic high-end", box by RuiZiCheng.
#include "recorddriver.h"

class Data73Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data73Info)

class Canbus73Obj : public RecordDriver<Data73Info>
{
    Q_OBJECT
public:
    explicit Canbus73Obj(QObject* parent = nullptr);
};
