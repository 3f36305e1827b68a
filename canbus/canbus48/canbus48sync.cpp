// The SYNC display of the Ford box: which screen it shows, how each line and button of
// it is drawn, the commands it reports and its state bits.

#include "canbus48.h"

#include <cstddef>

#include "common/bitfields.h"
#include "framereader.h"

namespace {

struct TextRow { int value; const char* text; };

// The translated text of `value`, empty when the table has none.
template <std::size_t N>
QString textFor(const TextRow (&rows)[N], int value)
{
    for (const TextRow& row : rows) {
        if (row.value == value)
            return Canbus48Obj::tr(row.text);
    }
    return QString();
}

// Frame 0x50 byte 3: the screen.
constexpr TextRow kMenus[] = {
    {0, QT_TR_NOOP("invalid")},
    {2, QT_TR_NOOP("USB")},
    {3, QT_TR_NOOP("Current source")},
    {4, QT_TR_NOOP("General setting menu")},
    {5, QT_TR_NOOP("phone book")},
    {6, QT_TR_NOOP("Speed Dial")},
    {7, QT_TR_NOOP("calling")},
};

// Frame 0x50 byte 6: the layout of the screen.
constexpr TextRow kLayouts[] = {
    {0, QT_TR_NOOP("invalid")},
    {1, QT_TR_NOOP("Line 1 No buttons")},
    {2, QT_TR_NOOP("1 rows + 4 buttons below")},
    {3, QT_TR_NOOP("Line 2 No buttons")},
    {4, QT_TR_NOOP("2 rows + 4 buttons below")},
    {5, QT_TR_NOOP("Line 3 No buttons")},
    {6, QT_TR_NOOP("3 rows + 4 buttons below")},
    {7, QT_TR_NOOP("Dial/redial/incoming call")},
    {8, QT_TR_NOOP("SYNC voice")},
    {11, QT_TR_NOOP("Dial a number")},
};

// Frame 0x50 byte 8: the audio source.
constexpr TextRow kAudio[] = {
    {0, QT_TR_NOOP("NONE")},
    {2, QT_TR_NOOP("PHONE")},
    {5, QT_TR_NOOP("LINE IN")},
    {8, QT_TR_NOOP("A2DP")},
    {10, QT_TR_NOOP("USB")},
    {12, QT_TR_NOOP("IPOD")},
};

// Frame 0x51 byte 3: 0..5 are menu text lines, 6..10 dialog text lines, then buttons.
constexpr int kLastMenuLine = 5;
constexpr int kLastDialogLine = 10;
constexpr TextRow kButtons[] = {
    {11, QT_TR_NOOP("Menu button left")},
    {12, QT_TR_NOOP("Menu button left center")},
    {13, QT_TR_NOOP("Menu button right center")},
    {14, QT_TR_NOOP("Menu button right")},
    {15, QT_TR_NOOP("Dialog button left")},
    {16, QT_TR_NOOP("Dialog button left center")},
    {17, QT_TR_NOOP("Dialog button right center")},
    {18, QT_TR_NOOP("Dialog button right")},
};

// Frame 0x51 byte 4 low nibble: how a button is drawn...
constexpr TextRow kButtonStyles[] = {
    {0, QT_TR_NOOP("Unknown status")},
    {2, QT_TR_NOOP("Show icon")},
    {3, QT_TR_NOOP("Show the selected icon (gray background)")},
    {10, QT_TR_NOOP("Display text")},
    {11, QT_TR_NOOP("Show selected (gray background) text")},
};

// ...and how a text line is.
constexpr TextRow kLineStyles[] = {
    {0, QT_TR_NOOP("Normal highlight text/transparent background")},
    {1, QT_TR_NOOP("Normal highlighted text/gray background")},
    {2, QT_TR_NOOP("Gray text/transparent background")},
    {3, QT_TR_NOOP("Gray text/dark gray background")},
    {4, QT_TR_NOOP("Dark gray text/transparent background")},
    {5, QT_TR_NOOP("Line not displayed")},
};

// Frame 0x56 selector 1: a frequency word below this is in kHz, else in 10 kHz steps.
constexpr int kFirstMhzWord = 9800;

using Sync = SYNCInformation48;
constexpr canbus::BitField<Sync> kSyncState[] = {
    canbus::byteOf(&Sync::syncState, 3),
    canbus::bitOf(&Sync::syncBit0, 4, 0),
    canbus::bitOf(&Sync::syncBit1, 4, 1),
    canbus::bitOf(&Sync::syncBit3, 4, 3),
    canbus::bitOf(&Sync::syncBit4, 4, 4),
    canbus::bitOf(&Sync::syncBit5, 4, 5),
    canbus::bitOf(&Sync::syncBit6, 4, 6),
    canbus::bitsOf(&Sync::syncHigh, 5, 7, 4, 4),
    canbus::bitsOf(&Sync::syncLow, 5, 3, 0, 4),
};

} // namespace

void Canbus48Obj::onSyncScreen(const FrameReader& f)
{
    Sync& s = info()->sync;
    s.syncMenu = textFor(kMenus, f.at(3));
    s.syncByteA = f.at(4);
    s.syncByteB = f.at(5);
    s.syncLayout = textFor(kLayouts, f.at(6));
    s.syncByteC = f.at(7);
    s.syncAudio = textFor(kAudio, f.at(8));
    s.syncByteD = f.at(9);
}

void Canbus48Obj::onSyncLine(const FrameReader& f)
{
    Sync& s = info()->sync;
    const int line = f.at(3);
    if (line <= kLastMenuLine)
        s.lineName = tr("Menu text") + QStringLiteral(" %1").arg(line);
    else if (line <= kLastDialogLine)
        s.lineName = tr("Dialog text") + QStringLiteral(" %1").arg(line);
    else
        s.lineName = textFor(kButtons, line);
    const int style = f.lowNibble(4);
    s.lineStyle = line > kLastDialogLine ? textFor(kButtonStyles, style) : textFor(kLineStyles, style);
    s.lineFlag = f.bit(4, 4);
}

void Canbus48Obj::onSyncCommand(const FrameReader& f)
{
    SYNCCommand48& c = info()->command;
    switch (f.at(3)) {
    case 0x01: {
        const int word = f.le16(4);
        c.commandText = word < kFirstMhzWord ? QStringLiteral("%1").arg(word) + tr("KHz")
                                             : QString::number(word * 0.01, 'f', 1) + tr("MHz");
        break;
    }
    case 0x02: c.commandLevel = qMin<quint8>(f.at(4), 10); break;
    case 0x11: c.commandStep = qMin<quint8>(f.at(4), 7); break;
    case 0x12: c.commandByte = f.at(4); break;
    default: break;
    }
}

void Canbus48Obj::onSyncState(const FrameReader& f)
{
    canbus::applyBitFields(kSyncState, f, info()->sync);
}
