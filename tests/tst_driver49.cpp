// Geely box: frames in, records, signals and keys out; commands and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus49/canbus49.h"
#include "common/kkmapkeys.h"
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

constexpr int kId = 49;
const int kVolumeUp = canbus::kkmapKey(0x1100025);
const int kShort15 = canbus::kkmapKey(0x1200027);
const int kLong15 = canbus::kkmapKey(0x1300055);

Canbus49Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus49Obj*>(h.driver()); }
Data49Info info(const DriverHarness& h) { return infoOf<Data49Info>(h); }
// A new driver object, as a change of car does; it reads the stored settings again.
void rebuild(DriverHarness& h) { h.manager()->setId(41, false); h.manager()->setId(kId, false); }

// A climate frame: bytes 3..9, then the fine-dust words of bytes 10..13.
QByteArray climateFrame(std::initializer_list<int> front, int dustA = 0, int dustB = 0)
{
    QByteArray data = bytes(front);
    data.append(char(dustA >> 8)).append(char(dustA)).append(char(dustB >> 8)).append(char(dustB));
    return frame(0x23, data);
}

} // namespace

class TestDriver49 : public QObject
{
    Q_OBJECT

private slots:
    void connection()
    {
        DriverHarness h(kId);
        int interval = 0;
        QByteArray out;
        QVERIFY(h.driver()->needSendConnect(interval, out));
        QCOMPARE(interval, 1000);
        QCOMPARE(out, hex("2e8101017c"));
        QTRY_COMPARE(h.sentFrames(), (Frames{hex("2e900252001b"), frame(0x90, {0x23, 0}), frame(0x90, {0x7F, 0})}));
        // Any whole frame connects; the version frame asks for the data again.
        h.clearSent();
        QCOMPARE(h.feed(frame(0x7F, {'G', 'L', 0, 'x'})), 0);
        QCOMPARE(h.driver()->getVersionData(), QStringLiteral("GL"));
        QTRY_COMPARE(h.sentFrames(), (Frames{frame(0x90, {0x52, 0}), frame(0x90, {0x23, 0})}));
        QVERIFY(!h.driver()->needSendConnect(interval, out));
        QVERIFY(h.driver()->needSendDisconnect(out));
        QCOMPARE(out, frame(0x81, {0x00}));
    }

    void climate_data()
    {
        QTest::addColumn<bool>("rightHand");
        QTest::addColumn<Frames>("frames");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("airSignals");
        auto row = [](bool rightHand, const Frames& frames, const QStringList& e, int airSignals) {
            QTest::addRow("%s%s", frames.last().toHex().constData(), rightHand ? " right-hand" : "")
                << rightHand << frames << e << airSignals;
        };
        // Byte 3 in alternating bits both ways; fan unclamped; distribution 2 is front and down.
        row(false, {climateFrame({0xA5, 2, 9, 0, 1, 30, 0x8E})},
            {"airOnOff=1", "airAC=0", "airInnerLoop=1", "airAuto=0", "airDual=1", "airDefrostRear=0", "airDefrostFront=1",
             "airWindFrontLeft=1", "airWindDownRight=1", "airWindUpLeft=0", "airWindSpeedLeft=9", "tempLeft=17.5",
             "tempRight=32.0", "airAutoLoop=1", "seatHotLeft=3", "seatHotRight=2"}, 1);
        row(false, {climateFrame({0x5A, 4, 0, 0, 0, 127, 0x01})},
            {"airPower=0", "airAC=1", "airOuterLoop=1", "airAuto=1", "airDual=0", "airDefrostRear=1", "airDefrostFront=0",
             "airWindUpRight=1", "airWindDownLeft=1", "tempLeftLow=1", "tempLeftHigh=0", "tempRightHigh=1",
             "tempRightLow=0", "seatHotLeft=0", "seatHotRight=1"}, 1);
        // A distribution outside 1..5 keeps the last one; 31 has no text; the right-hand car
        // reads byte 8 as its left zone.
        row(true, {climateFrame({0, 5, 1, 0, 3, 31, 0}), climateFrame({0, 6, 1, 0, 3, 31, 0})},
            {"airWindUpLeft=1", "airWindFrontLeft=0", "airWindDownLeft=0", "tempRight=18.5", "tempLeft="}, 2);
        // Byte 6 is a level shown as it is, without ends; 18 is none; only the moved byte
        // applies, so the set points of the second frame are not applied again.
        row(false, {climateFrame({0, 0, 0, 17, 0, 0, 0}), climateFrame({0, 0, 0, 18, 0, 0, 0})},
            {"tempLeft=17", "tempRight=17", "tempLeftFahrenheit=255", "tempLeftLow=0", "tempRightLow=0"}, 2);
        // The same frame twice is one change.
        row(false, {climateFrame({0x80, 0, 0, 0, 2, 2, 0}), climateFrame({0x80, 0, 0, 0, 2, 2, 0})}, {"tempLeft=18.0"}, 1);
    }

