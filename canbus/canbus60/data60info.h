#pragma once
// The record of the HAVAL box: body readings and prompts, the original-car setup, the
// vehicle's attitude, the amplifier, the CD changer and the panorama camera. Plain values
// with named sub-records, read by name through their gadgets (recordfields.h); texts
// start as "--", the box's sign for a value it has not sent yet.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"
#include "recordfields.h"

// Frames 0x23 (outdoor text), 0x28, 0x29, 0x32, 0x3F and 0x43, and the vehicle variant.
class BodyInformation60
{
    Q_GADGET
    Q_PROPERTY(QString outdoorText MEMBER outdoorText)
    Q_PROPERTY(quint8 bodyBit7 MEMBER bodyBit7)
    Q_PROPERTY(quint8 bodyBit6 MEMBER bodyBit6)
    Q_PROPERTY(quint8 bodyBit4 MEMBER bodyBit4)
    Q_PROPERTY(QString temperatureTextA MEMBER temperatureTextA)
    Q_PROPERTY(QString temperatureTextB MEMBER temperatureTextB)
    Q_PROPERTY(QString voltageText MEMBER voltageText)
    Q_PROPERTY(QString pressureText MEMBER pressureText)
    Q_PROPERTY(QString percentText MEMBER percentText)
    Q_PROPERTY(QString levelText MEMBER levelText)
    Q_PROPERTY(quint8 flagBit0 MEMBER flagBit0)
    Q_PROPERTY(quint8 flagBit1 MEMBER flagBit1)
    Q_PROPERTY(QString promptText MEMBER promptText)
    Q_PROPERTY(quint8 carModel MEMBER carModel)

public:
    void clear() { *this = BodyInformation60(); }

    QString outdoorText = QStringLiteral("--");
    quint8 bodyBit7 = 0, bodyBit6 = 0, bodyBit4 = 0;   // byte 4 of frame 0x28
    QString temperatureTextA = QStringLiteral("--");
    QString temperatureTextB = QStringLiteral("--");
    QString voltageText = QStringLiteral("--");
    QString pressureText = QStringLiteral("--");
    QString percentText = QStringLiteral("--");
    QString levelText = QStringLiteral("--");
    quint8 flagBit0 = 0, flagBit1 = 0;
    QString promptText = QStringLiteral("--");
    quint8 carModel = 0;   // setting "CanbusCAR", 0 none, up to 18
};

