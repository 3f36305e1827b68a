#pragma once
// GAC Trumpchi "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data33Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data33Info)

class Canbus33Obj : public RecordDriver<Data33Info>
{
    Q_OBJECT
public:
    explicit Canbus33Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus33Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
