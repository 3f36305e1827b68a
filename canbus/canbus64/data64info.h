#pragma once
// The record of the Chana Auchan box: the trip computer, function and voice pages of
// its box form, the panorama camera, automatic parking, tyre warnings, the 75 vehicle
// settings and the energy-management page.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "common/tripstatus.h"

using MileageInformation64 = canbus::TripComputerRecord;
using FunctionRecognition64 = canbus::FunctionFlags37;
using VoiceControlFeedback64 = canbus::VoiceFeedback8;

// Frames 0x30 to 0x32; the mode picks the touch map of the camera picture.
struct PanoramicInformation64
{
    void clear() { *this = PanoramicInformation64(); }

    quint8 panoramicFlagA = 0;
    quint8 panoramicFlagB = 0;
    quint8 panoramicMode = 0;     // 0..9
    quint8 panoramicOption = 0;   // sent with a touch; no frame fills it
    quint8 viewCycle = 0;         // the view the cycle button last picked, 1..5
};

// Frames 0x33, 0x3A and 0x3B.
struct automaticParkingStatus64
{
    void clear() { *this = automaticParkingStatus64(); }

    quint8 parkState = 0;                       // 0..4
    QString parkPrompt = QStringLiteral("--");  // translated prompt
    quint8 doorExtraFlag = 0;
    QString distanceText = QStringLiteral("--");
    quint8 parkValue = 0;                       // 0..21
    quint8 carModel = 0;                        // the variant picked by the user, 0..15
};

// Frame 0x39: 32 flags, byte 3 bit 7 first.
struct TirePressureWarningMessage64
{
    void clear() { *this = TirePressureWarningMessage64(); }
    quint8 tireFlag[32] = {};
};

// Frame 0x52: one setting per selector. setup[n] is setting n (1 to 74; 12 is a
// message, not a setting, and 0 is unused); setup[57] is the display language.
struct vehicleSetupInformation64
{
    void clear() { *this = vehicleSetupInformation64(); }

    quint8 setupReserved = 0;
    quint8 setupFirst = 0;   // selector 0x80
    quint8 setup[75] = {};
};

// Frame 0x53: two charging times and the range.
struct EnergyManagementSetupInformation64
{
    void clear() { *this = EnergyManagementSetupInformation64(); }

    QString energyTextA = QStringLiteral("--");   // "y/m/d-h:m"
    QString energyTextB = QStringLiteral("--");
    quint8 energyHourA = 0;
    quint8 energyMinuteA = 0;
    quint8 energyHourB = 0;
    quint8 energyMinuteB = 0;
    quint8 energyFlagA = 0;
    quint8 energyFlagB = 0;
    quint8 energyByteA = 0;
    quint8 energyByteB = 0;
    QString energyRangeText = QStringLiteral("--");
};

class Data64Info : public DataIdInfo
{
public:
    void clear();

    MileageInformation64 mileage;
    FunctionRecognition64 functions;
    VoiceControlFeedback64 voice;
    PanoramicInformation64 panoramic;
    automaticParkingStatus64 parking;
    TirePressureWarningMessage64 tireWarnings;
    vehicleSetupInformation64 setup;
    EnergyManagementSetupInformation64 energy;
};
Q_DECLARE_METATYPE(Data64Info)
