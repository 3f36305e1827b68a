#pragma once
// FIAT "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data98Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data98Info)

class Canbus98Obj : public RecordDriver<Data98Info>
{
    Q_OBJECT
public:
    explicit Canbus98Obj(QObject* parent = nullptr);
};
