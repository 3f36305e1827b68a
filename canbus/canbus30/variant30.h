#pragma once
// What the variants of the Toyota box share: the base's frames, decoded into a record
// of the variant's own type name (Info, a Data30Info under another name), no vehicle
// variant told to the box, no reverse lines, and the radar overlay of the Honda boxes.
// A variant adds its climate commands.
#include "canbus30.h"

namespace toyota {

// A command byte that a word of the value chooses: `picked` when the value is `when`,
// else `otherwise`; with no word, always `picked`.
struct WordChoice
{
    quint8 picked;
    quint8 otherwise = 0;
    const char* when = nullptr;
};

inline quint8 choose(const WordChoice& choice, const QString& value)
{
    return !choice.when || value == QLatin1String(choice.when) ? choice.picked : choice.otherwise;
}

} // namespace toyota

template <typename Info>
class Canbus30Variant : public Canbus30Obj
{
public:
    bool inheritedById(int id) const override { return id == 30 || Canbus30Obj::inheritedById(id); }

    void initData() override
    {
        if (!dataInfo)
            dataInfo = new Info;   // the base then keeps it instead of making its own
        Canbus30Obj::initData();
        // The user's pick of a vehicle variant is for the base box alone.
        info()->vehicleSetting.carModel = 0;
    }

    bool hadReverseLine() const override { return false; }

    QVariant getDataInfo() const override
    {
        return dataInfo ? QVariant::fromValue(static_cast<const Info&>(*info())) : QVariant();
    }

    void setDataInfo(const QVariant& value) override
    {
        if (!dataInfo || !value.canConvert<Info>())
            return;
        static_cast<Info&>(*info()) = value.value<Info>();
        emit dataChanged();
    }

    // On a scale of bars any lit bar keeps the overlay up; on a distance scale the
    // second front sensor is not asked, and any other one at 10 or nearer keeps it up.
    void RadarDisplay() override
    {
        if (!radarData)
            return;
        RadarData& r = *radarData;
        const bool bars = r.radarLevels < kDistanceScale;
        const quint8 others[] = {r.radarFrontLeft, r.radarFrontRightMid, r.radarFrontRight,
                                 r.radarRearLeft, r.radarRearLeftMid, r.radarRearRightMid,
                                 r.radarRearRight};
        bool on = bars && r.radarFrontLeftMid != 0;
        for (quint8 s : others)
            on = on || (bars ? s != 0 : s < kDistanceScale);
        r.radarOn = on ? 1 : 0;
    }

    void exitSelectSlot() override {}

protected:
    Canbus30Variant(int driverId, const canbus::DriverProfile& profile, QObject* parent)
        : Canbus30Obj(driverId, profile, parent)
    {
        qRegisterMetaType<Info>();   // under the record's own class name
    }

private:
    static constexpr quint8 kDistanceScale = 11;
};
