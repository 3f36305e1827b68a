// Pages of the Geely box: the panorama camera (0x40) and the three settings frames,
// one setting at a time (0x4E, 0x80) and two of packed bits (0x4F, 0x50).

#include "canbus49.h"

#include "common/bitfields.h"
#include "common/settingspage.h"
#include "framereader.h"

using canbus::BitField;
using canbus::bitOf;
using canbus::bitsOf;
using canbus::byteOf;

namespace {

using Panorama = PanoramaInformation49;
constexpr BitField<Panorama> kPanorama[] = {
    byteOf(&Panorama::panorama0, 3, 1),   // on when not 0
    byteOf(&Panorama::panorama1, 4, 9),
    bitOf(&Panorama::panorama2, 5, 7),
    bitOf(&Panorama::panorama3, 5, 6),
    bitOf(&Panorama::panorama4, 6, 7),
    bitOf(&Panorama::panorama5, 6, 6),
    bitOf(&Panorama::panorama6, 6, 5),
    bitOf(&Panorama::panorama7, 6, 4),
    bitOf(&Panorama::panorama8, 6, 3),
    bitOf(&Panorama::panorama9, 6, 2),
};

// Frame 0x4E: byte 3 names the setting, byte 4 is its value. A clamp of 1 makes a
// flag, of 0 a setting that always reads 0.
using Items = SettingItemSetting49_2;
constexpr int kItemValue = 4;
struct ItemRow { quint8 selector; BitField<Items> field; };
constexpr ItemRow kItems[] = {
    {0, byteOf(&Items::item0, kItemValue, 1)},
    {1, byteOf(&Items::item1, kItemValue, 1)},
    {2, byteOf(&Items::item2, kItemValue, 1)},
    {3, byteOf(&Items::item3, kItemValue, 1)},
    {4, byteOf(&Items::item4, kItemValue, 1)},
    {5, byteOf(&Items::item5, kItemValue, 1)},
    {6, byteOf(&Items::item6, kItemValue, 1)},
    {7, byteOf(&Items::item7, kItemValue, 1)},
    {8, byteOf(&Items::item8, kItemValue, 1)},
    {9, byteOf(&Items::item9, kItemValue, 1)},
    {10, byteOf(&Items::item10, kItemValue, 1)},
    {11, byteOf(&Items::item11, kItemValue, 1)},
    {12, byteOf(&Items::item12, kItemValue, 1)},
    {13, byteOf(&Items::item13, kItemValue, 1)},
    {14, byteOf(&Items::item14, kItemValue, 1)},
    {15, byteOf(&Items::item15, kItemValue, 1)},
    {16, byteOf(&Items::item16, kItemValue, 1)},
    {17, byteOf(&Items::item17, kItemValue, 1)},
    {18, byteOf(&Items::item18, kItemValue, 1)},
    {19, byteOf(&Items::item19, kItemValue, 1)},
    {20, byteOf(&Items::item20, kItemValue, 1)},
    {21, byteOf(&Items::item21, kItemValue, 1)},
    {22, byteOf(&Items::item22, kItemValue, 1)},
    {23, byteOf(&Items::item23, kItemValue, 1)},
    {24, byteOf(&Items::item24, kItemValue, 1)},
    {25, byteOf(&Items::item25, kItemValue, 2)},
    {26, byteOf(&Items::item26, kItemValue, 1)},   // the display's language
    {27, byteOf(&Items::item27, kItemValue, 2)},
    {28, byteOf(&Items::item28, kItemValue, 3)},
    {29, byteOf(&Items::item29, kItemValue, 1)},
    {30, byteOf(&Items::item30, kItemValue, 1)},
    {31, byteOf(&Items::item31, kItemValue, 1)},
    {32, byteOf(&Items::item32, kItemValue, 1)},
    {33, byteOf(&Items::item33, kItemValue, 1)},
    {34, byteOf(&Items::item34, kItemValue, 1)},
    {35, byteOf(&Items::item35, kItemValue, 1)},
    {36, byteOf(&Items::item36, kItemValue, 1)},
    {37, bitOf(&Items::itemSign, kItemValue, 7)},          // sign and magnitude
    {37, bitsOf(&Items::itemValue, kItemValue, 6, 0, 80)},
    {38, byteOf(&Items::item38, kItemValue, 1)},
    {39, byteOf(&Items::item39, kItemValue)},              // as it comes
    {40, byteOf(&Items::item40, kItemValue, 1)},
    {41, byteOf(&Items::item41, kItemValue, 10)},
    {42, byteOf(&Items::item42, kItemValue, 0)},           // reads 0 whatever the box says
    {43, byteOf(&Items::item43, kItemValue, 1)},
    {128, byteOf(&Items::item128, kItemValue, 1)},
};

// Frame 0x4F: three bytes of bits; a byte that didn't move is not applied again.
using BitsA = SettingItemSetting49_1;
constexpr BitField<BitsA> kBitsA3[] = {
    bitsOf(&BitsA::settingA0, 3, 7, 6),
    bitsOf(&BitsA::settingA1, 3, 5, 4),
    bitsOf(&BitsA::settingA2, 3, 3, 2, 1),   // on when either bit is
    bitOf(&BitsA::settingA3, 3, 1),
    bitOf(&BitsA::settingA4, 3, 0),
};
constexpr BitField<BitsA> kBitsA4[] = {
    bitOf(&BitsA::settingA5, 4, 7),
    bitOf(&BitsA::settingA6, 4, 6),
    bitOf(&BitsA::settingA7, 4, 5),
    bitOf(&BitsA::settingA8, 4, 4),
    bitOf(&BitsA::settingA9, 4, 3),
    bitOf(&BitsA::settingA10, 4, 2),
    bitOf(&BitsA::settingA11, 4, 1),
    bitOf(&BitsA::settingA12, 4, 0),
};
constexpr BitField<BitsA> kBitsA5[] = {
    bitOf(&BitsA::settingA13, 5, 7),
    bitsOf(&BitsA::settingA14, 5, 6, 0, 80),
};
// The "page" of each table is the frame byte it reads.
constexpr canbus::SettingsPage<BitsA> kBytesA[] = {
    canbus::settingsPage(3, kBitsA3),
    canbus::settingsPage(4, kBitsA4),
    canbus::settingsPage(5, kBitsA5),
};

// Frame 0x50: seven bytes of bits, of which one is applied a frame.
using BitsB = SettingItemSetting49;
constexpr BitField<BitsB> kBitsB3[] = {
    bitOf(&BitsB::settingB0, 3, 7),
    bitOf(&BitsB::settingB1, 3, 6),
    bitOf(&BitsB::settingB2, 3, 5),
    bitOf(&BitsB::settingB3, 3, 4),
    bitOf(&BitsB::settingB4, 3, 3),
};
constexpr BitField<BitsB> kBitsB4[] = {
    bitOf(&BitsB::settingB5, 4, 7),
    bitOf(&BitsB::settingB6, 4, 6),
};
constexpr BitField<BitsB> kBitsB5[] = {
    bitOf(&BitsB::settingB7, 5, 7),
    bitOf(&BitsB::settingB8, 5, 6),
    bitOf(&BitsB::settingB9, 5, 5),
    bitOf(&BitsB::settingB10, 5, 4),
    bitOf(&BitsB::settingB11, 5, 3),
    bitOf(&BitsB::settingB12, 5, 2),
};
constexpr BitField<BitsB> kBitsB6[] = {
    bitOf(&BitsB::settingB13, 6, 7),
    bitOf(&BitsB::settingB14, 6, 5),
    bitOf(&BitsB::settingB15, 6, 4),
    bitOf(&BitsB::settingB16, 6, 3),
    bitOf(&BitsB::settingB17, 6, 2),
    bitOf(&BitsB::settingB18, 6, 1),
    bitOf(&BitsB::settingB19, 6, 0),
};
constexpr BitField<BitsB> kBitsB7[] = {
    bitOf(&BitsB::settingB20, 7, 7),
    bitOf(&BitsB::settingB21, 7, 6),
    bitOf(&BitsB::settingB22, 7, 5),
    bitOf(&BitsB::settingB23, 7, 4),
    bitOf(&BitsB::settingB24, 7, 3),
    bitOf(&BitsB::settingB25, 7, 2),
    bitOf(&BitsB::settingB26, 7, 1),
};
constexpr BitField<BitsB> kBitsB8[] = {
    bitOf(&BitsB::settingB27, 8, 7),
    bitOf(&BitsB::settingB28, 8, 6),
    bitOf(&BitsB::settingB29, 8, 5),
    bitOf(&BitsB::settingB30, 8, 4),
    bitOf(&BitsB::settingB31, 8, 3),
    bitOf(&BitsB::settingB32, 8, 1),
    bitOf(&BitsB::settingB33, 8, 0),
};
constexpr BitField<BitsB> kBitsB9[] = {
    bitOf(&BitsB::settingB34, 9, 7),
    bitOf(&BitsB::settingB35, 9, 6),
    bitOf(&BitsB::settingB36, 9, 5),
    bitOf(&BitsB::settingB37, 9, 4),
    bitOf(&BitsB::settingB38, 9, 3),
    bitOf(&BitsB::settingB39, 9, 2),
    bitOf(&BitsB::settingB40, 9, 1),
};
constexpr canbus::SettingsPage<BitsB> kBytesB[] = {
    canbus::settingsPage(3, kBitsB3),
    canbus::settingsPage(4, kBitsB4),
    canbus::settingsPage(5, kBitsB5),
    canbus::settingsPage(6, kBitsB6),
    canbus::settingsPage(7, kBitsB7),
    canbus::settingsPage(8, kBitsB8),
    canbus::settingsPage(9, kBitsB9),
};

template <typename Record>
void applyPage(const canbus::SettingsPage<Record>& page, const FrameReader& f, Record& record)
{
    for (std::size_t i = 0; i < page.count; ++i)
        record.*page.rows[i].field = canbus::readBitField(page.rows[i], f);
}

} // namespace

