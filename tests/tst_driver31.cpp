// Honda (31), its landscape variant (53) and the DA box (36): climate by difference with
// the late switch-off, radar segments, doors, keys, the radio, settings, fuel and parking
// frames, the vehicle's clock; commands, language, clock, model, reverse, sources and
// touch out; the link. 53 is tested for its commands and record, 36 for its link.

#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include "canbus31/canbus31.h"
#include "canbus53/canbus53.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;
using testframes::frame;

namespace {
using Probe = QString (*)(const Data31Info&);
Data31Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data31Info>(); }
Canbus31Obj* honda(const DriverHarness& h) { return qobject_cast<Canbus31Obj*>(h.driver()); }
QByteArray airFrame(int d0, int d1, int d2 = 0, int d3 = 0, int d4 = 0, int d6 = 0, int d7 = 0)
{
    return frame(0x21, {d0, d1, d2, d3, d4, 0, d6, d7, 0});
}
QByteArray textFrame(int lead, const QByteArray& text)
{
    QByteArray data(33, '\0');
    data[0] = char(lead);
    data.replace(1, text.size(), text);
    return frame(0xCB, data);
}
void setRecord(DriverHarness& h, quint8 carModel, quint8 reverseMode)
{
    Data31Info d = info(h);
    d.powerFlow.carModel = carModel;
    d.powerFlow.reverseMode = reverseMode;
    h.manager()->setDataById(QVariant::fromValue(d), 31);
}
}
Q_DECLARE_METATYPE(Probe)

class TestDriver31 : public QObject
{
    Q_OBJECT
private slots:
    void climate_data();
    void climate();
    void climateRepeatsAndLateSwitchOff();
    void radarDoorsSteering();
    void keys_data();
    void keys();
    void records_data();
    void records();
    void commands_data();
    void commands();
    void languageClockAndModel();
    void sources_data();
    void sources();
    void reverseAndTouch();
    void linkAndWalk();
    void variantCommands_data();
    void variantCommands();
    void variantRecordAndTimer();
};

void TestDriver31::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("D0 e9") << airFrame(0xE9, 0) << false << QStringList{"airOnOff=1", "airPower=1", "airAC=1",
        "airInnerLoop=1", "airSync=0", "airAuto=1", "airDual=0", "airDefrostRear=0", "airRearLock=1"};
    QTest::addRow("D0 16") << airFrame(0x16, 0) << false
                           << QStringList{"airOnOff=0", "airSync=1", "airDual=1", "airDefrostRear=1", "airRearLock=0"};
    QTest::addRow("D1 a5") << airFrame(0x80, 0xA5) << false << QStringList{"airWindUpLeft=1", "airWindUpRight=1",
        "airWindFrontLeft=0", "airWindDownRight=1", "airWindSpeedLeft=5", "airWindSpeedRight=5"};
    QTest::addRow("celsius 44 0 255") << airFrame(0, 0, 44, 0, 0x80, 255) << false << QStringList{"tempLeft=22.0",
        "tempRightLow=1", "airDefrostFront=1", "tempRearHigh=1", "tempRear2High=1", "tempLeftFahrenheit=0"};
    QTest::addRow("fahrenheit 72 255 70") << airFrame(0, 0, 72, 255, 0x01, 70) << false << QStringList{
        "tempLeft=72.0", "tempRightHigh=1", "tempRear=70.0", "tempRear2=70.0", "tempRear2Fahrenheit=1"};
    QTest::addRow("right-hand drive") << airFrame(0, 0, 40, 50) << true << QStringList{"tempLeft=25.0", "tempRight=20.0"};
    QTest::addRow("D7 6b") << airFrame(0, 0, 0, 0, 0, 0, 0x6B) << false << QStringList{"tempRearVisible=0",
        "airRearSpare[0]=0", "airRearSpare[1]=1", "airRearSpare[5]=1", "airRearSpare[2]=1", "airRearSpare[7]=11"};
    QTest::addRow("D9 4c cooling") << frame(0x21, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x4C}) << false
                                   << QStringList{"seatHotLeft=255", "seatHotRight=253"};
    QTest::addRow("D9 21 heating") << frame(0x21, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x21}) << false
                                   << QStringList{"seatHotLeft=2", "seatHotRight=1"};
    // 13 bytes: the checksum (0xd5) sits where D9 would be.
    QTest::addRow("no D9") << airFrame(0, 0) << false << QStringList{"seatHotLeft=0", "seatHotRight=0"};
}

