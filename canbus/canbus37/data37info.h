#pragma once
// The record of the GM box: climate and body settings pages, the hybrid page, the
// automatic parking page with the trip computer, and the OnStar page. Plain values with
// named sub-records; every sub-record starts, and is cleared, to zeros and empty texts.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "recordfields.h"

// Climate options, frame 0x05, and the state bits of the climate frame's last byte.
class BodyAirConditioningControlInformation37
{
    Q_GADGET
    Q_PROPERTY(quint8 airControl0 MEMBER airControl0)
    Q_PROPERTY(quint8 airControl1 MEMBER airControl1)
    Q_PROPERTY(quint8 airControl2 MEMBER airControl2)
    Q_PROPERTY(quint8 airControl3 MEMBER airControl3)
    Q_PROPERTY(quint8 airControl4 MEMBER airControl4)
    Q_PROPERTY(quint8 airControl5 MEMBER airControl5)
    Q_PROPERTY(quint8 airControl6 MEMBER airControl6)
    Q_PROPERTY(quint8 airControl7 MEMBER airControl7)
    Q_PROPERTY(quint8 airStateTop MEMBER airStateTop)
    Q_PROPERTY(quint8 airStateMode MEMBER airStateMode)
    Q_PROPERTY(quint8 airStateLow MEMBER airStateLow)

public:
    void clear() { *this = BodyAirConditioningControlInformation37(); }

    quint8 airControl0 = 0;   // 0..2
    quint8 airControl1 = 0;   // 0..2
    quint8 airControl2 = 0;   // 0..2
    quint8 airControl3 = 0;
    quint8 airControl4 = 0;
    quint8 airControl5 = 0;
    quint8 airControl6 = 0;
    quint8 airControl7 = 0;   // 0..2
    quint8 airStateTop = 0;
    quint8 airStateMode = 0;   // 0..3
    quint8 airStateLow = 0;
};

// Body control settings, frame 0x06.
class BodyControlSettingInformation37
{
    Q_GADGET
    Q_PROPERTY(quint8 bodyControl0 MEMBER bodyControl0)
    Q_PROPERTY(quint8 bodyControl1 MEMBER bodyControl1)
    Q_PROPERTY(quint8 bodyControl2 MEMBER bodyControl2)
    Q_PROPERTY(quint8 bodyControl3 MEMBER bodyControl3)
    Q_PROPERTY(quint8 bodyControl4 MEMBER bodyControl4)
    Q_PROPERTY(quint8 bodyControl5 MEMBER bodyControl5)
    Q_PROPERTY(quint8 bodyControl6 MEMBER bodyControl6)
    Q_PROPERTY(quint8 bodyControl7 MEMBER bodyControl7)
    Q_PROPERTY(quint8 bodyControl8 MEMBER bodyControl8)
    Q_PROPERTY(quint8 bodyControl9 MEMBER bodyControl9)
    Q_PROPERTY(quint8 bodyControl10 MEMBER bodyControl10)
    Q_PROPERTY(quint8 bodyControl11 MEMBER bodyControl11)
    Q_PROPERTY(quint8 bodyControl12 MEMBER bodyControl12)

public:
    void clear() { *this = BodyControlSettingInformation37(); }

    quint8 bodyControl0 = 0;
    quint8 bodyControl1 = 0;   // 0..3
    quint8 bodyControl2 = 0;
    quint8 bodyControl3 = 0;
    quint8 bodyControl4 = 0;   // 0..2
    quint8 bodyControl5 = 0;
    quint8 bodyControl6 = 0;
    quint8 bodyControl7 = 0;   // 0..3
    quint8 bodyControl8 = 0;
    quint8 bodyControl9 = 0;
    quint8 bodyControl10 = 0;
    quint8 bodyControl11 = 0;
    quint8 bodyControl12 = 0;
};

