#pragma once
// Great Wall "HAVAL", box by RuiZiCheng.
#include "recorddriver.h"

class Data60Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data60Info)

class Canbus60Obj : public RecordDriver<Data60Info>
{
    Q_OBJECT
public:
    explicit Canbus60Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus60Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
