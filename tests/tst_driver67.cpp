// Korean-Hyundai Kia box on FD frames with 16-bit sums: frames in, records, signals and keys
// out; reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus67/canbus67.h"
#include "datasavecontrol.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::hex;
using Action = std::function<void(DriverHarness&)>;
using Read = std::function<QString(const Data67Info&, const CanbusInterface&)>;
using Frames = QList<QByteArray>;
Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Read)

namespace {

constexpr int kId = 67;

QByteArray fd(int type, std::initializer_list<int> data)
{
    return canbus::buildFrame(canbus::FrameFamily::StartFD16, quint8(type), testframes::bytes(data));
}
Data67Info info(const DriverHarness& h) { return infoOf<Data67Info>(h); }
template <typename T, int N>
QString list(const T (&values)[N])
{
    QStringList out;
    for (const T& v : values)
        out << QString::number(v);
    return out.join(QLatin1Char(' '));
}
QString n(int v) { return QString::number(v); }

} // namespace

class TestDriver67 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void frames_data();
    void frames();
    void shortFrames_data();
    void shortFrames();
    void climate_data();
    void climate();
    void keysAndGating();
    void reports_data();
    void reports();
};

void TestDriver67::connection()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1500);
    QCOMPARE(out, hex("fd0504000009"));
    // The language and the amplifier values follow, 200 ms apart, on every call.
    QTRY_COMPARE(h.sentFrames().size(), 6);
    QCOMPARE(h.sentFrames().mid(0, 3), (Frames{hex("fd06900300 0099"), fd(0x90, {0x7F, 0}), fd(0x03, {1, 0})}));
    QCOMPARE(h.sentFrames().mid(3), (Frames{fd(0x05, {18}), fd(0x07, {7, 7}), fd(0x08, {10, 10, 10})}));
    Data67Info record = info(h);
    record.amplifier.amplifierValue[0] = 25;
    record.amplifier.amplifierValue[5] = 3;
    record.body.languageFlag = 1;
    h.driver()->setDataInfo(QVariant::fromValue(record));
    h.feed(fd(0x7F, {'K', '1', 0, 'x'}));   // any whole frame tells that the box answers
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("K1"));
    h.clearSent();
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QTRY_COMPARE(h.sentFrames().size(), 6);
    QCOMPARE(h.sentFrames().at(2), fd(0x03, {1, 1}));
    QCOMPARE(h.sentFrames().at(3), fd(0x05, {25}));
    QCOMPARE(h.sentFrames().at(5), fd(0x08, {10, 10, 3}));
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, hex("fd050401000a"));
    QCOMPARE(h.driver()->checkProtocolData(fd(0x30, {1, 2})), 0);
}

