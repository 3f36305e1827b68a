#pragma once
// BAIC "D50", box by RuiZiCheng.
#include "recorddriver.h"

class Data55Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data55Info)

class Canbus55Obj : public RecordDriver<Data55Info>
{
    Q_OBJECT
public:
    explicit Canbus55Obj(QObject* parent = nullptr);
};
