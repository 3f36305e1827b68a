#pragma once
// The record of the TATA box. No frame of this box fills it: the screens that show
// faults, the VIN, the vehicle's texts and the tyre page hand it over through
// setDataInfo and read it back through getDataInfo.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

namespace data120 {
inline const QString kNoText = QStringLiteral("---");
}

struct MessageFault120
{
    void clear() { *this = MessageFault120(); }

    quint8 faultFlag[32] = {};
};

struct RadarFailureInformation120
{
    void clear() { *this = RadarFailureInformation120(); }

    quint8 radarFailure[4] = {};
};

struct CAN_MSG_VER_VIN120
{
    void clear() { *this = CAN_MSG_VER_VIN120(); }

    QString vinText = data120::kNoText;
};

struct CAN_MSG_VER_OUTTEMP120
{
    void clear() { *this = CAN_MSG_VER_OUTTEMP120(); }

    QString outdoorText = data120::kNoText;
};

struct CAN_MSG_VER_CAR120
{
    void clear() { *this = CAN_MSG_VER_CAR120(); }

    QString carText[7] = {data120::kNoText, data120::kNoText, data120::kNoText, data120::kNoText,
                          data120::kNoText, data120::kNoText, data120::kNoText};
};

struct CAN_MSG_VER_TPMS120
{
    void clear() { *this = CAN_MSG_VER_TPMS120(); }

    quint8 tpmsState = 0;
    quint8 tpmsFlag[6] = {};
    QString tpmsText[8] = {data120::kNoText, data120::kNoText, data120::kNoText, data120::kNoText,
                           data120::kNoText, data120::kNoText, data120::kNoText, data120::kNoText};
};

class Data120Info : public DataIdInfo
{
public:
    void clear() { *this = Data120Info(); }

    MessageFault120 fault;
    RadarFailureInformation120 radarFailure;
    CAN_MSG_VER_VIN120 vin;
    CAN_MSG_VER_OUTTEMP120 outdoor;
    CAN_MSG_VER_CAR120 car;
    CAN_MSG_VER_TPMS120 tpms;
};
Q_DECLARE_METATYPE(Data120Info)
