#pragma once
// The record of the SAIC MG Roewe box: trip values, vehicle settings in four groups,
// warnings, the panoramic camera, driving modes, energy use and two trend curves.

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "statusrecords72.h"

// Texts of the body frames; "--" until the frame came (voltage and current: empty).
struct bodyInformation72
{
    // Clears the texts the frames fill in any case; the model choice and the two texts
    // of the high-voltage battery are left as they are.
    void clear();

    QString rearDistanceText;   // 0x22
    QString frontDistanceText;  // 0x23
    QString outdoorTempText;    // 0x27
    quint8 carModel = 0;        // "CanbusCAR", 0 none, up to 19
    QString oilColourText;      // 0x43
    QString rangeText;          // 0x61
    QString voltageText;        // 0x62
    QString currentText;
};

// Frame 0x39: settings by group and item.
struct VehicleSetupInformation_4_72
{
    void clear() { *this = VehicleSetupInformation_4_72(); }

    quint8 group1Item1 = 0;
    quint8 group1Item2 = 0;
    quint8 group1Item3 = 0;
    quint8 group2Item1Bit7 = 0;
    quint8 group2Item1Bit6 = 0;
    quint8 group2Item1Bit5 = 0;
    quint8 group2Item2 = 0;
    quint8 group2Item3Bit7 = 0;
    quint8 group2Item3Bit6 = 0;
    quint8 group2Item3Bit5 = 0;
    quint8 group2Item4 = 0;
    quint8 group3Item1 = 0;
    quint8 group3Item2 = 0;
    quint8 group3Item3 = 0;
    quint8 group3Item4 = 0;
    quint8 group4Item2 = 0;
    quint8 group4Item3 = 0;
    quint8 group4Item4 = 0;
    quint8 group4Item5 = 0;
    quint8 group5Item1 = 0;
    quint8 group5Item2 = 0;
    quint8 group5Item3 = 0;
    quint8 group5Item4 = 0;
    quint8 group6Item1 = 0;
    quint8 group6Item2 = 0;
    quint8 group6Item3 = 0;
    quint8 group6Item4 = 0;
    quint8 group6Item5 = 0;
    quint8 group6Item6 = 0;
    quint8 group6Item7 = 0;
    quint8 group6Item8 = 0;
    quint8 group6Item9 = 0;
    quint8 group6Item10 = 0;
    quint8 group6Item11 = 0;
    quint8 group6Item12 = 0;
    quint8 group6Item13 = 0;
    quint8 group6Item14 = 0;
    quint8 group6Item15 = 0;
    quint8 group6Item16 = 0;
    quint8 group6Item17 = 0;
    quint8 group6Item18 = 0;
    quint8 group6Item19 = 0;
    quint8 group6Item20 = 0;
    quint8 group6Item21 = 0;
    quint8 group6Item22 = 0;
    quint8 group7Item1 = 0;
    quint8 group8Item1 = 0;
    quint8 group8Item2 = 0;
    quint8 group9Item2 = 0;
    quint8 group9Item3 = 0;
    quint8 group9Item4 = 0;
    quint8 group9Item5 = 0;
    quint8 group9Item6 = 0;
    quint8 group9Item7 = 0;
    quint8 group10Item1 = 0;   // also the language, see languageChanged
};

// Frame 0x40.
struct VehicleSetupInformation72
{
    void clear() { *this = VehicleSetupInformation72(); }

    quint8 byte3Bit7 = 0;
    quint8 byte3Bit6 = 0;
    quint8 byte3Bit5 = 0;
    quint8 byte3Bit4 = 0;
    quint8 byte4Bit7 = 0;
    quint8 byte4Bit6 = 0;
    quint8 byte4Bit5 = 0;
    quint8 byte4Low = 0;   // clamped to 9
    quint8 byte5Bit7 = 0;
    quint8 byte5Bit6 = 0;
    quint8 byte5Bit5 = 0;
    quint8 byte5Low = 0;   // clamped to 9
};

// Frame 0x41.
struct VehicleSetupInformation_2_72
{
    void clear() { *this = VehicleSetupInformation_2_72(); }