void TestDriver67::frames_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<Read>("read");
    QTest::addColumn<QString>("expected");
    auto row = [](const char* rule, const QByteArray& frame, const Read& read, const char* expected) {
        QTest::addRow("%s %s", frame.toHex().data(), rule) << frame << read << QString::fromUtf8(expected);
    };
    using I = const Data67Info&;
    using D = const CanbusInterface&;
    const Read outdoor = [](I i, D d) { return i.body.outdoorText + ' ' + n(d.getAirData()->outdoorTempUnit); };
    row("sign and magnitude", fd(0x01, {0xFF}), outdoor, "-127.0℃ 0");
    row("D1 in Fahrenheit", fd(0x01, {0x85, 75}), outdoor, "75.0℉ 1");
    row("radar from bit 7, 4 - v", fd(0x04, {0xE4, 0x1B}), [](I, D d) {
        const RadarData& r = *d.getRadarData();
        return list<quint8, 10>({r.radarFrontLeft, r.radarFrontLeftMid, r.radarFrontRightMid, r.radarFrontRight, r.radarRearLeft,
                                 r.radarRearLeftMid, r.radarRearRightMid, r.radarRearRight, r.radarLevels, r.radarOn});
    }, "1 2 3 0 0 3 2 1 10 1");
    row("doors from bit 0", fd(0x05, {0x29}), [](I, D d) {
        const CardoorData& c = *d.getCardoorData();
        return list<quint8, 6>({c.doorFrontLeft, c.doorFrontRight, c.doorRearLeft, c.doorRearRight, c.doorTrunk, c.doorHood});
    }, "1 0 0 1 0 1");
    row("basic byte to 21", fd(0x07, {22}), [](I i, D) { return n(i.body.basicByte); }, "21");
    row("kPa from 100, 255 none", fd(0x08, {100, 3, 0, 0xFF, 0, 1, 0xFF, 2}), [](I, D d) {
        const TirePressureInformation& t = d.getAirData()->tire;
        return t.tirePressureFrontLeft + ' ' + t.tirePressureRearRight + ' ' + n(t.tireStatus) + ' ' + list(t.tireWarning[2]);
    }, "237.8KPa -- 2 3 0 1 2 0");
    row("tyre flags D1 bit 3 first, groups from D3", fd(0x09, {0, 0x09, 0xFF, 0xFE, 0x13, 0, 0x81, 0}),
        [](I i, D) { return list(i.tires.tireFlags) + " / " + list(i.tires.tireDetail); }, "1 0 0 1 / 1 4 4 0 0 1 1 1 0 0 0 0 1 0 0 1");
    const Read panorama = [](I i, D) {
        const PanoramicImageStatus67& p = i.panorama;
        return list<quint8, 8>({p.panoramaMode, p.panoramaView, p.panoramaBit7, p.panoramaBit6, p.panoramaLevel1,
                                p.panoramaLevel2, p.panoramaOn, p.panoramaState});
    };
    row("mode to 2, view to 10", fd(0x40, {3, 11}), panorama, "2 10 0 0 0 0 0 0");
    row("bits 7 and 6, low nibbles to 4", fd(0x41, {0x40, 0xF3, 0x25}), panorama, "0 0 0 1 3 4 0 0");
    row("on when not 0, state to 5", fd(0x42, {2, 9}), panorama, "0 0 0 0 0 0 1 5");
    row("body bits from bit 0", fd(0x51, {0x61, 0x0A}), [](I i, D) { return list(i.body.basicBits0) + " / " + list(i.body.basicBits1); },
        "1 0 0 0 0 1 / 0 1 0");
    const Read setup = [](I i, D) { return list(i.setup.setupItem); };
    row("selector 12 to 18", fd(0x52, {12, 40}), setup, "0 0 0 0 0 0 0 0 0 0 0 18 0 0 0");
    row("selector 9 stores nothing", fd(0x52, {9, 1}), setup, "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0");
    // Day type and hour clamped; D3 from bit 6; D5 bit 6, bits 0..5, bit 7; D10 flags, then two clamps.
    row("charge schedule order and clamps", fd(0x53, {4, 0xFF, 0x21, 0x40, 0, 0xC1, 0, 0, 0, 0x1F, 0x8F, 27, 0}),
        [](I i, D) { return n(i.energy1.chargeMode) + " / " + list(i.energy1.chargeItem) + " / " + n(i.energy1.chargeCurrentLimit); },
        "3 / 5 23 1 1 1 0 0 0 0 0 0 0 0 1 1 0 0 0 0 0 1 0 0 0 0 0 0 0 0 0 0 0 0 0 23 1 0 0 0 2 2 / 6");
    const Read consumption = [](I i, D) {
        const NewEnergySettingInformation_2_67& e = i.energy2;
        return QStringList{n(e.energyState), e.consumptionNow, e.consumptionAverage, e.powerNow, e.powerTotal, e.consumptionTrip}.join(' ');
    };
    row("consumption words, 999 none", fd(0x54, {9, 0x03, 0xE6, 0x03, 0xE7, 45, 0, 0x01, 0x00, 0x05, 0x03, 0xE6, 0}),
        consumption, "8 99.8L/100KM -- 45.0KW 6554.1KW 99.8L/100KM");
    row("range words, charge times", fd(0x55, {0x01, 0x02, 0, 5, 0, 0, 80, 0, 125, 0x01, 0x00, 0x9C, 0}), [](I i, D) {
        const NewEnergySettingInformation_3_67& e = i.energy3;
        return QStringList{e.rangeText1, e.rangeText2, e.chargeLevelText, e.chargeTimeText1, e.chargeTimeText2,
                           n(e.chargeState), n(e.chargeDetail)}.join(' ');
    }, "258.0KM 5.0KM 80% 2:5 4:16 8 11");
    row("half kilometres and levels", fd(0x56, {10, 0xFF, 3, 0x31, 0, 61, 0, 7, 0x01, 0x2C, 250, 14, 0}), [](I i, D) {
        const NewEnergySettingInformation_4_67& e = i.energy4;
        return QStringList{e.energyText1, n(e.energyLevel1), e.energyText2, n(e.energyLevel2), e.energyTimeText,
                           e.energyDistance, e.energyValue1, e.energyValue2, e.energyValue3}.join(' ');
    }, "21.0KM 50 6.0KM 49 1:1 7.0KM 3.0KM 2.5KM 0.1KM");
    row("percent, triple and bit items", fd(0x57, {101, 50, 0, 200, 0xE4, 0x2A, 3, 0, 12, 0x01, 0x00, 0, 0}), [](I i, D) {
        const NewEnergySettingInformation_5_67& e = i.energy5;
        return QStringList{list(e.percentItem), n(e.rawItem), list(e.tripleItem), list(e.bitItem), n(e.stateItem),
                           e.distanceItem, e.weightItem}.join(' ');
    }, "100 50 0 200 2 2 1 1 1 1 2 12.0KM 25.6Kg");
    row("charge stage to 5", fd(0x60, {6, 0}), [](I i, D) { return n(i.energy5.chargeStage); }, "5");
    row("status text from byte 4 to its zero", fd(0x7D, {0, 'K', 'i', 'a', 0, 'x'}), [](I i, D) { return i.mileage.vehicleText; }, "Kia");
    row("function flags, byte 13 skipped", fd(0x7E, {0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0x10}), [](I i, D) {
        return list<quint8, 3>({i.functions.functionFlag[0], i.functions.functionFlag[33], i.functions.functionFlag[36]});
    }, "1 0 1");
}

