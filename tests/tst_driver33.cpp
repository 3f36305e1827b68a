// GAC Trumpchi box: frames in, records, signals and keys out; slots, commands and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus33/canbus33.h"
#include "datasavecontrol.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Action = std::function<void(DriverHarness&)>;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // keyboard number, pressed
using Ints = QList<int>;
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kId = 33;
// Keyboard numbers of 0x1100025, 0x1100024 and 0x1100023.
constexpr int kVolumeUp = 166, kVolumeDown = 167, kMute = 149;

Canbus33Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus33Obj*>(h.driver()); }
Data33Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data33Info>(); }

void setCarModel(DriverHarness& h, int model)
{
    Data33Info d = info(h);
    d.body.carModel = quint8(model);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}

} // namespace

class TestDriver33 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climate_data();
    void climate();
    void bodyAndRadar();
    void pages();
    void shortFrames_data();
    void shortFrames();
    void responses_data();
    void responses();
};

void TestDriver33::connection()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    // Both requests go out, the second a moment after the first.
    QTRY_COMPARE(h.sentFrames(), (Frames{frame(0x90, {0x10, 0x00}), frame(0x90, {0x30, 0x00})}));
    // Only the version frame connects; it asks again.
    h.feed(frame(0x14, {0x05}));
    QVERIFY(!h.driver()->needSendDisconnect(out));
    h.clearSent();
    QCOMPARE(h.feed(frame(0x30, {'G', 'A', 'C', 0, 'z'})), 0);
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("GAC"));
    QCOMPARE(h.sentFrames(), Frames{frame(0x90, {0x10, 0x00})});
    h.clearSent();
    out.clear();
    QVERIFY(!h.driver()->needSendConnect(interval, out) && out.isEmpty());
    QCOMPARE(h.sentFrames().size(), 1);   // the requests go on
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0x00}));
}

void TestDriver33::climate_data()
{
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](bool rightHand, const Frames& frames, const QStringList& e) {
        QTest::addRow("%s%s", frames[0].toHex().constData(), rightHand ? " right-hand" : "") << rightHand << frames << e;
    };
    // Bytes 4 and 5 in alternating bits; set points 4 and 55 round down.
    row(false, {frame(0x10, {0x20, 0xAA, 0xA3, 4, 55, 0})},
        {"airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=0", "airDefrostRear=1", "airWindDownLeft=0",
         "airWindUpRight=1", "airAuto=0", "airAC=0", "airAcMax=1", "airDual=0", "airRearLock=0", "airWindSpeedRight=3",
         "airOnOff=1", "tempLeft=18.7", "tempRight=31.5", "tempLeftFahrenheit=0"});
    // Fan 0 is off; the set-point ends; byte 3 alone sets the texts of unset zones.
    row(false, {frame(0x10, {0x16, 0x55, 0x50, 1, 57, 0})},
        {"airInnerLoop=0", "airOuterLoop=1", "airDefrostFront=1", "airDefrostRear=0", "airWindDownRight=1",
         "airWindUpLeft=0", "airAuto=1", "airAC=1", "airAcMax=0", "airDual=1", "airRearLock=1", "airPower=0", "airOnOff=0",
         "tempLeftLow=1", "tempLeftHigh=0", "tempRightHigh=1", "tempRightLow=0", "tempLeft=22", "tempRight=22"});
    // 2 and 56 lie outside the degrees: the texts stay as byte 3 left them.
    row(false, {frame(0x10, {0x19, 0, 1, 2, 56, 0})}, {"tempLeft=25", "tempRight=25", "tempLeftFahrenheit=0"});
    row(false, {frame(0x10, {0x19, 0, 1, 0, 0, 0})}, {"tempLeftFahrenheit=255", "tempRightFahrenheit=255"});
    row(false, {frame(0x10, {0x19, 0, 1, 0, 56, 0})}, {"tempLeftFahrenheit=0", "tempRightFahrenheit=0", "tempLeft=25"});
    row(true, {frame(0x10, {0x14, 0, 1, 5, 57, 0})}, {"tempLeftHigh=1", "tempRightLow=0", "tempRight=19.0", "tempLeft=20"});
    // Only moved bytes apply: byte 3 rewrites both texts, the set points stay unapplied;
    // a change behind the known bytes is still news.
    row(false, {frame(0x10, {0x14, 0, 2, 5, 9, 0}), frame(0x10, {0x15, 0, 2, 5, 9, 0}), frame(0x10, {0x15, 0, 2, 5, 9, 7})},
        {"tempLeft=21", "tempRight=21", "airWindSpeedLeft=2"});
    // The rear reads one value further down than the front: 2 is 18.2.
    row(false, {frame(0x11, {0x85, 2})},
        {"airRearSpare[2]=1", "airRearSpare[0]=0", "airRearSpare[7]=5", "tempRear=18.2", "tempRear2=18.2", "tempRearLow=0"});
    // The front as it starts: the vehicle's controls at 0, the ones it lacks absent (255).
    row(false, {frame(0x11, {0x00, 57})}, {"tempRearHigh=1", "tempRear2Low=0", "airRearLock=0", "airWindSpeedRight=0",
                                           "airShowFlag=1", "seatHotVisible=1", "airOuterLoop=255"});
}