    void climate()
    {
        QFETCH(bool, rightHand);
        QFETCH(Frames, frames);
        QFETCH(QStringList, expected);
        QFETCH(int, airSignals);
        DriverHarness h(kId);
        h.driver()->setRightDriver(rightHand);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        for (const QByteArray& f : frames)
            QCOMPARE(h.feed(f), 0);
        compareFields(*h.driver()->getAirData(), expected);
        QCOMPARE(air.count(), airSignals);
    }

    void fineDust()
    {
        DriverHarness h(kId);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        // Levels of 50 each below 300, else 5; byte 12 starts the second word.
        h.feed(climateFrame({0, 0, 0, 0, 0, 0, 0}, 149, 300));
        QCOMPARE((Ints{info(h).pm.pmLevelA, info(h).pm.pmLevelB}), (Ints{2, 5}));
        h.feed(climateFrame({0, 0, 0, 0, 0, 0, 0}, 299, 0x0100));
        QCOMPARE((Ints{info(h).pm.pmLevelA, info(h).pm.pmLevelB}), (Ints{5, 5}));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(air.count(), 1);   // the climate bytes stood still
        // Only the flag moved: the page's news, not the climate's; the cache keeps the
        // frame before, so the flag stays news.
        h.feed(climateFrame({0, 0, 0, 0, 0, 0, 0x40}, 299, 0x0100));
        h.feed(climateFrame({0, 0, 0, 0, 0, 0, 0x40}, 299, 0x0100));
        QCOMPARE(info(h).pm.pmFlag, quint8(1));
        QCOMPARE(changed.count(), 3);
        QCOMPARE(air.count(), 1);
        h.feed(climateFrame({1, 0, 0, 0, 0, 0, 0}, 299, 0x0100));
        QCOMPARE(air.count(), 2);
        h.feed(frame(0x3F, {0x80}));
        QCOMPARE((Ints{info(h).pm.pmBitA, info(h).pm.pmBitB}), (Ints{1, 0}));
    }

    void keys_data()
    {
        QTest::addColumn<bool>("reverse");
        QTest::addColumn<Frames>("frames");
        QTest::addColumn<Keys>("keys");
        QTest::addColumn<Frames>("sent");
        auto row = [](bool reverse, const Frames& frames, const Keys& keys, const Frames& sent) {
            QTest::addRow("%s%s", reverse ? "reverse " : "", frames.last().toHex().constData())
                << reverse << frames << keys << sent;
        };
        // A release (0) goes to the last key; byte 4 other than 1 and 2 is a release.
        row(false, {frame(0x20, {1, 2}), frame(0x20, {0, 3})}, {{kVolumeUp, 1}, {kVolumeUp, 0}}, {});
        row(false, {frame(0x20, {5, 1})}, {{0, 1}}, {});
        // 15 gives its key on release, by how it was pressed.
        row(false, {frame(0x20, {15, 1}), frame(0x20, {0, 0})}, {{kShort15, 1}, {kShort15, 0}}, {});
        row(false, {frame(0x20, {15, 2}), frame(0x20, {15, 0})}, {{kLong15, 1}, {kLong15, 0}}, {});
        // In reverse a short press picks a camera view; nothing else goes anywhere.
        row(true, {frame(0x20, {1, 1})}, {}, {hex("2e82010478")});
        row(true, {frame(0x20, {3, 2})}, {}, {});
        // 0x40 closes the camera menu after every frame.
        row(false, {frame(0x20, {0x40, 1})}, {{0, 1}}, {frame(0x82, {3})});
        row(true, {frame(0x20, {0x40, 0})}, {}, {frame(0x82, {3})});
    }

