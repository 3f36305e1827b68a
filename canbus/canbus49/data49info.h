#pragma once
// The record of the Geely box: the fine-dust page, the panorama camera, three pages of
// vehicle settings and a few vehicle values. Every sub-record starts, and is cleared,
// to zeros and empty texts.

#include <QMetaType>
#include <QString>

#include "common/payloadcache.h"
#include "dataidinfo.h"

// Fine dust inside the car: its own page in bytes 10..13 of the climate frame, and the
// two flags of frame 0x3F.
struct PM_2_5_49
{
    void clear() { *this = PM_2_5_49(); }

    canbus::PayloadCache pmFrameCache;   // bytes 10..13 of the last climate frame
    quint8 pmFlag = 0;                   // climate byte 9, bit 6
    quint16 pmLevelA = 0;                // 0..5
    quint16 pmLevelB = 0;
    quint16 pmBitA = 0;
    quint16 pmBitB = 0;
};

// Panorama camera, frame 0x40.
struct PanoramaInformation49
{
    void clear() { *this = PanoramaInformation49(); }

    quint8 panorama0 = 0;   // byte 3 is not 0
    quint8 panorama1 = 0;   // clamped to 9
    quint8 panorama2 = 0;
    quint8 panorama3 = 0;
    quint8 panorama4 = 0;
    quint8 panorama5 = 0;
    quint8 panorama6 = 0;
    quint8 panorama7 = 0;
    quint8 panorama8 = 0;
    quint8 panorama9 = 0;
};

// Settings one at a time, frames 0x4E and 0x80: a selector and its value.
struct SettingItemSetting49_2
{
    void clear() { *this = SettingItemSetting49_2(); }

    quint8 item0 = 0;
    quint8 item1 = 0;
    quint8 item2 = 0;
    quint8 item3 = 0;
    quint8 item4 = 0;
    quint8 item5 = 0;
    quint8 item6 = 0;
    quint8 item7 = 0;
    quint8 item8 = 0;
    quint8 item9 = 0;
    quint8 item10 = 0;
    quint8 item11 = 0;
    quint8 item12 = 0;
    quint8 item13 = 0;
    quint8 item14 = 0;
    quint8 item15 = 0;
    quint8 item16 = 0;
    quint8 item17 = 0;
    quint8 item18 = 0;
    quint8 item19 = 0;
    quint8 item20 = 0;
    quint8 item21 = 0;
    quint8 item22 = 0;
    quint8 item23 = 0;
    quint8 item24 = 0;
    quint8 item25 = 0;
    quint8 item26 = 0;   // the display's language: 1 English, 0 Chinese
    quint8 item27 = 0;
    quint8 item28 = 0;
    quint8 item29 = 0;
    quint8 item30 = 0;
    quint8 item31 = 0;
    quint8 item32 = 0;
    quint8 item33 = 0;
    quint8 item34 = 0;
    quint8 item35 = 0;
    quint8 item36 = 0;
    quint8 itemSign = 0;    // selector 37: a signed value, sign and magnitude
    quint8 itemValue = 0;
    quint8 item38 = 0;
    quint8 item39 = 0;
    quint8 item40 = 0;
    quint8 item41 = 0;
    quint8 item42 = 0;
    quint8 item43 = 0;
    quint8 item128 = 0;
};

// Settings as bits of three bytes, frame 0x4F.
struct SettingItemSetting49_1
{
    void clear() { *this = SettingItemSetting49_1(); }

    canbus::PayloadCache settingCacheA;   // data bytes of the last frame 0x4F
    quint8 settingA0 = 0;
    quint8 settingA1 = 0;
    quint8 settingA2 = 0;
    quint8 settingA3 = 0;
    quint8 settingA4 = 0;
    quint8 settingA5 = 0;
    quint8 settingA6 = 0;
    quint8 settingA7 = 0;
    quint8 settingA8 = 0;
    quint8 settingA9 = 0;
    quint8 settingA10 = 0;
    quint8 settingA11 = 0;
    quint8 settingA12 = 0;
    quint8 settingA13 = 0;
    quint8 settingA14 = 0;   // clamped to 80
};

// Settings as bits of seven bytes, frame 0x50.
struct SettingItemSetting49
{
    void clear() { *this = SettingItemSetting49(); }

    canbus::PayloadCache settingCacheB;   // data bytes of the last frame 0x50
    quint8 settingB0 = 0;
    quint8 settingB1 = 0;
    quint8 settingB2 = 0;
    quint8 settingB3 = 0;
    quint8 settingB4 = 0;
    quint8 settingB5 = 0;
    quint8 settingB6 = 0;
    quint8 settingB7 = 0;
    quint8 settingB8 = 0;
    quint8 settingB9 = 0;
    quint8 settingB10 = 0;
    quint8 settingB11 = 0;
    quint8 settingB12 = 0;
    quint8 settingB13 = 0;
    quint8 settingB14 = 0;
    quint8 settingB15 = 0;
    quint8 settingB16 = 0;
    quint8 settingB17 = 0;
    quint8 settingB18 = 0;
    quint8 settingB19 = 0;
    quint8 settingB20 = 0;
    quint8 settingB21 = 0;
    quint8 settingB22 = 0;
    quint8 settingB23 = 0;
    quint8 settingB24 = 0;
    quint8 settingB25 = 0;
    quint8 settingB26 = 0;
    quint8 settingB27 = 0;
    quint8 settingB28 = 0;
    quint8 settingB29 = 0;
    quint8 settingB30 = 0;
    quint8 settingB31 = 0;
    quint8 settingB32 = 0;
    quint8 settingB33 = 0;
    quint8 settingB34 = 0;
    quint8 settingB35 = 0;
    quint8 settingB36 = 0;
    quint8 settingB37 = 0;
    quint8 settingB38 = 0;
    quint8 settingB39 = 0;
    quint8 settingB40 = 0;
};

struct VehicleData49
{
    void clear() { *this = VehicleData49(); }

    QString rangeText;        // frame 0x53, "%1km"
    quint8 vehicleByteA = 0;  // frame 0x54, clamped to 2
    quint8 vehicleByteB = 0;  // clamped to 3
    quint8 vehicleFlag = 0;   // frame 0x60
    quint8 language = 0;      // as last sent to the box
    quint8 carModel = 0;      // the vehicle variant ("CanbusCAR"), 0 none, up to 21
};

class Data49Info : public DataIdInfo
{
public:
    void clear()
    {
        pm.clear();
        panorama.clear();
        items.clear();
        settingsA.clear();
        settingsB.clear();
        vehicle.clear();
    }

    PM_2_5_49 pm;
    PanoramaInformation49 panorama;
    SettingItemSetting49_2 items;
    SettingItemSetting49_1 settingsA;
    SettingItemSetting49 settingsB;
    VehicleData49 vehicle;
};
Q_DECLARE_METATYPE(Data49Info)