void TestDriver67::frames()
{
    QFETCH(QByteArray, frame);
    QFETCH(Read, read);
    QFETCH(QString, expected);
    DriverHarness h(kId);
    h.driver()->setPowerOnState();
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(read(info(h), *h.driver()), expected);
}

void TestDriver67::shortFrames_data()
{
    addShortFrameRows("fd", {{0x01, 6}, {0x03, 9}, {0x04, 7}, {0x08, 13}, {0x09, 13}, {0x41, 8},
                             {0x42, 7}, {0x53, 17}, {0x57, 17}, {0x60, 7}, {0x7E, 14}});
}

void TestDriver67::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    h.driver()->setPowerOnState();
    verifyShortFrame(h, canbus::buildFrame(canbus::FrameFamily::StartFD16, quint8(type), QByteArray(minimum - 5, '\x02')));
}

void TestDriver67::climate_data()
{
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("signalCount");
    auto row = [](bool rightHand, const Frames& frames, const QStringList& e, int count) {
        QTest::addRow("%s%s", frames.last().toHex().data(), rightHand ? " right-hand" : "") << rightHand << frames << e << count;
    };
    // Half degrees from 17.5; the driver's side first.
    row(false, {fd(0x03, {1, 29, 0, 0})}, {"tempLeft=17.5", "tempRight=31.5", "tempLeftVisible=1", "tempLeftLow=0"}, 1);
    row(true, {fd(0x03, {1, 29, 0, 0})}, {"tempLeft=31.5", "tempRight=17.5"}, 1);
    // 30 is the high end and 0 the low one, both keeping the text; a repeated frame says nothing.
    row(false, {fd(0x03, {1, 1, 0, 0}), fd(0x03, {30, 0, 0, 0}), fd(0x03, {30, 0, 0, 0})},
        {"tempLeftHigh=1", "tempLeft=17.5", "tempRightLow=1", "tempRight=17.5"}, 2);
    row(false, {fd(0x03, {0xFF, 75, 0, 0})},
        {"tempLeft=--", "tempLeftFahrenheit=255", "tempRight=75", "tempRightFahrenheit=1"}, 1);
    row(false, {fd(0x03, {0, 0, 9, 0})}, {"airWindSpeedLeft=7", "airWindSpeedRight=7", "airPower=1", "airOnOff=1"}, 1);
    row(false, {fd(0x03, {0, 0, 0, 0x95})}, {"airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=0", "airDefrostRear=0",
                                              "airWindDownRight=1", "airWindFrontLeft=0", "airAuto=1", "airSync=0", "airAC=1"}, 1);
    row(false, {fd(0x03, {0, 0, 0, 0x68})}, {"airDefrostFront=1", "airDefrostRear=1", "airWindFrontRight=1", "airSync=0"}, 1);
    // The rear zone needs 11 bytes; its high end is 62.
    row(false, {fd(0x03, {0, 0, 0, 0, 3})}, {"tempRearVisible=0"}, 1);
    row(false, {fd(0x03, {0, 0, 0, 0, 3, 0})}, {"tempRearVisible=1", "tempRear=18.5", "tempRear2=18.5"}, 1);
    // A byte behind D5 still tells the panel, with no field changed.
    row(false, {fd(0x03, {1, 1, 0, 0, 0, 0, 0}), fd(0x03, {1, 1, 0, 0, 0, 0, 5})}, {"tempLeft=17.5"}, 2);
}

