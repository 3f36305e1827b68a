#pragma once
// Volkswagen "MQB(Golf)", box by RuiZiCheng.
#include "recorddriver.h"

class Data28Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data28Info)

class Canbus28Obj : public RecordDriver<Data28Info>
{
    Q_OBJECT
public:
    explicit Canbus28Obj(QObject* parent = nullptr);
};
