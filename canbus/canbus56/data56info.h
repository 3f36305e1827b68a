#pragma once
// The record of the Benz box: body values and options, the trip computer, the pages
// the vehicle has and the voice-control feedback. Every sub-record starts, and is
// cleared, to zeros and empty texts.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "common/tripstatus.h"

struct BodyInformation56
{
    void clear() { *this = BodyInformation56(); }

    quint8 bodyByte = 0;       // frame 0x14
    quint8 airExtraFlag = 0;   // frame 0x21, byte 8 bit 2
    quint8 airExtraMode = 0;   // frame 0x21, byte 8 bits 1..0
    quint8 bodyBit2 = 0;       // frame 0x24, byte 3
    quint8 bodyBit1 = 0;       // also frame 0x41: the inverse of its byte 4 bit 5
    quint8 bodyBit0 = 0;
    quint8 statusBit1 = 0;     // frame 0x25
    quint8 statusBit0 = 0;
    quint8 bodyActive = 0;     // frame 0x40
    quint8 language = 0;       // 1 English, 0 Chinese
    quint8 option10 = 0;       // frame 0x39
    quint8 option11 = 0;       // 0..4
    quint8 option12 = 0;       // 0..4
    quint8 option13 = 0;
    quint8 option14 = 0;
    QString rangeText;         // "%1Km"
    quint8 carModel = 0;       // the vehicle variant ("CanbusCAR"), 0 none, up to 3
    quint8 carOption = 0;      // 0..3
    QString speedText;         // "%1km/h"
    QString rpmText;           // "%1RPM"
    QString outdoorText;       // the outdoor temperature as the panel shows it
};

class Data56Info : public DataIdInfo
{
public:
    void clear();

    BodyInformation56 body;
    canbus::TripComputerRecord mileage;
    canbus::FunctionFlags37 functions;
    canbus::VoiceFeedback8 voice;
};
Q_DECLARE_METATYPE(Data56Info)