    quint8 byte3Bit7 = 0;
    quint8 byte3Bit6 = 0;
    quint8 byte3Bits5To4 = 0;
    quint8 byte3Bit3 = 0;
    quint8 byte3Bit2 = 0;
    quint8 byte3Bit0 = 0;
    quint8 byte3Bit1 = 0;
    quint8 byte4Bit7 = 0;
    quint8 byte4Bits6To5 = 0;
    quint8 byte4Bits4To3 = 0;
    quint8 byte5Bit7 = 0;
    quint8 byte5Bit6 = 0;
    quint8 byte5Bit5 = 0;
    quint8 byte5Bit4 = 0;
    quint8 byte6Bit7 = 0;
    quint8 byte7Bit7 = 0;
    quint8 byte7Bit6 = 0;
    quint8 byte7Bit5 = 0;
    quint8 byte8 = 0;
    quint8 byte9Bit7 = 0;
    quint8 byte9Bits6To5 = 0;
    quint8 byte9Bit4 = 0;
    quint8 byte9Bits3To2 = 0;
    quint8 byte9Bit1 = 0;
    quint8 byte9Bit0 = 0;
    quint8 byte10Bit7 = 0;
    quint8 byte10Bit6 = 0;
    quint8 byte10Bits5To4 = 0;
    quint8 byte10Bit3 = 0;
    quint8 byte10Bit2 = 0;
    quint8 byte10Bit1 = 0;
    quint8 byte10Bit0 = 0;
    quint8 byte11Bit7 = 0;
    quint8 byte11Bits6To5 = 0;
    quint8 byte11Bits4To3 = 0;
    quint8 byte11Bits2To1 = 0;
    quint8 byte12 = 0;
    quint8 byte13Bit7 = 0;
    quint8 byte13Bits6To5 = 0;
    quint8 byte13Bits4To3 = 0;
    quint8 byte13Bit2 = 0;
    quint8 byte14 = 0;
};

// Frame 0x42.
struct VehicleSetupInformation_3_72
{
    void clear() { *this = VehicleSetupInformation_3_72(); }

    quint8 byte3Bit7 = 0;
    quint8 byte3Bit6 = 0;
    quint8 byte3Bit5 = 0;
    quint8 byte3Bit4 = 0;
    quint8 byte4Bit7 = 0;
    quint8 byte5Bit7 = 0;
};

// Frame 0x44: one flag per warning byte.
struct WarningMessage72
{
    void clear() { *this = WarningMessage72(); }

    quint8 warningFlag[14] = {};
};

// Frame 0x50: the panoramic camera; byte3Bit1 picks the touch layout.
struct PanoramicInformation72
{
    void clear() { *this = PanoramicInformation72(); }

    quint8 byte3Bit7 = 0;
    quint8 byte3Bit4 = 0;
    quint8 byte3Bits3To2 = 0;
    quint8 byte3Bit1 = 0;
    quint8 byte3Bit0 = 0;
    quint8 byte4 = 0;   // clamped to 9
};

// Frame 0x53.
struct drivingMode72
{
    void clear();

    quint8 driveMode = 0;
    quint8 driveHigh2 = 0;
    quint8 driveMid2 = 0;
    quint8 driveBit3 = 0;
    QString driveTempText1;
    QString drivePressureText;
    QString driveKpaText;
    QString driveTempText2;
};

// Frames 0x54 and 0x60.
struct energyManagement72
{
    void clear();

    quint8 energyMode = 0;
    quint8 energyFlow = 0;
    QString energyText1;
    QString energyText2;
    QString energyText3;
    QString energyUseText1;
    QString energyUseText2;
};

// Frames 0x63 and 0x64: two curves of 51 points.
struct OilPotentialTrendInformation72
{
    void clear();

    QByteArray trendCurve1;
    QByteArray trendCurve2;
};

class Data72Info : public DataIdInfo
{
public:
    Data72Info() { clear(); }
    Data72Info(const Data72Info&) = default;
    Data72Info& operator=(const Data72Info&) = default;
    ~Data72Info() override = default;

    void clear();

    MileageInformation72 mileage;
    FunctionRecognition72 functions;
    VoiceControlFeedback72 voice;
    bodyInformation72 body;
    VehicleSetupInformation_4_72 setup4;
    VehicleSetupInformation72 setup;
    VehicleSetupInformation_2_72 setup2;
    VehicleSetupInformation_3_72 setup3;
    WarningMessage72 warnings;
    PanoramicInformation72 panoramic;
    drivingMode72 drivingMode;
    energyManagement72 energy;
    OilPotentialTrendInformation72 trend;
};
Q_DECLARE_METATYPE(Data72Info)
