#pragma once
// Volkswagen "PQ", box by RuiZiCheng.
#include "recorddriver.h"

class Data29Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data29Info)

class Canbus29Obj : public RecordDriver<Data29Info>
{
    Q_OBJECT
public:
    explicit Canbus29Obj(QObject* parent = nullptr);
};
