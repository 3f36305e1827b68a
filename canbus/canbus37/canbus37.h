#pragma once
// Buick "GM general series", box by RuiZiCheng.
#include "recorddriver.h"

class Data37Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data37Info)

class Canbus37Obj : public RecordDriver<Data37Info>
{
    Q_OBJECT
public:
    explicit Canbus37Obj(QObject* parent = nullptr);
};