void TestDriver31::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, fields);
    DriverHarness h(31);
    h.driver()->setRightDriver(rightDriver);
    h.feed(frame);
    compareFields(*h.driver()->getAirData(), fields);
}

void TestDriver31::climateRepeatsAndLateSwitchOff()
{
    DriverHarness h(31);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(airFrame(0x80, 0));
    h.feed(airFrame(0x80, 0));
    QCOMPARE(air.count(), 1);
    h.feed(airFrame(0x00, 0x10));   // off, but its own power bit moved to on
    QCOMPARE(air.count(), 2);
    h.feed(airFrame(0x00, 0x00));   // off for good: told a second later
    QCOMPARE(air.count(), 2);
    QTRY_COMPARE(air.count(), 3);
    h.feed(airFrame(0x00, 0x01));
    h.feed(airFrame(0x80, 0x01));   // on again before the second is up: at once, and only once
    QCOMPARE(air.count(), 4);
    QTest::qWait(1200);
    QCOMPARE(air.count(), 4);
}

void TestDriver31::radarDoorsSteering()
{
    DriverHarness h(31);   // not in reverse: radar frames still count
    h.feed(frame(0x22, {0, 1, 4, 5}));
    compareFields(*h.driver()->getRadarData(), {"radarLevels=8", "radarRearLeft=0", "radarRearLeftMid=2",
                                                "radarRearRightMid=8", "radarRearRight=255", "radarOn=1"});
    h.feed(frame(0x23, {3, 0, 0, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarFrontLeft=6", "radarFrontLeftMid=0"});
    RadarData& r = *h.driver()->getRadarData();
    r = RadarData();
    r.radarLevels = 12;
    r.radarFrontLeftMid = 3;   // the distance scale ignores the second front sensor
    r.radarFrontLeft = r.radarFrontRightMid = r.radarFrontRight = r.radarRearLeft = r.radarRearLeftMid =
        r.radarRearRightMid = r.radarRearRight = 11;
    honda(h)->RadarDisplay();
    QCOMPARE(r.radarOn, quint8(0));
    r.radarRearRight = 10;
    honda(h)->RadarDisplay();
    QCOMPARE(r.radarOn, quint8(1));

    h.feed(frame(0x24, {0x6C, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorRearRight=1",
                                                  "doorRearLeft=0", "doorTrunk=1", "doorHood=1"});
    h.feed(frame(0x24, {0, 0, 0}));   // 7 bytes: not a door frame
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1"});

    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x29, {0x00, 0xFF, 0}));
    QCOMPARE(steering.count(), 0);
    h.driver()->setShowReverseLine(true);
    h.feed(frame(0x29, {0x00, 0xFF, 0}));
    QCOMPARE(steering.value(0), (QList<QVariant>{-256, 4608, true}));
}

void TestDriver31::keys_data()
{
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<int>("code");
    QTest::addColumn<QList<int>>("states");
    using L = QList<QByteArray>;
    using S = QList<int>;
    QTest::addRow("20 0101 then 0000") << L{frame(0x20, {1, 1}), frame(0x20, {0, 0})} << 0x1100025 << S{1, 0};
    QTest::addRow("20 8602") << L{frame(0x20, {134, 2})} << 0x1100023 << S{2};
    QTest::addRow("20 0501: no key, still sent") << L{frame(0x20, {5, 1})} << 0 << S{1};
    QTest::addRow("d3 22") << L{frame(0xD3, {0x22})} << 0x1300060 << S{1, 0};
    QTest::addRow("d3 24") << L{frame(0xD3, {0x24})} << 0x130000E << S{1, 0};
    QTest::addRow("d3 26") << L{frame(0xD3, {0x26})} << 0 << S{};
}

void TestDriver31::keys()
{
    QFETCH(QList<QByteArray>, frames);
    QFETCH(int, code);
    QFETCH(QList<int>, states);
    DriverHarness h(31);
    for (const QByteArray& f : frames)
        h.feed(f);
    QList<int> expected;
    for (int s : states)
        expected << h.driver()->toKkmapKey(code) << s;
    QCOMPARE(h.keyEvents(), expected);
    QSignalSpy activity(h.driver(), SIGNAL(requestActivity(QString)));
    h.feed(frame(0xD3, {0x23}));
    QCOMPARE(activity.value(0).value(0).toString(), QStringLiteral("btMusicMode"));
}

void TestDriver31::records_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<Probe>("probe");
    QTest::addColumn<QString>("expected");
    const Probe station = [](const Data31Info& d) { const auto& r = d.radio;
        return QStringLiteral("%1|%2|%3%4%5%6").arg(r.radioFrequencyText).arg(r.radioPreset).arg(r.radioBit7)
            .arg(r.radioBit6).arg(r.radioBit5).arg(r.radioBit4); };
    QTest::addRow("03 9f0213") << frame(0x03, {0x9F, 0x02, 0x13, 0}) << station << "531 KHZ|12|1001";
    QTest::addRow("03 2c03f9") << frame(0x03, {0x2C, 0x03, 0xF9, 0}) << station << "101.7 MHZ|12|0010";
    QTest::addRow("04 text from byte 4") << frame(0x04, bytes({0x80, 'H', 3, 'i'}) + QByteArray(22, 0))
        << Probe([](const Data31Info& d) { return QString::number(d.radio.radioTextFlag) + QString::fromLatin1(d.radio.radioText.toHex()); })
        << "14803";
    QTest::addRow("07 8a0709 0100") << frame(0x07, {0x8A, 7, 9, 0x01, 0x00, 0})
        << Probe([](const Data31Info& d) { const auto& r = d.radio; return QStringLiteral("%1 %2 %3 %4 %5")
            .arg(r.tunerBit7).arg(r.tunerLowNibble).arg(r.tunerByte1).arg(r.tunerByte2).arg(r.tunerFrequencyText); })
        << "1 10 7 9 256 KHZ";
    QTest::addRow("14 clamps") << frame(0x14, {0x33, 3, 5, 11, 10, 12, 0})
        << Probe([](const Data31Info& d) { const auto& b = d.backlight; return QStringLiteral("%1 %2 %3 %4 %5 %6")
            .arg(b.backlightRaw).arg(b.backlightItem1).arg(b.backlightItem2).arg(b.backlightValue1)
            .arg(b.backlightValue2).arg(b.backlightValue3); }) << "51 2 4 10 10 10";
    const Probe park = [](const Data31Info& d) { const auto& p = d.parking;
        return QStringLiteral("%1%2%3%4 %5 %6 %7%8%9").arg(p.parkBit3).arg(p.parkBit2).arg(p.parkBit1)
            .arg(p.parkBit0).arg(p.parkRaw50).arg(p.parkRaw78).arg(p.angleBit7).arg(p.angleLowNibble).arg(p.angleText); };
    QTest::addRow("25 0a") << frame(0x25, {0x0A, 0, 0}) << park << "1010 0 0 00";
    QTest::addRow("50 42, 78 D1") << frame(0x50, {0x42, 0}) + frame(0x78, {0x11, 0x22, 0}) << park << "0000 66 34 00";
    QTest::addRow("d2 8565") << frame(0xD2, {0x85, 101, 0}) << park << "0000 0 0 15151°";
    QTest::addRow("d1 0084") << frame(0xD1, {0, 0x84, 0})
        << Probe([](const Data31Info& d) { const auto& p = d.parking; return QStringLiteral("%1%2%3%4")
            .arg(p.parkFlagA).arg(p.parkFlagB).arg(p.parkFlagC).arg(p.parkFlagD); }) << "1001";
    QTest::addRow("52 a0") << frame(0x52, {0xA0, 0})
        << Probe([](const Data31Info& d) { const auto& p = d.powerFlow; return QStringLiteral("%1%2%3%4")
            .arg(p.powerBit7).arg(p.powerBit6).arg(p.powerBit5).arg(p.powerBit4); }) << "1010";
    const Probe settings = [](const Data31Info& d) { const auto& s = d.vehicleSetting; QStringList v;
        for (quint8 i : {s.settingItem0, s.settingItem1, s.settingItem2, s.settingItem3, s.settingItem4,
                         s.settingItem15, s.settingItem16, s.settingItem27, s.settingItem28, s.settingItem30,
                         s.settingItem36, s.settingItem43, s.settingItem45, s.settingItem47, s.settingItem50,
                         s.settingItem54})
            v << QString::number(i);
        return v.join(' '); };
    QTest::addRow("32 12 bytes") << frame(0x32, {0x9F, 0x7F, 0, 0x07, 0xC0, 0x0F, 0x60, 0x01}) << settings
                                 << "2 1 6 4 3 4 2 2 2 2 0 1 0 0 0 0";
    QTest::addRow("32 15 bytes") << frame(0x32, {0, 0, 0, 0, 0, 0, 0, 0x80, 0x40, 0x6A, 0x20}) << settings
                                 << "0 0 0 0 0 0 0 0 0 0 1 0 1 2 1 1";
    const Probe fuel = [](const Data31Info& d) { const auto& f = d.fuel; return QStringList{f.fuelPage1Text1,
        f.fuelPage1Text2, f.fuelPage1Text3, f.fuelPage1Text4, f.fuelPage1Text5, f.fuelPage1Text6,
        QStringLiteral("%1%2%3%4%5 %6").arg(f.fuelPage1Item0).arg(f.fuelPage1Item1).arg(f.fuelPage1Item2)
            .arg(f.fuelPage1Item3).arg(f.fuelPage1Item4).arg(f.fuelPage1Item5), f.fuelPage2Text1,
        f.fuelPage2Text2, f.fuelPage2Text3, f.fuelPage2Text4, f.fuelPage2Text5, f.fuelPage2Text6,
        QStringLiteral("%1 %2 %3").arg(f.fuelPage2Item1).arg(f.fuelPage2Item2).arg(f.fuelPage2Item5),
        QString::number(f.fuelPercent)}.join('|'); };
    const QByteArray page1 = frame(0x33, {1, 12, 0, 125, 0xFF, 0xFF, 0x01, 0xF4, 0, 4, 0, 1, 2, 0x46, 20});
    QTest::addRow("33 page 1") << page1 << fuel << "12 l/100km|12.5 km/l|---|50 mpg|102.4 mil|258 km|01012 11"
                                                   "|||||||0 0 0|0";
    QTest::addRow("33 page 1 short") << frame(0x33, page1.mid(3, 14)) << fuel << "||||||00000 0|||||||0 0 0|0";
    QTest::addRow("33 page 2") << frame(0x33, {2, 0, 3, 0xE8, 0, 100, 0xFF, 0xFF, 0xFF, 0, 16, 0, 0, 5, 0, 7, 0x60, 200})
        << fuel << "||||||00000 0|100 mil|10 l/100km|---|16 l/100km|5 mil|7 l/100km|1 2 200|0";
    QTest::addRow("33 page 3") << frame(0x33, {3, 150}) << fuel << "||||||00000 0|||||||0 0 0|100";
}

void TestDriver31::records()
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

void TestDriver31::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("arg");
    QTest::addRow("AirTempFrontLeft sub") << "AirTempFrontLeft" << "sub" << false << 2 << 1;
    QTest::addRow("AirTempFrontLeft add") << "AirTempFrontLeft" << "add" << false << 3 << 1;
    QTest::addRow("AirTempFrontLeft sub, right-hand") << "AirTempFrontLeft" << "sub" << true << 4 << 1;
    QTest::addRow("AirTempFrontRight x, right-hand") << "AirTempFrontRight" << "x" << true << 3 << 1;
    QTest::addRow("AirWindDownFront") << "AirWindDownFront" << "1" << false << 8 << 0;
    QTest::addRow("AirWindSpeedFront 1") << "AirWindSpeedFront" << "1" << false << 9 << 1;
    QTest::addRow("AirWindSpeedAddSubFront 1") << "AirWindSpeedAddSubFront" << "1" << false << 10 << 1;
    QTest::addRow("AirWindSpeedAddSubFront add") << "AirWindSpeedAddSubFront" << "add" << false << 9 << 1;
    QTest::addRow("AirRearLock") << "AirRearLock" << "" << false << 42 << 1;
    QTest::addRow("unknown") << "AirTempRear" << "add" << false << 0 << 0;
}

