// Toyota (30), and its landscape (50) and portrait (51) boxes that differ in their
// commands, their record's name, the walk and the start-up: climate by sections, the
// outdoor temperature, records, keys, steering, doors, radar, commands, language,
// model code, touch, source reports and the link.

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

namespace {

constexpr int kId = 30;

// A row named by its frame's bytes, the frame being its first column.
QTestData& byBytes(const QByteArray& f, const char* note = "")
{
    return QTest::newRow((f.toHex() + note).constData()) << f;
}

// A climate frame of the usual eleven data bytes, D0 first.
QByteArray air(std::initializer_list<int> data)
{
    QByteArray bytes = testframes::bytes(data);
    bytes.append(11 - bytes.size(), '\0');
    return frame(0x28, bytes);
}

Data30Info info(const DriverHarness& h)
{
    return h.driver()->getDataInfo().value<Data30Info>();
}

// A source frame: code, part, then the rest of its 34 data bytes.
QByteArray source(int code, int part, const QByteArray& body = {})
{
    QByteArray data = char(code) + QByteArray(1, char(part)) + body;
    data.append(34 - data.size(), '\0');
    return frame(0x99, data.left(34));
}

QByteArray le16(const char* text)
{
    return QByteArray(reinterpret_cast<const char*>(QString::fromLatin1(text).utf16()), 2 * int(qstrlen(text)));
}

} // namespace

class TestDriver30 : public QObject
{
    Q_OBJECT

private slots:
    void climate_data();
    void climate();
    void climateBySection();
    void outdoor_data();
    void outdoor();
    void records_data();
    void records();
    void tripSpeed();
    void keys_data();
    void keys();
    void steeringDoorsRadar();
    void commands_data();
    void commands();
    void languageAndModel_data();
    void languageAndModel();
    void touch();
    void sourceReports_data();
    void sourceReports();
    void linkAndGuards();
    void variantCommands_data();
    void variantCommands();
    void variants();
};

