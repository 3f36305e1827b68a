#pragma once
// Pentium "Brand new Pentium", box by RuiZiCheng.
#include "recorddriver.h"

class Data81Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data81Info)

class Canbus81Obj : public RecordDriver<Data81Info>
{
    Q_OBJECT
public:
    explicit Canbus81Obj(QObject* parent = nullptr);

protected:
    // For the drivers that extend this one.
    Canbus81Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);
};