void TestDriver31::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, rightDriver);
    QFETCH(int, code);
    QFETCH(int, arg);
    DriverHarness h(31);
    h.driver()->setRightDriver(rightDriver);
    h.clearSent();
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xE0, {code, arg}), frame(0xE0, {code, 0})}));
}

void TestDriver31::languageClockAndModel()
{
    DriverHarness h(31);
    DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), 9, QString());
    h.manager()->setId(36, false);
    h.manager()->setId(31, false);
    QCOMPARE(info(h).powerFlow.carModel, quint8(6));
    setRecord(h, 0, 0);
    h.clearSent();
    honda(h)->exitSelectSlot();
    honda(h)->languageChanged(QStringLiteral("ja"));
    honda(h)->languageChanged(QStringLiteral("xbl"));
    setRecord(h, 3, 0);
    honda(h)->exitSelectSlot();
    h.driver()->setCurrentTime(13, 5, 9);
    h.feed(frame(0x79, {0x01, 9, 30, 0, 0}));   // the vehicle's clock: 12-hour display
    QCOMPARE(DateTimeCtrl::getInstance()->getCurrentDateTime().time().toString(QStringLiteral("HH:mm")), QStringLiteral("09:30"));
    QCOMPARE(DateTimeCtrl::getInstance()->lastSetFlag(), 1);
    h.driver()->setCurrentTime(0, 1, 2);
    h.driver()->setCurrentTime(13, 1, 2);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xC6, {0x55, 26}), frame(0xE2, {3}),
        frame(0xC6, {0x50, 13, 5, 9}), frame(0xC6, {0x50, 0x8C, 1, 2}), frame(0xC6, {0x50, 0x81, 1, 2})}));
    QCOMPARE(info(h).backlight.languageCode, quint8(26));
}

