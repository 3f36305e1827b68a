// Toyota (30), and its landscape (50) and portrait (51) boxes with their own commands and record.

#include <QSignalSpy>
#include <QtTest>

#include "canbus30/canbus30.h"
#include "canbus50/canbus50.h"
#include "canbus51/canbus51.h"
#include "datasavecontrol.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;
using L = QList<QByteArray>;
using S = QStringList;
using Calls = QList<QList<QVariant>>;   // a signal spy's record

constexpr int kId = 30;

// A row named by its frame's bytes, the frame being its first column.
static QTestData& byBytes(const QByteArray& f) { return QTest::newRow(f.toHex().constData()) << f; }

// A climate frame of the usual eleven data bytes, D0 first.
static QByteArray air(std::initializer_list<int> d) { return frame(0x28, testframes::bytes(d).leftJustified(11, 0)); }

static Data30Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data30Info>(); }

// A source frame: code, part, then the rest of its 34 data bytes.
static QByteArray source(int code, int part, const QByteArray& body = {})
{
    return frame(0x99, (char(code) + QByteArray(1, char(part)) + body).leftJustified(34, '\0', true));
}

// The portrait box's key frame pressed and let go.
static L pressed(int code) { return L{frame(0xE0, {code, 1}), frame(0xE0, {code, 0})}; }

static QByteArray le16(const char* text)
{
    return QByteArray(reinterpret_cast<const char*>(QString::fromLatin1(text).utf16()), 2 * int(qstrlen(text)));
}

class TestDriver30 : public QObject
{
    Q_OBJECT

private slots:
    void climate_data(); void climate();
    void climateBySection();
    void records_data(); void records();
    void keys_data(); void keys();
    void steeringSpeedDoorsRadar();
    void commands_data(); void commands();
    void languageAndModel_data(); void languageAndModel();
    void touch();
    void sourceReports_data(); void sourceReports();
    void linkAndGuards();
    void variants();
};

void TestDriver30::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");
    byBytes(air({0xA6})) << S{"airOnOff=1", "airAC=0", "airInnerLoop=1", "airAuto=0", "airAutoSoft=0", "airDual=1",
        "airSync=1", "airDefrostMax=1"};
    byBytes(air({0, 0xB5})) << S{"airWindUpLeft=1", "airWindUpRight=1", "airWindFrontLeft=0", "airWindFrontRight=0",
        "airWindDownRight=1", "airPower=1", "airWindSpeedLeft=5", "airWindSpeedRight=5"};
    // Celsius: 1..29 from 18.0, 32..35 from 16.0, 36 and 37 at the cool end.
    byBytes(air({0, 0, 1, 29})) << S{"tempLeft=18.0", "tempRight=32.0", "tempLeftFahrenheit=0"};
    byBytes(air({0, 0, 33, 37})) << S{"tempLeft=16.5", "tempRight=15.5"};
    byBytes(air({0, 0, 0, 31})) << S{"tempLeftLow=1", "tempLeftHigh=0", "tempRightHigh=1", "tempRightLow=0"};
    // Fahrenheit: the code is the degree, 255 the high end.
    byBytes(air({0, 0, 255, 31, 1})) << S{"tempLeftHigh=1", "tempRight=31", "tempRightHigh=0", "tempRightFahrenheit=1"};
    byBytes(air({0, 0, 0, 0, 0xFC})) << S{"airDefrostFront=1", "airDefrostRear=1", "airAutoLoop=1", "airEco=1",
        "airAcMax=1", "airRearLock=1"};
    // Rear zones: Fahrenheit counts down from 65; the cool end follows either scale.
    byBytes(air({0, 0, 0, 0, 1, 0, 1, 0, 38})) << S{"tempRear=65", "tempRear2=96", "tempRear2Fahrenheit=1"};
    byBytes(air({0, 0, 0, 0, 0, 0, 38, 0xC5})) << S{"tempRear=15.5", "tempRearVisible=1", "airRearSpare[1]=1",
        "airRearSpare[5]=1", "airRearSpare[2]=0", "airRearSpare[3]=5", "airRearSpare[7]=5"};
    // D9: bit 4 both sides up and down, then each side's two bits.
    byBytes(air({0, 0, 0, 0, 0, 0, 0, 0, 0, 0x1B})) << S{"airWindUpLeft=1", "airWindFrontLeft=0", "airWindDownLeft=1",
        "airWindUpRight=1", "airWindFrontRight=1", "airWindDownRight=1"};
    byBytes(air({0, 0x03, 0, 0, 0, 0, 0, 0, 0, 0, 0x03})) << S{"airWindSpeedLeft=7", "airWindSpeedRight=7"};
}