void TestDriver33::climate()
{
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    const bool front = frames.first().at(1) == 0x10;
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    compareFields(*h.driver()->getAirData(), expected);
    QCOMPARE((front ? air : changed).count(), frames.size());
    // The same front frame again is no news; the rear frame tells only dataChanged.
    h.feed(frames.last());
    QCOMPARE(air.count(), front ? frames.size() : 0);
}

void TestDriver33::bodyAndRadar()
{
    DriverHarness h(kId);
    h.feed(frame(0x24, {0xA8, 0x05}));
    compareFields(*h.driver()->getCardoorData(),
                  {"doorFrontRight=1", "doorFrontLeft=0", "doorRearRight=1", "doorRearLeft=0", "doorTrunk=1", "doorHood=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag2=1", "bodyFlag1=0", "bodyFlag31=1"});

    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x31, {0x1E, 0x10}));
    QCOMPARE(steering.value(0), (QList<QVariant>{16, 4864, true}));

    // Radar distances at the borders of their bars, then bars on the box's own scale.
    const RadarData& r = *h.driver()->getRadarData();
    h.driver()->setInReverse(true);
    h.feed(frame(0x33, {1, 0, 25, 26, 35, 36}));
    h.feed(frame(0x32, {1, 0, 45, 46, 105, 106}));
    h.driver()->setInReverse(false);   // leaving reverse keeps the bars
    QCOMPARE((Ints{r.radarFrontLeft, r.radarFrontLeftMid, r.radarFrontRightMid, r.radarFrontRight, r.radarRearLeft,
                   r.radarRearLeftMid, r.radarRearRightMid, r.radarRearRight, r.radarLevels, r.radarOn}),
             (Ints{1, 2, 2, 3, 3, 4, 9, 10, 10, 1}));
    h.feed(frame(0x33, {0, 8, 0, 3, 0, 12}));
    QCOMPARE((Ints{r.radarFrontLeft, r.radarFrontLeftMid, r.radarFrontRightMid, r.radarFrontRight, r.radarLevels}),
             (Ints{0, 3, 0, 12, 8}));
}