// Further body settings, frame 0x0A.
class BodyControlSettingInformation_2_37
{
    Q_GADGET
    Q_PROPERTY(quint8 bodySetting0 MEMBER bodySetting0)
    Q_PROPERTY(quint8 bodySetting1 MEMBER bodySetting1)
    Q_PROPERTY(quint8 bodySetting2 MEMBER bodySetting2)
    Q_PROPERTY(quint8 bodySetting3 MEMBER bodySetting3)
    Q_PROPERTY(quint8 bodySetting4 MEMBER bodySetting4)
    Q_PROPERTY(quint8 bodySetting5 MEMBER bodySetting5)
    Q_PROPERTY(quint8 bodySetting6 MEMBER bodySetting6)
    Q_PROPERTY(quint8 bodySetting7 MEMBER bodySetting7)
    Q_PROPERTY(quint8 bodySetting8 MEMBER bodySetting8)
    Q_PROPERTY(quint8 bodySetting9 MEMBER bodySetting9)
    Q_PROPERTY(quint8 bodySetting10 MEMBER bodySetting10)
    Q_PROPERTY(quint8 bodySetting11 MEMBER bodySetting11)
    Q_PROPERTY(quint8 bodySetting12 MEMBER bodySetting12)
    Q_PROPERTY(quint8 bodySetting13 MEMBER bodySetting13)
    Q_PROPERTY(quint8 bodySetting14 MEMBER bodySetting14)
    Q_PROPERTY(quint8 bodySetting15 MEMBER bodySetting15)
    Q_PROPERTY(quint8 bodySetting16 MEMBER bodySetting16)
    Q_PROPERTY(quint8 bodySetting17 MEMBER bodySetting17)
    Q_PROPERTY(quint8 bodySetting18 MEMBER bodySetting18)
    Q_PROPERTY(quint8 bodySetting19 MEMBER bodySetting19)
    Q_PROPERTY(quint8 bodySetting20 MEMBER bodySetting20)
    Q_PROPERTY(quint8 bodySetting21 MEMBER bodySetting21)
    Q_PROPERTY(quint8 bodySetting22 MEMBER bodySetting22)
    Q_PROPERTY(quint8 bodySetting23 MEMBER bodySetting23)
    Q_PROPERTY(quint8 bodySetting24 MEMBER bodySetting24)
    Q_PROPERTY(quint8 bodySetting25 MEMBER bodySetting25)
    Q_PROPERTY(quint8 bodySetting26 MEMBER bodySetting26)

public:
    void clear() { *this = BodyControlSettingInformation_2_37(); }

    quint8 bodySetting0 = 0;
    quint8 bodySetting1 = 0;
    quint8 bodySetting2 = 0;
    quint8 bodySetting3 = 0;
    quint8 bodySetting4 = 0;
    quint8 bodySetting5 = 0;   // 0..2
    quint8 bodySetting6 = 0;   // 0..2
    quint8 bodySetting7 = 0;
    quint8 bodySetting8 = 0;
    quint8 bodySetting9 = 0;
    quint8 bodySetting10 = 0;
    quint8 bodySetting11 = 0;   // 0..2
    quint8 bodySetting12 = 0;
    quint8 bodySetting13 = 0;
    quint8 bodySetting14 = 0;
    quint8 bodySetting15 = 0;
    quint8 bodySetting16 = 0;   // 0..3
    quint8 bodySetting17 = 0;
    quint8 bodySetting18 = 0;
    quint8 bodySetting19 = 0;
    quint8 bodySetting20 = 0;
    quint8 bodySetting21 = 0;
    quint8 bodySetting22 = 0;
    quint8 bodySetting23 = 0;
    quint8 bodySetting24 = 0;
    quint8 bodySetting25 = 0;   // 0..2
    quint8 bodySetting26 = 0;
};

// Body states, frame 0x43, and the vehicle variant the user picked.
class BodySettings37
{
    Q_GADGET
    Q_PROPERTY(quint8 bodyState0 MEMBER bodyState0)
    Q_PROPERTY(quint8 bodyState1 MEMBER bodyState1)
    Q_PROPERTY(quint8 bodyState2 MEMBER bodyState2)
    Q_PROPERTY(quint8 bodyState3 MEMBER bodyState3)
    Q_PROPERTY(quint8 carModel MEMBER carModel)

public:
    void clear() { *this = BodySettings37(); }

    quint8 bodyState0 = 0;
    quint8 bodyState1 = 0;
    quint8 bodyState2 = 0;
    quint8 bodyState3 = 0;
    quint8 carModel = 0;   // setting "CanbusCAR", 0..34, 0 none
};

