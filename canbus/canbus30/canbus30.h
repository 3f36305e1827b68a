#pragma once
// Toyota "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data30Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data30Info)

class Canbus30Obj : public RecordDriver<Data30Info>
{
    Q_OBJECT
public:
    explicit Canbus30Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus30Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
