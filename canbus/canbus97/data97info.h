#pragma once
// The record of the southeast box: the trip computer and function pages of the shared
// status frames, the body texts, fuel and distance values and the settings items.

#include <QMetaType>
#include <QString>

#include "../canbus72/statusrecords72.h"
#include "dataidinfo.h"

// The status frames fill records of the SAIC box's shape.
using MileageInformation97 = MileageInformation72;
using FunctionRecognition97 = FunctionRecognition72;
using VoiceControlFeedback97 = VoiceControlFeedback72;

struct bodySetting97
{
    void clear() { *this = bodySetting97(); }

    QString outdoorTempText = QStringLiteral("--");   // status sub-frame 9
    quint8 languageCode = 0;                           // 0x32, and the head unit's choice
    quint8 spare1 = 0;
    quint8 spare2 = 0;
    quint8 spare3 = 0;
};

// Frames 0x33 and 0x41: texts with their units, "--" until the frame came.
struct FuelConsumptionAndMileageInformation97
{
    void clear() { *this = FuelConsumptionAndMileageInformation97(); }

    QString fuelText = QStringLiteral("--");
    QString percentText = QStringLiteral("--");
    QString distanceText = QStringLiteral("--");
    QString totalText = QStringLiteral("--");
    QString speedText = QStringLiteral("--");
};

// Frame 0x40. Bit 4 also decides what a touch on the screen asks of the box.
struct setItemStatus97
{
    void clear() { *this = setItemStatus97(); }

    quint8 itemBit7 = 0;
    quint8 itemBit6 = 0;
    quint8 itemBit5 = 0;
    quint8 itemBit4 = 0;
    quint8 itemBit3 = 0;
    quint8 itemByte4 = 0;   // 0..2
};

class Data97Info : public DataIdInfo
{
public:
    void clear() { *this = Data97Info(); }

    MileageInformation97 mileage;
    FunctionRecognition97 functions;
    VoiceControlFeedback97 voice;
    bodySetting97 body;
    FuelConsumptionAndMileageInformation97 fuel;
    setItemStatus97 items;
};
Q_DECLARE_METATYPE(Data97Info)