void TestDriver30::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("fields");
    byBytes(air({0xA6})) << false << QStringList{"airOnOff=1", "airAC=0", "airInnerLoop=1", "airAuto=0",
                                               "airAutoSoft=0", "airDual=1", "airSync=1", "airDefrostMax=1"};
    byBytes(air({0x58})) << false << QStringList{"airOnOff=0", "airAC=1", "airAuto=1", "airAutoSoft=1", "airDual=0"};
    byBytes(air({0, 0xB5})) << false << QStringList{"airWindUpLeft=1", "airWindUpRight=1", "airWindFrontLeft=0",
                                                  "airWindDownRight=1", "airPower=1", "airWindSpeedLeft=5",
                                                  "airWindSpeedRight=5"};
    byBytes(air({0, 0x4A})) << false << QStringList{"airWindFrontRight=1", "airWindDownLeft=0", "airPower=0",
                                                  "airWindSpeedRight=10"};
    // Celsius: 1..29 from 18.0, 32..35 from 16.0, 36 and 37 at the cool end.
    byBytes(air({0, 0, 1, 29})) << false << QStringList{"tempLeft=18.0", "tempRight=32.0", "tempLeftFahrenheit=0"};
    byBytes(air({0, 0, 32, 35})) << false << QStringList{"tempLeft=16.0", "tempRight=17.5"};
    byBytes(air({0, 0, 36, 37})) << false << QStringList{"tempLeft=15.0", "tempRight=15.5"};
    byBytes(air({0, 0, 0, 31})) << false << QStringList{"tempLeftLow=1", "tempLeftHigh=0", "tempRightHigh=1",
                                                      "tempRightLow=0"};
    // Fahrenheit: the code is the degree, 255 the high end.
    byBytes(air({0, 0, 255, 31, 1})) << false << QStringList{"tempLeftHigh=1", "tempRight=31", "tempRightHigh=0",
                                                           "tempRightFahrenheit=1"};
    byBytes(air({0, 0, 1, 29}), " rhd") << true << QStringList{"tempLeft=32.0", "tempRight=18.0"};
    byBytes(air({0, 0, 0, 0, 0xFC})) << false << QStringList{"airDefrostFront=1", "airDefrostRear=1", "airAutoLoop=1",
                                                           "airEco=1", "airAcMax=1", "airRearLock=1"};
    // Rear zones: Fahrenheit counts down from 65; the cool end follows either scale.
    byBytes(air({0, 0, 0, 0, 0, 0, 33})) << false << QStringList{"tempRear=13.0", "tempRearLow=0"};
    byBytes(air({0, 0, 0, 0, 1, 0, 1, 0, 38})) << false << QStringList{"tempRear=65", "tempRear2=96",
                                                                     "tempRear2Fahrenheit=1"};
    byBytes(air({0, 0, 0, 0, 0, 0, 38, 0xC5})) << false << QStringList{"tempRear=15.5", "tempRearVisible=1",
        "airRearSpare[1]=1", "airRearSpare[5]=1", "airRearSpare[2]=0", "airRearSpare[3]=5", "airRearSpare[7]=5"};
    byBytes(air({0, 0, 0, 0, 0, 0, 0, 0x00})) << false << QStringList{"tempRearVisible=0", "tempRearLow=1"};
    // D9: bit 4 both sides up and down, then each side's two bits.
    byBytes(air({0, 0, 0, 0, 0, 0, 0, 0, 0, 0x1B})) << false << QStringList{"airWindUpLeft=1", "airWindFrontLeft=0",
        "airWindDownLeft=1", "airWindUpRight=1", "airWindFrontRight=1", "airWindDownRight=1"};
    byBytes(air({0, 0xE0, 0, 0, 0, 0, 0, 0, 0, 0x11})) << false << QStringList{"airWindUpRight=0",
        "airWindFrontRight=0", "airWindDownRight=0", "airWindUpLeft=1", "airWindFrontLeft=1"};
    byBytes(air({0, 0x03, 0, 0, 0, 0, 0, 0, 0, 0, 0x01})) << false << QStringList{"airWindSpeedLeft=4",
                                                                                 "airWindSpeedRight=4"};
    byBytes(air({0, 0x03, 0, 0, 0, 0, 0, 0, 0, 0, 0x03})) << false << QStringList{"airWindSpeedLeft=7"};
}

void TestDriver30::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, fields);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightDriver);
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
    // D2 did not move, so the left zone is not decoded again, though its code now
    // comes from D3.
    h.driver()->setRightDriver(true);
    h.feed(air({0, 0, 1, 7}));
    compareFields(*h.driver()->getAirData(), {"tempLeft=18.0", "tempRight=18.0"});
    // A frame of another length runs every section.
    QByteArray longer = testframes::bytes({0, 0, 1, 7, 0, 0, 0, 0, 0, 0, 0, 0});
    h.feed(frame(0x28, longer));
    compareFields(*h.driver()->getAirData(), {"tempLeft=21.0"});
    QCOMPARE(changed.count(), 3);
}

void TestDriver30::outdoor_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("valid");
    QTest::addColumn<int>("degrees");
    QTest::addRow("0: invalid, -40.0") << 0 << QStringLiteral("-40.0℃") << 0 << -40;
    QTest::addRow("1: cut towards zero") << 1 << QStringLiteral("-39.5℃") << 1 << -39;
    QTest::addRow("100: the .0 stays") << 100 << QStringLiteral("10.0℃") << 1 << 10;
}

void TestDriver30::outdoor()
{
    QFETCH(int, byte);
    QFETCH(QString, text);
    QFETCH(int, valid);
    QFETCH(int, degrees);
    DriverHarness h(kId);
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(air({0, 0, 0, 0, 0, byte}));
    h.feed(air({0x80, 0, 0, 0, 0, byte}));   // D5 unmoved: no second report
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(outdoor.at(0), (QList<QVariant>{text, 0}));
    compareFields(*h.driver()->getAirData(), {"outdoorTempValid=" + QString::number(valid), "outdoorTempUnit=0"});
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=" + QString::number(degrees), "outdoorTempUnit=0"});
}

