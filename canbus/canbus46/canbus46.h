#pragma once
// BAIC "EC180", box by RuiZiCheng.
#include "recorddriver.h"

class Data46Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data46Info)

class Canbus46Obj : public RecordDriver<Data46Info>
{
    Q_OBJECT
public:
    explicit Canbus46Obj(QObject* parent = nullptr);
};
