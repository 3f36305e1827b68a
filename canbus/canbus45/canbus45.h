#pragma once
// BAIC "EU5", box by RuiZiCheng.
#include "recorddriver.h"

class Data45Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data45Info)

class Canbus45Obj : public RecordDriver<Data45Info>
{
    Q_OBJECT
public:
    explicit Canbus45Obj(QObject* parent = nullptr);
};
