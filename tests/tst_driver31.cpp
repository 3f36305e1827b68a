// Honda (31): frames in, records and keys out; commands, reports and the link. The
// landscape variant (53) for its commands and record, the DA box (36) for its link.

#include <QSignalSpy>
#include <QTimer>
#include <QtTest>
#include <tuple>

#include "canbus31/canbus31.h"
#include "canbus53/canbus53.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;
using testframes::frame;
using L = QList<QByteArray>;

namespace {
using Probe = QString (*)(const Data31Info&);
QString joined(const QVariantList& values) { return QVariant(values).toStringList().join(QLatin1Char(' ')); }
// Some fields of the record's parts: r radio, b backlight, p parking, w power flow,
// s settings, f fuel.
#define FIELDS(...) Probe([](const Data31Info& d) { [[maybe_unused]] const auto& r = d.radio; \
    [[maybe_unused]] const auto& b = d.backlight; [[maybe_unused]] const auto& p = d.parking; \
    [[maybe_unused]] const auto& w = d.powerFlow; [[maybe_unused]] const auto& s = d.vehicleSetting; \
    [[maybe_unused]] const auto& f = d.fuel; return joined({__VA_ARGS__}); })
Data31Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data31Info>(); }
Canbus31Obj* honda(const DriverHarness& h) { return qobject_cast<Canbus31Obj*>(h.driver()); }
QByteArray air(int d0, int d1, int d2 = 0, int d3 = 0, int d4 = 0, int d6 = 0, int d7 = 0) { return frame(0x21, {d0, d1, d2, d3, d4, 0, d6, d7, 0}); }
QByteArray seats(int d9) { return frame(0x21, {0, 0, 0, 0, 0, 0, 0, 0, 0, d9}); }
// 37 bytes whatever the text.
QByteArray text(int lead, const QByteArray& t) { return frame(0xCB, char(lead) + t + QByteArray(32 - t.size(), 0)); }
void setModes(DriverHarness& h, quint8 carModel, quint8 reverseMode)
{
    Data31Info d = info(h);
    std::tie(d.powerFlow.carModel, d.powerFlow.reverseMode) = std::tie(carModel, reverseMode);
    h.manager()->setDataById(QVariant::fromValue(d), 31);
}
}
Q_DECLARE_METATYPE(Probe)