void Canbus49Obj::onPanorama(const FrameReader& f)
{
    canbus::applyBitFields(kPanorama, f, info()->panorama);
}

void Canbus49Obj::onSettingItem(const FrameReader& f)
{
    for (const ItemRow& row : kItems) {
        if (row.selector == f.at(3))
            info()->items.*row.field.field = canbus::readBitField(row.field, f);
    }
}

void Canbus49Obj::onSettingBitsA(const FrameReader& f)
{
    SettingItemSetting49_1& s = info()->settingsA;
    const QByteArray data = canbus::PayloadCache::dataBytes(f);
    if (!s.settingCacheA.isEmpty() && !s.settingCacheA.differs(data))
        return;
    for (const auto& page : kBytesA) {
        if (s.settingCacheA.changed(f, page.page))
            applyPage(page, f, s);
    }
    s.settingCacheA.store(data);
    emit dataChanged();
}

void Canbus49Obj::onSettingBitsB(const FrameReader& f)
{
    SettingItemSetting49& s = info()->settingsB;
    const QByteArray data = canbus::PayloadCache::dataBytes(f);
    if (!s.settingCacheB.isEmpty() && !s.settingCacheB.differs(data))
        return;
    // The box changes one setting at a time: the first byte that moved is the news,
    // and a first frame is taken for its first byte only.
    for (const auto& page : kBytesB) {
        if (s.settingCacheB.changed(f, page.page)) {
            applyPage(page, f, s);
            break;
        }
    }
    s.settingCacheB.store(data);
    emit dataChanged();
}
