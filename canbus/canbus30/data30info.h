#pragma once
// The record of the Toyota box: trip and fuel values, the fuel history, the body and
// vehicle settings, the hybrid state, the amplifier, the power use and the factory
// multimedia unit. Plain values with named sub-records; the whole travels as a
// QVariant (getDataInfo / setDataInfo), so everything here copies by value.
// Every clear() is the default state: numbers 0, texts empty.

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QVariantList>

#include "dataidinfo.h"
#include "recordfields.h"

// Frames 0x21 (trip), 0x22 (fuel) and 0x24 (the two door bits the shared record has
// no place for).
class MileageInformation
{
    Q_GADGET
    Q_PROPERTY(QString mileageValueText MEMBER mileageValueText)
    Q_PROPERTY(QString mileageMinutesText MEMBER mileageMinutesText)
    Q_PROPERTY(QString mileageDistanceText MEMBER mileageDistanceText)
    Q_PROPERTY(quint8 mileageUnit MEMBER mileageUnit)
    Q_PROPERTY(quint8 fuelUnitIndex MEMBER fuelUnitIndex)
    Q_PROPERTY(QString fuelText MEMBER fuelText)
    Q_PROPERTY(quint8 doorBit2 MEMBER doorBit2)
    Q_PROPERTY(quint8 doorBit1 MEMBER doorBit1)

public:
    void clear() { *this = MileageInformation(); }

    QString mileageValueText, mileageMinutesText, mileageDistanceText;
    quint8 mileageUnit = 0;     // 1 miles, 2 kilometres
    quint8 fuelUnitIndex = 0;   // 0..2
    QString fuelText;
    quint8 doorBit2 = 0, doorBit1 = 0;
};

// Frame 0x23: six history values with the fuel unit.
class FuelConsumptionHistoryInfor
{
    Q_GADGET
    Q_PROPERTY(quint8 historyUnit MEMBER historyUnit)
    Q_PROPERTY(QString historyText1 MEMBER historyText1)
    Q_PROPERTY(QString historyText2 MEMBER historyText2)
    Q_PROPERTY(QString historyText3 MEMBER historyText3)
    Q_PROPERTY(QString historyText4 MEMBER historyText4)
    Q_PROPERTY(QString historyText5 MEMBER historyText5)
    Q_PROPERTY(QString historyText6 MEMBER historyText6)

public:
    void clear() { *this = FuelConsumptionHistoryInfor(); }

    quint8 historyUnit = 0;
    QString historyText1, historyText2, historyText3, historyText4, historyText5, historyText6;
};

// Frames 0x26 (items 0 to 18) and 0x1E (items 19 to 22).
class BodySettingStatus
{
    Q_GADGET
    Q_PROPERTY(quint8 bodyItem0 MEMBER bodyItem0)
    Q_PROPERTY(quint8 bodyItem1 MEMBER bodyItem1)
    Q_PROPERTY(quint8 bodyItem2 MEMBER bodyItem2)
    Q_PROPERTY(quint8 bodyItem3 MEMBER bodyItem3)
    Q_PROPERTY(quint8 bodyItem4 MEMBER bodyItem4)
    Q_PROPERTY(quint8 bodyItem5 MEMBER bodyItem5)
    Q_PROPERTY(quint8 bodyItem6 MEMBER bodyItem6)
    Q_PROPERTY(quint8 bodyItem7 MEMBER bodyItem7)
    Q_PROPERTY(quint8 bodyItem8 MEMBER bodyItem8)
    Q_PROPERTY(quint8 bodyItem9 MEMBER bodyItem9)
    Q_PROPERTY(quint8 bodyItem10 MEMBER bodyItem10)
    Q_PROPERTY(quint8 bodyItem11 MEMBER bodyItem11)
    Q_PROPERTY(quint8 bodyItem12 MEMBER bodyItem12)
    Q_PROPERTY(quint8 bodyItem13 MEMBER bodyItem13)
    Q_PROPERTY(quint8 bodyItem14 MEMBER bodyItem14)
    Q_PROPERTY(quint8 bodyItem15 MEMBER bodyItem15)
    Q_PROPERTY(quint8 bodyItem16 MEMBER bodyItem16)
    Q_PROPERTY(quint8 bodyItem17 MEMBER bodyItem17)
    Q_PROPERTY(quint8 bodyItem18 MEMBER bodyItem18)
    Q_PROPERTY(quint8 bodyItem19 MEMBER bodyItem19)
    Q_PROPERTY(quint8 bodyItem20 MEMBER bodyItem20)
    Q_PROPERTY(quint8 bodyItem21 MEMBER bodyItem21)
    Q_PROPERTY(quint8 bodyItem22 MEMBER bodyItem22)

public:
    void clear() { *this = BodySettingStatus(); }

