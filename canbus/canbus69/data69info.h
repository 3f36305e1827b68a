#pragma once
// The record of the JAC Refinery box: body bits and battery texts, the original car's
// setting items, the panoramic camera, energy use, and two pages no frame fills.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

struct vehicleSettings69
{
    void clear() { *this = vehicleSettings69(); }

    QString outdoorTempText = QStringLiteral("--");
    quint8 carModel = 0;   // "CanbusCAR", 0..4
    quint8 doorBit7 = 0;   // frame 0x28 byte 4
    quint8 doorBit6 = 0;
    quint8 doorBit4 = 0;
    quint8 doorBit3 = 0;
    quint8 doorBit2 = 0;
    quint8 frame3CValue1 = 0;
    quint8 frame3CValue2 = 0;
    QString currentText;   // frame 0x3D
    QString voltageText;
};

// Frame 0x3A: one item at a time.
struct OriginalCarSettingItemInformationFeedback69
{
    void clear() { *this = OriginalCarSettingItemInformationFeedback69(); }

    quint8 item1 = 0, item2 = 0, item3 = 0, item4 = 0, item5 = 0, item6 = 0;
    quint8 item7 = 0, item8 = 0, item9 = 0, item10 = 0, item11 = 0;
};

struct panoramicInformationFeedback_360_69
{
    void clear() { *this = panoramicInformationFeedback_360_69(); }

    quint8 panoramicBit6 = 0;   // frame 0x3B
    quint8 panoramicView = 0;
    quint8 panoramicMode = 0;
    quint8 panoramicByte = 0;   // frame 0x50
    quint8 panoramicBit0 = 0;
    quint8 panoramicBit1 = 0;
    quint8 panoramicBit2 = 0;
};

// Frame 0x3E: texts with their units, "--" until the frame came.
struct energyInformation69
{
    void clear() { *this = energyInformation69(); }

    QString rangeText = QStringLiteral("--");
    QString tripText = QStringLiteral("--");
    quint8 batteryPercent = 0;
    quint8 chargeState = 0;
    QString useText1 = QStringLiteral("--");
    QString useText2 = QStringLiteral("--");
    QString energyText1 = QStringLiteral("--");
    QString energyText2 = QStringLiteral("--");
    QString energyText3 = QStringLiteral("--");
};

// Frame 0x40.
struct OriginalCarSettingItemInformation_2_69
{
    void clear() { *this = OriginalCarSettingItemInformation_2_69(); }

    quint8 settingHigh = 0;
    quint8 settingBit7 = 0;
    quint8 settingBit6 = 0;
    quint8 settingBit5 = 0;
};

// Pages the box has but never fills.
struct DashcamSettings69
{
    quint8 value[9] = {};
};
struct voiceControl69
{
    quint8 value[17] = {};
};

class Data69Info : public DataIdInfo
{
public:
    // The vehicle model is the user's choice and stays.
    void clear()
    {
        const quint8 model = vehicle.carModel;
        *this = Data69Info();
        vehicle.carModel = model;
    }

    vehicleSettings69 vehicle;
    OriginalCarSettingItemInformationFeedback69 items;
    panoramicInformationFeedback_360_69 panoramic;
    energyInformation69 energy;
    OriginalCarSettingItemInformation_2_69 settings;
    DashcamSettings69 dashcam;
    voiceControl69 voice;
};
Q_DECLARE_METATYPE(Data69Info)
