#pragma once
// Buick "Angkola(low profile)", box by RuiZiCheng.
#include "recorddriver.h"

class Data38Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data38Info)

class Canbus38Obj : public RecordDriver<Data38Info>
{
    Q_OBJECT
public:
    explicit Canbus38Obj(QObject* parent = nullptr);
};
