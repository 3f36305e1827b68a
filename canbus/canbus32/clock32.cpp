// The clock kept with the vehicle, both ways: the box sets the head unit's clock
// (frame 0x01), the wheel's clock buttons step it (frame 0x60), and the head unit
// reports its time. Each change from the wheel is confirmed to the box.
#include "canbus32.h"

#include "common/clockreport.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "framereader.h"

namespace {

constexpr quint8 kTimeType = 0xC8;
constexpr int kFromVehicle = 1;   // where the clock's new time came from

// Frame 0x60: D0 names the clock button, D1 its direction where it has one.
enum ClockButton : quint8 {
    kHourButton = 0x11,
    kMinuteButton = 0x12,
    kTuneButton = 0x13,
    kFormatButton = 0x14,
    kSetTimeButton = 0x15,
    kSetting21 = 0x21,
    kLanguageReport = 0x31,
};
constexpr quint8 kUp = 33;
constexpr quint8 kDown = 49;
// The tune button gives its keys as the device numbers them, not as head-unit codes.
constexpr int kTuneUpDeviceKey = 0x1200065;
constexpr int kTuneDownDeviceKey = 0x1200066;

// One step of the hour. Going down stops at 1, as the vehicle's own clock does; only
// the 24-hour clock wraps from 0 to 23.
int steppedHour(int hour, quint8 direction, bool hour24)
{
    const int last = hour24 ? 23 : 12;
    if (direction == kUp) {
        if (hour < last)
            return hour + 1;
        return hour == last ? 0 : hour;
    }
    if (direction == kDown) {
        if (hour > 1)
            return hour - 1;
        return (hour == 0 && hour24) ? 23 : hour;
    }
    return hour;
}

// One step of the minute; going down stops at 1 as well.
int steppedMinute(int minute, quint8 direction)
{
    if (direction == kUp)
        return minute < 59 ? minute + 1 : 0;
    if (direction == kDown) {
        if (minute > 1)
            return minute - 1;
        return minute == 0 ? 59 : minute;
    }
    return minute;
}

QDateTime now()
{
    return DateTimeCtrl::getInstance()->getCurrentDateTime();
}

void setClock(int hour, int minute)
{
    const QDateTime t = now();
    DateTimeCtrl::getInstance()->setCurrentDateTime(t.date(), hour, minute, t.time().second(), kFromVehicle);
}

} // namespace

void Canbus32Obj::onVehicleClock(const FrameReader& f)
{
    vehicleClock.follow(f.d(1), f.d(2), canbus::VehicleClock::Seconds::Keep, kFromVehicle);
}

void Canbus32Obj::confirmClock(int hour, int minute, bool hour24)
{
    sendFrame(kTimeType, {quint8(minute), quint8(hour), quint8(hour24 ? 1 : 0), 0x00});
}

void Canbus32Obj::onClockKeys(const FrameReader& f)
{
    // The wheel may set the clock here; the vehicle's next time is taken again after it.
    vehicleClock.forget();
    const quint8 direction = f.d(1);
    const QTime t = now().time();
    switch (f.d(0)) {
    case kHourButton: {
        const bool hour24 = canbus::hour24Setting();
        const int hour = steppedHour(t.hour(), direction, hour24);
        setClock(hour, t.minute());
        confirmClock(hour, t.minute(), hour24);
        break;
    }
    case kMinuteButton: {
        const int minute = steppedMinute(t.minute(), direction);
        setClock(t.hour(), minute);
        confirmClock(t.hour(), minute, canbus::hour24Setting());
        break;
    }
    case kTuneButton: {
        const int key = direction != 0 ? kTuneUpDeviceKey : kTuneDownDeviceKey;
        sendKeyToQt(key, 1);
        sendKeyToQt(key, 0);
        return;
    }
    case kFormatButton: {
        const bool hour24 = direction != 0;
        DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), hour24);
        confirmClock(t.hour(), t.minute(), hour24);
        break;
    }
    case kSetTimeButton:
        setClock(f.d(2), f.d(1));
        break;
    case kSetting21:
        info()->vehicleSetting.settingRaw21 = f.d(1);
        break;
    case kLanguageReport:
        info()->vehicleSetting.languageCode = f.d(1);
        break;
    default:
        break;
    }
    notify(&CanbusInterface::dataChanged);
}

void Canbus32Obj::setCurrentTime(int hour, int minute, int)
{
    // The report marks the 12-hour display, where the confirmation above marks the
    // 24-hour one: the box reads the two frames so.
    const bool hour24 = canbus::hour24Setting();
    sendFrame(kTimeType, {quint8(minute), quint8(hour), quint8(hour24 ? 0 : 1), 0x00});
}
