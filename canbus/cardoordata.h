#pragma once
#include <QMetaType>
#include <QtGlobal>

// Doors, tailgate and bonnet: 1 open, 0 closed.
class CardoorData
{
    Q_GADGET
    Q_PROPERTY(quint8 doorFrontLeft MEMBER doorFrontLeft)
    Q_PROPERTY(quint8 doorFrontRight MEMBER doorFrontRight)
    Q_PROPERTY(quint8 doorRearLeft MEMBER doorRearLeft)
    Q_PROPERTY(quint8 doorRearRight MEMBER doorRearRight)
    Q_PROPERTY(quint8 doorTrunk MEMBER doorTrunk)
    Q_PROPERTY(quint8 doorHood MEMBER doorHood)

public:
    CardoorData() = default;
    CardoorData(const CardoorData&) = default;
    CardoorData& operator=(const CardoorData&) = default;
    ~CardoorData() = default;

    bool isWarningState() const
    {
        return doorFrontLeft || doorFrontRight || doorRearLeft || doorRearRight || doorTrunk
            || doorHood;
    }
    bool compare(const CardoorData& o) const
    {
        return doorFrontLeft == o.doorFrontLeft && doorFrontRight == o.doorFrontRight
            && doorRearLeft == o.doorRearLeft && doorRearRight == o.doorRearRight
            && doorTrunk == o.doorTrunk && doorHood == o.doorHood;
    }
    void clear() { *this = CardoorData(); }

    quint8 doorFrontLeft = 0;
    quint8 doorFrontRight = 0;
    quint8 doorRearLeft = 0;
    quint8 doorRearRight = 0;
    quint8 doorTrunk = 0;
    quint8 doorHood = 0;
};

Q_DECLARE_METATYPE(CardoorData)
Q_DECLARE_METATYPE(CardoorData*)