void TestDriver30::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, fields);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.driver()->setPowerOffState();   // not gated
    QCOMPARE(h.feed(frame), 0);
    compareFields(*h.driver()->getAirData(), fields);
    QCOMPARE(changed.count(), 1);
}

void TestDriver30::climateBySection()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(air({0, 0, 1, 5}));
    h.feed(air({0, 0, 1, 5}));   // the same again: nothing
    QCOMPARE(changed.count(), 1);
    // D2 did not move, so the left zone is not decoded again, though its code now comes from D3.
    h.driver()->setRightDriver(true);
    h.feed(air({0, 0, 1, 7}));
    compareFields(*h.driver()->getAirData(), {"tempLeft=18.0", "tempRight=18.0"});
    // A frame of another length runs every section.
    QByteArray longer = testframes::bytes({0, 0, 1, 7, 0, 0, 0, 0, 0, 0, 0, 0});
    h.feed(frame(0x28, longer));
    compareFields(*h.driver()->getAirData(), {"tempLeft=21.0"});
    QCOMPARE(changed.count(), 3);

    // The outdoor temperature, in half degrees from -40, is reported when D5 moves.
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(air({0, 0, 0, 0, 0, 1}));
    h.feed(air({0x80, 0, 0, 0, 0, 1}));
    compareFields(*h.driver()->getAirData(), {"outdoorTempValid=1", "outdoorTempUnit=0"});
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=-39", "outdoorTempUnit=0"});   // cut to zero
    h.feed(air({0, 0, 0, 0, 0, 0}));
    QCOMPARE(Calls(outdoor), (Calls{{QStringLiteral("-39.5℃"), 0}, {QStringLiteral("-40.0℃"), 0}}));
    compareFields(*h.driver()->getAirData(), {"outdoorTempValid=0"});
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=-40"});
}