class TestDriver31 : public QObject
{
    Q_OBJECT

private slots:
    void climate_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<bool>("rightDriver");
        QTest::addColumn<QStringList>("fields");
        QTest::addRow("D0 e9") << air(0xE9, 0) << false << QStringList{"airOnOff=1", "airPower=1", "airAC=1",
            "airInnerLoop=1", "airSync=0", "airAuto=1", "airDual=0", "airDefrostRear=0", "airRearLock=1"};
        QTest::addRow("D0 16") << air(0x16, 0) << false
                               << QStringList{"airOnOff=0", "airSync=1", "airDual=1", "airDefrostRear=1", "airRearLock=0"};
        QTest::addRow("D1 a5") << air(0x80, 0xA5) << false << QStringList{"airWindUpLeft=1", "airWindUpRight=1",
            "airWindFrontLeft=0", "airWindDownRight=1", "airWindSpeedLeft=5", "airWindSpeedRight=5"};
        QTest::addRow("celsius 44 0 255") << air(0, 0, 44, 0, 0x80, 255) << false << QStringList{"tempLeft=22.0",
            "tempRightLow=1", "airDefrostFront=1", "tempRearHigh=1", "tempRear2High=1", "tempLeftFahrenheit=0"};
        QTest::addRow("fahrenheit 72 255 70") << air(0, 0, 72, 255, 0x01, 70) << false << QStringList{
            "tempLeft=72.0", "tempRightHigh=1", "tempRear=70.0", "tempRear2=70.0", "tempRear2Fahrenheit=1"};
        QTest::addRow("right-hand drive") << air(0, 0, 40, 50) << true << QStringList{"tempLeft=25.0", "tempRight=20.0"};
        QTest::addRow("D7 6b") << air(0, 0, 0, 0, 0, 0, 0x6B) << false << QStringList{"tempRearVisible=0",
            "airRearSpare[0]=0", "airRearSpare[1]=1", "airRearSpare[5]=1", "airRearSpare[2]=1", "airRearSpare[7]=11"};
        QTest::addRow("D9 4c cooling") << seats(0x4C) << false << QStringList{"seatHotLeft=255", "seatHotRight=253"};
        QTest::addRow("D9 21 heating") << seats(0x21) << false << QStringList{"seatHotLeft=2", "seatHotRight=1"};
        // 13 bytes: the checksum (0xd5) sits where D9 would be.
        QTest::addRow("no D9") << air(0, 0) << false << QStringList{"seatHotLeft=0", "seatHotRight=0"};
    }

    void climate()
    {
        QFETCH(QByteArray, frame);
        QFETCH(bool, rightDriver);
        QFETCH(QStringList, fields);
        DriverHarness h(31);
        h.driver()->setRightDriver(rightDriver);
        h.feed(frame);
        compareFields(*h.driver()->getAirData(), fields);
    }

    void climateRepeatsAndLateSwitchOff()
    {
        DriverHarness h(31);
        QSignalSpy changed(h.driver(), SIGNAL(airConditionerDataChanged()));
        h.feed(air(0x80, 0));
        h.feed(air(0x80, 0));
        QCOMPARE(changed.count(), 1);
        h.feed(air(0x00, 0x10));   // off, but its own power bit moved to on
        QCOMPARE(changed.count(), 2);
        h.feed(air(0x00, 0x00));   // off for good: told a second later
        QCOMPARE(changed.count(), 2);
        QTRY_COMPARE(changed.count(), 3);
        h.feed(air(0x00, 0x01));
        h.feed(air(0x80, 0x01));   // on again before the second is up: at once, and only once
        QCOMPARE(changed.count(), 4);
        QTest::qWait(1200);
        QCOMPARE(changed.count(), 4);
    }

    void radarDoorsSteeringKeys()
    {
        DriverHarness h(31);   // not in reverse: radar frames still count
        h.feed(frame(0x22, {0, 1, 4, 5}) + frame(0x23, {3, 0, 0, 0}));
        compareFields(*h.driver()->getRadarData(), {"radarLevels=8", "radarRearLeft=0", "radarRearLeftMid=2",
            "radarRearRightMid=8", "radarRearRight=255", "radarFrontLeft=6", "radarFrontLeftMid=0", "radarOn=1"});
        // On a distance scale (never this box's) the second front sensor doesn't count.
        RadarData& r = *h.driver()->getRadarData();
        r.radarLevels = 12;
        for (quint8* s : {&r.radarFrontLeft, &r.radarFrontRightMid, &r.radarFrontRight, &r.radarRearLeft,
                          &r.radarRearLeftMid, &r.radarRearRightMid, &r.radarRearRight})
            *s = 11;
        honda(h)->RadarDisplay();
        QCOMPARE(r.radarOn, quint8(0));

        h.feed(frame(0x24, {0x6C, 0}) + frame(0x24, {0, 0, 0}));   // the second, of 7 bytes, is no door frame
        compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorRearRight=1",
                                                      "doorRearLeft=0", "doorTrunk=1", "doorHood=1"});
        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.feed(frame(0x29, {0x00, 0xFF, 0}));   // without the parking lines: nothing
        h.driver()->setShowReverseLine(true);
        h.feed(frame(0x29, {0x00, 0xFF, 0}));
        QCOMPARE(steering, (QList<QList<QVariant>>{{-256, 4608, true}}));

        QSignalSpy activity(h.driver(), SIGNAL(requestActivity(QString)));
        for (const QByteArray& f : {frame(0x20, {1, 1}), frame(0x20, {0, 0}), frame(0x20, {134, 2}), frame(0x20, {5, 1}),
                                    frame(0xD3, {0x22}), frame(0xD3, {0x24}), frame(0xD3, {0x26}), frame(0xD3, {0x23})})
            h.feed(f);
        const auto k = [&h](int code) { return h.driver()->toKkmapKey(code); };
        // Key 5 has no code and still goes out as number 0; D3 26 is no key; D3 23 opens the player.
        QCOMPARE(h.keyEvents(), (QList<int>{k(0x1100025), 1, k(0x1100025), 0, k(0x1100023), 2, 0, 1, k(0x1300060), 1,
                                            k(0x1300060), 0, k(0x130000E), 1, k(0x130000E), 0}));
        QCOMPARE(activity, (QList<QList<QVariant>>{{QStringLiteral("btMusicMode")}}));
    }

    void records_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<Probe>("probe");
        QTest::addColumn<QString>("expected");
        QTest::addRow("03 9f0213") << frame(0x03, {0x9F, 0x02, 0x13, 0}) << FIELDS(r.radioFrequencyText, r.radioPreset,
            r.radioBit7, r.radioBit6, r.radioBit5, r.radioBit4) << "531 KHZ 12 1 0 0 1";
        QTest::addRow("03 2c03f9") << frame(0x03, {0x2C, 0x03, 0xF9, 0}) << FIELDS(r.radioFrequencyText) << "101.7 MHZ";
        QTest::addRow("04 text from byte 4") << frame(0x04, bytes({0x80, 'H', 3, 'i'}) + QByteArray(22, 0))
                                             << FIELDS(r.radioTextFlag, r.radioText.toHex()) << "1 4803";
        QTest::addRow("07 8a0709 0100") << frame(0x07, {0x8A, 7, 9, 0x01, 0x00, 0}) << FIELDS(r.tunerBit7,
            r.tunerLowNibble, r.tunerByte1, r.tunerByte2, r.tunerFrequencyText) << "1 10 7 9 256 KHZ";
        QTest::addRow("14 clamps") << frame(0x14, {0x33, 3, 5, 11, 10, 12, 0}) << FIELDS(b.backlightRaw, b.backlightItem1,
            b.backlightItem2, b.backlightValue1, b.backlightValue3) << "51 2 4 10 10";
        QTest::addRow("25 0a") << frame(0x25, {0x0A, 0, 0}) << FIELDS(p.parkBit3, p.parkBit2, p.parkBit1, p.parkBit0)
                               << "1 0 1 0";
        QTest::addRow("50 42, 78 1122") << frame(0x50, {0x42, 0}) + frame(0x78, {0x11, 0x22, 0})
                                        << FIELDS(p.parkRaw50, p.parkRaw78) << "66 34";
        QTest::addRow("d1 0084") << frame(0xD1, {0, 0x84, 0}) << FIELDS(p.parkFlagA, p.parkFlagB, p.parkFlagC, p.parkFlagD)
                                 << "1 0 0 1";
        QTest::addRow("d2 8565") << frame(0xD2, {0x85, 101, 0}) << FIELDS(p.angleBit7, p.angleLowNibble, p.angleText)
                                 << "1 5 151\u00B0";
    #define SETTINGS FIELDS(s.settingItem0, s.settingItem1, s.settingItem2, s.settingItem3, s.settingItem4, \
        s.settingItem15, s.settingItem16, s.settingItem27, s.settingItem30, s.settingItem36, s.settingItem43, \
        s.settingItem45, s.settingItem47, s.settingItem50, s.settingItem54)
        QTest::addRow("32 12 bytes") << frame(0x32, {0x9F, 0x7F, 0, 0x07, 0xC0, 0x0F, 0x60, 0x01}) << SETTINGS
                                     << "2 1 6 4 3 4 2 2 2 0 1 0 0 0 0";
        QTest::addRow("32 15 bytes") << frame(0x32, {0, 0, 0, 0, 0, 0, 0, 0x80, 0x40, 0x6A, 0x20}) << SETTINGS
                                     << "0 0 0 0 0 0 0 0 0 1 0 1 2 1 1";
        const QByteArray page1 = frame(0x33, {1, 12, 0, 125, 0xFF, 0xFF, 0x01, 0xF4, 0, 4, 0, 1, 2, 0x46, 20});
    #define PAGE1 FIELDS(f.fuelPage1Text1, f.fuelPage1Text2, f.fuelPage1Text3, f.fuelPage1Text4, f.fuelPage1Text5, \
        f.fuelPage1Text6, f.fuelPage1Item1, f.fuelPage1Item3, f.fuelPage1Item4, f.fuelPage1Item5)
        QTest::addRow("33 page 1") << page1 << PAGE1 << "12 l/100km 12.5 km/l --- 50 mpg 102.4 mil 258 km 1 1 2 11";
        QTest::addRow("33 page 1, 18 bytes") << frame(0x33, page1.mid(3, 14)) << PAGE1 << "      0 0 0 0";
        QTest::addRow("33 page 2") << frame(0x33, {2, 0, 3, 0xE8, 0, 100, 0xFF, 0xFF, 0xFF, 0, 16, 0, 0, 5, 0, 7, 0x60, 200})
            << FIELDS(f.fuelPage2Text1, f.fuelPage2Text2, f.fuelPage2Text3, f.fuelPage2Text4, f.fuelPage2Text5,
                      f.fuelPage2Text6, f.fuelPage2Item1, f.fuelPage2Item2, f.fuelPage2Item5)
            << "100 mil 10 l/100km --- 16 l/100km 5 mil 7 l/100km 1 2 200";
        QTest::addRow("33 page 3") << frame(0x33, {3, 150}) << FIELDS(f.fuelPercent) << "100";
    }

    void records()
    {
        QFETCH(QByteArray, frame);
        QFETCH(Probe, probe);
        QFETCH(QString, expected);
        DriverHarness h(31);
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        h.feed(frame);
        QCOMPARE(probe(info(h)), expected);
        QVERIFY(changed.count() >= 1);
    }

    void commands_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QByteArray>("state");   // D0 and D1 of a climate frame first
        QTest::addColumn<bool>("rightDriver");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<L>("frames");
        const auto press = [](int code, int arg) { return L{frame(0xE0, {code, arg}), frame(0xE0, {code, 0})}; };
        const auto to = [](int code, int arg) { return L{frame(0xC6, {code, arg})}; };
        const QByteArray none = bytes({0, 0});
        QTest::addRow("AirTempFrontLeft sub") << 31 << none << false << "AirTempFrontLeft" << "sub" << press(2, 1);
        QTest::addRow("AirTempFrontLeft sub, right-hand") << 31 << none << true << "AirTempFrontLeft" << "sub" << press(4, 1);
        QTest::addRow("AirTempFrontRight x, right-hand") << 31 << none << true << "AirTempFrontRight" << "x" << press(3, 1);
        QTest::addRow("AirWindDownFront") << 31 << none << false << "AirWindDownFront" << "1" << press(8, 0);
        QTest::addRow("AirWindSpeedFront 1") << 31 << none << false << "AirWindSpeedFront" << "1" << press(9, 1);
        QTest::addRow("AirWindSpeedAddSubFront 1") << 31 << none << false << "AirWindSpeedAddSubFront" << "1" << press(10, 1);
        QTest::addRow("AirWindSpeedAddSubFront add") << 31 << none << false << "AirWindSpeedAddSubFront" << "add" << press(9, 1);
        QTest::addRow("unknown") << 31 << none << false << "AirTempRear" << "add" << press(0, 0);
        // 53 names the air flow it wants, from the live record.
        QTest::addRow("53 up, up on") << 53 << bytes({0, 0x80}) << false << "AirWindUpFront" << "" << to(0xAC, 5);
        QTest::addRow("53 up, up off") << 53 << bytes({0, 0x60}) << false << "AirWindUpFront" << "" << to(0xAC, 6);
        QTest::addRow("53 face, face and feet") << 53 << bytes({0, 0x60}) << false << "AirWindFrontFront" << "" << to(0xAC, 5);
        QTest::addRow("53 face, face") << 53 << bytes({0, 0x40}) << false << "AirWindFrontFront" << "" << to(0xAC, 6);
        QTest::addRow("53 face, feet") << 53 << bytes({0, 0x20}) << false << "AirWindFrontFront" << "" << to(0xAC, 4);
        QTest::addRow("53 face, none") << 53 << bytes({0, 0x80}) << false << "AirWindFrontFront" << "" << to(0xAC, 3);
        QTest::addRow("53 feet, feet") << 53 << bytes({0, 0x20}) << false << "AirWindDownFront" << "" << to(0xAC, 3);
        QTest::addRow("53 feet, up") << 53 << bytes({0, 0xC0}) << false << "AirWindDownFront" << "" << to(0xAC, 6);
        QTest::addRow("53 feet, face") << 53 << bytes({0, 0x40}) << false << "AirWindDownFront" << "" << to(0xAC, 4);
        QTest::addRow("53 feet, none") << 53 << none << false << "AirWindDownFront" << "" << to(0xAC, 5);
        QTest::addRow("53 AirAC on") << 53 << bytes({0x40, 0}) << false << "AirAC" << "0" << to(0xAC, 2);
        QTest::addRow("53 AirAC off") << 53 << none << false << "AirAC" << "1" << to(0xAC, 1);
        QTest::addRow("53 fan up from 7") << 53 << bytes({0, 7}) << false << "AirWindSpeedAddSubFront" << "1" << to(0xAD, 8);
        QTest::addRow("53 fan up from 9") << 53 << bytes({0, 9}) << false << "AirWindSpeedAddSubFront" << "1" << to(0xAD, 7);
        QTest::addRow("53 fan down from 3") << 53 << bytes({0, 3}) << false << "AirWindSpeedAddSubFront" << "add" << to(0xAD, 2);
        QTest::addRow("53 fan down from 0") << 53 << none << false << "AirWindSpeedAddSubFront" << "0" << to(0xAD, 0);
        QTest::addRow("53 AirTempFrontLeft") << 53 << none << false << "AirTempFrontLeft" << "add" << L{};
    }

    void commands()
    {
        QFETCH(int, id);
        QFETCH(QByteArray, state);
        QFETCH(bool, rightDriver);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(L, frames);
        DriverHarness h(id);
        h.feed(air(quint8(state[0]), quint8(state[1])));
        h.driver()->setRightDriver(rightDriver);
        h.clearSent();
        h.driver()->setCanbusState(key, value);
        QCOMPARE(h.sentFrames(), frames);
    }

    void languageClockModelReverseTouch()
    {
        DriverHarness h(31);
        DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), 9, QString());
        h.manager()->setId(36, false);
        h.manager()->setId(31, false);
        QCOMPARE(info(h).powerFlow.carModel, quint8(6));
        setModes(h, 0, 2);
        h.clearSent();
        honda(h)->exitSelectSlot();   // no variant: nothing
        honda(h)->languageChanged(QStringLiteral("ja"));
        honda(h)->languageChanged(QStringLiteral("xbl"));
        QCOMPARE(info(h).backlight.languageCode, quint8(26));
        h.driver()->setCurrentTime(13, 5, 9);
        h.feed(frame(0x79, {0x01, 9, 30, 0, 0}));   // the vehicle's clock, with a 12-hour display
        QCOMPARE(DateTimeCtrl::getInstance()->getCurrentDateTime().toString(QStringLiteral("HH:mm")), QStringLiteral("09:30"));
        QCOMPARE(DateTimeCtrl::getInstance()->lastSetFlag(), 1);
        // The vehicle repeats its minute: the seconds the clock ran on stay; a new minute is taken.
        DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2026, 5, 4), QTime(9, 30, 40)));
        h.feed(frame(0x79, {0x01, 9, 30, 0, 0}));
        QCOMPARE(DateTimeCtrl::getInstance()->getCurrentDateTime().time(), QTime(9, 30, 40));
        h.feed(frame(0x79, {0x01, 9, 31, 0, 0}));
        QCOMPARE(DateTimeCtrl::getInstance()->getCurrentDateTime().time(), QTime(9, 31));
        h.driver()->setCurrentTime(0, 1, 2);
        h.driver()->setCurrentTime(13, 1, 2);
        honda(h)->setTcanBussend(512, 300, 1024, 600, 0);
        honda(h)->setTcanBussend(512, 300, 1024, 600, 1);
        h.driver()->setInReverse(true);   // the mode follows three seconds later
        QCOMPARE(h.sentFrames(), (L{frame(0xC6, {0x55, 26}), frame(0xC6, {0x50, 13, 5, 9}), frame(0xC6, {0x50, 0x8C, 1, 2}),
            frame(0xC6, {0x50, 0x81, 1, 2}), frame(0x98, {1, 0x01, 0xFF, 0x01, 0xF4, 0})}));
        QTRY_COMPARE_WITH_TIMEOUT(h.sentFrames().size(), 6, 5000);
        QCOMPARE(h.sentFrames().last(), frame(0xC6, {0x40, 2}));
        setModes(h, 3, 2);
        h.clearSent();
        honda(h)->exitSelectSlot();
        QCOMPARE(h.sentFrames(), L{frame(0xE2, {3})});
    }

    void sources_data()
    {
        QTest::addColumn<int>("source");
        QTest::addColumn<QVariantList>("args");
        QTest::addColumn<int>("carModel");
        QTest::addColumn<L>("frames");
        QTest::addRow("radio FM3 10170") << 1 << QVariantList{4, 10170} << 0
                                         << L{frame(0xC0, {1, 1}), frame(0xC2, {2, 0xBA, 0x27, 0})};
        QTest::addRow("radio AM1") << 1 << QVariantList{5, 0} << 0 << L{frame(0xC0, {1, 1}), frame(0xC2, {16, 0, 0, 0})};
        QTest::addRow("media 13 at 75 of 300") << 13 << QVariantList{0, 3, 0x0102, 75, 300, "Hi"} << 0
            << L{frame(0xC0, {8, 0x13}), frame(0xC3, {0x02, 25, 3, 0, 1, 15}), text(2, "Hi")};
        QTest::addRow("media 17 counts") << 17 << QVariantList{0, 3, 0x0102, 75, 300, "Hi"} << 0
            << L{frame(0xC0, {9, 0x20}), frame(0xC3, {0x02, 0x01, 3, 0, 0, 0}), text(2, "Hi")};
        QTest::addRow("media 16, model 3: UTF-16, cut") << 16 << QVariantList{0, 0, 0, 0, 1, QString(20, 'A')} << 3
            << L{frame(0xC0, {9, 0x10}), frame(0xC3, {0, 0, 0, 0, 0, 0}), text(2, QByteArray::fromHex(QByteArray("0041").repeated(16)))};
        QTest::addRow("media 14, UTF-8, cut") << 14 << QVariantList{0, 0, 0, 0, 0, QString(40, 'A')} << 0
            << L{frame(0xC0, {8, 0x20}), frame(0xC3, {0, 0, 0, 0, 0, 0}), text(2, QByteArray(32, 'A'))};
        QTest::addRow("phone") << 24 << QVariantList{1, "Bob", "123"} << 0 << L{frame(0xC0, {5, 0x40}), text(1, "Bob")};
        QTest::addRow("source 18") << 18 << QVariantList{1, 2} << 0 << L{};
    }

    void sources()
    {
        QFETCH(int, source);
        QFETCH(QVariantList, args);
        QFETCH(int, carModel);
        QFETCH(L, frames);
        DriverHarness h(31);
        setModes(h, quint8(carModel), 0);
        h.clearSent();
        h.driver()->setSrcState(CanbusInterface::srctype(source), args);
        QCOMPARE(h.sentFrames(), frames);
    }

    void linkAndWalk()
    {
        for (int id : {31, 53, 36}) {
            DriverHarness h(id);
            int interval = 0;
            QByteArray out;
            QVERIFY(h.driver()->needSendConnect(interval, out));
            QCOMPARE(out, frame(0x81, {1}));
            QVERIFY(!h.driver()->needSendDisconnect(out));
            h.feed(frame(0x30, {'V', '1', 0}));
            QCOMPARE(h.driver()->getVersionData(), QStringLiteral("V1"));
            QVERIFY(h.driver()->isConnectedState());
            h.feed(frame(0x24, {0}));
            // 31 and 53 keep asking: the answer holds only until the next frame.
            QCOMPARE(h.driver()->isConnectedState(), id == 36);
            // A half frame behind a whole one waits on 31's walk and is dropped on the others'.
            QCOMPARE(h.driver()->setCanbusData(frame(0x24, {0}) + bytes({0x2E, 0x24, 0x01})), id == 31 ? 5 : 8);
            h.watchActivity();
            QCOMPARE(h.driver()->checkProtocolData(frame(0x32, {1, 2, 3})), 1);
            QCOMPARE(h.driver()->checkProtocolData(frame(0x26, {1, 2, 3})), 0);
            QCOMPARE(h.activity(), 0);
        }
    }

    void variantRecordAndTimer()
    {
        DriverHarness h(53);
        QCOMPARE(QString::fromLatin1(h.driver()->getDataInfo().typeName()), QStringLiteral("Data53Info"));
        h.feed(frame(0x52, {0x80, 0}));
        QCOMPARE(info(h).powerFlow.powerBit7, quint8(1));   // a screen made for 31 reads it
        setModes(h, 2, 0);                                    // and writes it
        QCOMPARE(h.driver()->getDataInfo().value<Data53Info>().powerFlow.carModel, quint8(2));
        int modelTimers = 0;
        for (const QTimer* t : h.driver()->findChildren<QTimer*>())
            modelTimers += t->isActive() && t->interval() == 2000 ? 1 : 0;
        QCOMPARE(modelTimers, 1);
    }
};

QTEST_GUILESS_MAIN(TestDriver31)
#include "tst_driver31.moc"
