#pragma once
// Dongfeng "Fengshen", box by RuiZiCheng.
#include "recorddriver.h"

class Data79Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data79Info)

class Canbus79Obj : public RecordDriver<Data79Info>
{
    Q_OBJECT
public:
    explicit Canbus79Obj(QObject* parent = nullptr);
};
