#pragma once
// Chana Automobile "Yuexiang V7", box by RuiZiCheng.
#include "recorddriver.h"

class Data63Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data63Info)

class Canbus63Obj : public RecordDriver<Data63Info>
{
    Q_OBJECT
public:
    explicit Canbus63Obj(QObject* parent = nullptr);
};
