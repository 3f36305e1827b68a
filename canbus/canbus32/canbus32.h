#pragma once
// NISSAN "compatible", box by RuiZiCheng.
#include "recorddriver.h"

class Data32Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data32Info)

class Canbus32Obj : public RecordDriver<Data32Info>
{
    Q_OBJECT
public:
    explicit Canbus32Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus32Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