void TestDriver30::records_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");   // of Data30Info
    QTest::addColumn<QStringList>("shared");   // of the body record, or of the climate record's tyres
    const QStringList none;
    byBytes(frame(0x21, {0x04, 0xD2, 0x01, 0x02, 0x00, 0x63, 2})) << S{"mileageValueText=123.4KM",
        "mileageMinutesText=258minute", "mileageDistanceText=99KM", "mileageUnit=2"}
        << S{"speed2Unit=0", "vehicleSpeed2=12340"};
    byBytes(frame(0x22, {2, 0x01, 0x23, 0})) << S{"fuelText=29.1L/100KM", "fuelUnitIndex=2"}
        << S{"fuelConsumption=291", "fuelConsumptionUnit=2"};
    byBytes(frame(0x22, {5, 0xFF, 0xFC, 0})) << S{"fuelText=", "fuelUnitIndex=2"} << S{"fuelConsumption=65532"};
    byBytes(frame(0x23, {1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0x00}))
        << S{"historyText1=0.1KM/L", "historyText6=409.6KM/L"} << none;
    byBytes(frame(0x27, hex("00fffc") + QByteArray(26, '\0') + hex("000a")))
        << S{"pastText1=", "pastText14=0.0MPG", "pastText15=1.0MPG"} << none;
    byBytes(frame(0x25, {0xE6, 100, 0, 0, 0, 255})) << S{"tyreBit7=1", "tyreBit6=1", "tyreBit5=1", "tyreBit2=1",
        "tyreUnitCode=2"} << S{"tirePressureFrontLeft=250.0KPA", "tirePressureSpare=--", "tireStatus=2"};
    byBytes(frame(0x25, {0x00, 25, 0, 0, 0, 0, 0})) << none << S{"tirePressureFrontLeft=2.5BAR"};
    byBytes(frame(0x26, {0xD9, 0xA5, 0x5E, 0x8E, 0})) << S{"bodyItem0=1", "bodyItem1=5", "bodyItem2=2", "bodyItem3=1",
        "bodyItem4=1", "bodyItem5=0", "bodyItem7=0", "bodyItem8=5", "bodyItem9=0", "bodyItem10=1", "bodyItem13=1",
        "bodyItem14=6", "bodyItem15=1", "bodyItem16=0", "bodyItem17=3", "bodyItem18=2"} << none;
    byBytes(frame(0x1E, {1, 2, 3, 4, 0xA5})) << S{"bodyItem19=1", "bodyItem20=0", "bodyItem21=1", "bodyItem22=5"}
        << none;
    byBytes(frame(0x1F, {0x85, 0x2A, 0})) << S{"hybridBit7=1", "hybridLowNibble=5", "hybridBits[0]=1",
        "hybridBits[1]=0", "hybridBits[5]=0"} << none;
    byBytes(frame(0x2B, {1, 0x01, 0x00, 0x00, 0x32, 0})) << S{"powerText=25.6KWh/km", "powerDistanceText=5.0MILE"}
        << none;
    // The bands sit around 2: 1 wraps in the byte and ends at the top.
    byBytes(frame(0x31, {0xF3, 0x57, 0x1A, 0x50, 0x02, 0})) << S{"ampPresent=1", "ampLevel1=14", "ampLevel2=3",
        "ampBand1=3", "ampBand2=5", "ampBand3=10", "ampLowNibble=10", "ampVolume=63", "ampFlag0=0", "ampFlag1=1"}
        << none;
    byBytes(frame(0x32, {0xC5, 0})) << S{"settingBits[0]=1", "settingBits[2]=0", "settingBits[3]=1", "settingBits[5]=1"}
        << none;
    byBytes(frame(0x50, {0x0F, 30, 0})) << S{"settingItem0=2", "settingItem1=3", "languageCode=21"} << none;
    byBytes(frame(0x52, {0x80, 0x00, 0x07, 0})) << S{"settingFlagA=1", "settingFlagB=0", "settingItem5=3"} << none;
    byBytes(frame(0x61, {0x29, 0xF0, 0xAB, 0, 0, 0})) << S{"mediaBits[0]=1", "mediaBits[1]=0", "mediaBits[5]=1",
        "mediaHigh61=7", "mediaLow61=11"} << none;
    byBytes(frame(0x66, QByteArray::fromHex("429040000000000000000000000000"))) << S{"mediaRaw66=66", "mediaHigh66=7",
        "mediaBit7=0", "mediaBit6=1"} << none;
    byBytes(frame(0x62, {1, 0, 1, 0xA3, 0x2A, 0x26, 0, 0})) << S{"radioBand=1", "radioBit7=1", "radioBit5=1",
        "radioLowNibble=3", "radioFrequencyText=97.7MHz"} << none;
    byBytes(frame(0x62, {1, 0, 3, 0, 0x2A, 0x26, 0, 0})) << S{"radioFrequencyText=9770KHz"} << none;
    byBytes(frame(0x62, QByteArray::fromHex("010107aabbccddeeff00112233445566"))) << S{"mediaState=7",
        "mediaBytes=aabbccddeeff001122334455"} << none;
    byBytes(frame(0x62, QByteArray::fromHex("0200133102010300010fff091700ff00"))) << S{"playState=3", "playHigh=2",
        "playFlag=1", "playTrack=258", "playTotal=3", "playTimeText=01:15:00", "playTotalTimeText=09:23:00"} << none;
    byBytes(frame(0x62, QByteArray::fromHex("0201c4e3bac3"))) << S{"mediaTextA=你好"} << none;
}

void TestDriver30::records()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, fields);
    QFETCH(QStringList, shared);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QCOMPARE(h.driver()->checkProtocolData(frame), 1);
    compareFields(info(h), fields);
    if (frame.at(1) == 0x25)
        compareFields(h.driver()->getAirData()->tire, shared);
    else
        compareFields(*h.driver()->getCarbodyData(), shared);
    QCOMPARE(changed.count(), 1);
}

