#pragma once
// A CommonDriver that owns a record of its own type, DataNNInfo, and passes it across
// the module as a QVariant.

#include <QVariant>

#include "commondriver.h"

template <typename Info>
class RecordDriver : public CommonDriver
{
public:
    RecordDriver(int driverId, const canbus::DriverProfile& profile, QObject* parent)
        : CommonDriver(driverId, profile, parent)
    {
        qRegisterMetaType<Info>();   // under the record's own class name
    }

    ~RecordDriver() override
    {
        delete info();
        dataInfo = nullptr;
    }

    void initData() override
    {
        CommonDriver::initData();
        if (!dataInfo)
            dataInfo = new Info;
    }

    QVariant getDataInfo() const override
    {
        return dataInfo ? QVariant::fromValue(*info()) : QVariant();
    }

    void setDataInfo(const QVariant& value) override
    {
        if (!dataInfo || !value.canConvert<Info>())
            return;
        *info() = value.value<Info>();
        emit dataChanged();
    }

    Info* info() const { return static_cast<Info*>(dataInfo); }
};
