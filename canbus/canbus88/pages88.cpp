// The Jeep box's own pages: settings (0x07), the factory CD player (0x10, 0x11), the
// amplifier (0x31), the performance page (0x32) and hybrid information (0x33).

#include "canbus88.h"

#include "common/bitfields.h"
#include "common/textcodec.h"
#include "framereader.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

// Frame 0x07, in the record's order.
using Setup = VehicleControlInformation_1_88;
constexpr canbus::BitField<Setup> kSettings[] = {
    bitsOf(&Setup::byte3Bits7To6, 3, 7, 6, 2),
    bitsOf(&Setup::byte3Bits5To4, 3, 5, 4),
    bitsOf(&Setup::byte3Bits3To2, 3, 3, 2),
    bitOf(&Setup::byte3Bit1, 3, 1),
    bitOf(&Setup::byte3Bit0, 3, 0),
    bitOf(&Setup::byte4Bit7, 4, 7),
    bitOf(&Setup::byte4Bit6, 4, 6),
    bitsOf(&Setup::byte4Bits5To4, 4, 5, 4),   // one less, see onSettings
    bitsOf(&Setup::byte5Bits7To6, 5, 7, 6),
    bitOf(&Setup::byte5Bit5, 5, 5),
    bitOf(&Setup::byte5Bit3, 5, 3),
    bitOf(&Setup::byte5Bit2, 5, 2),
    bitOf(&Setup::byte5Bit1, 5, 1),
    bitOf(&Setup::byte5Bit0, 5, 0),
    bitOf(&Setup::byte6Bit6, 6, 6),
    bitOf(&Setup::byte6Bit4, 6, 4),
    bitOf(&Setup::byte6Bit3, 6, 3),
    bitOf(&Setup::byte6Bit2, 6, 2),
    bitOf(&Setup::byte6Bit1, 6, 1),
    bitOf(&Setup::byte7Bit7, 7, 7),
    bitsOf(&Setup::byte7Bits6To5, 7, 6, 5),
    bitOf(&Setup::byte7Bit4, 7, 4),
    bitOf(&Setup::byte7Bit3, 7, 3),
    bitsOf(&Setup::byte7Bits2To1, 7, 2, 1),
    bitOf(&Setup::byte8Bit7, 8, 7),
    bitOf(&Setup::byte8Bit6, 8, 6),
    bitOf(&Setup::byte8Bit5, 8, 5),
    bitOf(&Setup::byte8Bit4, 8, 4),
    bitOf(&Setup::byte8Bit3, 8, 3),
    bitsOf(&Setup::byte8Bits2To1, 8, 2, 1, 2),
    bitOf(&Setup::byte8Bit0, 8, 0),
    bitOf(&Setup::byte9Bit7, 9, 7),
    bitOf(&Setup::byte9Bit5, 9, 5),
    bitOf(&Setup::byte9Bit4, 9, 4),
    bitsOf(&Setup::byte9Bits3To2, 9, 3, 2, 2),
    bitsOf(&Setup::byte9Bits1To0, 9, 1, 0, 2),
    bitOf(&Setup::byte10Bit7, 10, 7),
    bitOf(&Setup::byte10Bit5, 10, 5),
    bitOf(&Setup::byte10Bit4, 10, 4),
    bitsOf(&Setup::byte10Bits2To0, 10, 2, 0, 2),
    bitOf(&Setup::byte11Bit5, 11, 5),
    bitOf(&Setup::byte11Bit4, 11, 4),
    bitOf(&Setup::byte11Bit3, 11, 3),
    bitOf(&Setup::byte11Bit2, 11, 2),
    bitsOf(&Setup::byte11Bits1To0, 11, 1, 0, 2),
    bitsOf(&Setup::byte12Bits6To5, 12, 6, 5),
    bitsOf(&Setup::byte12Bits4To3, 12, 4, 3, 2),
    bitOf(&Setup::byte12Bit2, 12, 2),
    bitOf(&Setup::byte12Bit1, 12, 1),
    bitOf(&Setup::byte12Bit0, 12, 0),
    bitsOf(&Setup::byte13Bits6To5, 13, 6, 5, 2),
    bitOf(&Setup::byte13Bit4, 13, 4),
    bitOf(&Setup::byte13Bit3, 13, 3),
    bitOf(&Setup::byte13Bit2, 13, 2),
    bitsOf(&Setup::byte13Bits1To0, 13, 1, 0, 2),
    bitOf(&Setup::byte14Bit7, 14, 7),
    bitsOf(&Setup::byte14Bits6To5, 14, 6, 5, 2),
    bitsOf(&Setup::byte14Bits4To3, 14, 4, 3),
    bitsOf(&Setup::byte14Bits2To0, 14, 2, 0, 6),
    bitOf(&Setup::byte15Bit7, 15, 7),
    bitsOf(&Setup::byte15Bits6To5, 15, 6, 5),
    bitOf(&Setup::byte15Bit4, 15, 4),
    bitOf(&Setup::byte15Bit3, 15, 3),
    bitOf(&Setup::byte15Bit2, 15, 2),
    bitOf(&Setup::byte15Bit1, 15, 1),
    bitOf(&Setup::byte15Bit0, 15, 0),
    bitOf(&Setup::byte16Bit7, 16, 7),
    bitOf(&Setup::byte16Bit6, 16, 6),
    byteOf(&Setup::languageCode, 17, 15),
};

