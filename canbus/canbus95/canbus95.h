#pragma once
// HaiMa "16 models of V70", box by RuiZiCheng.
#include "recorddriver.h"

class Data95Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data95Info)

class Canbus95Obj : public RecordDriver<Data95Info>
{
    Q_OBJECT
public:
    explicit Canbus95Obj(QObject* parent = nullptr);
};
