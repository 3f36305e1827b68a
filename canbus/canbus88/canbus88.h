#pragma once
// jeep "Free Light/14~17 Grand Cherokee/Coolway", box by RuiZiCheng.
#include "recorddriver.h"

class Data88Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data88Info)

class Canbus88Obj : public RecordDriver<Data88Info>
{
    Q_OBJECT
public:
    explicit Canbus88Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus88Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