void TestDriver67::climate()
{
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    QFETCH(int, signalCount);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    QSignalSpy spy(h.driver(), SIGNAL(airConditionerDataChanged()));
    for (const QByteArray& f : frames)
        h.feed(f);
    compareFields(*h.driver()->getAirData(), expected);
    QCOMPARE(spy.count(), signalCount);
}

void TestDriver67::keysAndGating()
{
    DriverHarness h(kId);
    CanbusInterface& d = *h.driver();
    const int playPause = d.toKkmapKey(0x1200030);
    h.feed(fd(0x02, {24, 1}));
    h.feed(fd(0x02, {24, 0}));   // the box's release: the key is already whole
    h.feed(fd(0x02, {0, 1}));
    h.feed(fd(0x02, {37, 1}));   // a code without a keyboard number goes out as 0
    QCOMPARE(h.keys(), (QList<QPair<int, int>>{{playPause, 1}, {playPause, 0}, {0, 1}, {0, 0}}));

    // Each group of the climate frame is decoded only when its bytes moved.
    h.feed(fd(0x03, {1, 1, 0, 0}));
    d.getAirData()->tempLeft = QStringLiteral("kept");
    h.feed(fd(0x03, {1, 1, 2, 0}));
    QCOMPARE(d.getAirData()->tempLeft, QStringLiteral("kept"));
    QCOMPARE(d.getAirData()->airWindSpeedLeft, quint8(2));

    // The status frames signal only while the unit is on; radar, doors and 0x06 never say dataChanged.
    QSignalSpy data(&d, SIGNAL(dataChanged()));
    QSignalSpy doors(&d, SIGNAL(cardoorDataChanged()));
    QSignalSpy radar(&d, SIGNAL(radarDataChanged()));
    QSignalSpy air(&d, SIGNAL(airConditionerDataChanged()));
    d.setPowerOffState();
    h.feed(fd(0x7D, {5, 0x40}));
    h.feed(fd(0x7E, {0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(data.count() + doors.count(), 0);
    QCOMPARE(d.getCardoorData()->doorFrontLeft, quint8(1));
    d.setPowerOnState();
    h.feed(fd(0x7D, {5, 0x80}));
    h.feed(fd(0x7D, {0x30}));   // an unknown sub-frame still says dataChanged
    QCOMPARE(data.count(), 2);
    QCOMPARE(doors.count(), 1);
    h.feed(fd(0x05, {1}));
    h.feed(fd(0x05, {1}));
    h.feed(fd(0x04, {0, 0}));
    h.feed(fd(0x04, {0, 0}));
    h.feed(fd(0x06, {1}));
    QCOMPARE(doors.count(), 2);
    QCOMPARE(radar.count(), 2);
    QCOMPARE(air.count(), 1);
    QCOMPARE(data.count(), 2);
}

void TestDriver67::reports_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    auto row = [](const char* name, const Action& action, const Frames& sent) {
        QTest::addRow("%s", name) << action << sent;
    };
    auto clock = [](bool hour24, int hour) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("Time24hFormat", hour24, {});
            h.driver()->setCurrentTime(hour, 7, 59);
        };
    };
    row("clock 24 h", clock(true, 15), {hex("fd0706070f010024")});
    row("clock 12 h, 15", clock(false, 15), {fd(0x06, {7, 3, 0})});
    row("clock 12 h, 12", clock(false, 12), {fd(0x06, {7, 12, 0})});   // noon stays 12
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    row("radio AM1 1530", source(1, {5, 1530}), {fd(0x09, {9, 3, 15, 30})});
    row("radio band 7", source(1, {7, 1530}), {fd(0x09, {2, 0, 15, 30})});
    row("radio one item", source(1, {3}), {});
    row("media 14", source(14, {0, 0x0102, 9, 3725, 4000}), {fd(0x09, {21, 1, 2, 1, 2, 5})});
    row("phone calling", source(24, {3}), {fd(0x09, {0x0E, 2})});
    auto variant = [](int model) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("CanbusCAR", model, {});
            h.manager()->setId(41, false);   // selected again, the driver reads it
            h.manager()->setId(kId, false);
            h.clearSent();
            qobject_cast<Canbus67Obj*>(h.driver())->exitSelectSlot();
        };
    };
    row("variant 0", variant(0), {});
    row("variant 14", variant(14), {fd(0xEE, {0x20, 0x81})});
    auto language = [](const char* code) -> Action {
        return [=](DriverHarness& h) { qobject_cast<Canbus67Obj*>(h.driver())->languageChanged(code); };
    };
    // The sum lands on the flag: the same bytes for either language.
    row("language en", language("en"), {hex("2e030601000a")});
    // 1200 x 600: a tap by its cell and page of views; swipes beyond 240 sideways or 120 up or down.
    auto touch = [](int view, int x0, int y0, int x1, int y1) -> Action {
        return [=](DriverHarness& h) {
            h.feed(fd(0x40, {0, view}));
            Canbus67Obj* d = qobject_cast<Canbus67Obj*>(h.driver());
            d->setTcanBussend(x0, y0, 1200, 600, 0);
            d->setTcanBussend(x1, y1, 1200, 600, 1);
            d->setTcanBussend(x1, y1, 1200, 600, 2);
        };
    };
    row("tap centre", touch(0, 600, 300, 610, 310), {fd(0x84, {1})});
    row("tap centre, view 6", touch(6, 600, 300, 600, 300), {fd(0x84, {6})});
    row("tap top, view 5", touch(5, 600, 100, 600, 100), {fd(0x84, {2})});
    row("tap in a corner", touch(0, 100, 100, 100, 100), {});
    row("swipe in the upper half", touch(0, 100, 100, 500, 250), {fd(0x84, {2})});
    row("swipe in the lower half", touch(0, 100, 350, 500, 500), {fd(0x84, {7})});
    row("swipe across the middle", touch(0, 100, 250, 600, 400), {fd(0x84, {0})});
    row("swipe sideways 240", touch(0, 100, 100, 340, 100), {});
}

void TestDriver67::reports()
{
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    DriverHarness h(kId);
    action(h);
    QCOMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver67)
#include "tst_driver67.moc"