    void keys()
    {
        QFETCH(bool, reverse);
        QFETCH(Frames, frames);
        QFETCH(Keys, keys);
        QFETCH(Frames, sent);
        DriverHarness h(kId);
        h.driver()->setInReverse(reverse);
        h.clearSent();
        for (const QByteArray& f : frames)
            h.feed(f);
        QCOMPARE(h.keys(), keys);
        QCOMPARE(h.sentFrames(), sent);
    }

    void settings_data()
    {
        QTest::addColumn<Frames>("frames");
        QTest::addColumn<Ints>("expected");
        QTest::addColumn<int>("changes");
        auto row = [](const char* rule, const Frames& frames, const Ints& expected, int changes) {
            QTest::addRow("%s", rule) << frames << expected << changes;
        };
        // item0, item25, item26, item28, itemSign, itemValue, item39, item41, item42, item128
        row("items clamp", {frame(0x4E, {0, 7}), frame(0x4E, {25, 9}), frame(0x80, {26, 5}), frame(0x4E, {28, 9}),
                            frame(0x4E, {37, 0xD5}), frame(0x4E, {39, 200}), frame(0x4E, {41, 11}), frame(0x4E, {42, 9}),
                            frame(0x4E, {128, 2}), frame(0x4E, {44, 1})},
            {1, 2, 1, 3, 1, 80, 200, 10, 0, 1}, 10);
        row("item 37 positive", {frame(0x4E, {37, 0x05})}, {0, 0, 0, 0, 0, 5, 0, 0, 0, 0}, 1);
        // A0..A14 of 0x4F: two-bit fields, a flag of two bits, the 80 clamp.
        row("bits A", {frame(0x4F, {0x84, 0x81, 0xD1})}, {2, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 1, 80}, 1);
        row("bits A again", {frame(0x4F, {0x4B, 0, 0}), frame(0x4F, {0x4B, 0, 0})},
            {1, 0, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 1);
        // 0x50: a first frame takes byte 3 only; later the first byte that moved.
        row("bits B first", {frame(0x50, {0x88, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0})}, {1, 1, 0, 0, 0, 0, 0}, 1);
        row("bits B bytes 4 and 5", {frame(0x50, {0, 0, 0, 0, 0, 0, 0, 0}), frame(0x50, {0, 0x40, 0x84, 0, 0, 0, 0, 0}),
                                     frame(0x50, {0, 0x40, 0x84, 0x60, 0xFF, 0x0B, 0x02, 0})},
            {0, 0, 0, 1, 0, 0, 0}, 3);
        row("bits B byte 6", {frame(0x50, {0, 0, 0, 0, 0, 0, 0, 0}), frame(0x50, {0, 0, 0, 0xA1, 0, 0, 0, 0})},
            {0, 0, 0, 0, 0, 1, 1}, 2);
    }

    void settings()
    {
        QFETCH(Frames, frames);
        QFETCH(Ints, expected);
        QFETCH(int, changes);
        DriverHarness h(kId);
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        for (const QByteArray& f : frames)
            h.feed(f);
        const Data49Info d = info(h);
        const quint8 type = quint8(frames.first().at(1));
        Ints actual;
        if (type == 0x4F) {
            const auto& a = d.settingsA;
            actual = {a.settingA0, a.settingA1, a.settingA2, a.settingA3, a.settingA4, a.settingA5, a.settingA6,
                      a.settingA7, a.settingA8, a.settingA9, a.settingA10, a.settingA11, a.settingA12,
                      a.settingA13, a.settingA14};
        } else if (type == 0x50) {
            const auto& b = d.settingsB;
            // B0, B4, B5, B6, B7 (byte 5 bit 7), B13 (byte 6 bit 7), B19 (byte 6 bit 0)
            actual = {b.settingB0, b.settingB4, b.settingB5, b.settingB6, b.settingB7, b.settingB13, b.settingB19};
        } else {
            const auto& i = d.items;
            actual = {i.item0, i.item25, i.item26, i.item28, i.itemSign, i.itemValue, i.item39, i.item41, i.item42,
                      i.item128};
        }
        QCOMPARE(actual, expected);
        QCOMPARE(changed.count(), changes);
    }

    void vehicle_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QStringList>("air");
        QTest::addColumn<QString>("signal");
        auto row = [](const QByteArray& f, const QStringList& air, const char* signal) {
            QTest::addRow("%s", f.toHex().constData()) << f << air << QString::fromLatin1(signal);
        };
        // Tyres: warnings high nibble first, clamped to 5; pressures in 1.366 kPa steps.
        row(frame(0x52, {0x61, 0x05, 100, 255, 0, 1, 7, 8, 9, 10}),
            {"tireStatus=2", "tireWarning[0][0]=5", "tireWarning[0][1]=1", "tireWarning[0][3]=5",
             "tirePressureFrontLeft=136.6KPA", "tirePressureFrontRight=--", "tirePressureRearRight=1.4KPA",
             "tireWarning[2][0]=7", "tireWarning[2][3]=10"}, "dataChanged()");
        // Outdoor: sign and magnitude; a magnitude of 0 is no reading, with its sign.
        row(frame(0x28, {0x85}), {"outdoorTemp=-5\u2103", "outdoorTempValid=1"}, "outdoorTemperatureChanged(QString,int)");
        row(frame(0x28, {0x80}), {"outdoorTemp=-0\u2103", "outdoorTempValid=0"}, "outdoorTemperatureChanged(QString,int)");
        // Stored, and never signalled.
        row(frame(0x22, {0x80}), {"airEco=1"}, "");
    }

