#pragma once
// Dongfeng "18 Scenery S560", box by RuiZiCheng.
#include "recorddriver.h"

class Data75Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data75Info)

class Canbus75Obj : public RecordDriver<Data75Info>
{
    Q_OBJECT
public:
    explicit Canbus75Obj(QObject* parent = nullptr);
};
