#pragma once
// The record of the Ford box: the pages the box reports besides the shared records.
// Plain values with named sub-records; the whole travels as a QVariant, and the fields
// are read by name through the gadgets' properties. Every clear() is the default
// state: numbers 0, texts empty.

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "recordfields.h"

// Door and body page, frame 0x24 (bits of bytes 5 to 8), and the
// percentage of frame 0x63.
class BasicInformation48
{
    Q_GADGET
    Q_PROPERTY(quint8 basic0 MEMBER basic0)
    Q_PROPERTY(quint8 basic1 MEMBER basic1)
    Q_PROPERTY(quint8 basic2 MEMBER basic2)
    Q_PROPERTY(quint8 basic3 MEMBER basic3)
    Q_PROPERTY(quint8 basic4 MEMBER basic4)
    Q_PROPERTY(quint8 basic5 MEMBER basic5)
    Q_PROPERTY(quint8 basic6 MEMBER basic6)
    Q_PROPERTY(quint8 basic7 MEMBER basic7)
    Q_PROPERTY(quint8 basic8 MEMBER basic8)
    Q_PROPERTY(quint8 basic9 MEMBER basic9)
    Q_PROPERTY(quint8 basic10 MEMBER basic10)
    Q_PROPERTY(quint8 basic11 MEMBER basic11)
    Q_PROPERTY(quint8 basic12 MEMBER basic12)
    Q_PROPERTY(quint8 basic13 MEMBER basic13)
    Q_PROPERTY(quint8 basic14 MEMBER basic14)
    Q_PROPERTY(quint8 basic15 MEMBER basic15)
    Q_PROPERTY(quint8 basic16 MEMBER basic16)
    Q_PROPERTY(quint8 basic17 MEMBER basic17)
    Q_PROPERTY(quint8 basic18 MEMBER basic18)
    Q_PROPERTY(quint8 basic19 MEMBER basic19)
    Q_PROPERTY(quint8 basic20 MEMBER basic20)
    Q_PROPERTY(quint8 basic21 MEMBER basic21)
    Q_PROPERTY(quint8 basic22 MEMBER basic22)
    Q_PROPERTY(quint8 basic23 MEMBER basic23)
    Q_PROPERTY(quint8 basic24 MEMBER basic24)
    Q_PROPERTY(quint8 basicPercent MEMBER basicPercent)

public:
    void clear() { *this = BasicInformation48(); }

    quint8 basic0 = 0, basic1 = 0, basic2 = 0, basic3 = 0, basic4 = 0, basic5 = 0;
    quint8 basic6 = 0, basic7 = 0, basic8 = 0, basic9 = 0, basic10 = 0, basic11 = 0;
    quint8 basic12 = 0, basic13 = 0, basic14 = 0, basic15 = 0, basic16 = 0, basic17 = 0;
    quint8 basic18 = 0, basic19 = 0, basic20 = 0, basic21 = 0, basic22 = 0, basic23 = 0;
    quint8 basic24 = 0, basicPercent = 0;
};

// Parking assist, frames 0x25, 0x31 and 0x60, and the display language the
// vehicle reports (frame 0x27) or was told.
class ParkingAssistStatus48
{
    Q_GADGET
    Q_PROPERTY(quint8 parkFlagA MEMBER parkFlagA)
    Q_PROPERTY(quint8 parkFlagB MEMBER parkFlagB)
    Q_PROPERTY(quint8 parkValue MEMBER parkValue)
    Q_PROPERTY(quint8 languageCode MEMBER languageCode)
    Q_PROPERTY(quint8 park0 MEMBER park0)
    Q_PROPERTY(quint8 park1 MEMBER park1)
    Q_PROPERTY(quint8 park2 MEMBER park2)
    Q_PROPERTY(quint8 park3 MEMBER park3)
    Q_PROPERTY(quint8 park4 MEMBER park4)
    Q_PROPERTY(quint8 park5 MEMBER park5)
    Q_PROPERTY(quint8 park6 MEMBER park6)
    Q_PROPERTY(quint8 park7 MEMBER park7)
    Q_PROPERTY(quint8 park8 MEMBER park8)
    Q_PROPERTY(quint8 parkValueA MEMBER parkValueA)
    Q_PROPERTY(quint8 parkValueB MEMBER parkValueB)

public:
    void clear() { *this = ParkingAssistStatus48(); }

