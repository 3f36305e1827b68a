#pragma once
// Volkswagen "07-10 Old models", box by RuiZiCheng.
#include "recorddriver.h"

class Data34Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data34Info)

class Canbus34Obj : public RecordDriver<Data34Info>
{
    Q_OBJECT
public:
    explicit Canbus34Obj(QObject* parent = nullptr);
};
