#pragma once
// Honda "DA Series", box by RuiZiCheng.
#include "recorddriver.h"

class Data36Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data36Info)

class Canbus36Obj : public RecordDriver<Data36Info>
{
    Q_OBJECT
public:
    explicit Canbus36Obj(QObject* parent = nullptr);
};