// Frame 0x31: the vehicle's own settings pages, one field per switch or level.
// setup18 is the display language: 1 English, 0 Chinese.
class OriginalCarSetupInformation60
{
    Q_GADGET
    Q_PROPERTY(quint8 setup0 MEMBER setup0)
    Q_PROPERTY(quint8 setup1 MEMBER setup1)
    Q_PROPERTY(quint8 setup2 MEMBER setup2)
    Q_PROPERTY(quint8 setup3 MEMBER setup3)
    Q_PROPERTY(quint8 setup4 MEMBER setup4)
    Q_PROPERTY(quint8 setup5 MEMBER setup5)
    Q_PROPERTY(quint8 setup6 MEMBER setup6)
    Q_PROPERTY(quint8 setup7 MEMBER setup7)
    Q_PROPERTY(quint8 setup8 MEMBER setup8)
    Q_PROPERTY(quint8 setup9 MEMBER setup9)
    Q_PROPERTY(quint8 setup10 MEMBER setup10)
    Q_PROPERTY(quint8 setup11 MEMBER setup11)
    Q_PROPERTY(quint8 setup12 MEMBER setup12)
    Q_PROPERTY(quint8 setup13 MEMBER setup13)
    Q_PROPERTY(quint8 setup14 MEMBER setup14)
    Q_PROPERTY(quint8 setup15 MEMBER setup15)
    Q_PROPERTY(quint8 setup16 MEMBER setup16)
    Q_PROPERTY(quint8 setup17 MEMBER setup17)
    Q_PROPERTY(quint8 setup18 MEMBER setup18)
    Q_PROPERTY(quint8 setup19 MEMBER setup19)
    Q_PROPERTY(quint8 setup20 MEMBER setup20)
    Q_PROPERTY(quint8 setup21 MEMBER setup21)
    Q_PROPERTY(quint8 setup22 MEMBER setup22)
    Q_PROPERTY(quint8 setup23 MEMBER setup23)
    Q_PROPERTY(quint8 setup24 MEMBER setup24)
    Q_PROPERTY(quint8 setup25 MEMBER setup25)
    Q_PROPERTY(quint8 setup26 MEMBER setup26)
    Q_PROPERTY(quint8 setup27 MEMBER setup27)
    Q_PROPERTY(quint8 setup28 MEMBER setup28)
    Q_PROPERTY(quint8 setup29 MEMBER setup29)
    Q_PROPERTY(quint8 setup30 MEMBER setup30)
    Q_PROPERTY(quint8 setup31 MEMBER setup31)
    Q_PROPERTY(quint8 setup32 MEMBER setup32)
    Q_PROPERTY(quint8 setup33 MEMBER setup33)
    Q_PROPERTY(quint8 setup34 MEMBER setup34)
    Q_PROPERTY(quint8 setup35 MEMBER setup35)
    Q_PROPERTY(quint8 setup36 MEMBER setup36)
    Q_PROPERTY(quint8 setup37 MEMBER setup37)
    Q_PROPERTY(quint8 setup38 MEMBER setup38)
    Q_PROPERTY(quint8 setup39 MEMBER setup39)
    Q_PROPERTY(quint8 setup40 MEMBER setup40)
    Q_PROPERTY(quint8 setup41 MEMBER setup41)
    Q_PROPERTY(quint8 setup42 MEMBER setup42)
    Q_PROPERTY(quint8 setup43 MEMBER setup43)
    Q_PROPERTY(quint8 setup44 MEMBER setup44)
    Q_PROPERTY(quint8 setup45 MEMBER setup45)
    Q_PROPERTY(quint8 setup46 MEMBER setup46)
    Q_PROPERTY(quint8 setup47 MEMBER setup47)
    Q_PROPERTY(quint8 setup48 MEMBER setup48)
    Q_PROPERTY(quint8 setup49 MEMBER setup49)
    Q_PROPERTY(quint8 setup50 MEMBER setup50)
    Q_PROPERTY(quint8 setup51 MEMBER setup51)

public:
    void clear() { *this = OriginalCarSetupInformation60(); }

    quint8 setup0 = 0, setup1 = 0, setup2 = 0, setup3 = 0, setup4 = 0, setup5 = 0, setup6 = 0, setup7 = 0;
    quint8 setup8 = 0, setup9 = 0, setup10 = 0, setup11 = 0, setup12 = 0, setup13 = 0, setup14 = 0, setup15 = 0;
    quint8 setup16 = 0, setup17 = 0, setup18 = 0, setup19 = 0, setup20 = 0, setup21 = 0, setup22 = 0, setup23 = 0;
    quint8 setup24 = 0, setup25 = 0, setup26 = 0, setup27 = 0, setup28 = 0, setup29 = 0, setup30 = 0, setup31 = 0;
    quint8 setup32 = 0, setup33 = 0, setup34 = 0, setup35 = 0, setup36 = 0, setup37 = 0, setup38 = 0, setup39 = 0;
    quint8 setup40 = 0, setup41 = 0, setup42 = 0, setup43 = 0, setup44 = 0, setup45 = 0, setup46 = 0, setup47 = 0;
    quint8 setup48 = 0, setup49 = 0, setup50 = 0, setup51 = 0;
};

