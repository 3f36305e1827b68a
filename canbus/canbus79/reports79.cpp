// What the head unit tells the Fengshen box: the clock, the display language, and
// gestures on the camera page.

#include "canbus79.h"

#include "common/clockreport.h"
#include "common/language.h"
#include "common/touchgrid.h"
#include "datetimectrl.h"

using canbus::GridColumn;
using canbus::GridRow;
using canbus::Swipe;

namespace {

// The language goes to the box as a setting of the 0x89 frame: item 0x0D for every
// model, and before it item 0x25 for models 5 and 6, whose display knows more
// languages. A language the models' list lacks ends the report there.
constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 1},
    {"ch_jt", 0},
    {"ch_ft", 0},
};
constexpr canbus::LanguageRow kWideLanguages[] = {
    {"en", 2},
    {"ch_jt", 1},
    {"ch_ft", 1},
    {"els", 3},
    {"alb", 4},
};
constexpr quint8 kLanguageItem = 0x0D;
constexpr quint8 kWideLanguageItem = 0x25;
bool hasWideLanguages(int model) { return model == 5 || model == 6; }

// Camera page. Model 6 has nine buttons; the others five, whose centre switches the
// view (6 while the camera is on, 1..4, else 7).
constexpr int kNineButtonModel = 6;
constexpr canbus::GridCode kTapsNine[] = {
    {GridColumn::Centre, GridRow::Middle, 8},
    {GridColumn::Centre, GridRow::Top, 17},
    {GridColumn::Centre, GridRow::Bottom, 18},
    {GridColumn::Left, GridRow::Middle, 19},
    {GridColumn::Right, GridRow::Middle, 20},
    {GridColumn::Right, GridRow::Bottom, 24},
    {GridColumn::Right, GridRow::Top, 22},
    {GridColumn::Left, GridRow::Bottom, 23},
    {GridColumn::Left, GridRow::Top, 21},
};
constexpr canbus::GridCode kTapsCameraOn[] = {
    {GridColumn::Centre, GridRow::Middle, 6},
    {GridColumn::Centre, GridRow::Top, 2},
    {GridColumn::Centre, GridRow::Bottom, 5},
    {GridColumn::Left, GridRow::Middle, 3},
    {GridColumn::Right, GridRow::Middle, 4},
};
constexpr canbus::GridCode kTapsCameraOff[] = {
    {GridColumn::Centre, GridRow::Middle, 7},
    {GridColumn::Centre, GridRow::Top, 2},
    {GridColumn::Centre, GridRow::Bottom, 5},
    {GridColumn::Left, GridRow::Middle, 3},
    {GridColumn::Right, GridRow::Middle, 4},
};
bool cameraOn(int state) { return state >= 1 && state <= 4; }

// Vertical swipes only: towards a larger y 1, towards a smaller 0.
constexpr canbus::SwipeCode kSwipes[] = {{Swipe::Down, 1}, {Swipe::Up, 0}};
constexpr canbus::SwipeRule kVerticalOnly = {true, false};

} // namespace

void Canbus79Obj::setCurrentTime(int, int, int)
{
    // The box wants the whole date with the time, so both come from the clock; its hour
    // byte has no 12-hour mark.
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const QDate d = now.date();
    const QTime t = now.time();
    sendFrame(0xA6, {canbus::clockYearByte(d.year()), quint8(d.month()), quint8(d.day()), quint8(t.hour()),
                     quint8(t.minute()), quint8(t.second())});
}

void Canbus79Obj::languageChanged(const QString& language)
{
    OriginalCarSetupInformation79& setup = info()->setup;
    if (hasWideLanguages(carModel())) {
        const std::optional<int> wide = canbus::vehicleLanguage(kWideLanguages, language);
        if (!wide)
            return;
        sendFrame(0x89, {kWideLanguageItem, quint8(*wide)});
        setup.byte11Bits4To2 = quint8(*wide);
        emit dataChanged();
    }
    const std::optional<int> v = canbus::vehicleLanguage(kLanguages, language);
    if (!v)
        return;
    sendFrame(0x89, {kLanguageItem, quint8(*v)});
    setup.byte4Bit3 = quint8(*v);
    emit dataChanged();
}

void Canbus79Obj::setTcanBussend(int x, int y, int width, int height, int action)
{
    const std::optional<canbus::TouchMove> touch = touchPress.track(x, y, width, height, action);
    if (!touch)
        return;
    const canbus::TouchMove& move = *touch;
    std::optional<quint8> code;
    if (!move.isTap())
        code = canbus::swipeCode(kSwipes, move.swipe(kVerticalOnly));
    else if (carModel() == kNineButtonModel)
        code = canbus::gridCode(kTapsNine, move.releaseCell());
    else if (cameraOn(info()->vehicle.cameraState))
        code = canbus::gridCode(kTapsCameraOn, move.releaseCell());
    else
        code = canbus::gridCode(kTapsCameraOff, move.releaseCell());
    if (code)
        sendFrame(0x88, {*code});
}