void TestDriver30::records_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");   // of Data30Info
    QTest::addColumn<QStringList>("shared");   // of the body record, or of the climate record's tyres
    const QStringList none;
    byBytes(frame(0x21, {0x04, 0xD2, 0x01, 0x02, 0x00, 0x63, 2})) << QStringList{"mileageValueText=123.4KM",
        "mileageMinutesText=258minute", "mileageDistanceText=99KM", "mileageUnit=2"}
        << QStringList{"speed2Unit=0", "vehicleSpeed2=12340"};
    byBytes(frame(0x21, {0, 5, 0, 0, 0, 0, 1})) << QStringList{"mileageValueText=0.5MILE"}
                                              << QStringList{"speed2Unit=1"};
    byBytes(frame(0x22, {2, 0x01, 0x23, 0})) << QStringList{"fuelText=29.1L/100KM", "fuelUnitIndex=2"}
        << QStringList{"fuelConsumption=291", "fuelConsumptionUnit=2"};
    byBytes(frame(0x22, {5, 0xFF, 0xFC, 0})) << QStringList{"fuelText=", "fuelUnitIndex=2"}
                                           << QStringList{"fuelConsumption=65532"};
    byBytes(frame(0x23, {1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0x00}))
        << QStringList{"historyText1=0.1KM/L", "historyText6=409.6KM/L"} << none;
    QByteArray past = testframes::bytes({0, 0xFF, 0xFC});
    past.append(26, '\0');
    past += testframes::bytes({0x00, 0x0A});
    byBytes(frame(0x27, past)) << QStringList{"pastText1=", "pastText14=0.0MPG", "pastText15=1.0MPG"} << none;
    byBytes(frame(0x25, {0xE6, 100, 0, 0, 0, 255})) << QStringList{"tyreBit7=1", "tyreBit6=1", "tyreBit5=1",
        "tyreBit2=1", "tyreUnitCode=2"} << QStringList{"tirePressureFrontLeft=250.0KPA",
        "tirePressureSpare=--", "tireStatus=2"};
    byBytes(frame(0x25, {0x00, 25, 0, 0, 0, 0, 0})) << none << QStringList{"tirePressureFrontLeft=2.5BAR"};
    byBytes(frame(0x25, {0x03, 7, 0, 0, 0, 0, 0})) << none << QStringList{"tirePressureFrontLeft=7.0"};
    byBytes(frame(0x26, {0xD9, 0xA5, 0x5E, 0x8E, 0})) << QStringList{"bodyItem0=1", "bodyItem1=5", "bodyItem2=2",
        "bodyItem3=1", "bodyItem4=1", "bodyItem5=0", "bodyItem7=0", "bodyItem8=5", "bodyItem9=0", "bodyItem10=1",
        "bodyItem13=1", "bodyItem14=6", "bodyItem15=1", "bodyItem16=0", "bodyItem17=3", "bodyItem18=2"} << none;
    byBytes(frame(0x1E, {1, 2, 3, 4, 0xA5})) << QStringList{"bodyItem19=1", "bodyItem20=0", "bodyItem21=1",
                                                           "bodyItem22=5"} << none;
    byBytes(frame(0x1F, {0x85, 0x2A, 0})) << QStringList{"hybridBit7=1", "hybridLowNibble=5", "hybridBits[0]=1",
                                                       "hybridBits[1]=0", "hybridBits[5]=0"} << none;
    byBytes(frame(0x2B, {1, 0x01, 0x00, 0x00, 0x32, 0})) << QStringList{"powerText=25.6KWh/km",
                                                                      "powerDistanceText=5.0MILE"} << none;
    // The bands sit around 2: 1 wraps in the byte and ends at the top.
    byBytes(frame(0x31, {0xF3, 0x57, 0x1A, 0x50, 0x02, 0})) << QStringList{"ampPresent=1", "ampLevel1=14",
        "ampLevel2=3", "ampBand1=3", "ampBand2=5", "ampBand3=10", "ampLowNibble=10", "ampVolume=63",
        "ampFlag0=0", "ampFlag1=1"} << none;
    byBytes(frame(0x32, {0xC5, 0})) << QStringList{"settingBits[0]=1", "settingBits[2]=0", "settingBits[3]=1",
                                                 "settingBits[5]=1"} << none;
    byBytes(frame(0x50, {0x0F, 30, 0})) << QStringList{"settingItem0=2", "settingItem1=3", "languageCode=21"} << none;
    byBytes(frame(0x52, {0x80, 0x00, 0x07, 0})) << QStringList{"settingFlagA=1", "settingFlagB=0",
                                                             "settingItem5=3"} << none;
    byBytes(frame(0x61, {0x29, 0xF0, 0xAB, 0, 0, 0})) << QStringList{"mediaBits[0]=1", "mediaBits[1]=0",
        "mediaBits[5]=1", "mediaHigh61=7", "mediaLow61=11"} << none;
    byBytes(frame(0x66, QByteArray::fromHex("429040000000000000000000000000"))) << QStringList{"mediaRaw66=66",
        "mediaHigh66=7", "mediaBit7=0", "mediaBit6=1"} << none;
    byBytes(frame(0x62, {1, 0, 1, 0xA3, 0x2A, 0x26, 0, 0})) << QStringList{"radioBand=1", "radioBit7=1",
        "radioBit5=1", "radioLowNibble=3", "radioFrequencyText=97.7MHz"} << none;
    byBytes(frame(0x62, {1, 0, 3, 0, 0x2A, 0x26, 0, 0})) << QStringList{"radioFrequencyText=9770KHz"} << none;
    byBytes(frame(0x62, QByteArray::fromHex("010107aabbccddeeff00112233445566"))) << QStringList{"mediaState=7",
        "mediaBytes=aabbccddeeff001122334455"} << none;
    byBytes(frame(0x62, QByteArray::fromHex("0200133102010300010fff091700ff00"))) << QStringList{"playState=3",
        "playHigh=2", "playFlag=1", "playTrack=258", "playTotal=3", "playTimeText=01:15:00",
        "playTotalTimeText=09:23:00"} << none;
    byBytes(frame(0x62, QByteArray::fromHex("0201c4e3bac3"))) << QStringList{"mediaTextA=你好"} << none;
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

