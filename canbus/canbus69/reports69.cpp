// The JAC box's keys, and what it hears from the head unit: the source, the clock, the
// chosen vehicle model, a running call's time and gestures on the camera picture.
#include "canbus69.h"

#include <QDateTime>

#include "common/clockreport.h"
#include "common/keytable.h"
#include "common/sourcestate.h"
#include "common/touchgrid.h"
#include "datetimectrl.h"

using canbus::GridColumn;
using canbus::GridRow;
using canbus::Swipe;

namespace {

// Frame 0x02: the panel's keys, 1 to 11.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1200030}, {2, 0x1100025}, {3, 0x1100024}, {4, 0x130000C},  {5, 0x1200027}, {6, 0x1100023},
    {7, 0x1200062}, {8, 0x110002F}, {9, 0x110002E}, {10, 0x1200027}, {11, 0x1100029},
};

// Frame 0x21: the wheel keys the vehicle model and the call don't change.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},   {2, 0x1100024},   {6, 0x1100023},   {11, 0x110002F},  {12, 0x110002E},
    {18, 0x1300055},  {128, 0x1200030}, {134, 0x1200061}, {136, 0x130000C}, {137, 0x120002B},
    {138, 0x110002E}, {139, 0x1100025}, {140, 0x1100024},
};
// Keys 129 to 135 on models 1, 2 and 4, and on the others.
constexpr canbus::KeyRow kModelKeys[] = {
    {129, 0x1100029}, {130, 0x1200029}, {131, 0x1300060}, {132, 0x1200029}, {133, 0x110002F}, {135, 0x1100023},
};
constexpr canbus::KeyRow kOtherModelKeys[] = {
    {129, 0x1200029}, {130, 0x110002F}, {131, 0x110002E}, {132, 0x110002A}, {133, 0x120002B}, {135, 0x1300060},
};

// Source frames 0x75: eight data bytes, the first the source, the last 1.
constexpr quint8 kSourceType = 0x75;

constexpr canbus::GridCode kEdgeTaps[] = {
    {GridColumn::Centre, GridRow::Top, 5},
    {GridColumn::Centre, GridRow::Bottom, 6},
    {GridColumn::Left, GridRow::Middle, 7},
    {GridColumn::Right, GridRow::Middle, 8},
};
// A tap in the middle asks for the next view: 0 -> 2, 1 -> 1, 2 -> 3, others 4.
constexpr quint8 kCentreByView[] = {2, 1, 3};
constexpr quint8 kCentreOtherView = 4;
// Vertical swipes only; the sideways move doesn't count.
constexpr canbus::SwipeRule kSwipeRule = {false, false};
constexpr canbus::SwipeCode kSwipes[] = {{Swipe::Down, 10}, {Swipe::Up, 0}};

} // namespace

int Canbus69Obj::getQtPanelButtonsValue(int value) const
{
    return canbus::keyCodeFor(kPanelKeys, value);
}

int Canbus69Obj::getQtKeyFromValue(int value) const
{
    const int model = info()->vehicle.carModel;
    switch (value) {
    case 7: return model == 3 ? 0x1300055 : 0x1200027;
    case 9: return callState ? 0x1300058 : 0x1300055;
    case 10: return callState ? 0x1300059 : 0x1100023;
    default: break;
    }
    if (value >= 129 && value <= 135 && value != 134)
        return model == 1 || model == 2 || model == 4 ? canbus::keyCodeFor(kModelKeys, value)
                                                      : canbus::keyCodeFor(kOtherModelKeys, value);
    return canbus::keyCodeFor(kWheelKeys, value);
}

void Canbus69Obj::exitSelectSlot()
{
    const quint8 model = info()->vehicle.carModel;
    if (model == 1 || model == 2)
        sendFrame(0xEE, {0x53, model});
}

void Canbus69Obj::CallSelectSlot()
{
    ++callSeconds;
    sendFrame(0xC3, canbus::callDurationData(callSeconds));
}

void Canbus69Obj::setSrcState(srctype type, const QList<QVariant>& args)
{
    const int source = int(type);
    QByteArray data(8, '\0');
    data[7] = 1;
    if (source == SRC_RADIO) {
        canbus::RadioState radio;
        if (!canbus::readRadio(args, radio))
            return;
        data[0] = 1;
        data[1] = char(canbus::isFm(radio.band) ? 1 : canbus::isAm(radio.band) ? 3 : 0);
        const int frequency = radio.frequency / 10;
        data[2] = char(frequency >> 8);
        data[3] = char(frequency);
    } else if (const canbus::MediaGroup group = canbus::mediaGroup(source); group != canbus::MediaGroup::None) {
        data[0] = char(group == canbus::MediaGroup::First ? 3 : group == canbus::MediaGroup::Second ? 4 : 6);
        // Minutes with the hours folded in, in one byte as the box counts them.
        const qulonglong t = canbus::readMedia(args).position;
        data[5] = char(quint8(t / 60 % 60 + quint8(t / 3600) * 60));
        data[6] = char(t % 60);
    } else {
        return;   // the telephone and the rest: nothing
    }
    sendFrame(kSourceType, data);
}

void Canbus69Obj::setCurrentTime(int, int, int)
{
    // The month shares a byte with the top of the year.
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const int year = now.date().year();
    sendFrame(0x82, {quint8(year & 0xFF), quint8((year >> 8) + now.date().month() * 16), quint8(now.date().day()),
                     quint8(now.time().hour()), quint8(now.time().minute()), 0});
}

void Canbus69Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    const std::optional<canbus::TouchMove> touch = touchPress.track(x, y, width, height, action);
    if (!touch)
        return;
    const canbus::TouchMove& move = *touch;
    std::optional<quint8> code;
    if (move.isTap()) {
        const canbus::GridCell cell = move.releaseCell();
        if (cell.column == GridColumn::Centre && cell.row == GridRow::Middle) {
            const int view = info()->panoramic.panoramicView;
            code = view < int(std::size(kCentreByView)) ? kCentreByView[view] : kCentreOtherView;
        } else {
            code = canbus::gridCode(kEdgeTaps, cell);
        }
    } else {
        code = canbus::swipeCode(kSwipes, move.swipe(kSwipeRule));
    }
    if (code)
        sendFrame(0x84, {*code});
}
