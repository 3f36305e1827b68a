#pragma once
// TATA "TATA", box by Hiworld.
#include "recorddriver.h"

class Data120Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data120Info)

class Canbus120Obj : public RecordDriver<Data120Info>
{
    Q_OBJECT
public:
    explicit Canbus120Obj(QObject* parent = nullptr);
};
