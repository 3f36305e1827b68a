#pragma once
// The record of the Korean-Hyundai Kia box: the trip computer of the multiplexed status
// frame, body bits, tyre details, the panoramic camera, vehicle setup, five pages of
// the electric drive, and the amplifier values the application keeps for the box.

#include <QMetaType>
#include <QString>

#include "canbus72/statusrecords72.h"
#include "dataidinfo.h"

// The status frames 0x7D and 0x7E are those of the SAIC box, into records of the same
// shape.
using MileageInformation67 = MileageInformation72;
using FunctionRecognition67 = FunctionRecognition72;
using VoiceControlFeedback67 = VoiceControlFeedback72;

struct BasicBodyInformation67
{
    void clear() { *this = BasicBodyInformation67(); }

    QString outdoorText;        // 0x01, as the climate record shows it
    quint8 basicByte = 0;       // 0x07, up to 21
    quint8 carModel = 0;        // "CanbusCAR", 0 none, up to 15
    quint8 basicBits0[6] = {};  // 0x51 D0 bits 0..5
    quint8 basicBits1[3] = {};  // 0x51 D1 bits 0..2
    quint8 basicSpare = 0;
    quint8 basicUnset[2] = {};
    quint8 languageFlag = 0;    // 1 English, 0 Chinese
};

// Frame 0x09: four flags, then a group of four values for each wheel.
struct TirePressureInformation67
{
    void clear() { *this = TirePressureInformation67(); }

    quint8 tireFlags[4] = {};
    quint8 tireDetail[16] = {};   // per wheel: flag, level, level, flag
};

struct PanoramicImageStatus67
{
    void clear() { *this = PanoramicImageStatus67(); }

    quint8 panoramaMode = 0;     // 0x40
    quint8 panoramaView = 0;     // 0x40: 6 and up are the views of the second page
    quint8 panoramaBit7 = 0;     // 0x41
    quint8 panoramaBit6 = 0;
    quint8 panoramaLevel1 = 0;
    quint8 panoramaLevel2 = 0;
    quint8 panoramaOn = 0;       // 0x42
    quint8 panoramaState = 0;
};

// Frame 0x52: one setting a frame, by its selector 1..15.
struct vehicleSetupCommand67
{
    void clear() { *this = vehicleSetupCommand67(); }

    quint8 setupItem[15] = {};
};

// Frame 0x53: the charge schedule, its values in frame order (see the driver's table).
struct NewEnergySettingInformation_1_67
{
    void clear() { *this = NewEnergySettingInformation_1_67(); }

    static constexpr int kItems = 41;
    quint8 chargeMode = 0;
    quint8 chargeItem[kItems] = {};
    quint8 chargeCurrentLimit = 6;   // amperes, 6..26
};

// Frame 0x54: consumption and power.
struct NewEnergySettingInformation_2_67
{
    void clear();

    quint8 energyState = 0;
    QString consumptionNow;
    QString consumptionAverage;
    QString powerNow;
    QString powerTotal;
    QString consumptionTrip;
};

// Frame 0x55: ranges and charging.
struct NewEnergySettingInformation_3_67
{
    void clear();

    QString rangeText1;
    QString rangeText2;
    QString rangeText3;
    QString chargeLevelText;
    QString chargeTimeText1;
    QString chargeTimeText2;
    quint8 chargeState = 0;
    quint8 chargeDetail = 0;
};

// Frame 0x56: energy flow.
struct NewEnergySettingInformation_4_67
{
    void clear();

    QString energyText1;
    quint8 energyLevel1 = 0;
    QString energyText2;
    quint8 energyLevel2 = 0;
    QString energyTimeText;
    QString energyDistance;
    QString energyValue1;
    QString energyValue2;
    QString energyValue3;
};

// Frame 0x57, and the charge stage of frame 0x60.
struct NewEnergySettingInformation_5_67
{
    void clear();

    quint8 percentItem[3] = {};
    quint8 rawItem = 0;
    quint8 tripleItem[3] = {};
    quint8 bitItem[3] = {};
    quint8 stateItem = 0;
    QString distanceItem;
    QString weightItem;
    quint8 chargeStage = 0;
    quint8 stageSpare = 0;
};

// Sound settings kept by the application and sent to the box at connect; no frame
// writes them.
struct AmplifierInformation67
{
    void clear() { *this = AmplifierInformation67(); }

    quint8 amplifierValue[6] = {18, 7, 7, 10, 10, 10};
};

class Data67Info : public DataIdInfo
{
public:
    Data67Info() { clear(); }
    Data67Info(const Data67Info&) = default;
    Data67Info& operator=(const Data67Info&) = default;
    ~Data67Info() override = default;

    void clear();

    MileageInformation67 mileage;
    FunctionRecognition67 functions;
    VoiceControlFeedback67 voice;
    BasicBodyInformation67 body;
    TirePressureInformation67 tires;
    PanoramicImageStatus67 panorama;
    vehicleSetupCommand67 setup;
    NewEnergySettingInformation_1_67 energy1;
    NewEnergySettingInformation_2_67 energy2;
    NewEnergySettingInformation_3_67 energy3;
    NewEnergySettingInformation_4_67 energy4;
    NewEnergySettingInformation_5_67 energy5;
    AmplifierInformation67 amplifier;
};
Q_DECLARE_METATYPE(Data67Info)
