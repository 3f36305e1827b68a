#pragma once
// Ford "general", box by RuiZiCheng.
#include "recorddriver.h"

class Data48Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data48Info)

class Canbus48Obj : public RecordDriver<Data48Info>
{
    Q_OBJECT
public:
    explicit Canbus48Obj(QObject* parent = nullptr);
};