    quint8 bodyItem0 = 0, bodyItem1 = 0, bodyItem2 = 0, bodyItem3 = 0, bodyItem4 = 0, bodyItem5 = 0,
        bodyItem6 = 0, bodyItem7 = 0, bodyItem8 = 0, bodyItem9 = 0, bodyItem10 = 0, bodyItem11 = 0,
        bodyItem12 = 0, bodyItem13 = 0, bodyItem14 = 0, bodyItem15 = 0, bodyItem16 = 0, bodyItem17 = 0,
        bodyItem18 = 0, bodyItem19 = 0, bodyItem20 = 0, bodyItem21 = 0, bodyItem22 = 0;
};

// Frame 0x27: the last fifteen minutes, one value a minute; a minute without data
// keeps the text it showed.
class FuelConsumptionInThePast_15_minutes
{
    Q_GADGET
    Q_PROPERTY(quint8 pastUnit MEMBER pastUnit)
    Q_PROPERTY(QString pastText1 MEMBER pastText1)
    Q_PROPERTY(QString pastText2 MEMBER pastText2)
    Q_PROPERTY(QString pastText3 MEMBER pastText3)
    Q_PROPERTY(QString pastText4 MEMBER pastText4)
    Q_PROPERTY(QString pastText5 MEMBER pastText5)
    Q_PROPERTY(QString pastText6 MEMBER pastText6)
    Q_PROPERTY(QString pastText7 MEMBER pastText7)
    Q_PROPERTY(QString pastText8 MEMBER pastText8)
    Q_PROPERTY(QString pastText9 MEMBER pastText9)
    Q_PROPERTY(QString pastText10 MEMBER pastText10)
    Q_PROPERTY(QString pastText11 MEMBER pastText11)
    Q_PROPERTY(QString pastText12 MEMBER pastText12)
    Q_PROPERTY(QString pastText13 MEMBER pastText13)
    Q_PROPERTY(QString pastText14 MEMBER pastText14)
    Q_PROPERTY(QString pastText15 MEMBER pastText15)

public:
    void clear() { *this = FuelConsumptionInThePast_15_minutes(); }

    quint8 pastUnit = 0;
    QString pastText1, pastText2, pastText3, pastText4, pastText5, pastText6, pastText7, pastText8,
        pastText9, pastText10, pastText11, pastText12, pastText13, pastText14, pastText15;
};

// Frames 0x2B (power use and range) and 0x25 (the tyre page's flags).
class InstantaneousPowerConsumptionInfo
{
    Q_GADGET
    Q_PROPERTY(quint8 powerUnit MEMBER powerUnit)
    Q_PROPERTY(QString powerText MEMBER powerText)
    Q_PROPERTY(QString powerDistanceText MEMBER powerDistanceText)
    Q_PROPERTY(quint8 tyreBit7 MEMBER tyreBit7)
    Q_PROPERTY(quint8 tyreBit6 MEMBER tyreBit6)
    Q_PROPERTY(quint8 tyreBit5 MEMBER tyreBit5)
    Q_PROPERTY(quint8 tyreBit2 MEMBER tyreBit2)
    Q_PROPERTY(quint8 tyreUnitCode MEMBER tyreUnitCode)

public:
    void clear() { *this = InstantaneousPowerConsumptionInfo(); }

    quint8 powerUnit = 0;
    QString powerText, powerDistanceText;
    quint8 tyreBit7 = 0, tyreBit6 = 0, tyreBit5 = 0, tyreBit2 = 0;
    quint8 tyreUnitCode = 0;   // 0..3
};

// Frame 0x31: the factory amplifier.
class AmplifierInformation30
{
    Q_GADGET
    Q_PROPERTY(quint8 ampPresent MEMBER ampPresent)
    Q_PROPERTY(quint8 ampLevel1 MEMBER ampLevel1)
    Q_PROPERTY(quint8 ampLevel2 MEMBER ampLevel2)
    Q_PROPERTY(quint8 ampBand1 MEMBER ampBand1)
    Q_PROPERTY(quint8 ampBand2 MEMBER ampBand2)
    Q_PROPERTY(quint8 ampBand3 MEMBER ampBand3)
    Q_PROPERTY(quint8 ampLowNibble MEMBER ampLowNibble)
    Q_PROPERTY(quint8 ampVolume MEMBER ampVolume)
    Q_PROPERTY(quint8 ampFlag0 MEMBER ampFlag0)
    Q_PROPERTY(quint8 ampFlag1 MEMBER ampFlag1)

public:
    void clear() { *this = AmplifierInformation30(); }

