#pragma once
// The record of the old Mazda box: the outdoor text as the climate frames give it,
// one flag of frame 0x11 and the amplifier page of frame 0x31. The amplifier values
// are kept as the box counts from its lowest step, so that the connect sequence can
// give them back.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "recordfields.h"

class BasicInformation66
{
    Q_GADGET
    Q_PROPERTY(QString outdoorText MEMBER outdoorText)
    Q_PROPERTY(quint8 basicFlag MEMBER basicFlag)
    Q_PROPERTY(quint8 ampValue1 MEMBER ampValue1)
    Q_PROPERTY(quint8 ampValue2 MEMBER ampValue2)
    Q_PROPERTY(quint8 ampValue3 MEMBER ampValue3)
    Q_PROPERTY(quint8 ampValue4 MEMBER ampValue4)
    Q_PROPERTY(quint8 ampValue5 MEMBER ampValue5)
    Q_PROPERTY(quint8 ampFlag MEMBER ampFlag)

public:
    void clear() { *this = BasicInformation66(); }

    QString outdoorText = QStringLiteral("--");
    quint8 basicFlag = 0;
    quint8 ampValue1 = 0, ampValue2 = 0;   // 0..16 above the box's step 8
    quint8 ampValue3 = 0, ampValue4 = 0;   // 0..14 above the box's step 10
    quint8 ampValue5 = 0;                  // 0..63
    quint8 ampFlag = 0;
};

class Data66Info : public DataIdInfo
{
    Q_GADGET
    Q_PROPERTY(BasicInformation66* basic READ basicRecord)

public:
    void clear() { basic.clear(); }

    // For the field description: the sub-record is read in place.
    BasicInformation66* basicRecord() const { return const_cast<BasicInformation66*>(&basic); }

    BasicInformation66 basic;
};
Q_DECLARE_METATYPE(Data66Info)
Q_DECLARE_METATYPE(BasicInformation66*)