void TestDriver30::keys_data()
{
    QTest::addColumn<L>("frames");
    QTest::addColumn<QList<int>>("events");   // keyboard number, state, ...
    QTest::addRow("wheel 135 pressed") << L{frame(0x20, {135, 1})} << QList<int>{148, 1, 148, 0};
    QTest::addRow("wheel 1 state 0") << L{frame(0x20, {1, 0})} << QList<int>{};
    QTest::addRow("wheel 99 unknown") << L{frame(0x20, {99, 1})} << QList<int>{};
    QTest::addRow("media 17, released") << L{frame(0x2F, {17, 1}), frame(0x2F, {0, 0})} << QList<int>{240, 1, 240, 0};
    // The three panel frames share the last key number.
    QTest::addRow("panel 4, 2f release") << L{frame(0x2A, {4, 1}), frame(0x2F, {0, 0})} << QList<int>{153, 1, 351, 0};
    QTest::addRow("knob 130, 2 steps") << L{frame(0x51, {130, 2})} << QList<int>{167, 1, 167, 0, 167, 1, 167, 0};
}

void TestDriver30::keys()
{
    QFETCH(L, frames);
    QFETCH(QList<int>, events);
    DriverHarness h(kId);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keyEvents(), events);
}

void TestDriver30::steeringSpeedDoorsRadar()
{
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x29, {0x10, 0x00}));
    h.feed(frame(0x29, {0xF0, 0x0F}));
    h.feed(frame(0x29, {0x34, 0x12}));   // D1's high nibble is not part of it
    QCOMPARE(Calls(steering), (Calls{{-16, 380, true}, {16, 380, true}, {-564, 380, true}}));

    QSignalSpy speed(h.driver(), SIGNAL(speedDataChanged(int,QString)));
    h.feed(frame(0x21, {0x04, 0xD7, 0, 0, 0, 0, 2}));
    h.feed(frame(0x21, {0x04, 0xD7, 0, 0, 0, 0, 0}));   // no unit: the raw value
    QCOMPARE(Calls(speed), (Calls{{123, QStringLiteral("KM")}, {1239, QString()}}));

    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    h.feed(frame(0x24, {0xF6, 0x01}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorRearLeft=1", "doorTrunk=0", "doorHood=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag0=0", "bodyFlag1=0"});
    QCOMPARE(info(h).mileage.doorBit2, quint8(1));
    h.feed(frame(0x24, {0x08, 0x02}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=0", "doorTrunk=1"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag0=1", "bodyFlag1=1"});
    QCOMPARE(doors.count(), 2);

    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(frame(0x1D, {1, 2, 3, 4}));   // not reversing
    QCOMPARE(radar.count(), 0);
    h.driver()->setInReverse(true);
    h.feed(frame(0x1D, {0, 0, 3, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarLevels=5", "radarFrontRightMid=3", "radarOn=1"});
    // Bars on a scale below 11: any lit bar keeps the overlay up, however many.
    h.feed(frame(0x1E, {200, 200, 200, 200, 0}));
    h.feed(frame(0x1D, {200, 20, 200, 200}));
    compareFields(*h.driver()->getRadarData(), {"radarRearRight=200", "radarOn=1"});
}

void TestDriver30::commands_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<L>("sent");
    QTest::addRow("2e870207 01") << 30 << false << "AirOnOff" << "on" << L{frame(0x87, {0x07, 1})};
    QTest::addRow("2e870210 00") << 30 << false << "AirInnerLoop" << "on" << L{frame(0x87, {0x10, 0})};
    QTest::addRow("2e87020a 04") << 30 << false << "AirWindSpeedFront" << "3" << L{frame(0x87, {0x0A, 4})};
    QTest::addRow("level not a number") << 30 << false << "AirWindSpeedFront" << "x" << L{};
    QTest::addRow("2e87020b 01") << 30 << false << "AirTempFrontLeft" << "add" << L{frame(0x87, {0x0B, 1})};
    QTest::addRow("2e87020d 01 rhd") << 30 << true << "AirTempFrontLeft" << "add" << L{frame(0x87, {0x0D, 1})};
    QTest::addRow("2e87020b 00 rhd") << 30 << true << "AirTempFrontRight" << "sub" << L{frame(0x87, {0x0B, 0})};
    QTest::addRow("2e870214 02") << 30 << false << "AirWindDownFront" << "on" << L{frame(0x87, {0x14, 2})};
    QTest::addRow("2e870214 03") << 30 << false << "AirWindUpFront" << "off" << L{frame(0x87, {0x14, 3})};
    QTest::addRow("unknown key") << 30 << false << "SeatHotLeft" << "on" << L{};
    // Neither variant swaps the sides for a right-hand drive.
    QTest::addRow("50 c7 D0=40") << 50 << true << "AirWindDownFront" << "on" << L{frame(0xC7, {0x40, 0, 0, 0, 0})};
    QTest::addRow("50 c7 D1=01") << 50 << true << "AirWindSpeedAddSubFront" << "-1" << L{frame(0xC7, {0, 1, 0, 0, 0})};
    QTest::addRow("50 c7 D3=02") << 50 << true << "AirTempFrontLeft" << "add" << L{frame(0xC7, {0, 0, 0, 2, 0})};
    QTest::addRow("50 c7 D4=01") << 50 << true << "AirTempFrontRight" << "sub" << L{frame(0xC7, {0, 0, 0, 0, 1})};
    QTest::addRow("50 zero frame") << 50 << true << "SeatHotLeft" << "on" << L{frame(0xC7, {0, 0, 0, 0, 0})};
    QTest::addRow("50 unknown") << 50 << true << "AirRearLock" << "on" << L{};
    // The portrait box takes a press and a release, whatever the value.
    QTest::addRow("51 e0 03") << 51 << true << "AirTempFrontLeft" << "add" << pressed(3);
    QTest::addRow("51 e0 19") << 51 << true << "AirInnerLoop" << "off" << pressed(25);
    QTest::addRow("51 code 0") << 51 << true << "AirWindUpFront" << "on" << pressed(0);
    QTest::addRow("51 unknown") << 51 << true << "AirRearLock" << "on" << L{};
}

void TestDriver30::commands()
{
    QFETCH(int, id);
    QFETCH(bool, rightDriver);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(L, sent);
    DriverHarness h(id);
    h.driver()->setRightDriver(rightDriver);
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver30::languageAndModel_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("stored");   // setting "CanbusCAR"
    QTest::addColumn<L>("sent");
    QTest::addRow("en, model 0") << kId << "en" << 0 << L{frame(0x83, {0x26, 2})};
    QTest::addRow("ko sends nothing") << kId << "ko" << 0 << L{};
    QTest::addRow("model 1") << kId << "" << 1 << L{frame(0xE2, {0})};
    QTest::addRow("model 5") << kId << "" << 5 << L{frame(0xE2, {5})};
    QTest::addRow("model 7") << kId << "" << 7 << L{frame(0xE2, {8})};
    QTest::addRow("model 24") << kId << "" << 24 << L{frame(0xE2, {0x80})};
    QTest::addRow("model 40 clamped") << kId << "" << 40 << L{frame(0xE2, {0x82})};
    QTest::addRow("50: no model code") << 50 << "" << 5 << L{};
    QTest::addRow("51: no model code") << 51 << "" << 5 << L{};
}

void TestDriver30::languageAndModel()
{
    QFETCH(int, id);
    QFETCH(QString, language);
    QFETCH(int, stored);
    QFETCH(L, sent);
    DriverHarness h(id);
    DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), stored, QString());
    h.manager()->setId(31, false);
    h.manager()->setId(id, false);
    h.clearSent();
    auto* d = qobject_cast<Canbus30Obj*>(h.driver());
    if (!language.isEmpty())
        d->languageChanged(language);
    d->exitSelectSlot();
    QCOMPARE(h.sentFrames(), sent);
    if (!sent.isEmpty() && !language.isEmpty())
        QCOMPARE(int(info(h).vehicleSetting.languageCode), int(quint8(sent.at(0).at(4))));
}

void TestDriver30::touch()
{
    DriverHarness h(kId);
    auto* d = qobject_cast<Canbus30Obj*>(h.driver());
    d->setTcanBussend(512, 240, 1024, 480, 0);
    d->setTcanBussend(1024, 480, 1024, 480, 2);
    d->setTcanBussend(10, 10, 1024, 480, 1);   // a touch the box does not take
    d->setTcanBussend(10, 10, 0, 480, 0);      // no picture
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0x98, {1, 0x01, 0xFF, 0x01, 0xF4, 0}),
                                               frame(0x98, {0, 0x03, 0xFF, 0x03, 0xE8, 0})}));
}