// Climate settings, frame 0x44.
class BodyAirConditioningSettings37
{
    Q_GADGET
    Q_PROPERTY(quint8 airSetting0 MEMBER airSetting0)
    Q_PROPERTY(quint8 airSetting1 MEMBER airSetting1)
    Q_PROPERTY(quint8 airSetting2 MEMBER airSetting2)
    Q_PROPERTY(quint8 airSetting3 MEMBER airSetting3)
    Q_PROPERTY(quint8 airSetting4 MEMBER airSetting4)

public:
    void clear() { *this = BodyAirConditioningSettings37(); }

    quint8 airSetting0 = 0;
    quint8 airSetting1 = 0;
    quint8 airSetting2 = 0;
    quint8 airSetting3 = 0;   // 0..2
    quint8 airSetting4 = 0;
};

// The hybrid page, frame 0x47.
class HybridInformation37
{
    Q_GADGET
    Q_PROPERTY(quint8 hybrid0 MEMBER hybrid0)
    Q_PROPERTY(quint8 hybrid1 MEMBER hybrid1)
    Q_PROPERTY(quint8 hybrid2 MEMBER hybrid2)
    Q_PROPERTY(quint8 hybrid3 MEMBER hybrid3)
    Q_PROPERTY(quint8 hybrid4 MEMBER hybrid4)
    Q_PROPERTY(quint8 hybrid5 MEMBER hybrid5)
    Q_PROPERTY(quint8 hybrid6 MEMBER hybrid6)
    Q_PROPERTY(quint8 hybrid7 MEMBER hybrid7)
    Q_PROPERTY(quint8 hybrid8 MEMBER hybrid8)
    Q_PROPERTY(quint8 hybrid9 MEMBER hybrid9)
    Q_PROPERTY(quint8 hybrid10 MEMBER hybrid10)
    Q_PROPERTY(quint8 hybrid11 MEMBER hybrid11)
    Q_PROPERTY(quint8 hybrid12 MEMBER hybrid12)

public:
    void clear() { *this = HybridInformation37(); }

    quint8 hybrid0 = 0;
    quint8 hybrid1 = 0;   // 0..8
    quint8 hybrid2 = 0;
    quint8 hybrid3 = 0;
    quint8 hybrid4 = 0;
    quint8 hybrid5 = 0;
    quint8 hybrid6 = 0;
    quint8 hybrid7 = 0;
    quint8 hybrid8 = 0;
    quint8 hybrid9 = 0;
    quint8 hybrid10 = 0;
    quint8 hybrid11 = 0;
    quint8 hybrid12 = 0;
};

// Automatic parking (frame 0x48), the trip computer (sub-frames of 0x4A), the vehicle speed
// (0x0B), single values of frames 0x07, 0x0C, 0x0D and 0x49, and the wheel's button set.
class AutoParkingInformation37
{
    Q_GADGET
    Q_PROPERTY(quint8 parkFlag0 MEMBER parkFlag0)
    Q_PROPERTY(quint8 parkFlag1 MEMBER parkFlag1)
    Q_PROPERTY(quint8 parkFlag2 MEMBER parkFlag2)
    Q_PROPERTY(quint8 parkByte MEMBER parkByte)
    Q_PROPERTY(QString parkPrompt MEMBER parkPrompt)
    Q_PROPERTY(quint16 tripWordA MEMBER tripWordA)
    Q_PROPERTY(quint16 tripWordB MEMBER tripWordB)
    Q_PROPERTY(quint8 byte73 MEMBER byte73)
    Q_PROPERTY(quint8 byte12 MEMBER byte12)
    Q_PROPERTY(quint8 byte13 MEMBER byte13)
    Q_PROPERTY(QString speedText MEMBER speedText)
    Q_PROPERTY(quint8 byte07 MEMBER byte07)
    Q_PROPERTY(QString tripDistanceA MEMBER tripDistanceA)
    Q_PROPERTY(QString tripSpeedA MEMBER tripSpeedA)
    Q_PROPERTY(QString tripEconomyA MEMBER tripEconomyA)
    Q_PROPERTY(QString tripConsumptionA MEMBER tripConsumptionA)
    Q_PROPERTY(QString tripDistanceB MEMBER tripDistanceB)
    Q_PROPERTY(QString tripSpeedB MEMBER tripSpeedB)
    Q_PROPERTY(QString tripEconomyB MEMBER tripEconomyB)
    Q_PROPERTY(QString tripConsumptionB MEMBER tripConsumptionB)
    Q_PROPERTY(quint8 steeringWheelButtonType MEMBER steeringWheelButtonType)

public:
    void clear() { *this = AutoParkingInformation37(); }