    quint8 ampPresent = 0;                    // 1 once the amplifier reported
    quint8 ampLevel1 = 0, ampLevel2 = 0;      // 0..14
    quint8 ampBand1 = 0, ampBand2 = 0, ampBand3 = 0;   // 0..10
    quint8 ampLowNibble = 0;
    quint8 ampVolume = 0;                     // 0..63
    quint8 ampFlag0 = 0, ampFlag1 = 0;
};

// Frames 0x32, 0x50, 0x52, the head unit's language, and the vehicle variant the
// user picked (setting "CanbusCAR").
class VehicleSettingStatus
{
    Q_GADGET
    Q_PROPERTY(quint8 settingItem0 MEMBER settingItem0)
    Q_PROPERTY(quint8 settingItem1 MEMBER settingItem1)
    Q_PROPERTY(quint8 languageCode MEMBER languageCode)
    Q_PROPERTY(quint8 settingFlagA MEMBER settingFlagA)
    Q_PROPERTY(quint8 settingFlagB MEMBER settingFlagB)
    Q_PROPERTY(quint8 settingItem5 MEMBER settingItem5)
    Q_PROPERTY(QVariantList settingBits READ settingBitsList)
    Q_PROPERTY(QVariantList settingSpare READ settingSpareList DESIGNABLE false)
    Q_PROPERTY(quint8 carModel MEMBER carModel)

public:
    void clear() { *this = VehicleSettingStatus(); }
    QVariantList settingBitsList() const { return canbus::fieldList(settingBits); }
    QVariantList settingSpareList() const { return canbus::fieldList(settingSpare); }

    quint8 settingItem0 = 0;   // 0..2
    quint8 settingItem1 = 0;
    quint8 languageCode = 0;   // 0..21
    quint8 settingFlagA = 0, settingFlagB = 0;
    quint8 settingItem5 = 0;   // 0..3
    quint8 settingBits[6] = {0, 0, 0, 0, 0, 0};
    quint8 settingSpare[4] = {0, 0, 0, 0};   // no frame fills them
    quint8 carModel = 0;       // 0..26, 0 none
};

// Frame 0x1F.
class HybridInformation_30
{
    Q_GADGET
    Q_PROPERTY(quint8 hybridBit7 MEMBER hybridBit7)
    Q_PROPERTY(quint8 hybridLowNibble MEMBER hybridLowNibble)
    Q_PROPERTY(QVariantList hybridBits READ hybridBitsList)

public:
    void clear() { *this = HybridInformation_30(); }
    QVariantList hybridBitsList() const { return canbus::fieldList(hybridBits); }

    quint8 hybridBit7 = 0;
    quint8 hybridLowNibble = 0;
    quint8 hybridBits[6] = {0, 0, 0, 0, 0, 0};
};

// Frames 0x61, 0x62 and 0x66: the vehicle's own radio and player.
class MultimediaInformation_30
{
    Q_GADGET
    Q_PROPERTY(QVariantList mediaBits READ mediaBitsList)
    Q_PROPERTY(quint8 mediaHigh61 MEMBER mediaHigh61)
    Q_PROPERTY(quint8 mediaLow61 MEMBER mediaLow61)
    Q_PROPERTY(quint8 mediaRaw66 MEMBER mediaRaw66)
    Q_PROPERTY(quint8 mediaHigh66 MEMBER mediaHigh66)
    Q_PROPERTY(quint8 mediaBit7 MEMBER mediaBit7)
    Q_PROPERTY(quint8 mediaBit6 MEMBER mediaBit6)
    Q_PROPERTY(quint8 radioBand MEMBER radioBand)
    Q_PROPERTY(quint8 radioBit7 MEMBER radioBit7)
    Q_PROPERTY(quint8 radioBit5 MEMBER radioBit5)
    Q_PROPERTY(quint8 radioLowNibble MEMBER radioLowNibble)
    Q_PROPERTY(QString radioFrequencyText MEMBER radioFrequencyText)
    Q_PROPERTY(quint8 mediaState MEMBER mediaState)
    Q_PROPERTY(QByteArray mediaBytes MEMBER mediaBytes DESIGNABLE false)
    Q_PROPERTY(quint8 playState MEMBER playState)
    Q_PROPERTY(quint8 playHigh MEMBER playHigh)
    Q_PROPERTY(quint8 playFlag MEMBER playFlag)
    Q_PROPERTY(quint16 playTrack MEMBER playTrack)
    Q_PROPERTY(quint16 playTotal MEMBER playTotal)
    Q_PROPERTY(QString playTimeText MEMBER playTimeText)
    Q_PROPERTY(QString playTotalTimeText MEMBER playTotalTimeText)
    Q_PROPERTY(QString mediaTextA MEMBER mediaTextA)
    Q_PROPERTY(QString mediaTextB MEMBER mediaTextB)

public:
    void clear() { *this = MultimediaInformation_30(); }
    QVariantList mediaBitsList() const { return canbus::fieldList(mediaBits); }

