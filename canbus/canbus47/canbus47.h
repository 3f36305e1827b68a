#pragma once
// BAIC "EC5", box by RuiZiCheng.
#include "recorddriver.h"

class Data47Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data47Info)

class Canbus47Obj : public RecordDriver<Data47Info>
{
    Q_OBJECT
public:
    explicit Canbus47Obj(QObject* parent = nullptr);
};
