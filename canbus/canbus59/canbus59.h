#pragma once
// Great Wall "14~17 Fengjun 6", box by RuiZiCheng.
#include "recorddriver.h"

class Data59Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data59Info)

class Canbus59Obj : public RecordDriver<Data59Info>
{
    Q_OBJECT
public:
    explicit Canbus59Obj(QObject* parent = nullptr);
};