    quint8 parkFlagA = 0, parkFlagB = 0, parkValue = 0, languageCode = 0, park0 = 0, park1 = 0;
    quint8 park2 = 0, park3 = 0, park4 = 0, park5 = 0, park6 = 0, park7 = 0;
    quint8 park8 = 0, parkValueA = 0, parkValueB = 0;
};

// Vehicle settings, frame 0x28: one item per selector.
class SettingItemStatus48
{
    Q_GADGET
    Q_PROPERTY(quint8 item0 MEMBER item0)
    Q_PROPERTY(quint8 item1 MEMBER item1)
    Q_PROPERTY(quint8 item2 MEMBER item2)
    Q_PROPERTY(quint8 item3 MEMBER item3)
    Q_PROPERTY(quint8 item4 MEMBER item4)
    Q_PROPERTY(quint8 item5 MEMBER item5)
    Q_PROPERTY(quint8 item6 MEMBER item6)
    Q_PROPERTY(quint8 item7 MEMBER item7)
    Q_PROPERTY(quint8 item8 MEMBER item8)
    Q_PROPERTY(quint8 item9 MEMBER item9)
    Q_PROPERTY(quint8 item10 MEMBER item10)
    Q_PROPERTY(quint8 item11 MEMBER item11)
    Q_PROPERTY(quint8 item12 MEMBER item12)
    Q_PROPERTY(quint8 item13 MEMBER item13)
    Q_PROPERTY(quint8 item14 MEMBER item14)
    Q_PROPERTY(quint8 item15 MEMBER item15)
    Q_PROPERTY(quint8 item16 MEMBER item16)
    Q_PROPERTY(quint8 item17 MEMBER item17)
    Q_PROPERTY(quint8 item18 MEMBER item18)
    Q_PROPERTY(quint8 item19 MEMBER item19)
    Q_PROPERTY(quint8 item20 MEMBER item20)
    Q_PROPERTY(quint8 item21 MEMBER item21)
    Q_PROPERTY(quint8 item22 MEMBER item22)
    Q_PROPERTY(quint8 item23 MEMBER item23)
    Q_PROPERTY(quint8 item24 MEMBER item24)
    Q_PROPERTY(quint8 item25 MEMBER item25)
    Q_PROPERTY(quint8 item26 MEMBER item26)
    Q_PROPERTY(quint8 item27 MEMBER item27)
    Q_PROPERTY(quint8 item28 MEMBER item28)
    Q_PROPERTY(quint8 item29 MEMBER item29)
    Q_PROPERTY(quint8 item30 MEMBER item30)
    Q_PROPERTY(quint8 item31 MEMBER item31)
    Q_PROPERTY(quint8 item32 MEMBER item32)
    Q_PROPERTY(quint8 item33 MEMBER item33)

public:
    void clear() { *this = SettingItemStatus48(); }

    quint8 item0 = 0, item1 = 0, item2 = 0, item3 = 0, item4 = 0, item5 = 0;
    quint8 item6 = 0, item7 = 0, item8 = 0, item9 = 0, item10 = 0, item11 = 0;
    quint8 item12 = 0, item13 = 0, item14 = 0, item15 = 0, item16 = 0, item17 = 0;
    quint8 item18 = 0, item19 = 0, item20 = 0, item21 = 0, item22 = 0, item23 = 0;
    quint8 item24 = 0, item25 = 0, item26 = 0, item27 = 0, item28 = 0, item29 = 0;
    quint8 item30 = 0, item31 = 0, item32 = 0, item33 = 0;
};