void TestDriver30::tripSpeed()
{
    DriverHarness h(kId);
    QSignalSpy speed(h.driver(), SIGNAL(speedDataChanged(int,QString)));
    h.feed(frame(0x21, {0x04, 0xD7, 0, 0, 0, 0, 2}));
    h.feed(frame(0x21, {0x04, 0xD7, 0, 0, 0, 0, 0}));   // no unit: the raw value
    QCOMPARE(speed.at(0), (QList<QVariant>{123, QStringLiteral("KM")}));
    QCOMPARE(speed.at(1), (QList<QVariant>{1239, QString()}));
}

void TestDriver30::keys_data()
{
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<QList<int>>("events");   // keyboard number, state, ...
    using L = QList<QByteArray>;
    QTest::addRow("wheel 135 pressed") << L{frame(0x20, {135, 1})} << QList<int>{148, 1, 148, 0};
    QTest::addRow("wheel 1 state 0") << L{frame(0x20, {1, 0})} << QList<int>{};
    QTest::addRow("wheel 99 unknown") << L{frame(0x20, {99, 1})} << QList<int>{};
    QTest::addRow("panel 4, released") << L{frame(0x2A, {4, 1}), frame(0x2A, {0, 0})}
                                       << QList<int>{153, 1, 153, 0};
    QTest::addRow("media 17, released") << L{frame(0x2F, {17, 1}), frame(0x2F, {0, 0})}
                                        << QList<int>{240, 1, 240, 0};
    // The three panel frames share the last key number.
    QTest::addRow("panel 4, media release") << L{frame(0x2A, {4, 1}), frame(0x2F, {0, 0})}
                                            << QList<int>{153, 1, 351, 0};
    QTest::addRow("climate knob 130, 2 steps") << L{frame(0x51, {130, 2})} << QList<int>{167, 1, 167, 0, 167, 1, 167, 0};
}

void TestDriver30::keys()
{
    QFETCH(QList<QByteArray>, frames);
    QFETCH(QList<int>, events);
    DriverHarness h(kId);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keyEvents(), events);
}