    void vehicle()
    {
        QFETCH(QByteArray, input);
        QFETCH(QStringList, air);
        QFETCH(QString, signal);
        DriverHarness h(kId);
        h.watchActivity();
        if (!signal.isEmpty()) {
            QSignalSpy spy(h.driver(), QByteArray("2" + signal.toLatin1()).constData());
            h.feed(input);
            QCOMPARE(spy.count(), 1);
        } else {
            h.feed(input);
            QCOMPARE(h.activity(), 0);
        }
        compareFields(*h.driver()->getAirData(), air);

        // The small frames of the same car, one per rule.
        h.feed(frame(0x53, {0x01, 0x02}));
        h.feed(frame(0x54, {3, 4}));
        h.feed(frame(0x60, {2}));
        h.feed(frame(0x40, {2, 12, 0x40, 0x84}));
        const Data49Info d = info(h);
        QCOMPARE(d.vehicle.rangeText, QStringLiteral("258km"));
        QCOMPARE((Ints{d.vehicle.vehicleByteA, d.vehicle.vehicleByteB, d.vehicle.vehicleFlag}), (Ints{2, 3, 1}));
        QCOMPARE((Ints{d.panorama.panorama0, d.panorama.panorama1, d.panorama.panorama2, d.panorama.panorama3,
                       d.panorama.panorama4, d.panorama.panorama9}), (Ints{1, 9, 0, 1, 1, 1}));
        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.feed(frame(0x30, {0xFF, 0x38}));
        QCOMPARE(steering.value(0), (QList<QVariant>{200, 5445, true}));
        h.feed(frame(0x24, {0x64, 0}));
        compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorRearRight=1", "doorHood=1"});
        // Radar only while reversing with the radar on; seven bars, bytes 3..6.
        const RadarData& r = *h.driver()->getRadarData();
        h.feed(frame(0x25, {1, 2, 3, 4, 0}));
        QCOMPARE(int(r.radarRearLeft), 0);
        h.driver()->setInReverse(true);
        h.feed(frame(0x26, {1, 2, 3, 4, 0}));
        h.feed(frame(0x25, {0, 0, 9, 8, 0}));
        QCOMPARE((Ints{r.radarFrontLeft, r.radarFrontRight, r.radarRearLeftMid, r.radarRearRight, r.radarLevels,
                       r.radarOn}), (Ints{1, 4, 0, 8, 7, 1}));
        DataSaveControl::saveFactoryData("CanRadarEnable", false);
        rebuild(h);
        h.driver()->setInReverse(true);
        h.feed(frame(0x25, {5, 5, 5, 5, 0}));
        QCOMPARE(int(h.driver()->getRadarData()->radarRearLeft), 0);
    }

