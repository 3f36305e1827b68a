#pragma once
#include <QMetaType>

// The static type of a driver's own record (DataNNInfo). It carries nothing itself;
// the destructor is virtual so that the base driver can free whichever record a
// derived driver put there.
class DataIdInfo
{
public:
    DataIdInfo() = default;
    DataIdInfo(const DataIdInfo&) = default;
    DataIdInfo& operator=(const DataIdInfo&) = default;
    virtual ~DataIdInfo() = default;
};

Q_DECLARE_METATYPE(DataIdInfo)
