#pragma once
// The record of the Honda box: vehicle settings, the trip computer's two fuel pages,
// the display's backlight, parking assistance, the factory radio and the power flow.
// Plain values with named sub-records; the whole travels as a QVariant, so everything
// here copies by value. Every clear() is the default state: numbers 0, texts empty.

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

// Frame 0x32: the vehicle's settings, one byte an item, in the order the frame carries
// them.
class VehicleSettingStatus31
{
public:
    void clear() { *this = VehicleSettingStatus31(); }

    quint8 settingItem0 = 0, settingItem1 = 0, settingItem2 = 0, settingItem3 = 0, settingItem4 = 0,
        settingItem5 = 0, settingItem6 = 0, settingItem7 = 0, settingItem8 = 0, settingItem9 = 0;
    quint8 settingItem10 = 0, settingItem11 = 0, settingItem12 = 0, settingItem13 = 0,
        settingItem14 = 0, settingItem15 = 0, settingItem16 = 0, settingItem17 = 0,
        settingItem18 = 0, settingItem19 = 0;
    quint8 settingItem20 = 0, settingItem21 = 0, settingItem22 = 0, settingItem23 = 0,
        settingItem24 = 0, settingItem25 = 0, settingItem26 = 0, settingItem27 = 0,
        settingItem28 = 0, settingItem29 = 0;
    quint8 settingItem30 = 0, settingItem31 = 0, settingItem32 = 0, settingItem33 = 0,
        settingItem34 = 0, settingItem35 = 0, settingItem36 = 0, settingItem37 = 0,
        settingItem38 = 0, settingItem39 = 0;
    quint8 settingItem40 = 0, settingItem41 = 0, settingItem42 = 0, settingItem43 = 0;
    // Only the longer frames carry these.
    quint8 settingItem44 = 0, settingItem45 = 0, settingItem46 = 0, settingItem47 = 0,
        settingItem48 = 0, settingItem49 = 0;
    quint8 settingItem50 = 0, settingItem51 = 0, settingItem52 = 0, settingItem53 = 0,
        settingItem54 = 0;
};

// Frame 0x33: two pages of the trip computer, each six values with their units (or
// "---" when the vehicle has none) and the unit choices, and the fuel level.
class FuelConsumptionAndMileage31
{
public:
    void clear() { *this = FuelConsumptionAndMileage31(); }

    QString fuelPage1Text1, fuelPage1Text2, fuelPage1Text3, fuelPage1Text4, fuelPage1Text5,
        fuelPage1Text6;
    quint8 fuelPage1Item0 = 0, fuelPage1Item1 = 0, fuelPage1Item2 = 0, fuelPage1Item3 = 0,
        fuelPage1Item4 = 0;
    quint8 fuelPage1Item5 = 0;   // 0..11
    QString fuelPage2Text1, fuelPage2Text2, fuelPage2Text3, fuelPage2Text4, fuelPage2Text5,
        fuelPage2Text6;
    quint8 fuelPage2Item0 = 0, fuelPage2Item1 = 0, fuelPage2Item2 = 0, fuelPage2Item3 = 0,
        fuelPage2Item4 = 0, fuelPage2Item5 = 0;
    quint8 fuelPercent = 0;      // 0..100
};

// Frame 0x14, and the display language the head unit last asked for.
class BacklightAdjustment31
{
public:
    void clear() { *this = BacklightAdjustment31(); }

    quint8 backlightRaw = 0;
    quint8 backlightItem1 = 0;    // 0..2
    quint8 backlightItem2 = 0;    // 0..4
    quint8 backlightValue1 = 0, backlightValue2 = 0, backlightValue3 = 0;   // 0..10
    quint8 languageCode = 0;
};

// Frames 0x25, 0x50, 0x78, 0xD1 and 0xD2.
class ParkingAssistStatus31
{
public:
    void clear() { *this = ParkingAssistStatus31(); }

    quint8 parkBit3 = 0, parkBit2 = 0, parkBit1 = 0, parkBit0 = 0;
    quint8 angleBit7 = 0, angleLowNibble = 0;
    QString angleText;
    quint8 parkFlagA = 0, parkFlagB = 0, parkFlagC = 0, parkFlagD = 0;
    quint8 parkRaw50 = 0, parkRaw78 = 0;
};

// The vehicle's own radio: frames 0x03 (station), 0x04 (station text) and 0x07 (tuner).
class OriginalCarRadioData31
{
public:
    void clear() { *this = OriginalCarRadioData31(); }

    quint8 radioBit7 = 0, radioBit6 = 0, radioBit5 = 0, radioBit4 = 0;
    quint8 radioPreset = 0;   // 0..12
    QString radioFrequencyText;
    quint8 radioTextFlag = 0;
    QByteArray radioText;
    quint8 tunerBit7 = 0, tunerLowNibble = 0, tunerByte1 = 0, tunerByte2 = 0;
    QString tunerFrequencyText;
};

// Frame 0x52, and two choices of the user's that the box hears of: the vehicle variant
// (setting "CanbusCAR", 0..6) and the reverse mode sent when reverse gear goes in.
class PowerFlowInformation31
{
public:
    void clear() { *this = PowerFlowInformation31(); }

    quint8 powerBit7 = 0, powerBit6 = 0, powerBit5 = 0, powerBit4 = 0;
    quint8 carModel = 0;
    quint8 reverseMode = 0;
    quint8 powerSpare = 0;
};

class Data31Info : public DataIdInfo
{
public:
    void clear() { *this = Data31Info(); }

    VehicleSettingStatus31 vehicleSetting;
    FuelConsumptionAndMileage31 fuel;
    BacklightAdjustment31 backlight;
    ParkingAssistStatus31 parking;
    OriginalCarRadioData31 radio;
    PowerFlowInformation31 powerFlow;
};
Q_DECLARE_METATYPE(Data31Info)
