#pragma once
// Honda "compatible(Portrait)", box by RuiZiCheng.
#include "recorddriver.h"

class Data31Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data31Info)

class Canbus31Obj : public RecordDriver<Data31Info>
{
    Q_OBJECT
public:
    explicit Canbus31Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus31Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