// Frame 0x36.
class OriginalVehicleVehicleInformation2_60
{
    Q_GADGET
    Q_PROPERTY(QString pitchText MEMBER pitchText)
    Q_PROPERTY(QString percentTextB MEMBER percentTextB)
    Q_PROPERTY(QString rollText MEMBER rollText)
    Q_PROPERTY(quint8 attitudeFlag MEMBER attitudeFlag)
    Q_PROPERTY(QString distanceText MEMBER distanceText)

public:
    void clear() { *this = OriginalVehicleVehicleInformation2_60(); }

    QString pitchText = QStringLiteral("--");
    QString percentTextB = QStringLiteral("--");
    QString rollText = QStringLiteral("--");
    quint8 attitudeFlag = 0;
    QString distanceText = QStringLiteral("--");
};

// Frame 0x37.
class AmplifierInformation60
{
    Q_GADGET
    Q_PROPERTY(quint8 ampVolume MEMBER ampVolume)
    Q_PROPERTY(quint8 ampBand0 MEMBER ampBand0)
    Q_PROPERTY(quint8 ampBand1 MEMBER ampBand1)
    Q_PROPERTY(quint8 ampBand2 MEMBER ampBand2)
    Q_PROPERTY(quint8 ampBand3 MEMBER ampBand3)
    Q_PROPERTY(quint8 ampBand4 MEMBER ampBand4)
    Q_PROPERTY(quint8 ampMode MEMBER ampMode)
    Q_PROPERTY(quint8 ampFlag MEMBER ampFlag)
    Q_PROPERTY(quint8 ampField MEMBER ampField)
    Q_PROPERTY(quint8 ampLevel MEMBER ampLevel)
    Q_PROPERTY(QString ampVoltage MEMBER ampVoltage)
    Q_PROPERTY(QString ampTemperature MEMBER ampTemperature)

public:
    void clear() { *this = AmplifierInformation60(); }

    quint8 ampVolume = 0;   // up to 40
    quint8 ampBand0 = 0, ampBand1 = 0, ampBand2 = 0, ampBand3 = 0, ampBand4 = 0;   // up to 20
    quint8 ampMode = 0, ampFlag = 0, ampField = 0, ampLevel = 0;
    QString ampVoltage = QStringLiteral("--");
    QString ampTemperature = QStringLiteral("--");
};

// Frames 0x38 (state, track, times) and 0x39 (the three texts).
class CDStatusInformation60
{
    Q_GADGET
    Q_PROPERTY(quint8 cdState MEMBER cdState)
    Q_PROPERTY(quint8 cdField MEMBER cdField)
    Q_PROPERTY(quint8 cdMode MEMBER cdMode)
    Q_PROPERTY(QString cdTrack MEMBER cdTrack)
    Q_PROPERTY(QString cdTrackCount MEMBER cdTrackCount)
    Q_PROPERTY(QString cdTimeA MEMBER cdTimeA)
    Q_PROPERTY(QString cdTimeB MEMBER cdTimeB)
    Q_PROPERTY(QString cdTextA MEMBER cdTextA)
    Q_PROPERTY(QString cdTextB MEMBER cdTextB)
    Q_PROPERTY(QString cdTextC MEMBER cdTextC)
    Q_PROPERTY(quint8 cdReserved0 MEMBER cdReserved0 DESIGNABLE false)
    Q_PROPERTY(quint8 cdReserved1 MEMBER cdReserved1 DESIGNABLE false)

public:
    void clear() { *this = CDStatusInformation60(); }

    quint8 cdState = 0, cdField = 0, cdMode = 0;
    QString cdTrack = QStringLiteral("--");
    QString cdTrackCount = QStringLiteral("--");
    QString cdTimeA = QStringLiteral("--");   // "h:m:s", unpadded
    QString cdTimeB = QStringLiteral("--");
    QString cdTextA = QStringLiteral("--");
    QString cdTextB = QStringLiteral("--");
    QString cdTextC = QStringLiteral("--");
    quint8 cdReserved0 = 0, cdReserved1 = 0;
};

