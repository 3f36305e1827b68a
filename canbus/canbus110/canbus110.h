#pragma once
// R3864 "GDH", box by oudi.
#include "recorddriver.h"

class Data110Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data110Info)

class Canbus110Obj : public RecordDriver<Data110Info>
{
    Q_OBJECT
public:
    explicit Canbus110Obj(QObject* parent = nullptr);
};
