// What the head unit tells the GM box: clock, the playing source as a text line,
// language, and touches on the vehicle's screen.

#include "canbus37.h"

#include "common/clockreport.h"
#include "common/codetable.h"
#include "common/frametext.h"
#include "common/language.h"
#include "common/scaledtouch.h"
#include "common/sourcestate.h"
#include "common/statusframe.h"

namespace {

constexpr canbus::LanguageRow kLanguages[] = {
    {"ch_jt", 0}, {"ch_ft", 0}, {"en", 1},   {"dy", 2},   {"fa", 4},
    {"xby", 6},   {"pty", 8},   {"teq", 13}, {"alb", 14}, {"els", 15},
    {"ko", 16},
};

// The box shows one line for the source: its code, then the text.
constexpr quint8 kSourceText = 0xC0;
constexpr quint8 kRadioNone = 0;
constexpr quint8 kRadioFm = 1;
constexpr quint8 kRadioAm = 2;

constexpr canbus::CodeRow kMediaCodes[] = {
    {CanbusInterface::SRC_MEDIA1_A, 4},
    {CanbusInterface::SRC_MEDIA1_B, 4},
    {CanbusInterface::SRC_MEDIA2_A, 6},
    {CanbusInterface::SRC_MEDIA2_B, 6},
    {CanbusInterface::SRC_MEDIA3, 5},
};

// The text must leave room in the frame for the code before it.
constexpr int kTextBytes = 249;

// "h:m:s" without padding, the hours kept to eight bits as the box reads them.
QStringList clockParts(qulonglong seconds)
{
    return {QString::number(quint8(seconds / 3600)), QString::number((seconds / 60) % 60),
            QString::number(seconds % 60)};
}

} // namespace

void Canbus37Obj::setCurrentTime(int hour, int minute, int)
{
    const quint8 twelveHour = canbus::hour24Setting() ? 0 : 1;
    sendFrame(0x89, {quint8(hour), quint8(minute), twelveHour});
}

void Canbus37Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    quint8 code = 0;
    QString text;
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        if (canbus::isFm(radio.band)) {
            code = kRadioFm;
            text = QStringLiteral("%1MHz").arg(canbus::scaledNumber(radio.frequency * 0.01));
        } else if (canbus::isAm(radio.band)) {
            code = kRadioAm;
            text = QStringLiteral("%1KHz").arg(radio.frequency & 0xFFFF);
        } else {
            code = kRadioNone;
            text = QStringLiteral("87.5MHz");
        }
    } else {
        const canbus::CodeRow* media = canbus::findCode(kMediaCodes, type);
        if (!media)
            return;
        const canbus::MediaState m = canbus::readMedia(args);
        const QStringList at = clockParts(m.position);
        const QStringList of = clockParts(m.length);
        code = media->code;
        text = QStringLiteral("%1:%2:%3/%6:%7:%8--%4/%5")
                   .arg(at[0], at[1], at[2], QString::number(m.track), QString::number(m.trackCount), of[0],
                        of[1], of[2]);
    }
    sendFrame(kSourceText, QByteArray(1, char(code)) + canbus::utf8Text(text, kTextBytes));
}

void Canbus37Obj::languageChanged(const QString& language)
{
    const auto code = canbus::vehicleLanguage(kLanguages, language);
    if (!code)
        return;
    sendFrame(0x87, {quint8(*code)});
    info()->parking.byte12 = quint8(*code);
    emit dataChanged();
}

void Canbus37Obj::setTcanBussend(int x, int y, int w, int h, int model)
{
    if (const auto data = canbus::scaledTouchData(x, y, w, h, model))
        sendFrame(0x98, *data);
}
