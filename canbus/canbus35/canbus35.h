#pragma once
// NISSAN "Infiniti QX50", box by RuiZiCheng.
#include "recorddriver.h"

class Data35Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data35Info)

class Canbus35Obj : public RecordDriver<Data35Info>
{
    Q_OBJECT
public:
    explicit Canbus35Obj(QObject* parent = nullptr);
};
