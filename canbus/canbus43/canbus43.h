#pragma once
// BAIC "BAIC", box by RuiZiCheng.
#include "recorddriver.h"

class Data43Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data43Info)

class Canbus43Obj : public RecordDriver<Data43Info>
{
    Q_OBJECT
public:
    explicit Canbus43Obj(QObject* parent = nullptr);
};
