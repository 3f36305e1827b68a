// What the head unit tells the box: the clock, the playing source with its texts, and
// the call state.
#include "canbus28.h"

#include "common/clockreport.h"
#include "datetimectrl.h"
#include "common/frametext.h"
#include "common/mediatextreport.h"
#include "common/sourcereport.h"
#include "common/sourcestate.h"

namespace {

// Head-unit media sources -> the box's number for them.
struct MediaSource { int source; quint8 code; };
constexpr MediaSource kMediaSources[] = {
    {CanbusInterface::SRC_MEDIA1_A, 0x08},
    {CanbusInterface::SRC_MEDIA1_B, 0x08},
    {CanbusInterface::SRC_MEDIA2_A, 0x09},
    {CanbusInterface::SRC_MEDIA2_B, 0x09},
    {CanbusInterface::SRC_MEDIA3, 0x0B},
};

quint8 mediaSourceCode(int source)
{
    for (const MediaSource& row : kMediaSources) {
        if (row.source == source)
            return row.code;
    }
    return 0;
}

// While a track is in its first two seconds the box shows its texts; after that the
// position.
constexpr qulonglong kTextSeconds = 2;

// Titles longer than 20 characters are cut to 17 and "...": the display's line.
constexpr int kTitleChars = 20;
constexpr int kTitleKeep = 17;
constexpr canbus::SplitTextForm kTitleFrames{0x70, 0x71, 0x10, 20};
constexpr canbus::SplitTextForm kArtistFrames{0x72, 0x73, 0x10, 20};

// The call: the phone shown as the source, the state, then the name line.
constexpr quint8 kCallStateType = 0xC5;
constexpr quint8 kCallStateItem = 0x55;
constexpr quint8 kCallTextType = 0xCA;
constexpr int kCallTextBytes = 18;   // the frame's room behind its two lead bytes

struct CallCode { canbus::CallState state; quint8 code; };
constexpr CallCode kCallCodes[] = {
    {canbus::CallState::HangUp, 0x55},
    {canbus::CallState::Incoming, 0x51},
    {canbus::CallState::Outgoing, 0x52},
    {canbus::CallState::Calling, 0x54},
};

quint8 callCode(canbus::CallState state)
{
    for (const CallCode& row : kCallCodes) {
        if (row.state == state)
            return row.code;
    }
    return 0;
}

} // namespace

void Canbus28Obj::setCurrentTime(int, int, int)
{
    // The box takes the whole date with the time, so both come from the clock itself.
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    emit sendDataToCan(canbus::clockReportFrame(profile().family, now, canbus::hour24Setting()));
}

void Canbus28Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    if (type == SRC_RADIO) {
        canbus::RadioState radio;
        if (canbus::readRadio(args, radio))   // needs band and frequency
            emit sendDataToCan(canbus::radioReportFrame(profile().family, radio));
        return;
    }
    if (type == SRC_PHONE) {
        reportPhone(args);
        return;
    }
    if (const quint8 code = mediaSourceCode(type))
        reportMedia(code, args);
}

void Canbus28Obj::reportMedia(quint8 source, const QList<QVariant>& args)
{
    const canbus::MediaState media = canbus::readMedia(args);
    const canbus::FrameFamily family = profile().family;
    if (media.position >= kTextSeconds) {
        emit sendDataToCan(canbus::mediaPlayReportFrame(family, source, media.track + 1,
                                                        media.trackCount, media.position));
        return;
    }
    const QString title = canbus::elideText(media.title, kTitleChars, kTitleKeep);
    const auto send = [&](const canbus::SplitTextForm& form, const QString& text) {
        for (const QByteArray& frame :
             canbus::splitTextFrames(family, form, canbus::utf16BeCountingMark(text)))
            emit sendDataToCan(frame);
    };
    send(kTitleFrames, title);
    send(kArtistFrames, media.secondText);
}

void Canbus28Obj::reportPhone(const QList<QVariant>& args)
{
    const canbus::PhoneState phone = canbus::readPhone(args);
    sendFrame(canbus::kSourceReportType, {0x01, 0x40, 0, 0, 0, 0, 0, 0});
    sendFrame(kCallStateType, {kCallStateItem, callCode(phone.state)});
    QByteArray line("\x03\x01", 2);
    line += canbus::utf8Text(phone.name, kCallTextBytes);
    line.append(kCallTextBytes + 2 - line.size(), '\0');
    emit sendDataToCan(makeFrame(kCallTextType, line));
}
