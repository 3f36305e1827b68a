#pragma once
// SAIC "MG Roewe", box by RuiZiCheng.
#include "recorddriver.h"

class Data72Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data72Info)

class Canbus72Obj : public RecordDriver<Data72Info>
{
    Q_OBJECT
public:
    explicit Canbus72Obj(QObject* parent = nullptr);
};