void TestDriver31::sources_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<QVariantList>("args");
    QTest::addColumn<int>("carModel");
    QTest::addColumn<QList<QByteArray>>("frames");
    using L = QList<QByteArray>;
    QTest::addRow("radio FM1 10170") << 1 << QVariantList{2, 10170} << 0
                                     << L{frame(0xC0, {1, 1}), frame(0xC2, {1, 0xBA, 0x27, 0})};
    QTest::addRow("radio FM3") << 1 << QVariantList{4, 0} << 0 << L{frame(0xC0, {1, 1}), frame(0xC2, {2, 0, 0, 0})};
    QTest::addRow("radio AM1") << 1 << QVariantList{5, 0} << 0 << L{frame(0xC0, {1, 1}), frame(0xC2, {16, 0, 0, 0})};
    QTest::addRow("radio one item") << 1 << QVariantList{5} << 0 << L{};
    QTest::addRow("media 13 at 75 of 300") << 13 << QVariantList{0, 3, 0x0102, 75, 300, "Hi"} << 0
        << L{frame(0xC0, {8, 0x13}), frame(0xC3, {0x02, 25, 3, 0, 1, 15}), textFrame(2, "Hi")};
    QTest::addRow("media 17 counts") << 17 << QVariantList{0, 3, 0x0102, 75, 300, "Hi"} << 0
        << L{frame(0xC0, {9, 0x20}), frame(0xC3, {0x02, 0x01, 3, 0, 0, 0}), textFrame(2, "Hi")};
    QTest::addRow("media 22 no length") << 22 << QVariantList{0, 1, 1, 75, 0, ""} << 0
        << L{frame(0xC0, {5, 0x13}), frame(0xC3, {1, 0, 1, 0, 1, 15}), textFrame(2, "")};
    QTest::addRow("media 16, model 3: UTF-16, cut") << 16 << QVariantList{0, 0, 0, 0, 1, QString(20, 'A')} << 3
        << L{frame(0xC0, {9, 0x10}), frame(0xC3, {0, 0, 0, 0, 0, 0}),
             textFrame(2, QByteArray::fromHex(QByteArray("0041").repeated(16)))};
    QTest::addRow("media 14, UTF-8, cut") << 14 << QVariantList{0, 0, 0, 0, 0, QString(40, 'A')} << 0
        << L{frame(0xC0, {8, 0x20}), frame(0xC3, {0, 0, 0, 0, 0, 0}), textFrame(2, QByteArray(32, 'A'))};
    QTest::addRow("phone") << 24 << QVariantList{1, "Bob", "123"} << 0
                           << L{frame(0xC0, {5, 0x40}), textFrame(1, "Bob")};
    QTest::addRow("source 18") << 18 << QVariantList{1, 2} << 0 << L{};
}

