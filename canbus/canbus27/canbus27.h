#pragma once
// Volkswagen "general", box by Hiworld.
#include "recorddriver.h"

class Data27Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data27Info)

class Canbus27Obj : public RecordDriver<Data27Info>
{
    Q_OBJECT
public:
    explicit Canbus27Obj(QObject* parent = nullptr);
};
