#pragma once
// The record of the Dongfeng Fengshen box: the trip computer and function pages of the
// shared status frames, the vehicle's own values, the settings page, and the energy
// use of the electric models with their history by day.

#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>

#include "../canbus72/statusrecords72.h"
#include "dataidinfo.h"

// The status frames fill records of the SAIC box's shape.
using MileageInformation79 = MileageInformation72;
using FunctionRecognition79 = FunctionRecognition72;
using VoiceControlFeedback79 = VoiceControlFeedback72;

struct VehicleInformation79
{
    void clear() { *this = VehicleInformation79(); }

    quint8 carModel = 0;                               // "CanbusCAR", 0 none, up to 10
    QString outdoorTempText = QStringLiteral("--");    // 0x36
    quint8 airByte7 = 0;                               // 0x23 byte 7
    quint8 doorByte4 = 0;                              // 0x28 byte 4
    quint8 cameraState = 0;                            // 0x37; 1..4 changes the camera page's centre
};

// Frames 0x27 and 0x29, named after their byte and bits.
struct OriginalCarSetupInformation79
{
    void clear() { *this = OriginalCarSetupInformation79(); }

    quint8 setupBit1 = 0;        // 0x27
    quint8 setupBit0 = 0;
    quint8 byte3Bits7To6 = 0;    // 0x29 from here on
    quint8 byte3Bit5 = 0;
    quint8 byte3Bit4 = 0;
    quint8 byte3Bit3 = 0;
    quint8 byte3Bit2 = 0;
    quint8 byte3Bit1 = 0;
    quint8 byte3Bit0 = 0;
    quint8 byte4Bit7 = 0;
    quint8 byte4Bit6 = 0;
    quint8 byte4Bit5 = 0;
    quint8 byte4Bit4 = 0;
    quint8 byte4Bit3 = 0;        // also the display language
    quint8 byte5Bit7 = 0;
    quint8 byte5Bit6 = 0;
    quint8 byte5Bit5 = 0;
    quint8 byte5Bit4 = 0;
    quint8 byte5Bit3 = 0;
    quint8 byte5Bit2 = 0;
    quint8 byte5Bit1 = 0;
    quint8 byte6High = 0;        // 0..3
    quint8 byte6Low = 0;         // 0..3
    quint8 byte7Bits7To5 = 0;    // 0..6
    quint8 byte7Bit4 = 0;
    quint8 byte7Low = 0;         // 0..7
    quint8 byte8High = 0;        // 0..10
    quint8 byte9Bit7 = 0;
    quint8 byte9Bit6 = 0;
    quint8 byte9Bit5 = 0;
    quint8 byte9Bits4To2 = 0;    // 0..4
    quint8 byte9Bit1 = 0;
    quint8 byte10Bits7To6 = 0;   // 0..2
    quint8 byte10Bit5 = 0;
    quint8 byte10Bit4 = 0;
    quint8 byte10Bit3 = 0;
    quint8 byte11Bits7To5 = 0;   // 0..2
    quint8 byte11Bits4To2 = 0;   // 0..4; also the language of models 5 and 6
    quint8 byte11Bits1To0 = 0;   // 0..2
    quint8 byte12Bit7 = 0;
    quint8 byte12Bit6 = 0;
    quint8 byte12Bit5 = 0;
};

// Frame 0x40: power and energy use now. "--" until the frame came.
struct energyInformation79
{
    void clear();

    QString powerText;
    QString spareText;       // no frame fills it
    QString motorPowerText;
    QString energyUseText;
    QString powerText3;
    quint8 percent1 = 0;     // 0..100
    quint8 percent2 = 0;
    QString powerText4;
};

// Frame 0x41: one day of the history a frame, by its index. Indexes 0..30 read "--"
// until their day came; the box may send more.
struct energyEfficientDriving79
{
    void clear();

    QMap<int, QVariant> dateByIndex;
    QMap<int, QVariant> valueByIndex;
    QMap<int, QVariant> distanceByIndex;
    QMap<int, QVariant> useByIndex;
};

class Data79Info : public DataIdInfo
{
public:
    Data79Info() { clear(); }
    Data79Info(const Data79Info&) = default;
    Data79Info& operator=(const Data79Info&) = default;
    ~Data79Info() override = default;

    void clear();

    MileageInformation79 mileage;
    FunctionRecognition79 functions;
    VoiceControlFeedback79 voice;
    VehicleInformation79 vehicle;
    OriginalCarSetupInformation79 setup;
    energyInformation79 energy;
    energyEfficientDriving79 history;
};
Q_DECLARE_METATYPE(Data79Info)