void TestDriver30::sourceReports_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariantList>("items");
    QTest::addColumn<L>("sent");
    QTest::addRow("FM2 9850") << 1 << QVariantList{3, 9850}
        << L{source(0x81, 1, "\x7A\x26" + le16("FM2")), source(0x81, 2, le16("FM2"))};
    QTest::addRow("band 7") << 1 << QVariantList{7, 0x1234} << L{source(0, 1, "\x34\x12"), source(0, 2)};
    QTest::addRow("one item") << 1 << QVariantList{3} << L{};
    // The title overwrites the digits only as far as it reaches.
    QTest::addRow("media 13, track 5 of 12") << 13 << QVariantList{0, 4, 12, 0, 0, "A"}
        << L{source(0x84, 1, QByteArray("5\0" "12", 4)), source(0x84, 2, QByteArray("A\0" "12", 4))};
    QTest::addRow("media 17, long title") << 17 << QVariantList{0, 0, 1, 0, 0, "abcdefghijklmnopqrst"}
        << L{source(0x86, 1, QByteArray("1\0" "1", 3)), source(0x86, 2, le16("abcdefghijklmnop"))};
    QTest::addRow("phone") << 24 << QVariantList{1, "x", "y"} << L{};
}

void TestDriver30::sourceReports()
{
    QFETCH(int, type);
    QFETCH(QVariantList, items);
    QFETCH(L, sent);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::srctype(type), items);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver30::linkAndGuards()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    QByteArray off;
    QVERIFY(h.driver()->needSendDisconnect(off));   // whatever the state
    QCOMPARE(off, hex("2e8101007d"));
    QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{frame(0x90, {0x30, 0}), frame(0x90, {0x32, 0})}));

    h.watchActivity();
    QCOMPARE(h.driver()->checkProtocolData(frame(0x22, {2, 1})), 1);   // too short
    QCOMPARE(h.driver()->checkProtocolData(frame(0x2C, {1, 2, 3})), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x1C, {1, 2, 3})), 0);
    QCOMPARE(h.activity(), 0);
    QCOMPARE(h.feed(frame(0x30, QByteArray("TY 2.0\0z", 8))), 0);
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("TY 2.0"));
}