void TestDriver30::steeringDoorsRadar()
{
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x29, {0x10, 0x00}));
    h.feed(frame(0x29, {0xF0, 0x0F}));
    h.feed(frame(0x29, {0x34, 0x12}));   // D1's high nibble is not part of it
    QCOMPARE(steering.at(0), (QList<QVariant>{-16, 380, true}));
    QCOMPARE(steering.at(1), (QList<QVariant>{16, 380, true}));
    QCOMPARE(steering.at(2), (QList<QVariant>{-564, 380, true}));

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
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QByteArray>("sent");   // empty: nothing
    QTest::addRow("2e870207 01") << "AirOnOff" << "on" << false << frame(0x87, {0x07, 1});
    QTest::addRow("2e870210 00") << "AirInnerLoop" << "on" << false << frame(0x87, {0x10, 0});
    QTest::addRow("2e87020a 04") << "AirWindSpeedFront" << "3" << false << frame(0x87, {0x0A, 4});
    QTest::addRow("level not a number") << "AirWindSpeedFront" << "x" << false << QByteArray();
    QTest::addRow("2e870209 01") << "AirWindSpeedAddSubFront" << "add" << false << frame(0x87, {0x09, 1});
    QTest::addRow("2e87020b 01") << "AirTempFrontLeft" << "add" << false << frame(0x87, {0x0B, 1});
    QTest::addRow("2e87020d 01 rhd") << "AirTempFrontLeft" << "add" << true << frame(0x87, {0x0D, 1});
    QTest::addRow("2e87020b 00 rhd") << "AirTempFrontRight" << "sub" << true << frame(0x87, {0x0B, 0});
    QTest::addRow("2e870214 02") << "AirWindDownFront" << "on" << false << frame(0x87, {0x14, 2});
    QTest::addRow("2e870214 03") << "AirWindUpFront" << "off" << false << frame(0x87, {0x14, 3});
    QTest::addRow("unknown key") << "SeatHotLeft" << "on" << false << QByteArray();
}

void TestDriver30::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, rightDriver);
    QFETCH(QByteArray, sent);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightDriver);
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), sent.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{sent});
}

void TestDriver30::languageAndModel_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("stored");   // setting "CanbusCAR"
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;
    QTest::addRow("en, model 0") << "en" << 0 << L{frame(0x83, {0x26, 2})};
    QTest::addRow("ch_ft") << "ch_ft" << 0 << L{frame(0x83, {0x26, 1})};
    QTest::addRow("ko sends nothing") << "ko" << 0 << L{};
    QTest::addRow("model 1") << "" << 1 << L{frame(0xE2, {0})};
    QTest::addRow("model 5") << "" << 5 << L{frame(0xE2, {5})};
    QTest::addRow("model 7") << "" << 7 << L{frame(0xE2, {8})};
    QTest::addRow("model 23") << "" << 23 << L{frame(0xE2, {24})};
    QTest::addRow("model 24") << "" << 24 << L{frame(0xE2, {0x80})};
    QTest::addRow("model 40 clamped") << "" << 40 << L{frame(0xE2, {0x82})};
}

void TestDriver30::languageAndModel()
{
    QFETCH(QString, language);
    QFETCH(int, stored);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), stored, QString());
    h.manager()->setId(31, false);
    h.manager()->setId(kId, false);
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
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;
    QTest::addRow("FM2 9850") << 1 << QVariantList{3, 9850}
        << L{source(0x81, 1, "\x7A\x26" + le16("FM2")), source(0x81, 2, le16("FM2"))};
    QTest::addRow("AM1 1008") << 1 << QVariantList{5, 1008}
        << L{source(0x82, 1, "\xF0\x03" + le16("AM1")), source(0x82, 2, le16("AM1"))};
    QTest::addRow("band 7") << 1 << QVariantList{7, 0x1234} << L{source(0, 1, "\x34\x12"), source(0, 2)};
    QTest::addRow("one item") << 1 << QVariantList{3} << L{};
    // The title overwrites the digits only as far as it reaches.
    QTest::addRow("media 13, track 5 of 12") << 13 << QVariantList{0, 4, 12, 0, 0, "A"}
        << L{source(0x84, 1, QByteArray("5\0" "12", 4)), source(0x84, 2, QByteArray("A\0" "12", 4))};
    QTest::addRow("media 22, track 10") << 22 << QVariantList{0, 9, 3, 0, 0, ""}
        << L{source(0x85, 1, "103"), source(0x85, 2, "103")};
    QTest::addRow("media 17, long title") << 17 << QVariantList{0, 0, 1, 0, 0, "abcdefghijklmnopqrst"}
        << L{source(0x86, 1, QByteArray("1\0" "1", 3)), source(0x86, 2, le16("abcdefghijklmnop"))};
    QTest::addRow("phone") << 24 << QVariantList{1, "x", "y"} << L{};
}

