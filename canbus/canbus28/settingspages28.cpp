#include "settingspages28.h"

#include "dataindex28.h"
#include "common/settingspage.h"

using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

using mqb::D;

namespace {


using B = BodyStatusInformation;
using Row = canbus::BitField<B>;

// D0 names the page, D1 is its first item byte. A clamp of 1 on a run of bits makes
// a flag of it: 1 when any of them is set.
constexpr Row kPage00[] = {
    byteOf(&B::languageCode, D(1), 43),
};
constexpr Row kPage10[] = {
    byteOf(&B::page10Item0, D(1), 2),
    bitOf(&B::page10Item1, D(2), 7),
};
constexpr Row kPage20[] = {
    bitOf(&B::page20Item0, D(1), 0),
    bitOf(&B::page20Item1, D(1), 1),   // also the unit of the second speed
    byteOf(&B::page20Item2, D(2)),
    byteOf(&B::page20Item3, D(3)),
};
constexpr Row kPage30[] = {
    bitOf(&B::page30Item0, D(1), 0),
    bitOf(&B::page30Item1, D(1), 1),
    bitOf(&B::page30Item2, D(2), 0),
    bitOf(&B::page30Item3, D(2), 1),
};
constexpr Row kPage31[] = {
    bitOf(&B::page31Item0, D(1), 0),
    bitOf(&B::page31Item1, D(1), 1),
    bitOf(&B::page31Item2, D(1), 2),
    bitOf(&B::page31Item3, D(1), 3),
    bitsOf(&B::page31Item4, D(2), 3, 0),
    bitsOf(&B::page31Item5, D(2), 7, 4),
    bitOf(&B::page31Item6, D(3), 0),
    bitOf(&B::page31Item7, D(3), 1),
    bitsOf(&B::page31Item8, D(3), 3, 2),
    bitsOf(&B::page31Item9, D(3), 7, 4, 4),
};
constexpr Row kPage40[] = {
    bitOf(&B::page40Item0, D(1), 0),
    bitOf(&B::page40Item1, D(1), 1),
    bitOf(&B::page40Item2, D(1), 2),
    bitOf(&B::page40Item3, D(1), 3),
    bitsOf(&B::page40Item4, D(2), 3, 0),
    bitsOf(&B::page40Item5, D(2), 7, 4),
    bitsOf(&B::page40Item6, D(3), 3, 0),
    bitsOf(&B::page40Item7, D(3), 7, 4),
    bitsOf(&B::page40Item8, D(4), 3, 0),
    bitsOf(&B::page40Item9, D(4), 6, 4, 3),   // reported back when reverse is engaged
    bitOf(&B::page40Item10, D(4), 7),
};
constexpr Row kPage50[] = {
    bitsOf(&B::page50Item0, D(1), 2, 0, 2),
    bitOf(&B::page50Item1, D(1), 4),
    bitOf(&B::page50Item2, D(1), 5),
    bitOf(&B::page50Item3, D(1), 6),
    byteOf(&B::page50Item4, D(2), 100),
    byteOf(&B::page50Item5, D(3), 30),
    byteOf(&B::page50Item6, D(4), 30),
};
constexpr Row kPage51[] = {
    bitOf(&B::page51Item0, D(1), 0),
    bitsOf(&B::page51Item1, D(1), 3, 1),
    byteOf(&B::page51Item2, D(2), 100),
    byteOf(&B::page51Item3, D(3), 100),
    bitOf(&B::page51Item4, D(4), 0),
    bitOf(&B::page51Item5, D(4), 1),
    bitOf(&B::page51Item6, D(4), 3),
    bitsOf(&B::page51Item7, D(4), 7, 4),
};
constexpr Row kPage52[] = {
    byteOf(&B::page52Item0, D(1), 100),
    byteOf(&B::page52Item1, D(2), 100),
    bitsOf(&B::page52Item2, D(3), 7, 6, 2),
    bitsOf(&B::page52Item3, D(3), 5, 0, 11),
    byteOf(&B::page52Item4, D(4), 100),
};
constexpr Row kPage60[] = {
    bitOf(&B::page60Item0, D(1), 0),
    bitOf(&B::page60Item1, D(1), 1),
    bitOf(&B::page60Item2, D(1), 2),
    bitOf(&B::page60Item3, D(1), 3),
    bitOf(&B::page60Item4, D(2), 0),
};
constexpr Row kPage70[] = {
    bitsOf(&B::page70Item0, D(1), 3, 0, 2),
    bitsOf(&B::page70Item1, D(1), 7, 4, 2),
    bitOf(&B::page70Item2, D(2), 0),
    bitOf(&B::page70Item3, D(2), 1),
    bitOf(&B::page70Item4, D(2), 2),
    bitOf(&B::page70Item5, D(2), 3),
    bitOf(&B::page70Item6, D(2), 4),
    bitOf(&B::page70Item7, D(2), 5),
    bitOf(&B::page70Item8, D(2), 6),
};
constexpr Row kPage80[] = {
    bitOf(&B::page80Item0, D(1), 0),
    bitOf(&B::page80Item1, D(1), 1),
    bitOf(&B::page80Item2, D(1), 2),
    bitOf(&B::page80Item3, D(1), 3),
    bitOf(&B::page80Item4, D(1), 4),
    bitOf(&B::page80Item5, D(1), 5),
    bitOf(&B::page80Item6, D(1), 6),
    bitOf(&B::page80Item7, D(1), 7),
    bitOf(&B::page80Item8, D(2), 0),
    bitOf(&B::page80Item9, D(2), 1),
};
constexpr Row kPage90[] = {
    bitsOf(&B::page90Item0, D(1), 7, 4, 2),
    bitOf(&B::page90Item1, D(1), 3),
    bitOf(&B::page90Item2, D(1), 2),
    bitOf(&B::page90Item3, D(1), 1),
    bitOf(&B::page90Item4, D(1), 0),
    bitsOf(&B::page90Item5, D(2), 3, 0, 3),
    bitsOf(&B::page90Item6, D(2), 7, 4, 2),
    bitsOf(&B::page90Item7, D(3), 1, 0),
};
constexpr Row kPageA0[] = {
    bitOf(&B::pageA0Item0, D(1), 5),
    bitOf(&B::pageA0Item1, D(1), 4),
    bitsOf(&B::pageA0Item2, D(1), 3, 0, 8),
    bitsOf(&B::pageA0Item3, D(2), 7, 4, 2),
    bitsOf(&B::pageA0Item4, D(2), 3, 0, 1),
    bitsOf(&B::pageA0Item5, D(3), 7, 4, 2),
    bitsOf(&B::pageA0Item6, D(3), 3, 0, 1),
    bitsOf(&B::pageA0Item7, D(4), 2, 0, 5),
};
constexpr Row kPageB0[] = {
    bitOf(&B::pageB0Item0, D(1), 0),
    bitOf(&B::pageB0Item1, D(1), 1),
    bitOf(&B::pageB0Item2, D(1), 2),
    byteOf(&B::pageB0Item3, D(2), 70),
    byteOf(&B::pageB0Item4, D(3), 70),
    byteOf(&B::pageB0Item5, D(4), 70),
};
constexpr Row kPageB1[] = {
    bitsOf(&B::pageB1Item0, D(1), 7, 4, 1),   // D1 above 15
    bitsOf(&B::pageB1Item1, D(1), 3, 0, 1),
    bitsOf(&B::pageB1Item2, D(2), 7, 4, 1),   // D2 above 15
    bitsOf(&B::pageB1Item3, D(2), 3, 0),
    bitOf(&B::pageB1Item4, D(3), 7),
    bitOf(&B::pageB1Item5, D(3), 6),
    bitOf(&B::pageB1Item6, D(3), 5),
};
constexpr Row kPageB2[] = {
    bitOf(&B::pageB2Item0, D(1), 7),
    bitsOf(&B::pageB2Item1, D(1), 6, 4, 3),
    bitOf(&B::pageB2Item2, D(1), 3),
    bitsOf(&B::pageB2Item3, D(2), 7, 6),
};
constexpr Row kPageC0[] = {
    bitsOf(&B::pageC0Item0, D(1), 1, 0),
    byteOf(&B::pageC0Raw, D(2)),          // its text is made by the driver
    bitOf(&B::pageC0Item1, D(3), 7),
    byteOf(&B::pageC0Item2, D(4), 100),
};
constexpr Row kPageC1[] = {
    byteOf(&B::pageC1Item0, D(1)),
    byteOf(&B::pageC1Item1, D(2), 8),
    byteOf(&B::pageC1Item2, D(3), 8),
};

constexpr canbus::SettingsPage<B> kPages[] = {
    canbus::settingsPage(0x00, kPage00),
    canbus::settingsPage(0x10, kPage10),
    canbus::settingsPage(0x20, kPage20),
    canbus::settingsPage(0x30, kPage30),
    canbus::settingsPage(0x31, kPage31),
    canbus::settingsPage(0x40, kPage40),
    canbus::settingsPage(0x50, kPage50),
    canbus::settingsPage(0x51, kPage51),
    canbus::settingsPage(0x52, kPage52),
    canbus::settingsPage(0x60, kPage60),
    canbus::settingsPage(0x70, kPage70),
    canbus::settingsPage(0x80, kPage80),
    canbus::settingsPage(0x90, kPage90),
    canbus::settingsPage(0xA0, kPageA0),
    canbus::settingsPage(0xB0, kPageB0),
    canbus::settingsPage(0xB1, kPageB1),
    canbus::settingsPage(0xB2, kPageB2),
    canbus::settingsPage(0xC0, kPageC0),
    canbus::settingsPage(0xC1, kPageC1),
};

} // namespace

bool decodeSettingsPage28(const FrameReader& f, BodyStatusInformation& settings)
{
    return canbus::decodeSettingsPage(kPages, f, D(0), settings);
}