using Performance = performanceControlSystem88;
constexpr canbus::BitField<Performance> kPerformance[] = {
    bitOf(&Performance::byte5Bit7, 5, 7), bitOf(&Performance::byte5Bit6, 5, 6),
    bitOf(&Performance::byte5Bit5, 5, 5), bitsOf(&Performance::byte5Bits4To3, 5, 4, 3, 2),
    bitOf(&Performance::byte6Bit7, 6, 7), bitOf(&Performance::byte6Bit6, 6, 6),
    bitOf(&Performance::byte6Bit5, 6, 5), bitsOf(&Performance::byte6Bits4To3, 6, 4, 3, 2),
};

// Hybrid sub-frame 2: the charge timers, each a day part (up to 3) and an hour (up to 23).
using Hybrid = HybridInformation88;
constexpr canbus::BitField<Hybrid> kChargeTimers[] = {
    byteOf(&Hybrid::timerOn, 4, 1),
    bitsOf(&Hybrid::byte5Bits6To5, 5, 6, 5, 3), bitsOf(&Hybrid::byte5Bits4To0, 5, 4, 0, 23),
    bitOf(&Hybrid::byte6Bit7, 6, 7),
    bitsOf(&Hybrid::byte6Bits6To5, 6, 6, 5, 3), bitsOf(&Hybrid::byte6Bits4To0, 6, 4, 0, 23),
    bitsOf(&Hybrid::byte7Bits6To5, 7, 6, 5, 3), bitsOf(&Hybrid::byte7Bits4To0, 7, 4, 0, 23),
    bitOf(&Hybrid::byte8Bit7, 8, 7),
    bitsOf(&Hybrid::byte8Bits6To5, 8, 6, 5, 3), bitsOf(&Hybrid::byte8Bits4To0, 8, 4, 0, 23),
};

// Amplifier bands: the box counts from 1, the page from 0, up to 18.
quint8 bandStep(quint8 raw)
{
    if (raw == 0)
        return 0;
    return raw < 20 ? quint8(raw - 1) : 18;
}

QString kilowatts(int value) { return QStringLiteral("%1KW").arg(value); }
QString minutesText(int minutes) { return QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60); }

} // namespace

void Canbus88Obj::onSettings(const FrameReader& f)
{
    Setup& s = info()->settings;
    canbus::applyBitFields(kSettings, f, s);
    // This two-bit field counts from 1; 0 stays 0.
    if (s.byte4Bits5To4 != 0)
        --s.byte4Bits5To4;
}

void Canbus88Obj::onCdStatus(const FrameReader& f)
{
    CDStatusInformation88& cd = info()->cd;
    cd.cdState = qMin<quint8>(f.highNibble(3), 2);
    cd.cdMode = qMin<quint8>(f.lowNibble(3), 9);
    cd.cdTrack = f.be16(4);
    cd.cdTotal = f.be16(6);
    // The box's high byte of the playing time is shifted by five only; the display
    // shows what it gets.
    const int t = f.at(9) | (f.at(8) << 5);
    cd.cdPlayTime = QStringLiteral("%1:%2:%3").arg(t / 3600).arg(t / 60 % 60).arg(t % 60);
    cd.cdDiscTime = QStringLiteral("%1:%2:%3").arg(f.at(10)).arg(f.at(11)).arg(f.at(12));
}

void Canbus88Obj::onCdText(const FrameReader& f)
{
    // UTF-16, most significant byte first, from byte 6 to the end of the data.
    const QString text = canbus::decodeUtf16(f.bytes(6, f.at(2) - 3), canbus::Utf16Order::BigEndian);
    CDStatusInformation88& cd = info()->cd;
    switch (f.at(3)) {
    case 1: cd.cdTitle = text; break;
    case 2: cd.cdArtist = text; break;
    case 3: cd.cdAlbum = text; break;
    default: break;
    }
}

void Canbus88Obj::onAmplifier(const FrameReader& f)
{
    AmplifierStatus88& amp = info()->amplifier;
    amp.ampOn = f.bit(3, 7);
    amp.ampVolume = qMin<quint8>(f.bits(3, 0, 7), 38);
    for (int i = 0; i < 5; ++i)
        amp.ampBand[i] = bandStep(f.at(4 + i));
    amp.ampField2 = f.bits(9, 1, 2);
    amp.ampBit0 = f.bit(9, 0);
    amp.ampBit7 = f.bit(10, 7);
    amp.ampBit6 = f.bit(10, 6);
}

void Canbus88Obj::onPerformance(const FrameReader& f)
{
    Performance& p = info()->performance;
    p.perfMode = qMin<quint8>(f.at(3), 5);
    p.perfOn = f.at(4) != 0;
    canbus::applyBitFields(kPerformance, f, p);
}

void Canbus88Obj::onHybrid(const FrameReader& f)
{
    Hybrid& h = info()->hybrid;
    switch (f.at(3)) {
    case 0: {
        h.hybridState = qMin<quint8>(f.at(4), 8);
        const int motor = f.be16(5);
        h.hybridText1 = motor < 1024 ? kilowatts(motor) : QStringLiteral("--");
        h.hybridText2 = kilowatts(f.at(7) - 125);   // signed around 125
        h.hybridText3 = f.bit(8, 7) ? QStringLiteral("--") : kilowatts(f.at(8));
        h.hybridBit6 = f.bit(9, 6);
        h.hybridBit5 = f.bit(9, 5);
        h.hybridBit4 = f.bit(9, 4);
        break;
    }
    case 1:
        h.hybridValue1 = QString::number(f.be16(4));
        h.hybridValue2 = QString::number(f.be16(6));
        break;
    case 2:
        canbus::applyBitFields(kChargeTimers, f, h);
        h.hybridTime1 = minutesText(f.be16(9));
        h.hybridTime2 = minutesText(f.be16(11));
        break;
    case 3:
        h.hybridOn = f.at(4) != 0;
        h.hybridPercent = qMin<quint8>(f.at(5), 100);
        break;
    default:
        break;
    }
}