// Frames 0x40 to 0x42, and the two states of the touch page: which view of the
// surround camera shows (viewMode) and which of its setting pages is open
// (panoramaSetting, on the boxes that have them).
class PanoramaInformation60
{
    Q_GADGET
    Q_PROPERTY(quint8 panoramaActive MEMBER panoramaActive)
    Q_PROPERTY(quint8 panoramaOption MEMBER panoramaOption)
    Q_PROPERTY(quint8 panorama0 MEMBER panorama0)
    Q_PROPERTY(quint8 panorama1 MEMBER panorama1)
    Q_PROPERTY(quint8 panorama2 MEMBER panorama2)
    Q_PROPERTY(quint8 panorama3 MEMBER panorama3)
    Q_PROPERTY(quint8 panorama4 MEMBER panorama4)
    Q_PROPERTY(quint8 panorama5 MEMBER panorama5)
    Q_PROPERTY(quint8 panoramaReserved0 MEMBER panoramaReserved0 DESIGNABLE false)
    Q_PROPERTY(quint8 panoramaReserved1 MEMBER panoramaReserved1 DESIGNABLE false)
    Q_PROPERTY(quint8 panoramaReserved2 MEMBER panoramaReserved2 DESIGNABLE false)
    Q_PROPERTY(quint8 viewMode MEMBER viewMode)
    Q_PROPERTY(quint8 panoramaSetting MEMBER panoramaSetting)

public:
    void clear() { *this = PanoramaInformation60(); }

    quint8 panoramaActive = 0, panoramaOption = 0;
    quint8 panorama0 = 0, panorama1 = 0, panorama2 = 0, panorama3 = 0, panorama4 = 0, panorama5 = 0;
    quint8 panoramaReserved0 = 0, panoramaReserved1 = 0, panoramaReserved2 = 0;
    quint8 viewMode = 0;
    quint8 panoramaSetting = 0;
};

class Data60Info : public DataIdInfo
{
    Q_GADGET
    Q_PROPERTY(BodyInformation60* body READ bodyRecord)
    Q_PROPERTY(OriginalCarSetupInformation60* setup READ setupRecord)
    Q_PROPERTY(OriginalVehicleVehicleInformation2_60* attitude READ attitudeRecord)
    Q_PROPERTY(AmplifierInformation60* amplifier READ amplifierRecord)
    Q_PROPERTY(CDStatusInformation60* cd READ cdRecord)
    Q_PROPERTY(PanoramaInformation60* panorama READ panoramaRecord)

public:
    void clear() { *this = Data60Info(); }

    // For the field description: the sub-records are read in place.
    BodyInformation60* bodyRecord() const { return inPlace(body); }
    OriginalCarSetupInformation60* setupRecord() const { return inPlace(setup); }
    OriginalVehicleVehicleInformation2_60* attitudeRecord() const { return inPlace(attitude); }
    AmplifierInformation60* amplifierRecord() const { return inPlace(amplifier); }
    CDStatusInformation60* cdRecord() const { return inPlace(cd); }
    PanoramaInformation60* panoramaRecord() const { return inPlace(panorama); }

    BodyInformation60 body;
    OriginalCarSetupInformation60 setup;
    OriginalVehicleVehicleInformation2_60 attitude;
    AmplifierInformation60 amplifier;
    CDStatusInformation60 cd;
    PanoramaInformation60 panorama;

private:
    template <typename Record>
    static Record* inPlace(const Record& record) { return const_cast<Record*>(&record); }
};
Q_DECLARE_METATYPE(Data60Info)
Q_DECLARE_METATYPE(BodyInformation60*)
Q_DECLARE_METATYPE(OriginalCarSetupInformation60*)
Q_DECLARE_METATYPE(OriginalVehicleVehicleInformation2_60*)
Q_DECLARE_METATYPE(AmplifierInformation60*)
Q_DECLARE_METATYPE(CDStatusInformation60*)
Q_DECLARE_METATYPE(PanoramaInformation60*)