// The smart wind page: air quality (frame 0x2A, with its colour name), the
// filter (0x32) and the fragrance (0x61); carModel is the variant the user picked.
class SmartWind48
{
    Q_GADGET
    Q_PROPERTY(quint8 windCode MEMBER windCode)
    Q_PROPERTY(QString windColor MEMBER windColor)
    Q_PROPERTY(quint8 windLevel MEMBER windLevel)
    Q_PROPERTY(QString windHours MEMBER windHours)
    Q_PROPERTY(quint8 windPercent MEMBER windPercent)
    Q_PROPERTY(quint8 windStepA MEMBER windStepA)
    Q_PROPERTY(quint8 windStepB MEMBER windStepB)
    Q_PROPERTY(quint8 windFlag MEMBER windFlag)
    Q_PROPERTY(quint8 windSteps MEMBER windSteps)
    Q_PROPERTY(quint8 windValue MEMBER windValue)
    Q_PROPERTY(quint8 carModel MEMBER carModel)
    Q_PROPERTY(quint8 carOption MEMBER carOption)

public:
    void clear() { *this = SmartWind48(); }

    quint8 windCode = 0;
    QString windColor;
    quint8 windLevel = 0;
    QString windHours;
    quint8 windPercent = 0, windStepA = 0, windStepB = 0, windFlag = 0, windSteps = 0, windValue = 0;
    quint8 carModel = 0, carOption = 0;
};

// Amplifier, frame 0x62.
class AmplifierStatus48
{
    Q_GADGET
    Q_PROPERTY(quint8 amp0 MEMBER amp0)
    Q_PROPERTY(quint8 amp1 MEMBER amp1)
    Q_PROPERTY(quint8 amp2 MEMBER amp2)
    Q_PROPERTY(quint8 amp3 MEMBER amp3)
    Q_PROPERTY(quint8 amp4 MEMBER amp4)
    Q_PROPERTY(quint8 amp5 MEMBER amp5)
    Q_PROPERTY(quint8 amp6 MEMBER amp6)
    Q_PROPERTY(quint8 amp7 MEMBER amp7)
    Q_PROPERTY(quint8 amp8 MEMBER amp8)

public:
    void clear() { *this = AmplifierStatus48(); }

    quint8 amp0 = 0, amp1 = 0, amp2 = 0, amp3 = 0, amp4 = 0, amp5 = 0;
    quint8 amp6 = 0, amp7 = 0, amp8 = 0;
};

// Seat massage, frame 0x64.
class SeatMassage48
{
    Q_GADGET
    Q_PROPERTY(quint8 massage0 MEMBER massage0)
    Q_PROPERTY(quint8 massage1 MEMBER massage1)
    Q_PROPERTY(quint8 massage2 MEMBER massage2)
    Q_PROPERTY(quint8 massage3 MEMBER massage3)
    Q_PROPERTY(quint8 massage4 MEMBER massage4)
    Q_PROPERTY(quint8 massage5 MEMBER massage5)
    Q_PROPERTY(quint8 massage6 MEMBER massage6)
    Q_PROPERTY(quint8 massage7 MEMBER massage7)
    Q_PROPERTY(quint8 massage8 MEMBER massage8)
    Q_PROPERTY(quint8 massage9 MEMBER massage9)
    Q_PROPERTY(quint8 massage10 MEMBER massage10)
    Q_PROPERTY(quint8 massage11 MEMBER massage11)
    Q_PROPERTY(quint8 massage12 MEMBER massage12)

public:
    void clear() { *this = SeatMassage48(); }

    quint8 massage0 = 0, massage1 = 0, massage2 = 0, massage3 = 0, massage4 = 0, massage5 = 0;
    quint8 massage6 = 0, massage7 = 0, massage8 = 0, massage9 = 0, massage10 = 0, massage11 = 0;
    quint8 massage12 = 0;
};