void TestDriver31::sources()
{
    QFETCH(int, source);
    QFETCH(QVariantList, args);
    QFETCH(int, carModel);
    QFETCH(QList<QByteArray>, frames);
    DriverHarness h(31);
    setRecord(h, quint8(carModel), 0);
    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::srctype(source), args);
    QCOMPARE(h.sentFrames(), frames);
    if (!frames.isEmpty())
        QCOMPARE(frames.last().size(), source == 1 ? 8 : 37);
}

void TestDriver31::reverseAndTouch()
{
    DriverHarness h(31);
    setRecord(h, 0, 2);
    h.clearSent();
    h.driver()->setInReverse(true);
    honda(h)->setTcanBussend(512, 300, 1024, 600, 0);
    honda(h)->setTcanBussend(512, 300, 1024, 600, 1);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0x98, {1, 0x01, 0xFF, 0x01, 0xF4, 0})});
    QTRY_COMPARE_WITH_TIMEOUT(h.sentFrames().size(), 2, 5000);
    QCOMPARE(h.sentFrames().last(), frame(0xC6, {0x40, 2}));
}

void TestDriver31::linkAndWalk()
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
        const QByteArray whole = frame(0x24, {0});
        QCOMPARE(h.driver()->setCanbusData(whole + bytes({0x2E, 0x24, 0x01})), id == 31 ? 5 : 8);
        h.watchActivity();
        QCOMPARE(h.driver()->checkProtocolData(frame(0x32, {1, 2, 3})), 1);
        QCOMPARE(h.driver()->checkProtocolData(frame(0x26, {1, 2, 3})), 0);
        QCOMPARE(h.activity(), 0);
    }
}

