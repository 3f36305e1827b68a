#pragma once
// Geely "general", box by RuiZiCheng.
#include "recorddriver.h"

class Data49Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data49Info)

class Canbus49Obj : public RecordDriver<Data49Info>
{
    Q_OBJECT
public:
    explicit Canbus49Obj(QObject* parent = nullptr);
};