// The SYNC display: screen (0x50), line (0x51), timers (0x52, 0x53), state
// (0x78) and mode (0x40). Texts are translated names of what the box reports.
class SYNCInformation48
{
    Q_GADGET
    Q_PROPERTY(QString syncMenu MEMBER syncMenu)
    Q_PROPERTY(quint8 syncByteA MEMBER syncByteA)
    Q_PROPERTY(quint8 syncByteB MEMBER syncByteB)
    Q_PROPERTY(QString syncLayout MEMBER syncLayout)
    Q_PROPERTY(quint8 syncByteC MEMBER syncByteC)
    Q_PROPERTY(QString syncAudio MEMBER syncAudio)
    Q_PROPERTY(quint8 syncByteD MEMBER syncByteD)
    Q_PROPERTY(QString lineName MEMBER lineName)
    Q_PROPERTY(QString lineStyle MEMBER lineStyle)
    Q_PROPERTY(quint8 lineFlag MEMBER lineFlag)
    Q_PROPERTY(QString timerTextA MEMBER timerTextA)
    Q_PROPERTY(QString timerTextB MEMBER timerTextB)
    Q_PROPERTY(quint8 syncState MEMBER syncState)
    Q_PROPERTY(quint8 syncBit0 MEMBER syncBit0)
    Q_PROPERTY(quint8 syncBit1 MEMBER syncBit1)
    Q_PROPERTY(quint8 syncBit3 MEMBER syncBit3)
    Q_PROPERTY(quint8 syncBit4 MEMBER syncBit4)
    Q_PROPERTY(quint8 syncBit5 MEMBER syncBit5)
    Q_PROPERTY(quint8 syncBit6 MEMBER syncBit6)
    Q_PROPERTY(quint8 syncHigh MEMBER syncHigh)
    Q_PROPERTY(quint8 syncLow MEMBER syncLow)
    Q_PROPERTY(quint8 syncMode MEMBER syncMode)

public:
    void clear() { *this = SYNCInformation48(); }

    QString syncMenu;
    quint8 syncByteA = 0, syncByteB = 0;
    QString syncLayout;
    quint8 syncByteC = 0;
    QString syncAudio;
    quint8 syncByteD = 0;
    QString lineName, lineStyle;
    quint8 lineFlag = 0;
    QString timerTextA, timerTextB;
    quint8 syncState = 0, syncBit0 = 0, syncBit1 = 0, syncBit3 = 0, syncBit4 = 0, syncBit5 = 0;
    quint8 syncBit6 = 0, syncHigh = 0, syncLow = 0, syncMode = 0;
};

// The original unit's media: frequency (0x65), times (0x66), state (0x67), text
// (0x68).
class MultimediaInformation48
{
    Q_GADGET
    Q_PROPERTY(quint8 mediaBand MEMBER mediaBand)
    Q_PROPERTY(QString mediaFrequency MEMBER mediaFrequency)
    Q_PROPERTY(quint8 mediaByte MEMBER mediaByte)
    Q_PROPERTY(quint16 mediaWordA MEMBER mediaWordA)
    Q_PROPERTY(quint16 mediaWordB MEMBER mediaWordB)
    Q_PROPERTY(QString mediaTimeA MEMBER mediaTimeA)
    Q_PROPERTY(QString mediaTimeB MEMBER mediaTimeB)
    Q_PROPERTY(quint8 mediaByte0 MEMBER mediaByte0)
    Q_PROPERTY(quint8 mediaByte1 MEMBER mediaByte1)
    Q_PROPERTY(quint8 mediaFlag0 MEMBER mediaFlag0)
    Q_PROPERTY(quint8 mediaFlag1 MEMBER mediaFlag1)
    Q_PROPERTY(quint8 textByte0 MEMBER textByte0)
    Q_PROPERTY(quint8 textEncoding MEMBER textEncoding)
    Q_PROPERTY(quint8 textByte2 MEMBER textByte2)
    Q_PROPERTY(QString mediaText MEMBER mediaText)

public:
    void clear() { *this = MultimediaInformation48(); }

