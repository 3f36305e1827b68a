// The HAVAL box's own pages: body readings, setup, attitude, amplifier, CD changer,
// panorama camera and prompts. Each handler fills Data60Info; the caller signals.

#include "canbus60.h"

#include "common/bitfields.h"
#include "common/textcodec.h"
#include "framereader.h"

namespace {

const QString kNoValue = QStringLiteral("--");

QString oneDecimal(double value) { return QString::number(value, 'f', 1); }

// Frame 0x31, the original-car setup, one row a field in the record's order.
using Setup = OriginalCarSetupInformation60;
constexpr canbus::BitField<Setup> kSetup[] = {
    canbus::bitsOf(&Setup::setup0, 3, 7, 4, 4),
    canbus::bitsOf(&Setup::setup1, 3, 3, 0, 4),
    canbus::bitsOf(&Setup::setup2, 4, 7, 4, 6),
    canbus::bitOf(&Setup::setup3, 4, 3),
    canbus::bitOf(&Setup::setup4, 4, 2),
    canbus::bitOf(&Setup::setup5, 4, 1),
    canbus::bitOf(&Setup::setup6, 4, 0),
    canbus::bitOf(&Setup::setup7, 5, 7),
    canbus::bitOf(&Setup::setup8, 5, 6),
    canbus::bitsOf(&Setup::setup9, 5, 5, 4),
    canbus::bitOf(&Setup::setup10, 5, 3),
    canbus::bitOf(&Setup::setup11, 5, 2),
    canbus::bitOf(&Setup::setup12, 5, 1),
    canbus::bitOf(&Setup::setup13, 5, 0),
    canbus::bitOf(&Setup::setup14, 6, 7),
    canbus::bitOf(&Setup::setup15, 6, 6),
    canbus::bitOf(&Setup::setup16, 6, 5),
    canbus::bitOf(&Setup::setup17, 6, 4),
    canbus::bitOf(&Setup::setup18, 6, 3),   // display language
    canbus::bitOf(&Setup::setup19, 6, 2),
    canbus::bitOf(&Setup::setup20, 7, 7),
    canbus::bitOf(&Setup::setup21, 7, 6),
    canbus::bitsOf(&Setup::setup22, 7, 5, 4, 2),
    canbus::bitOf(&Setup::setup23, 7, 3),
    canbus::bitOf(&Setup::setup24, 7, 2),
    canbus::bitOf(&Setup::setup25, 7, 1),
    canbus::bitOf(&Setup::setup26, 7, 0),
    canbus::bitOf(&Setup::setup27, 8, 7),
    canbus::bitOf(&Setup::setup28, 8, 6),
    canbus::bitOf(&Setup::setup29, 8, 5),
    canbus::bitOf(&Setup::setup30, 8, 4),
    canbus::bitOf(&Setup::setup31, 8, 3),
    canbus::bitsOf(&Setup::setup32, 8, 2, 0, 2),
    canbus::bitOf(&Setup::setup33, 9, 7),
    canbus::bitOf(&Setup::setup34, 9, 6),
    canbus::bitOf(&Setup::setup35, 9, 5),
    canbus::bitsOf(&Setup::setup36, 9, 4, 0, 20),
    canbus::bitOf(&Setup::setup37, 10, 7),
    canbus::bitOf(&Setup::setup38, 10, 6),
    canbus::bitOf(&Setup::setup39, 10, 5),
    canbus::bitOf(&Setup::setup40, 10, 4),
    canbus::bitsOf(&Setup::setup41, 10, 3, 2, 2),
    canbus::bitsOf(&Setup::setup42, 10, 1, 0, 2),
    canbus::bitOf(&Setup::setup43, 11, 7),
    canbus::bitOf(&Setup::setup44, 11, 6),
    canbus::bitsOf(&Setup::setup45, 11, 3, 2, 2),   // bits 5-4 carry nothing
    canbus::bitsOf(&Setup::setup46, 11, 1, 0, 2),
    canbus::bitOf(&Setup::setup47, 12, 7),
    canbus::bitOf(&Setup::setup48, 12, 6),
    canbus::bitOf(&Setup::setup49, 12, 5),
    canbus::bitOf(&Setup::setup50, 12, 4),
    canbus::bitsOf(&Setup::setup51, 12, 3, 0, 2),
};

// Frame 0x37.
using Amplifier = AmplifierInformation60;
constexpr canbus::BitField<Amplifier> kAmplifier[] = {
    canbus::byteOf(&Amplifier::ampVolume, 3, 40),
    canbus::byteOf(&Amplifier::ampBand0, 4, 20),
    canbus::byteOf(&Amplifier::ampBand1, 5, 20),
    canbus::byteOf(&Amplifier::ampBand2, 6, 20),
    canbus::byteOf(&Amplifier::ampBand3, 7, 20),
    canbus::byteOf(&Amplifier::ampBand4, 8, 20),
    canbus::bitsOf(&Amplifier::ampMode, 9, 7, 4, 5),
    canbus::bitOf(&Amplifier::ampFlag, 9, 2),
    canbus::bitsOf(&Amplifier::ampField, 9, 1, 0, 2),
    canbus::byteOf(&Amplifier::ampLevel, 10, 4),
};

// Frame 0x38.
using Disc = CDStatusInformation60;
constexpr canbus::BitField<Disc> kDiscState[] = {
    canbus::bitsOf(&Disc::cdState, 3, 7, 6),
    canbus::bitsOf(&Disc::cdField, 3, 5, 4, 2),
    canbus::bitsOf(&Disc::cdMode, 3, 3, 0, 9),
};

// Frame 0x42, the camera's view settings.
using Panorama = PanoramaInformation60;
constexpr canbus::BitField<Panorama> kPanoramaViews[] = {
    canbus::bitsOf(&Panorama::panorama0, 3, 7, 4, 2),
    canbus::bitsOf(&Panorama::panorama1, 3, 3, 0, 3),
    canbus::bitOf(&Panorama::panorama2, 4, 7),
    canbus::bitsOf(&Panorama::panorama3, 4, 3, 0, 4),
    canbus::bitsOf(&Panorama::panorama4, 5, 7, 4, 2),
    canbus::bitsOf(&Panorama::panorama5, 5, 3, 0, 3),
};

// Frame 0x43, by value; 14 has no text of its own.
constexpr const char* kPrompts[] = {
    QT_TRANSLATE_NOOP("Canbus60Obj", "No prompt"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Your car needs maintenance, do you navigate to a nearby 4S shop?"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please turn off the power, the host will make a sound by itself"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "The engine has exited, please start the car manually"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Master, get tired of driving, let's rest"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please bring the key"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Low oil"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Abnormal tire pressure"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Abnormal tire temperature"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Abnormal tire pressure and temperature"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please close the door"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please fasten your seat belt"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please turn off the lights"),
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please confirm if the key is in the car"),
    "--",
    QT_TRANSLATE_NOOP("Canbus60Obj", "Please bring your belongings and lock the door"),
};

// Seconds as "h:m:s", without padding.
QString playTime(int seconds)
{
    return QStringLiteral("%1:%2:%3").arg(seconds / 3600).arg(seconds / 60 % 60).arg(seconds % 60);
}

// An angle byte: bit 7 the side, the low seven bits the degrees.
QString angleText(quint8 raw, const QString& set, const QString& clear)
{
    return (raw > 127 ? set : clear) + QStringLiteral("%1°").arg(raw & 0x7F);
}

} // namespace

void Canbus60Obj::onBodyReadings(const FrameReader& f)
{
    BodyInformation60& b = info()->body;
    const QString celsius = QStringLiteral("%1\u2103");
    b.temperatureTextA = celsius.arg(oneDecimal(f.at(3) * 0.75 - 48.0));
    b.temperatureTextB = celsius.arg(oneDecimal(f.at(4) - 40.0));
    b.voltageText = QStringLiteral("%1V").arg(oneDecimal(f.at(5) * 0.25));
    b.pressureText = QStringLiteral("%1Kpa").arg(oneDecimal(f.at(6) * 0.35));
    b.percentText = QStringLiteral("%1%").arg(oneDecimal(f.at(7)));
}

void Canbus60Obj::onSetup(const FrameReader& f)
{
    canbus::applyBitFields(kSetup, f, info()->setup);
}

void Canbus60Obj::onLevel(const FrameReader& f)
{
    // Variant 9 counts its level from 15 (up to 95), the others from 26.
    const int raw = f.at(3);
    const bool nine = carModel() == 9;
    const int zero = nine ? 15 : 26;
    const bool valid = raw >= zero && (!nine || raw <= 95);
    info()->body.levelText = valid ? QString::number(raw - zero) : kNoValue;
}

void Canbus60Obj::onAttitude(const FrameReader& f)
{
    OriginalVehicleVehicleInformation2_60& a = info()->attitude;
    a.pitchText = angleText(f.at(3), tr("Down"), tr("up"));
    a.percentTextB = f.at(4) == 255 ? kNoValue : QStringLiteral("%1%").arg(f.at(4));
    a.rollText = angleText(f.at(5), tr("right"), tr("Left"));
    a.attitudeFlag = f.bit(6, 7);
    a.distanceText = QStringLiteral("%1KM").arg(f.be16(7));
}

void Canbus60Obj::onAmplifier(const FrameReader& f)
{
    AmplifierInformation60& a = info()->amplifier;
    canbus::applyBitFields(kAmplifier, f, a);
    a.ampVoltage = QStringLiteral("%1V").arg(oneDecimal(f.at(11) * 0.25));
    a.ampTemperature = f.at(12) == 255 ? kNoValue : QStringLiteral("%1\u2103").arg(f.at(12) - 40);
}

void Canbus60Obj::onDiscStatus(const FrameReader& f)
{
    CDStatusInformation60& d = info()->cd;
    canbus::applyBitFields(kDiscState, f, d);
    d.cdTrack = QString::number(f.be16(4));
    d.cdTrackCount = QString::number(f.be16(6));
    d.cdTimeA = playTime(f.be16(8));
    d.cdTimeB = playTime(f.be16(10));
}

void Canbus60Obj::onDiscText(const FrameReader& f)
{
    QString CDStatusInformation60::*const texts[] = {
        &CDStatusInformation60::cdTextA, &CDStatusInformation60::cdTextB, &CDStatusInformation60::cdTextC,
    };
    const int which = f.at(3);
    if (which < 1 || which > 3)
        return;
    // The text starts behind three bytes of its own header, which the length counts.
    info()->cd.*texts[which - 1] = canbus::decodeUtf8(f.bytes(6, f.at(2) - 3));
}

void Canbus60Obj::onFlags(const FrameReader& f)
{
    info()->body.flagBit0 = f.bit(3, 0);
    info()->body.flagBit1 = f.bit(3, 1);
}

void Canbus60Obj::onPanorama(const FrameReader& f)
{
    Panorama& p = info()->panorama;
    switch (f.at(1)) {
    case 0x40: p.panoramaActive = f.at(3) != 0 ? 1 : 0; break;
    case 0x41: p.panoramaOption = f.at(3) != 0 ? 1 : 0; break;
    default: canbus::applyBitFields(kPanoramaViews, f, p); break;
    }
}

void Canbus60Obj::onPrompt(const FrameReader& f)
{
    const int value = f.at(3);
    constexpr int count = int(sizeof(kPrompts) / sizeof(kPrompts[0]));
    info()->body.promptText = value < count ? tr(kPrompts[value]) : kNoValue;
}