    void shortFrames_data()
    {
        addShortFrameRows("2e", {{0x14, 5}, {0x20, 6}, {0x23, 15}, {0x24, 6}, {0x27, 6}, {0x28, 5}, {0x30, 6}, {0x40, 8},
                                 {0x4E, 6}, {0x80, 6}, {0x4F, 7}, {0x50, 11}, {0x52, 14}, {0x53, 6}, {0x54, 6}, {0x60, 5}});
    }

    void shortFrames()
    {
        QFETCH(int, type);
        QFETCH(int, minimum);
        DriverHarness h(kId);
        verifyShortFrame(h, frame(type, QByteArray(minimum - 4, '\x41')));
    }

    void outbound_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<Frames>("sent");
        // Command keys: the press, and 100 ms later the same frame with its six bytes 0.
        const QByteArray release = frame(0x8A, QByteArray(6, '\0'));
        auto state = [](const char* type, const char* value, int fan) -> Action {
            return [=](DriverHarness& h) {
                if (fan >= 0)
                    h.feed(climateFrame({0, 0, fan, 0, 0, 0, 0}));
                h.clearSent();
                h.driver()->setCanbusState(type, value);
            };
        };
        QTest::addRow("AirOnOff") << state("AirOnOff", "", -1) << Frames{hex("2e8a06800000000000ef"), release};
        QTest::addRow("AirDUAL") << state("AirDUAL", "", -1) << Frames{frame(0x8A, {0, 8, 0, 0, 0, 0}), release};
        QTest::addRow("AirTempFrontRight add") << state("AirTempFrontRight", "add", -1)
                                               << Frames{frame(0x8A, {0, 0, 0, 0, 2, 0}), release};
        // The fan steps from the reported speed, within 1..8, in the high nibble.
        QTest::addRow("fan 3 up") << state("AirWindSpeedAddSubFront", "1", 3) << Frames{frame(0x8A, {0, 0x40, 0, 0, 0, 0}), release};
        QTest::addRow("fan 8 up") << state("AirWindSpeedAddSubFront", "1", 8) << Frames{frame(0x8A, {0, 0x80, 0, 0, 0, 0}), release};
        QTest::addRow("fan 1 down") << state("AirWindSpeedAddSubFront", "0", 1) << Frames{frame(0x8A, {0, 0x10, 0, 0, 0, 0}), release};
        QTest::addRow("unknown key") << state("AirSync", "1", -1) << Frames{};
        // Clock: year + 48, month, day, hour (12-hour form when so set), minute, second.
        auto clock = [](bool format24, int hour) -> Action {
            return [=](DriverHarness& h) {
                DataSaveControl::saveSettingData("Time24hFormat", format24, {});
                h.driver()->setCurrentData(2024, 11, 30);
                h.driver()->setCurrentTime(hour, 7, 59);
            };
        };
        QTest::addRow("24h 00:07") << clock(true, 0) << Frames{frame(0xA6, {0x18, 11, 30, 0, 7, 59})};
        QTest::addRow("12h 00:07") << clock(false, 0) << Frames{frame(0xA6, {0x18, 11, 30, 12, 7, 59})};
        QTest::addRow("12h 13:07") << clock(false, 13) << Frames{frame(0xA6, {0x18, 11, 30, 1, 7, 59})};
        QTest::addRow("constructor date") << Action([](DriverHarness& h) {
            DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2030, 2, 3), QTime(4, 5, 6)));
            rebuild(h);
            h.clearSent();
            h.driver()->setCurrentTime(4, 5, 6);
        }) << Frames{frame(0xA6, {0x1E, 2, 3, 4, 5, 6})};
        auto source = [](int type, const QVariantList& items) -> Action {
            return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
        };
        QTest::addRow("radio AM1") << source(1, {5, 1530}) << Frames{frame(0xC0, {1, 1, 0x10, 0xFA, 0x05})};
        // Texts in UTF-16LE without the mark; 19 text bytes at most, odd or not.
        QTest::addRow("media 22") << source(22, {0, 3, 12, 3725, 61, "Ab"})
            << Frames{frame(0xC0, {5, 0xFF}), frame(0x70, {0x11, 'A', 0, 'b', 0}), frame(0x71, bytes({0x11}) + QByteArray("3\0/\0" "1\0" "2\0", 8)),
                      frame(0x72, bytes({0x11}) + QByteArray("2\0:\0" "5\0/\0" "1\0:\0" "1\0", 14))};
        QTest::addRow("media 16 long title") << source(16, {0, 1, 1, 0, 0, "abcdefghijk"})
            << Frames{frame(0xC0, {8, 0xFF}), frame(0x70, bytes({0x11}) + QByteArray("a\0b\0c\0d\0e\0f\0g\0h\0i\0j", 19)),
                      frame(0x71, bytes({0x11, '1', 0, '/', 0, '1', 0})), frame(0x72, bytes({0x11}) + QByteArray("0\0:\0" "0\0/\0" "0\0:\0" "0\0", 14))};
        QTest::addRow("phone 3") << source(24, {3, "Jo", "12"})
            << Frames{frame(0xC0, {5, 0x40}), frame(0xC5, {0x44, 0x14}), frame(0xCA, {3, 0x11, 'J', 0, 'o', 0, '1', 0, '2', 0})};
        QTest::addRow("phone 7 long") << source(24, {7, "abcdefgh", "12"})
            << Frames{frame(0xC0, {5, 0x40}), frame(0xC5, {0x44, 0x10}),
                      frame(0xCA, bytes({3, 0x11}) + QByteArray("a\0b\0c\0d\0e\0f\0g\0h\0" "1\0", 18))};
        QTest::addRow("source 2") << source(2, {1, 2}) << Frames{};
        auto language = [](const char* name, int stored) -> Action {
            return [=](DriverHarness& h) {
                driver(h)->languageChanged(name);
                QCOMPARE((Ints{info(h).vehicle.language, info(h).items.item26}), (Ints{stored, stored}));
            };
        };
        QTest::addRow("language en") << language("en", 1) << Frames{frame(0x80, {0x1A, 1})};
        QTest::addRow("language ja") << language("ja", 0) << Frames{};
        // The stored variant, clamped to 21, goes out less one; 0 sends nothing.
        QTest::addRow("variant 0") << Action([](DriverHarness& h) { driver(h)->exitSelectSlot(); }) << Frames{};
        QTest::addRow("variant 40") << Action([](DriverHarness& h) {
            DataSaveControl::saveSettingData("CanbusCAR", 40, QString());
            rebuild(h);
            h.clearSent();
            driver(h)->exitSelectSlot();
        }) << Frames{frame(0xEE, {0x70, 20})};
        QTest::addRow("touch") << Action([](DriverHarness& h) { driver(h)->setTcanBussend(-1, 0, 0, 0, 7); })
                               << Frames{frame(0x82, {0})};
    }

    void outbound()
    {
        QFETCH(Action, action);
        QFETCH(Frames, sent);
        DriverHarness h(kId);
        action(h);
        QTRY_COMPARE(h.sentFrames(), sent);
    }
};

QTEST_GUILESS_MAIN(TestDriver49)
#include "tst_driver49.moc"