    quint8 mediaBits[6] = {0, 0, 0, 0, 0, 0};
    quint8 mediaHigh61 = 0;   // 0..7
    quint8 mediaLow61 = 0;
    quint8 mediaRaw66 = 0;
    quint8 mediaHigh66 = 0;   // 0..7
    quint8 mediaBit7 = 0, mediaBit6 = 0;
    quint8 radioBand = 0;
    quint8 radioBit7 = 0, radioBit5 = 0, radioLowNibble = 0;
    QString radioFrequencyText;
    quint8 mediaState = 0;
    QByteArray mediaBytes;
    quint8 playState = 0;
    quint8 playHigh = 0;      // 0..2
    quint8 playFlag = 0;
    quint16 playTrack = 0, playTotal = 0;
    QString playTimeText, playTotalTimeText;
    QString mediaTextA, mediaTextB;
};

// Read by name through its sub-records (recordfields.h), whose field names are
// distinct across the record.
class Data30Info : public DataIdInfo
{
    Q_GADGET
    Q_PROPERTY(MileageInformation* mileage READ mileageRecord)
    Q_PROPERTY(FuelConsumptionHistoryInfor* fuelHistory READ fuelHistoryRecord)
    Q_PROPERTY(BodySettingStatus* bodySetting READ bodySettingRecord)
    Q_PROPERTY(FuelConsumptionInThePast_15_minutes* past15 READ past15Record)
    Q_PROPERTY(InstantaneousPowerConsumptionInfo* power READ powerRecord)
    Q_PROPERTY(AmplifierInformation30* amplifier READ amplifierRecord)
    Q_PROPERTY(VehicleSettingStatus* vehicleSetting READ vehicleSettingRecord)
    Q_PROPERTY(HybridInformation_30* hybrid READ hybridRecord)
    Q_PROPERTY(MultimediaInformation_30* multimedia READ multimediaRecord)

public:
    void clear() { *this = Data30Info(); }

    // For the field description: the sub-records are read in place.
    MileageInformation* mileageRecord() const { return inPlace(mileage); }
    FuelConsumptionHistoryInfor* fuelHistoryRecord() const { return inPlace(fuelHistory); }
    BodySettingStatus* bodySettingRecord() const { return inPlace(bodySetting); }
    FuelConsumptionInThePast_15_minutes* past15Record() const { return inPlace(past15); }
    InstantaneousPowerConsumptionInfo* powerRecord() const { return inPlace(power); }
    AmplifierInformation30* amplifierRecord() const { return inPlace(amplifier); }
    VehicleSettingStatus* vehicleSettingRecord() const { return inPlace(vehicleSetting); }
    HybridInformation_30* hybridRecord() const { return inPlace(hybrid); }
    MultimediaInformation_30* multimediaRecord() const { return inPlace(multimedia); }

    MileageInformation mileage;
    FuelConsumptionHistoryInfor fuelHistory;
    BodySettingStatus bodySetting;
    FuelConsumptionInThePast_15_minutes past15;
    InstantaneousPowerConsumptionInfo power;
    AmplifierInformation30 amplifier;
    VehicleSettingStatus vehicleSetting;
    HybridInformation_30 hybrid;
    MultimediaInformation_30 multimedia;

private:
    template <typename Record>
    static Record* inPlace(const Record& record) { return const_cast<Record*>(&record); }
};
Q_DECLARE_METATYPE(Data30Info)
Q_DECLARE_METATYPE(MileageInformation*)
Q_DECLARE_METATYPE(FuelConsumptionHistoryInfor*)
Q_DECLARE_METATYPE(BodySettingStatus*)
Q_DECLARE_METATYPE(FuelConsumptionInThePast_15_minutes*)
Q_DECLARE_METATYPE(InstantaneousPowerConsumptionInfo*)
Q_DECLARE_METATYPE(AmplifierInformation30*)
Q_DECLARE_METATYPE(VehicleSettingStatus*)
Q_DECLARE_METATYPE(HybridInformation_30*)
Q_DECLARE_METATYPE(MultimediaInformation_30*)