    quint8 mediaBand = 0;
    QString mediaFrequency;
    quint8 mediaByte = 0;
    quint16 mediaWordA = 0, mediaWordB = 0;
    QString mediaTimeA, mediaTimeB;
    quint8 mediaByte0 = 0, mediaByte1 = 0, mediaFlag0 = 0, mediaFlag1 = 0, textByte0 = 0, textEncoding = 0;
    quint8 textByte2 = 0;
    QString mediaText;
};

// SYNC commands the box reports, frames 0x55 and 0x56.
class SYNCCommand48
{
    Q_GADGET
    Q_PROPERTY(quint8 commandState MEMBER commandState)
    Q_PROPERTY(quint8 commandValue MEMBER commandValue)
    Q_PROPERTY(QString commandText MEMBER commandText)
    Q_PROPERTY(quint8 commandLevel MEMBER commandLevel)
    Q_PROPERTY(quint8 commandStep MEMBER commandStep)
    Q_PROPERTY(quint8 commandByte MEMBER commandByte)

public:
    void clear() { *this = SYNCCommand48(); }

    quint8 commandState = 0, commandValue = 0;
    QString commandText;
    quint8 commandLevel = 0, commandStep = 0, commandByte = 0;
};

class Data48Info : public DataIdInfo
{
    Q_GADGET
    Q_PROPERTY(BasicInformation48* basic READ basicRecord)
    Q_PROPERTY(ParkingAssistStatus48* park READ parkRecord)
    Q_PROPERTY(SettingItemStatus48* settings READ settingsRecord)
    Q_PROPERTY(SmartWind48* wind READ windRecord)
    Q_PROPERTY(AmplifierStatus48* amplifier READ amplifierRecord)
    Q_PROPERTY(SeatMassage48* massage READ massageRecord)
    Q_PROPERTY(SYNCInformation48* sync READ syncRecord)
    Q_PROPERTY(MultimediaInformation48* media READ mediaRecord)
    Q_PROPERTY(SYNCCommand48* command READ commandRecord)
    Q_PROPERTY(QByteArray basicFrameCache MEMBER basicFrameCache DESIGNABLE false)

public:
    void clear();

    // For the field description: the sub-records are read in place.
    BasicInformation48* basicRecord() const { return inPlace(basic); }
    ParkingAssistStatus48* parkRecord() const { return inPlace(park); }
    SettingItemStatus48* settingsRecord() const { return inPlace(settings); }
    SmartWind48* windRecord() const { return inPlace(wind); }
    AmplifierStatus48* amplifierRecord() const { return inPlace(amplifier); }
    SeatMassage48* massageRecord() const { return inPlace(massage); }
    SYNCInformation48* syncRecord() const { return inPlace(sync); }
    MultimediaInformation48* mediaRecord() const { return inPlace(media); }
    SYNCCommand48* commandRecord() const { return inPlace(command); }

    BasicInformation48 basic;
    QByteArray basicFrameCache;   // bytes 5.. of the last frame 0x24
    ParkingAssistStatus48 park;
    SettingItemStatus48 settings;
    SmartWind48 wind;
    AmplifierStatus48 amplifier;
    SeatMassage48 massage;
    SYNCInformation48 sync;
    MultimediaInformation48 media;
    SYNCCommand48 command;

private:
    template <typename Record>
    static Record* inPlace(const Record& record) { return const_cast<Record*>(&record); }
};
Q_DECLARE_METATYPE(Data48Info)
Q_DECLARE_METATYPE(BasicInformation48*)
Q_DECLARE_METATYPE(ParkingAssistStatus48*)
Q_DECLARE_METATYPE(SettingItemStatus48*)
Q_DECLARE_METATYPE(SmartWind48*)
Q_DECLARE_METATYPE(AmplifierStatus48*)
Q_DECLARE_METATYPE(SeatMassage48*)
Q_DECLARE_METATYPE(SYNCInformation48*)
Q_DECLARE_METATYPE(MultimediaInformation48*)
Q_DECLARE_METATYPE(SYNCCommand48*)