void TestDriver31::variantCommands_data()
{
    QTest::addColumn<QByteArray>("state");   // D0 and D1 of a climate frame
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<QByteArray>>("frames");
    using L = QList<QByteArray>;
    const auto to = [](int code, int arg) { return L{frame(0xC6, {code, arg})}; };
    QTest::addRow("up, up on") << bytes({0, 0x80}) << "AirWindUpFront" << "" << to(0xAC, 5);
    QTest::addRow("up, up off") << bytes({0, 0x60}) << "AirWindUpFront" << "" << to(0xAC, 6);
    QTest::addRow("face, face and feet") << bytes({0, 0x60}) << "AirWindFrontFront" << "" << to(0xAC, 5);
    QTest::addRow("face, face") << bytes({0, 0x40}) << "AirWindFrontFront" << "" << to(0xAC, 6);
    QTest::addRow("face, feet") << bytes({0, 0x20}) << "AirWindFrontFront" << "" << to(0xAC, 4);
    QTest::addRow("face, none") << bytes({0, 0x80}) << "AirWindFrontFront" << "" << to(0xAC, 3);
    QTest::addRow("feet, feet") << bytes({0, 0x20}) << "AirWindDownFront" << "" << to(0xAC, 3);
    QTest::addRow("feet, up") << bytes({0, 0xC0}) << "AirWindDownFront" << "" << to(0xAC, 6);
    QTest::addRow("feet, face") << bytes({0, 0x40}) << "AirWindDownFront" << "" << to(0xAC, 4);
    QTest::addRow("feet, none") << bytes({0, 0x00}) << "AirWindDownFront" << "" << to(0xAC, 5);
    QTest::addRow("AirAC on") << bytes({0x40, 0}) << "AirAC" << "0" << to(0xAC, 2);
    QTest::addRow("AirAC off") << bytes({0, 0}) << "AirAC" << "1" << to(0xAC, 1);
    QTest::addRow("fan up from 7") << bytes({0, 7}) << "AirWindSpeedAddSubFront" << "1" << to(0xAD, 8);
    QTest::addRow("fan up from 9") << bytes({0, 9}) << "AirWindSpeedAddSubFront" << "1" << to(0xAD, 7);
    QTest::addRow("fan down from 3") << bytes({0, 3}) << "AirWindSpeedAddSubFront" << "add" << to(0xAD, 2);
    QTest::addRow("fan down from 0") << bytes({0, 0}) << "AirWindSpeedAddSubFront" << "0" << to(0xAD, 0);
    QTest::addRow("AirTempFrontLeft") << bytes({0, 0}) << "AirTempFrontLeft" << "add" << L{};
}

