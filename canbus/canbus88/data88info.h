#pragma once
// The record of the Jeep box: vehicle values, rear climate, the settings page, the
// factory CD player, the amplifier, the performance page and hybrid information.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

struct VehicleInformation88
{
    void clear() { *this = VehicleInformation88(); }

    quint8 carModel = 0;                               // "CanbusCAR", 0 none, up to 2
    quint8 frame02Value = 0;                           // 0x02, up to 200
    quint8 airByte9Bit7 = 0;                           // 0x05
    QString outdoorTempText = QStringLiteral("--");    // 0x05 byte 10 and 0x15
    quint8 frame0BHour = 0;                            // 0x0B
    quint8 frame0BHigh2 = 0;
    quint8 frame0BLow6 = 0;
};

// Frame 0x06.
struct RearSeatAirConditioningInformation88
{
    void clear() { *this = RearSeatAirConditioningInformation88(); }

    quint8 rearBit7 = 0;
    quint8 rearBit6 = 0;
    quint8 rearBit5 = 0;
    quint8 rearBit4 = 0;
    quint8 rearFan = 0;    // 0..3
    quint8 rearLow = 0;
    QString rearTempText = QStringLiteral("--");
};

// Frame 0x07, the settings page: fields named after their byte and bits.
struct VehicleControlInformation_1_88
{
    void clear() { *this = VehicleControlInformation_1_88(); }

    quint8 byte3Bits7To6 = 0;
    quint8 byte3Bits5To4 = 0;
    quint8 byte3Bits3To2 = 0;
    quint8 byte3Bit1 = 0;
    quint8 byte3Bit0 = 0;
    quint8 byte4Bit7 = 0;
    quint8 byte4Bit6 = 0;
    quint8 byte4Bits5To4 = 0;
    quint8 byte5Bits7To6 = 0;
    quint8 byte5Bit5 = 0;
    quint8 byte5Bit3 = 0;
    quint8 byte5Bit2 = 0;
    quint8 byte5Bit1 = 0;
    quint8 byte5Bit0 = 0;
    quint8 byte6Bit6 = 0;
    quint8 byte6Bit4 = 0;
    quint8 byte6Bit3 = 0;
    quint8 byte6Bit2 = 0;
    quint8 byte6Bit1 = 0;
    quint8 byte7Bit7 = 0;
    quint8 byte7Bits6To5 = 0;
    quint8 byte7Bit4 = 0;
    quint8 byte7Bit3 = 0;
    quint8 byte7Bits2To1 = 0;
    quint8 byte8Bit7 = 0;
    quint8 byte8Bit6 = 0;
    quint8 byte8Bit5 = 0;
    quint8 byte8Bit4 = 0;
    quint8 byte8Bit3 = 0;
    quint8 byte8Bits2To1 = 0;
    quint8 byte8Bit0 = 0;
    quint8 byte9Bit7 = 0;
    quint8 byte9Bit5 = 0;
    quint8 byte9Bit4 = 0;
    quint8 byte9Bits3To2 = 0;
    quint8 byte9Bits1To0 = 0;
    quint8 byte10Bit7 = 0;
    quint8 byte10Bit5 = 0;
    quint8 byte10Bit4 = 0;
    quint8 byte10Bits2To0 = 0;
    quint8 byte11Bit5 = 0;
    quint8 byte11Bit4 = 0;
    quint8 byte11Bit3 = 0;
    quint8 byte11Bit2 = 0;
    quint8 byte11Bits1To0 = 0;
    quint8 byte12Bits6To5 = 0;
    quint8 byte12Bits4To3 = 0;
    quint8 byte12Bit2 = 0;
    quint8 byte12Bit1 = 0;
    quint8 byte12Bit0 = 0;
    quint8 byte13Bits6To5 = 0;
    quint8 byte13Bit4 = 0;
    quint8 byte13Bit3 = 0;
    quint8 byte13Bit2 = 0;
    quint8 byte13Bits1To0 = 0;
    quint8 byte14Bit7 = 0;
    quint8 byte14Bits6To5 = 0;
    quint8 byte14Bits4To3 = 0;
    quint8 byte14Bits2To0 = 0;
    quint8 byte15Bit7 = 0;
    quint8 byte15Bits6To5 = 0;
    quint8 byte15Bit4 = 0;
    quint8 byte15Bit3 = 0;
    quint8 byte15Bit2 = 0;
    quint8 byte15Bit1 = 0;
    quint8 byte15Bit0 = 0;
    quint8 byte16Bit7 = 0;
    quint8 byte16Bit6 = 0;
    quint8 languageCode = 0;
};