void TestDriver30::variants()
{
    for (int id : {50, 51}) {
        DriverHarness h(id);
        CanbusInterface* d = h.driver();
        QVERIFY(d->inheritedById(30));
        QVERIFY(!d->hadReverseLine());
        // The base's frames, into the variant's own record; the walk takes no frame as the box's answer.
        h.feed(frame(0x1F, {0x85, 0x2A, 0}));
        QCOMPARE(d->getDataInfo().typeName(), id == 50 ? "Data50Info" : "Data51Info");
        const QVariant record = d->getDataInfo();
        const Data30Info fields = id == 50 ? Data30Info(record.value<Data50Info>()) : record.value<Data51Info>();
        QCOMPARE(int(fields.hybrid.hybridLowNibble), 5);
        QVERIFY(!d->isConnectedState());
        compareFields(d->getAirData()->seat, {id == 51 ? "seatHotVisible=1" : "seatHotVisible=0",
                                              id == 51 ? "seatCoolVisible=1" : "seatCoolVisible=0"});
        // On a distance scale the second front sensor does not count.
        RadarData& r = *d->getRadarData();
        r.radarLevels = 12;
        r.radarFrontLeft = r.radarFrontRightMid = r.radarFrontRight = r.radarRearLeft = 200;
        r.radarRearLeftMid = r.radarRearRightMid = r.radarRearRight = 200;
        r.radarFrontLeftMid = 5;
        static_cast<CommonDriver*>(d)->RadarDisplay();
        QCOMPARE(int(r.radarOn), 0);
    }
}

QTEST_GUILESS_MAIN(TestDriver30)
#include "tst_driver30.moc"