    quint8 parkFlag0 = 0;
    quint8 parkFlag1 = 0;
    quint8 parkFlag2 = 0;
    quint8 parkByte = 0;
    QString parkPrompt;   // translated; empty above the known prompts
    quint16 tripWordA = 0;
    quint16 tripWordB = 0;
    quint8 byte73 = 0;
    quint8 byte12 = 0;   // also the language code last sent to the box
    quint8 byte13 = 0;
    QString speedText;   // "%1Km/h"
    quint8 byte07 = 0;
    QString tripDistanceA;   // number with one decimal and its unit
    QString tripSpeedA;
    QString tripEconomyA;
    QString tripConsumptionA;
    QString tripDistanceB;
    QString tripSpeedB;
    QString tripEconomyB;
    QString tripConsumptionB;
    quint8 steeringWheelButtonType = 0;   // setting "SteeringWheelButtonType", 0..3, 0 none
};

// The OnStar page: phone number (0x08), state (0x09), Wi-Fi access point and password
// (0x41, 0x42).
class OnStarInformation37
{
    Q_GADGET
    Q_PROPERTY(QString phoneNumber MEMBER phoneNumber)
    Q_PROPERTY(quint8 onStarState MEMBER onStarState)
    Q_PROPERTY(QString accessPoint MEMBER accessPoint)
    Q_PROPERTY(QString password MEMBER password)

public:
    void clear() { *this = OnStarInformation37(); }

    QString phoneNumber;
    quint8 onStarState = 0;   // 0..4
    QString accessPoint;   // with its label
    QString password;   // with its label
};

class Data37Info : public DataIdInfo
{
    Q_GADGET
    Q_PROPERTY(BodyAirConditioningControlInformation37* airControlPage READ airControlRecord)
    Q_PROPERTY(BodyControlSettingInformation37* bodyControlPage READ bodyControlRecord)
    Q_PROPERTY(BodyControlSettingInformation_2_37* bodySettingPage READ bodySettingRecord)
    Q_PROPERTY(BodySettings37* bodyStatePage READ bodyStateRecord)
    Q_PROPERTY(BodyAirConditioningSettings37* airSettingPage READ airSettingRecord)
    Q_PROPERTY(HybridInformation37* hybridPage READ hybridRecord)
    Q_PROPERTY(AutoParkingInformation37* parkingPage READ parkingRecord)
    Q_PROPERTY(OnStarInformation37* onStarPage READ onStarRecord)

public:
    void clear();

    // For the field description: the sub-records are read in place.
    BodyAirConditioningControlInformation37* airControlRecord() const { return inPlace(airControl); }
    BodyControlSettingInformation37* bodyControlRecord() const { return inPlace(bodyControl); }
    BodyControlSettingInformation_2_37* bodySettingRecord() const { return inPlace(bodySetting); }
    BodySettings37* bodyStateRecord() const { return inPlace(body); }
    BodyAirConditioningSettings37* airSettingRecord() const { return inPlace(airSetting); }
    HybridInformation37* hybridRecord() const { return inPlace(hybrid); }
    AutoParkingInformation37* parkingRecord() const { return inPlace(parking); }
    OnStarInformation37* onStarRecord() const { return inPlace(onStar); }

    BodyAirConditioningControlInformation37 airControl;
    BodyControlSettingInformation37 bodyControl;
    BodyControlSettingInformation_2_37 bodySetting;
    BodySettings37 body;
    BodyAirConditioningSettings37 airSetting;
    HybridInformation37 hybrid;
    AutoParkingInformation37 parking;
    OnStarInformation37 onStar;

private:
    template <typename Record>
    static Record* inPlace(const Record& record) { return const_cast<Record*>(&record); }
};
Q_DECLARE_METATYPE(Data37Info)
Q_DECLARE_METATYPE(BodyAirConditioningControlInformation37*)
Q_DECLARE_METATYPE(BodyControlSettingInformation37*)
Q_DECLARE_METATYPE(BodyControlSettingInformation_2_37*)
Q_DECLARE_METATYPE(BodySettings37*)
Q_DECLARE_METATYPE(BodyAirConditioningSettings37*)
Q_DECLARE_METATYPE(HybridInformation37*)
Q_DECLARE_METATYPE(AutoParkingInformation37*)
Q_DECLARE_METATYPE(OnStarInformation37*)
