#pragma once
// Dongfeng "Jing Yi", box by RuiZiCheng.
#include "recorddriver.h"

class Data78Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data78Info)

class Canbus78Obj : public RecordDriver<Data78Info>
{
    Q_OBJECT
public:
    explicit Canbus78Obj(QObject* parent = nullptr);
};
