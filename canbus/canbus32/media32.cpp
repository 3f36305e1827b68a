// The vehicle's own radio, disc player and amplifier, and its settings pages, as the
// Nissan box reports them.
#include "canbus32.h"

#include <iterator>

#include "common/bitfields.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

constexpr int D(int n) { return canbus::kDataOffset2E + n; }

using MM = MultimediaInformation32;
using VS = VehicleSettingInformation32;
using AI = AmplifierInformation32;

constexpr canbus::BitField<MM> kMediaBits[] = {
    bitOf(&MM::mediaBit7, D(0), 7), bitOf(&MM::mediaBit6, D(0), 6), bitOf(&MM::mediaBit5, D(0), 5),
    bitOf(&MM::mediaBit4, D(0), 4), bitOf(&MM::mediaBit3, D(0), 3),
};

constexpr canbus::BitField<MM> kAudio[] = {
    bitOf(&MM::audioBit7, D(0), 7), bitOf(&MM::audioBit6, D(0), 6), bitOf(&MM::audioBit5, D(0), 5),
    bitOf(&MM::audioBit4, D(0), 4), bitOf(&MM::audioBit3, D(0), 3),
    bitsOf(&MM::audioLow, D(0), 2, 0),
    bitsOf(&MM::audioLevel1, D(1), 7, 6, 2),
    bitsOf(&MM::audioLevel2, D(1), 5, 4, 2),
    bitsOf(&MM::audioLevel3, D(1), 3, 2, 2),
    bitsOf(&MM::audioLevel4, D(1), 1, 0, 2),
    bitsOf(&MM::audioLevel5, D(2), 7, 6, 2),
    bitsOf(&MM::audioLevel6, D(2), 5, 4, 2),
};

constexpr canbus::BitField<VS> kSettingValue[] = {
    bitOf(&VS::frame0ABit7, D(0), 7),
    bitsOf(&VS::frame0AValue, D(0), 6, 0, 49),
};

constexpr canbus::BitField<VS> kSettings[] = {
    bitOf(&VS::settingBit7, D(0), 7),
    bitOf(&VS::settingBit6, D(0), 6),
    bitOf(&VS::settingBit5, D(0), 5),
    bitOf(&VS::settingD1Bit7, D(1), 7),
    bitsOf(&VS::settingD1High, D(1), 6, 5),
    bitOf(&VS::settingD1Bit4, D(1), 4),
    bitsOf(&VS::settingD1Low, D(1), 3, 0),
    bitOf(&VS::settingD2Bit7, D(2), 7),
    bitOf(&VS::settingD2Bit6, D(2), 6),
};

constexpr canbus::BitField<AI> kAmplifier[] = {
    byteOf(&AI::ampVolume, D(0), 40),
    byteOf(&AI::ampMode, D(5), 5),
    byteOf(&AI::ampFlagA, D(6), 1),
    byteOf(&AI::ampFlagB, D(8), 1),
};
// The five bands: 0..5 from the box is 5..10 on the page, anything higher its top.
constexpr quint8 AI::*kAmplifierBands[] = {
    &AI::ampBand1, &AI::ampBand2, &AI::ampBand3, &AI::ampBand4, &AI::ampBand5,
};
constexpr int kAmplifierBandBytes[] = {D(1), D(2), D(3), D(4), D(7)};
constexpr quint8 kBandOffset = 5;
constexpr quint8 kBandTop = 10;

// Frame 0x07 D4: what the disc player is doing.
constexpr const char* kDiscStates[] = {
    "play", "reading disc", "loading disc", "insert disc", "busy", "ejecting disc",
    "select disc to load", "select disc to eject", "disc error",
};

// Frame 0x04: D0 3..5 are the FM bands, with the frequency in 50 kHz steps from
// 87.5 MHz; the others AM, in 10 kHz steps from 530 kHz where D2 bit 7 is set, else
// 9 kHz steps from 531 kHz.
bool isFmBand(quint8 band) { return band >= 3 && band <= 5; }

// Frame 0x68: D0 bits 7..5 pick the tray item that bits 4..0 set.
constexpr int kTrayItems = 4;
constexpr quint8 kTrayFlagSelector = 5;
constexpr quint8 kTrayCountTop = 5;
constexpr quint8 kTrayItemTop = 10;

} // namespace

void Canbus32Obj::onMediaBits(const FrameReader& f)
{
    canbus::applyBitFields(kMediaBits, f, info()->multimedia);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onRadio(const FrameReader& f)
{
    MultimediaInformation32& m = info()->multimedia;
    const quint8 band = f.d(0);
    m.discRawMinus1 = quint8(band - 1);
    m.discRaw = f.d(1);
    if (isFmBand(band)) {
        const int step = (f.d(3) - 1) | (f.d(2) << 8);
        m.radioFrequencyText = tr("%1MHz").arg(87.5 + step * 0.05);
    } else {
        const int word = f.d(3) | ((f.d(2) & 0x7F) << 8);
        const int khz = f.bit(D(2), 7) ? (word - 1) * 10 + 530 : (word - 1) * 9 + 531;
        m.radioFrequencyText = tr("%1KHz").arg(khz);
    }
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onAudio(const FrameReader& f)
{
    canbus::applyBitFields(kAudio, f, info()->multimedia);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onPlayState(const FrameReader& f)
{
    MultimediaInformation32& m = info()->multimedia;
    m.playByte0 = f.d(0);
    m.playByte1 = f.d(1);
    m.playTimeText = QStringLiteral("%1:%2").arg(f.d(2)).arg(f.d(3));
    const quint8 state = f.d(4);
    m.playStateText = state < std::size(kDiscStates) ? tr(kDiscStates[state]) : QString();
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onSettingValue(const FrameReader& f)
{
    canbus::applyBitFields(kSettingValue, f, info()->vehicleSetting);
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onTray(const FrameReader& f)
{
    MultimediaInformation32& m = info()->multimedia;
    const quint8 selector = f.bits(D(0), 5, 3);
    const quint8 value = f.bits(D(0), 0, 5);
    m.trayCount = qMin(selector, kTrayCountTop);
    quint8* items[kTrayItems] = {&m.trayItem1, &m.trayItem2, &m.trayItem3, &m.trayItem4};
    if (selector >= 1 && selector <= kTrayItems)
        *items[selector - 1] = qMin(quint8(value - 2), kTrayItemTop);   // 0 and 1 wrap to the top
    else if (selector == kTrayFlagSelector)
        m.trayFlag = value != 0 ? 1 : 0;
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onAmplifier(const FrameReader& f)
{
    AmplifierInformation32& a = info()->amplifier;
    canbus::applyBitFields(kAmplifier, f, a);
    for (int i = 0; i < int(std::size(kAmplifierBands)); ++i) {
        const quint8 raw = f.at(kAmplifierBandBytes[i]);
        a.*kAmplifierBands[i] = raw <= kBandTop - kBandOffset ? quint8(raw + kBandOffset) : kBandTop;
    }
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::onSettings(const FrameReader& f)
{
    canbus::applyBitFields(kSettings, f, info()->vehicleSetting);
    notify(&CanbusInterface::dataChanged);
}
