// Dongfeng Fengshen box (79) and the make's boxes that extend it (77, 78, 80): frames in,
// records, signals and keys out; commands and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus79/canbus79.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
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

constexpr int kId = 79;

Canbus79Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus79Obj*>(h.driver()); }
Data79Info info(const DriverHarness& h) { return infoOf<Data79Info>(h); }

void setModel(DriverHarness& h, int model)
{
    Data79Info record = info(h);
    record.vehicle.carModel = quint8(model);
    h.driver()->setDataInfo(QVariant::fromValue(record));
}

} // namespace

class TestDriver79 : public QObject
{
    Q_OBJECT

private slots:
    void connection()
    {
        DriverHarness h(kId);
        int interval = 0;
        QByteArray out;
        QVERIFY(h.driver()->needSendConnect(interval, out));
        QCOMPARE(out, hex("2e8101017c"));
        QTRY_COMPARE(h.sentFrames(), Frames{frame(0x90, {0x23})});
        QVERIFY(h.driver()->needSendDisconnect(out));   // also before the box answers
        QCOMPARE(out, hex("2e8101007d"));
        h.feed(frame(0x7F, {'F', 'S', 0, 'x'}));
        QVERIFY(!h.driver()->needSendConnect(interval, out));
        // The make's other boxes (their links are checked with the shaped drivers) take 79's frames.
        for (int id : {77, 78, 80}) {
            DriverHarness sibling(id);
            sibling.feed(frame(0x28, {0x04, 0}));
            QCOMPARE(int(sibling.driver()->getCardoorData()->doorHood), 1);
        }
    }

    void climate_data()
    {
        QTest::addColumn<Frames>("frames");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("airSignals");
        auto row = [](const Frames& frames, const QStringList& e, int airCount) {
            QTest::addRow("%s", frames.last().toHex().data()) << frames << e << airCount;
        };
        // On, A/C, inner loop, AUTO, rear defrost; face and feet; fan clamped; half degrees.
        row({frame(0x23, {0xEA, 2, 9, 65, 0, 0})},
            {"airOnOff=1", "airAC=1", "airInnerLoop=1", "airAuto=1", "airDefrostRear=1", "airWindFrontLeft=1",
             "airWindDownRight=1", "airDefrostFront=0", "airWindSpeedRight=7", "tempRight=16.5", "tempLeftLow=0"}, 1);
        // Feet and screen; each scale's ends: 64 the low mark with 16, 16 the high mark with 32.
        row({frame(0x23, {0x00, 4, 3, 64, 0, 0})},
            {"airOuterLoop=1", "airWindDownLeft=1", "airDefrostFront=1", "airWindSpeedLeft=3", "tempLeft=16",
             "tempRightLow=1"}, 1);
        row({frame(0x23, {0x00, 5, 0, 16, 0, 0})}, {"airDefrostFront=1", "tempRight=32", "tempRightHigh=1"}, 1);
        row({frame(0x23, {0x00, 0, 0, 96, 0, 0})}, {"tempLeft=32", "tempLeftHigh=1", "tempRightHigh=1"}, 1);
        // Direction 6 and set point 17 name nothing: the earlier values stay.
        row({frame(0x23, {0x00, 3, 0, 1, 0, 0}), frame(0x23, {0x00, 6, 0, 17, 0, 0})},
            {"airWindDownLeft=1", "airWindFrontLeft=0", "tempLeft=17"}, 2);
        // Byte 7 moving with byte 3 is still no climate news.
        row({frame(0x23, {0x80, 0, 0, 0, 0, 0}), frame(0x23, {0x00, 0, 0, 0, 9, 0})}, {"airPower=0"}, 1);
    }

    void climate()
    {
        QFETCH(Frames, frames);
        QFETCH(QStringList, expected);
        QFETCH(int, airSignals);
        DriverHarness h(kId);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        for (const QByteArray& f : frames)
            h.feed(f);
        compareFields(*h.driver()->getAirData(), expected);
        QCOMPARE(air.count(), airSignals);
        QCOMPARE(changed.count(), frames.size());   // byte 7 is news on every frame
        QCOMPARE(int(info(h).vehicle.airByte7), int(frames.last().at(7)));
    }

