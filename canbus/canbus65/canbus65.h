#pragma once
// Mazda "new mazda", box by RuiZiCheng.
#include "recorddriver.h"

class Data65Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data65Info)

class Canbus65Obj : public RecordDriver<Data65Info>
{
    Q_OBJECT
public:
    explicit Canbus65Obj(QObject* parent = nullptr);
};