void TestDriver33::pages()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.driver()->setPowerOffState();   // this box's pages are not held back while off
    // Each setting clamps to its own maximum and is news every time; 51 is past the table.
    for (const Ints& f : {Ints{1, 9}, Ints{7, 21}, Ints{42, 33}, Ints{50, 4}, Ints{51, 1}, Ints{50, 4}})
        h.feed(frame(0x52, {f[0], f[1]}));
    const OriginalCarSettings33 s = info(h).settings;
    QCOMPARE((Ints{s.language, s.setting7, s.setting42, s.setting50}), (Ints{2, 20, 32, 3}));
    // 9 and 10 repeat quietly, judged by the raw byte.
    for (const Ints& f : {Ints{9, 12}, Ints{9, 12}, Ints{10, 12}, Ints{10, 12}, Ints{9, 31}, Ints{9, 31}})
        h.feed(frame(0x52, {f[0], f[1]}));
    QCOMPARE((Ints{info(h).settings.setting9, info(h).settings.setting10}), (Ints{30, 12}));
    // 22 and 23 are the seat heating, unclamped, in the climate record.
    h.feed(frame(0x52, {22, 7}));
    h.feed(frame(0x52, {23, 2}));
    compareFields(*h.driver()->getAirData(), {"seatHotLeft=7", "seatHotRight=2"});
    QCOMPARE(air.count(), 2);
    QCOMPARE(changed.count(), 10);

    // Charging schedule: hours of five bits over two bytes, minutes of six, clamped to 23:59.
    h.feed(frame(0x53, {0x05, 0xED, 0x07, 0xFF, 0xA5, 0xFE, 0xEF, 12, 3, 0x81}));
    const NewEnergyInformation33 e = info(h).newEnergy;
    QCOMPARE((Ints{e.timeAHour, e.timeAMinute, e.timeBHour, e.timeBMinute, e.timeCHour, e.timeCMinute}),
             (Ints{23, 45, 23, 59, 23, 59}));
    QCOMPARE((Ints{e.flag0, e.flag1, e.flag2, e.flag5, e.flag7, e.lowBits, e.levelA, e.levelB, e.highFlag, e.lowMode}),
             (Ints{1, 0, 1, 1, 1, 6, 10, 3, 1, 1}));
    // Charging display: the state (30) has its flags above its five bits.
    h.feed(frame(0x54, {5, 9, 0x7C, 0x01, 0x2D, 0x00, 0x2C, 0x01, 0x01, 0x00, 0x5E}));
    const NewEnergyDisplayInformation33 d = info(h).newEnergyDisplay;
    QCOMPARE((QStringList{d.timeText, d.voltageTextA, d.percentText, d.currentText, d.voltageTextB, d.statusText}),
             (QStringList{"9:5", "380V", "4.5%", "30A", "1V", "Please note that the plug lock failed  "}));
    QCOMPARE((Ints{d.displayFlagA, d.displayFlagB}), (Ints{0, 1}));
    h.feed(frame(0x55, {8, 5}));
    h.feed(frame(0x55, {9, 1}));   // no such setting: still news
    QCOMPARE((Ints{info(h).perception.perception7, info(h).perception.perception8}), (Ints{0, 2}));
    h.feed(frame(0x58, {101, 0, 50, 1, 5, 4, 0x05, 200, 100, 0}));
    const VehicleControlInformation33 c = info(h).vehicleControl;
    QCOMPARE((Ints{c.controlLevel0, c.controlLevel1, c.controlLevel2, c.controlLevel3, c.controlLevel4, c.controlLevel5,
                   c.controlActive0, c.controlActive1, c.controlActive2, c.controlActive3, c.controlSteps0,
                   c.controlSteps1, c.controlFlag0, c.controlFlag1, c.controlFlag2}),
             (Ints{100, 0, 50, 1, 100, 100, 1, 0, 1, 1, 4, 4, 1, 0, 1}));
    // Status sub-frames: no unit bytes, so the consumption keeps its space.
    h.feed(frame(0x7D, {7, 0xE8, 0x03, 0x0A, 0x00}));
    QCOMPARE(info(h).mileage.consumptionTextA, QStringLiteral("100 L/100Km"));
    QCOMPARE(changed.count(), 16);
}