void TestDriver30::sourceReports()
{
    QFETCH(int, type);
    QFETCH(QVariantList, items);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::srctype(type), items);
    QCOMPARE(h.sentFrames(), sent);
    for (const QByteArray& f : h.sentFrames())
        QCOMPARE(f.size(), 38);
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
    QCOMPARE(h.driver()->checkProtocolData(frame(0x67, {1, 2, 3})), 0);
    QCOMPARE(h.activity(), 0);
    QCOMPARE(h.feed(frame(0x30, QByteArray("TY 2.0\0z", 8))), 0);
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("TY 2.0"));
}

void TestDriver30::variantCommands_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;
    QTest::addRow("50 2ec70540") << 50 << "AirWindDownFront" << "on" << L{frame(0xC7, {0x40, 0, 0, 0, 0})};
    QTest::addRow("50 2ec7050001") << 50 << "AirWindSpeedAddSubFront" << "-1" << L{frame(0xC7, {0, 1, 0, 0, 0})};
    QTest::addRow("50 2ec7050002") << 50 << "AirWindSpeedAddSubFront" << "1" << L{frame(0xC7, {0, 2, 0, 0, 0})};
    QTest::addRow("50 2ec705000000 02 rhd") << 50 << "AirTempFrontLeft" << "add" << L{frame(0xC7, {0, 0, 0, 2, 0})};
    QTest::addRow("50 2ec70500000000 01") << 50 << "AirTempFrontRight" << "sub" << L{frame(0xC7, {0, 0, 0, 0, 1})};
    QTest::addRow("50 zero frame") << 50 << "SeatHotLeft" << "on" << L{frame(0xC7, {0, 0, 0, 0, 0})};
    QTest::addRow("50 unknown") << 50 << "AirRearLock" << "on" << L{};
    QTest::addRow("51 2ee00203") << 51 << "AirTempFrontLeft" << "add" << L{frame(0xE0, {3, 1}), frame(0xE0, {3, 0})};
    QTest::addRow("51 2ee00209") << 51 << "AirWindSpeedAddSubFront" << "-1" << L{frame(0xE0, {9, 1}), frame(0xE0, {9, 0})};
    QTest::addRow("51 2ee00219") << 51 << "AirInnerLoop" << "off" << L{frame(0xE0, {25, 1}), frame(0xE0, {25, 0})};
    QTest::addRow("51 code 0") << 51 << "AirWindUpFront" << "on" << L{frame(0xE0, {0, 1}), frame(0xE0, {0, 0})};
    QTest::addRow("51 unknown") << 51 << "AirRearLock" << "on" << L{};
}

void TestDriver30::variantCommands()
{
    QFETCH(int, id);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(id);
    h.driver()->setRightDriver(true);   // neither variant swaps sides
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver30::variants()
{
    for (int id : {50, 51}) {
        DriverHarness h(id);
        DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), 5, QString());
        h.manager()->setId(kId, false);
        h.manager()->setId(id, false);
        h.clearSent();
        CanbusInterface* d = h.driver();
        QVERIFY(d->inheritedById(30));
        QVERIFY(!d->hadReverseLine());
        QMetaObject::invokeMethod(d, "exitSelectSlot");   // no model code from a variant
        QVERIFY(h.sentFrames().isEmpty());
        // The base's frames, into a record of the variant's own name; the walk no
        // longer takes a frame for the box's answer.
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