void TestDriver31::variantCommands()
{
    QFETCH(QByteArray, state);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QList<QByteArray>, frames);
    DriverHarness h(53);
    h.feed(airFrame(quint8(state[0]), quint8(state[1])));
    h.clearSent();
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), frames);
}

void TestDriver31::variantRecordAndTimer()
{
    DriverHarness h(53);
    QCOMPARE(QString::fromLatin1(h.driver()->getDataInfo().typeName()), QStringLiteral("Data53Info"));
    h.feed(frame(0x52, {0x80, 0}));
    QCOMPARE(info(h).powerFlow.powerBit7, quint8(1));   // a screen made for 31 reads it
    setRecord(h, 2, 0);                                   // and writes it
    QCOMPARE(h.driver()->getDataInfo().value<Data53Info>().powerFlow.carModel, quint8(2));
    int modelTimers = 0;
    for (const QTimer* t : h.driver()->findChildren<QTimer*>())
        modelTimers += t->isActive() && t->interval() == 2000 ? 1 : 0;
    QCOMPARE(modelTimers, 1);
    h.clearSent();
    honda(h)->setTcanBussend(0, 0, 10, 10, 2);   // touches as 31 sends them
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0x98, {0, 0, 0, 0, 0, 0})});
}

QTEST_GUILESS_MAIN(TestDriver31)
#include "tst_driver31.moc"
