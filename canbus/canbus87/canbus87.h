#pragma once
// Peugeot "Peugeot Citroen", box by RuiZiCheng.
#include "recorddriver.h"

class Data87Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data87Info)

class Canbus87Obj : public RecordDriver<Data87Info>
{
    Q_OBJECT
public:
    explicit Canbus87Obj(QObject* parent = nullptr);
};