    void bodyAndPages()
    {
        DriverHarness h(kId);
        QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.driver()->setPowerOffState();   // doors are written but not told while the unit is off
        h.feed(frame(0x28, {0x44, 7}));
        compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorHood=1", "doorFrontRight=0"});
        h.driver()->setPowerOnState();
        h.feed(frame(0x28, {0x88, 7}));
        QCOMPARE((Ints{doors.count(), info(h).vehicle.doorByte4}), (Ints{1, 7}));
        // Half bars, doubled; the front display has 10 bars, the rear 9.
        h.feed(frame(0x25, {1, 2, 3, 4, 0}));
        h.feed(frame(0x26, {5, 0, 0, 0, 0}));
        compareFields(*h.driver()->getRadarData(), {"radarLevels=10", "radarRearRight=8", "radarFrontLeft=10"});
        h.feed(frame(0x30, {0x10, 0x00, 0}));
        QCOMPARE(steering.at(0), (QList<QVariant>{-16, 5600, true}));
        h.feed(frame(0x36, {0xA5}));
        QCOMPARE(info(h).vehicle.outdoorTempText, QString::fromUtf8("-37.0\u2103"));
        // Settings: a two-bit field without clamp, nibbles and runs with theirs.
        h.feed(frame(0x27, {0x02}));
        h.feed(frame(0x29, {0xC0, 0x08, 0x02, 0xF1, 0xFF, 0xF0, 0x1C, 0xC0, 0xFF, 0x20, 0}));
        const OriginalCarSetupInformation79 s = info(h).setup;
        QCOMPARE((Ints{s.setupBit1, s.setupBit0, s.byte3Bits7To6, s.byte6High, s.byte6Low, s.byte8High, s.byte12Bit5}),
                 (Ints{1, 0, 3, 3, 1, 10, 1}));
        // Energy: power with its offset (below 48 keeps the text), tenths, percent clamp.
        h.feed(frame(0x40, {50, 12, 0x00, 0x7B, 0x01, 0x00, 101, 99, 0, 5, 0}));
        energyInformation79 e = info(h).energy;
        QCOMPARE((QStringList{e.powerText, e.motorPowerText, e.energyUseText, e.powerText3, e.powerText4}),
                 (QStringList{"-30kw", "12kw", "12.3kwh/100km", "256kw", "5kw"}));
        QCOMPARE((Ints{e.percent1, e.percent2}), (Ints{100, 99}));
        h.feed(frame(0x40, {47, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
        QCOMPARE(info(h).energy.powerText, QStringLiteral("-30kw"));
        // History by day, a day past the 31 adding one.
        h.feed(frame(0x41, {40, 24, 5, 6, 7, 8, 42, 0x00, 0x0F, 0x01, 0x00, 0}));
        const energyEfficientDriving79 d = info(h).history;
        QCOMPARE((QVariantList{d.dateByIndex[40], d.valueByIndex[40], d.distanceByIndex[40], d.useByIndex[40]}),
                 (QVariantList{"2024.5.6.7.8", "42", "1.5km", "25.6kWh/100km"}));
    }

    void shortFrames_data()
    {
        addShortFrameRows("2e", {{0x20, 6}, {0x23, 10}, {0x25, 8}, {0x28, 6}, {0x29, 14}, {0x30, 6}, {0x40, 14}, {0x41, 15}});
    }

    void shortFrames()
    {
        QFETCH(int, type);
        QFETCH(int, minimum);
        DriverHarness h(kId);
        verifyShortFrame(h, frame(type, QByteArray(minimum - 4, '\x01')));
        QCOMPARE(h.driver()->checkProtocolData(frame(0x22, {1, 2, 3})), 0);
    }

    void responses_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<Frames>("sent");
        QTest::addColumn<Keys>("keys");
        auto row = [](const char* name, const Action& action, const Frames& sent, const Keys& keys = {}) {
            QTest::addRow("%s", name) << action << sent << keys;
        };
        auto key = [](int type, int value, int state, int model = 0, bool inCall = false) -> Action {
            return [=](DriverHarness& h) {
                setModel(h, model);
                h.driver()->setCallState(inCall);
                h.feed(frame(type, {value, state}));
            };
        };
        // Panel keys: a whole press on state 1 only; 11 ends a call while one is on.
        row("2e20020101", key(0x20, 1, 1), {}, {{166, 1}, {166, 0}});
        row("2e20020102", key(0x20, 1, 2), {});
        row("2e20020b01 in call", key(0x20, 11, 1, 0, true), {}, {{347, 1}, {347, 0}});
        // Wheel keys: the state byte goes on as it is; some numbers follow the model and the call.
        row("2e21020102", key(0x21, 1, 2), {}, {{166, 2}});
        row("2e21020a01 model 10", key(0x21, 10, 1, 10), {}, {{179, 1}});
        row("2e21023501 model 9", key(0x21, 53, 1, 9), {}, {{314, 1}});
        row("2e21020901 model 2 in call", key(0x21, 9, 1, 2, true), {}, {{325, 1}});
        // A command presses one byte of six, then releases all.
        const QByteArray release = frame(0xC7, QByteArray(6, '\0'));
        auto command = [](const char* type, const char* value, int innerLoop = 0) -> Action {
            return [=](DriverHarness& h) {
                h.driver()->getAirData()->airInnerLoop = quint8(innerLoop);
                h.driver()->setCanbusState(type, value);
            };
        };
        row("AirInnerLoop from inner", command("AirInnerLoop", "", 1), {frame(0xC7, {8, 0, 0, 0, 0, 0}), release});
        row("AirInnerLoop from outer", command("AirInnerLoop", ""), {frame(0xC7, {4, 0, 0, 0, 0, 0}), release});
        row("AirWindSpeedAddSubFront 1", command("AirWindSpeedAddSubFront", "1"), {frame(0xC7, {0, 2, 0, 0, 0, 0}), release});
        row("AirWindDownFront", command("AirWindDownFront", ""), {frame(0xC7, {0, 0, 8, 0, 0, 0}), release});
        row("SeatHotLeft", command("SeatHotLeft", "1"), {});
        // The vehicle model, counted from 0 by the box, clamped to 10 when stored: 25 goes out as 9.
        auto stored = [](int model) -> Action {
            return [=](DriverHarness& h) {
                DataSaveControl::saveSettingData("CanbusCAR", model, {});
                h.manager()->setId(72, false);   // a fresh driver reads the stored model
                h.manager()->setId(kId, false);
                h.clearSent();
                driver(h)->exitSelectSlot();
            };
        };
        row("model 0", stored(0), {});
        row("model 25", stored(25), {frame(0x85, {9})});
        row("clock without a 12-hour mark", [](DriverHarness& h) {
            DataSaveControl::saveSettingData("Time24hFormat", false, {});
            DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(21, 5, 7)));
            h.driver()->setCurrentTime(1, 2, 3);
            DateTimeCtrl::getInstance()->clearFixedDateTime();
        }, {frame(0xA6, {24, 3, 9, 21, 5, 7})});
        static const auto language = [](int model, const char* code) -> Action {
            return [=](DriverHarness& h) { setModel(h, model); driver(h)->languageChanged(code); };
        };
        row("language ch_ft model 6", language(6, "ch_ft"), {frame(0x89, {0x25, 1}), frame(0x89, {0x0D, 0})});
        row("language ko model 5", language(5, "ko"), {});
        row("language en model 5, kept on the settings page", [](DriverHarness& h) {
            language(5, "en")(h);
            QCOMPARE((Ints{info(h).setup.byte11Bits4To2, info(h).setup.byte4Bit3}), (Ints{2, 1}));
        }, {frame(0x89, {0x25, 2}), frame(0x89, {0x0D, 1})});
        // Camera page, 900 x 600: nine buttons on model 6, five elsewhere; vertical swipes only.
        auto touch = [](int model, int camera, int x0, int y0, int x1, int y1) -> Action {
            return [=](DriverHarness& h) {
                setModel(h, model);
                h.feed(frame(0x37, {camera}));
                h.clearSent();
                driver(h)->setTcanBussend(x0, y0, 900, 600, 0);
                driver(h)->setTcanBussend(x1, y1, 900, 600, 1);
                driver(h)->setTcanBussend(x1, y1, 900, 600, 2);
            };
        };
        row("tap centre model 6", touch(6, 0, 450, 300, 470, 280), {frame(0x88, {8})});
        row("tap centre camera 4", touch(0, 4, 450, 300, 450, 300), {frame(0x88, {6})});
        row("swipe down", touch(0, 0, 450, 100, 460, 400), {frame(0x88, {1})});
        row("swipe sideways", touch(6, 0, 100, 300, 800, 300), {});
    }

    void responses()
    {
        QFETCH(Action, action);
        QFETCH(Frames, sent);
        QFETCH(Keys, keys);
        DriverHarness h(kId);
        action(h);
        QTest::qWait(200);
        QCOMPARE(h.sentFrames(), sent);
        QCOMPARE(h.keys(), keys);
    }
};

QTEST_GUILESS_MAIN(TestDriver79)
#include "tst_driver79.moc"
