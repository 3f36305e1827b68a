#pragma once
// A command case: a driver, then what the head unit asks of it, in any order and with
// any values: command keys with arbitrary texts and numbers, source reports with lists
// of any items, clock reports out of every range, reverse, calls, power, language,
// the climate panel's commands, and now and then a read from the box in between or
// the driver's pending timers fired at once.
//
//   byte 0     the driver: its index in the factory table, modulo the table's size
//   then       operations, each one byte (modulo the number of operations) and its
//              arguments: ints are 4 bytes, least significant first; texts run to a
//              0 byte or the end, so that dictionary words land in them whole

#include <QByteArray>
#include <QList>
#include <QMetaObject>
#include <QVariant>

#include "fuzzinput.h"
#include "fuzzmodule.h"

namespace canbusfuzz {

namespace command {

using Operation = void (*)(FuzzModule&, FuzzInput&);

inline CanbusModuleImpl* link(FuzzModule& m) { return m.facade().implementation(); }

// One item of a source report: the head unit sends numbers and texts alike.
inline QVariant sourceItem(FuzzInput& in)
{
    switch (in.byte() % 5) {
    case 0: return QVariant(in.int32());
    case 1: {
        const quint64 high = quint32(in.int32());
        return QVariant(qlonglong(high << 32 | quint32(in.int32())));
    }
    case 2: return QVariant(in.text());
    case 3: return QVariant(double(in.int32()) / 100.0);
    default: return QVariant(QString::number(in.int32()));
    }
}

// The facade's climate panel signals, which reach the driver's slots of the same name.
constexpr Operation kPanel[] = {
    [](FuzzModule& m, FuzzInput&) { emit m.facade().setAuto(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().setinnerLoop(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetleftPlus(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetleftLess(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetrightPlus(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetrightLess(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetDUAL(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetAc(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetfrontDefrostLeftL(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetrearDefrostLeftL(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().Setsmall(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetGale(); },
    [](FuzzModule& m, FuzzInput&) { emit m.facade().SetSwitch(); },
    [](FuzzModule& m, FuzzInput& in) { emit m.facade().LeftHeatingButton(in.int32()); },
    [](FuzzModule& m, FuzzInput& in) { emit m.facade().RightHeatingButton(in.int32()); },
    [](FuzzModule& m, FuzzInput& in) { emit m.facade().BlowOn(in.flag()); },
    [](FuzzModule& m, FuzzInput& in) { emit m.facade().MediumBlow(in.flag()); },
    [](FuzzModule& m, FuzzInput& in) { emit m.facade().BlowDown(in.flag()); },
    [](FuzzModule& m, FuzzInput& in) {
        const int x = in.int32(), y = in.int32(), w = in.int32(), h = in.int32();
        emit m.facade().setTcanBussend(x, y, w, h, in.int32());
    },
};

// Slots that the telephone and the head unit's menus reach on some drivers directly.
inline void invokeDriverSlot(FuzzModule& m, FuzzInput& in)
{
    QObject* driver = m.driver();
    if (!driver)
        return;
    const QMetaObject* meta = driver->metaObject();
    switch (in.byte() % 4) {
    case 0:
        if (meta->indexOfSlot("CallSelectSlot()") >= 0)
            QMetaObject::invokeMethod(driver, "CallSelectSlot", Qt::DirectConnection);
        break;
    case 1:
        if (meta->indexOfSlot("exitSelectSlot()") >= 0)
            QMetaObject::invokeMethod(driver, "exitSelectSlot", Qt::DirectConnection);
        break;
    case 2:
        if (meta->indexOfSlot("btCallStatesChangeSlot(bool)") >= 0)
            QMetaObject::invokeMethod(driver, "btCallStatesChangeSlot", Qt::DirectConnection,
                                      Q_ARG(bool, in.flag()));
        break;
    default:
        QMetaObject::invokeMethod(driver, "onKeyLongPressed", Qt::DirectConnection);
        break;
    }
}

// The operations in the order of kOperations, so that seeds can be written by name.
enum Op : quint8 {
    StateText, StateNumber, Source, Time, Date, Reverse, Call, Eq, Power, ReverseLine,
    RightDriver, Language, Panel, DriverSlot, Read, Settle, FireTimers, OpCount
};

constexpr Operation kOperations[] = {
    // A command key with a text value, and one with a number as its text.
    [](FuzzModule& m, FuzzInput& in) {
        const QString key = in.text();
        m.facade().sendCanbusStateToCan(key, in.text());
    },
    [](FuzzModule& m, FuzzInput& in) {
        const QString key = in.text();
        m.facade().sendCanbusStateToCan(key, QString::number(in.int32()));
    },
    // A source report: any source number, up to seven items of any kind.
    [](FuzzModule& m, FuzzInput& in) {
        const int type = qint8(in.byte());
        QVariantList items;
        for (int n = in.byte() % 8; n > 0; --n)
            items.append(sourceItem(in));
        m.facade().sendSrcStateToCan(type, items);
    },
    [](FuzzModule&, FuzzInput& in) {
        const int h = in.int32(), min = in.int32();
        CanObj::instance()->onTimeChanged(h, min, in.int32());
    },
    [](FuzzModule&, FuzzInput& in) {
        const int y = in.int32(), mon = in.int32();
        CanObj::instance()->onDataChanged(y, mon, in.int32());
    },
    [](FuzzModule& m, FuzzInput& in) { m.facade().reverseChanged(in.flag()); },
    [](FuzzModule& m, FuzzInput& in) { link(m)->onCallStateChanged(in.flag()); },
    [](FuzzModule& m, FuzzInput& in) {
        const int type = in.int32();
        m.facade().sendEQStateToCan(type, in.int32());
    },
    [](FuzzModule& m, FuzzInput& in) { link(m)->onPowerStateChanged(in.flag()); },
    [](FuzzModule& m, FuzzInput& in) { m.facade().setShowReverseLine(in.flag()); },
    [](FuzzModule&, FuzzInput& in) { CanObj::instance()->setRightDriver(in.flag()); },
    // A language change rebuilds the catalogue and reaches drivers with the slot.
    [](FuzzModule&, FuzzInput& in) { LanguageManager::getInstance()->setLanguage(in.text()); },
    [](FuzzModule& m, FuzzInput& in) {
        const Operation panel = kPanel[in.byte() % (sizeof kPanel / sizeof kPanel[0])];
        panel(m, in);
    },
    invokeDriverSlot,
    // A read from the box, so that commands meet a driver in any state.
    [](FuzzModule& m, FuzzInput& in) { m.feed(in.bytes(in.byte())); },
    [](FuzzModule& m, FuzzInput&) { m.settle(); },
    [](FuzzModule& m, FuzzInput&) { m.fireTimers(); },
};

constexpr int kOperationCount = int(sizeof kOperations / sizeof kOperations[0]);
static_assert(kOperationCount == OpCount, "Op names the operations of kOperations in order");

} // namespace command

// Runs one case; returns the first malformed frame the driver sent, or an empty array.
inline QByteArray runCommands(FuzzModule& module, FuzzInput in)
{
    module.select(in.byte());
    while (!in.empty())
        command::kOperations[in.byte() % command::kOperationCount](module, in);
    module.fireTimers();   // the releases and other delayed sends go out too
    const QByteArray bad = module.malformedSentFrame();
    module.settle();
    module.forget();
    return bad;
}

} // namespace canbusfuzz