void TestDriver33::shortFrames_data()
{
    addShortFrameRows("2e", {{0x10, 9}, {0x11, 6}, {0x12, 6}, {0x14, 5}, {0x24, 6}, {0x31, 6}, {0x32, 10}, {0x33, 10},
                             {0x40, 5}, {0x41, 5}, {0x50, 6}, {0x52, 6}, {0x53, 14}, {0x54, 15}, {0x55, 6}, {0x58, 13},
                             {0x7E, 14}});
}

void TestDriver33::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    h.driver()->setInReverse(true);
    h.watchActivity();
    const QByteArray data(minimum - 4, '\x55');
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data).left(minimum - 1)), 1);
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data.left(minimum - 5))), 1);
    QCOMPARE(h.activity(), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data)), 1);   // the whole frame does something
    QVERIFY(h.activity() > 0);
}

void TestDriver33::responses_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    QTest::addColumn<Keys>("keys");
    auto row = [](const QString& name, const Action& action, const Frames& sent, const Keys& keys = {}) {
        QTest::addRow("%s", qPrintable(name)) << action << sent << keys;
    };
    auto key = [&](int model, bool reverse, const Frames& frames, const Keys& keys, const Frames& sent = {}) {
        row(QStringLiteral("%1%2 model %3").arg(reverse ? "reverse " : "", frames[0].toHex()).arg(model),
            [=](DriverHarness& h) {
                setCarModel(h, model);
                h.driver()->setInReverse(reverse);
                for (const QByteArray& f : frames)
                    h.feed(f);
            }, sent, keys);
    };
    // A release (0) repeats the last key; numbers outside the table reach the device as 0.
    key(0, false, {frame(0x12, {0x14, 1}), frame(0x12, {0, 0})}, {{kVolumeUp, 1}, {kVolumeUp, 0}});
    key(0, false, {frame(0x12, {0x33, 1})}, {{0, 1}});
    // In reverse the camera keys go to the box, by the variant's column.
    key(4, true, {frame(0x12, {0x12, 1})}, {}, {frame(0xA7, {0x01})});
    key(10, true, {frame(0x12, {0x14, 1})}, {}, {frame(0xC7, {0x03})});
    key(0, true, {frame(0x12, {0x15, 1})}, {}, {frame(0xC9, {0x01, 0x03, 0, 0})});
    key(2, true, {frame(0x12, {0x11, 1}), frame(0x12, {0, 0})}, {}, {frame(0x84, {0x00}), frame(0x84, {0x00})});
    key(4, true, {frame(0x12, {0x16, 1})}, {{kMute, 1}});
    // Panel 16..19 is a knob: byte 4 counts its steps, in reverse too.
    key(0, false, {frame(0x50, {16, 2})}, {{kVolumeUp, 1}, {kVolumeUp, 0}, {kVolumeUp, 1}, {kVolumeUp, 0}});
    key(0, true, {frame(0x50, {19, 2})}, {{kVolumeDown, 1}, {kVolumeDown, 0}, {kVolumeDown, 1}, {kVolumeDown, 0}});
    key(0, false, {frame(0x50, {0x21, 1})}, {{188, 1}});
    key(0, true, {frame(0x50, {0x21, 1})}, {}, {frame(0xC9, {0x01, 0x06, 0, 0})});

    auto slot = [](const char* name, bool rightHand) -> Action {
        return [=](DriverHarness& h) {
            h.driver()->setRightDriver(rightHand);
            QVERIFY(QMetaObject::invokeMethod(h.driver(), name));
        };
    };
    // Right-hand drive swaps the zones of the plus and minus buttons.
    row("SetleftPlus", slot("SetleftPlus", false), {frame(0xA8, {13, 1})});
    row("SetleftPlus right-hand", slot("SetleftPlus", true), {frame(0xA8, {15, 1})});
    // A command key is a press and a release; a key without a code still sends both.
    auto state = [](const char* type) -> Action {
        return [=](DriverHarness& h) { h.driver()->setCanbusState(type, "x"); };
    };
    row("SeatHotLeft", state("SeatHotLeft"), {hex("2e8302160262"), hex("2e8302160163")});
    row("AirAC", state("AirAC"), {frame(0x83, {0, 0}), frame(0x83, {0, 1})});
    // Minute, hour as shown, 24-hour flag, morning mark for hours 1..6 of the dial.
    auto clock = [](bool format24, int hour) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("Time24hFormat", format24, {});
            h.driver()->setCurrentTime(hour, 7, 30);
        };
    };
    row("24h 13:07", clock(true, 13), {frame(0xC8, {7, 13, 1, 1})});
    row("12h 00:07", clock(false, 0), {frame(0xC8, {7, 12, 0, 0})});
    row("12h 12:07", clock(false, 12), {frame(0xC8, {7, 12, 0, 0})});
    row("12h 15:07", clock(false, 15), {frame(0xC8, {7, 3, 0, 1})});
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    row("radio FM2", source(1, {3, 9850}), {frame(0xC0, {1, 2, 0x7A, 0x26, 0})});
    row("media 16 title Ab", source(16, {0, 0x0102, 0x0304, 0x10506, 0x0708, "Ab", "x"}),
        {frame(0xC0, {9, 0, 3, 4, 1, 2, 5, 6, 7, 8}), frame(0xC0, {9, 0xFF, 0x10, 0x01, 4, 0, 'A', 0, 'b'})});
    row("phone 3", source(24, {3, QString::fromUtf8("\xc3\xa9t"), "1"}),
        {frame(0xC0, {5, 2, 0, 0, 1, 3, 0xC3, 0xA9, 't'})});
    auto language = [](const char* name, int stored) -> Action {   // the record keeps what was sent
        return [=](DriverHarness& h) {
            driver(h)->languageChanged(name);
            QCOMPARE(int(info(h).settings.language), stored);
        };
    };
    row("language en", language("en", 2), {frame(0x83, {1, 2})});
    row("language ja", language("ja", 0), {});
    // The stored variant, clamped, is what the timer reports; variant 0 reports nothing.
    row("variant 0", [](DriverHarness& h) { driver(h)->exitSelectSlot(); }, {});
    row("variant 40", [](DriverHarness& h) {
        DataSaveControl::saveSettingData("CanbusCAR", 40, QString());
        h.manager()->setId(34, false);   // selected again, the driver reads it
        h.manager()->setId(kId, false);
        h.clearSent();
        driver(h)->exitSelectSlot();
    }, {frame(0xE2, {2, 15})});
    // Touches on a 16:9 picture: the point on the box's 1280 x 720 screen, then the zone.
    auto touch = [](int model, int x, int y, int w, int action) -> Action {
        return [=](DriverHarness& h) { setCarModel(h, model); driver(h)->setTcanBussend(x, y, w, w * 9 / 16, action); };
    };
    row("pressed", touch(0, 450, 360, 1280, 1), {});
    row("centre 450,360", touch(0, 450, 360, 1280, 2), {frame(0xC9, {2, 0x1C, 1, 0x68}), frame(0xC9, {5, 0, 0, 0})});
    // y 420 lies in zone 5 and zone 2: the first row wins.
    row("border 450,420", touch(0, 450, 420, 1280, 2), {frame(0xC9, {2, 0x1C, 1, 0xA4}), frame(0xC9, {5, 0, 0, 0})});
    row("wide model 8", touch(8, 640, 360, 1280, 2), {frame(0xC9, {2, 0x3E, 0x01, 0x68})});
    row("no picture", touch(0, 10, 10, 0, 2), {});
    row("outside -5,-5", touch(0, -5, -5, 1280, 2), {frame(0xC9, {2, 0xFF, 0x0F, 0xFB})});
}

void TestDriver33::responses()
{
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    QFETCH(Keys, keys);
    DriverHarness h(kId);
    action(h);
    QCOMPARE(h.sentFrames(), sent);
    QCOMPARE(h.keys(), keys);
}

QTEST_GUILESS_MAIN(TestDriver33)
#include "tst_driver33.moc"