// Frames 0x10 and 0x11.
struct CDStatusInformation88
{
    void clear() { *this = CDStatusInformation88(); }

    quint8 cdState = 0;    // 0..2
    quint8 cdMode = 0;     // 0..9
    quint16 cdTrack = 0;
    quint16 cdTotal = 0;
    QString cdPlayTime = QStringLiteral("--");
    QString cdDiscTime = QStringLiteral("--");
    QString cdTitle = QStringLiteral("--");
    QString cdArtist = QStringLiteral("--");
    QString cdAlbum = QStringLiteral("--");
};

// Frame 0x19.
struct VehicleControlInformation_3_88
{
    void clear() { *this = VehicleControlInformation_3_88(); }

    quint8 switchFlag[8] = {};   // byte 3, b7 first
};

// Frame 0x31.
struct AmplifierStatus88
{
    void clear() { *this = AmplifierStatus88(); }

    quint8 ampOn = 0;
    quint8 ampVolume = 0;      // 0..38
    quint8 ampBand[5] = {};    // 0..18
    quint8 ampField2 = 0;
    quint8 ampBit0 = 0;
    quint8 ampBit7 = 0;
    quint8 ampBit6 = 0;
};

// Frame 0x32.
struct performanceControlSystem88
{
    void clear() { *this = performanceControlSystem88(); }

    quint8 perfMode = 0;   // 0..5
    quint8 perfOn = 0;
    quint8 byte5Bit7 = 0;
    quint8 byte5Bit6 = 0;
    quint8 byte5Bit5 = 0;
    quint8 byte5Bits4To3 = 0;
    quint8 byte6Bit7 = 0;
    quint8 byte6Bit6 = 0;
    quint8 byte6Bit5 = 0;
    quint8 byte6Bits4To3 = 0;
};

// Frame 0x33, four sub-frames: power flow (0), two values (1), the charge timers (2)
// and the charge level (3).
struct HybridInformation88
{
    void clear() { *this = HybridInformation88(); }

    quint8 hybridState = 0;    // 0..8
    QString hybridText1 = QStringLiteral("--");
    QString hybridText2 = QStringLiteral("--");
    QString hybridText3 = QStringLiteral("--");
    quint8 hybridBit6 = 0;
    quint8 hybridBit5 = 0;
    quint8 hybridBit4 = 0;
    QString hybridValue1 = QStringLiteral("--");
    QString hybridValue2 = QStringLiteral("--");
    quint8 timerOn = 0;
    quint8 byte5Bits6To5 = 0;   // 0..3
    quint8 byte5Bits4To0 = 0;   // 0..23
    quint8 byte6Bit7 = 0;
    quint8 byte6Bits6To5 = 0;
    quint8 byte6Bits4To0 = 0;
    quint8 byte7Bits6To5 = 0;
    quint8 byte7Bits4To0 = 0;
    quint8 byte8Bit7 = 0;
    quint8 byte8Bits6To5 = 0;
    quint8 byte8Bits4To0 = 0;
    QString hybridTime1 = QStringLiteral("--");
    QString hybridTime2 = QStringLiteral("--");
    quint8 hybridOn = 0;
    quint8 hybridPercent = 0;   // 0..100
};

class Data88Info : public DataIdInfo
{
public:
    // The stored vehicle variant outlives a clear: it is the user's choice, not a frame's.
    void clear()
    {
        const quint8 model = vehicle.carModel;
        *this = Data88Info();
        vehicle.carModel = model;
    }

    VehicleInformation88 vehicle;
    RearSeatAirConditioningInformation88 rear;
    VehicleControlInformation_1_88 settings;
    CDStatusInformation88 cd;
    VehicleControlInformation_3_88 switches;
    AmplifierStatus88 amplifier;
    performanceControlSystem88 performance;
    HybridInformation88 hybrid;
};
Q_DECLARE_METATYPE(Data88Info)
