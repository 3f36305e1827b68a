// Nissan (32) and Murano (54): keys told short or long at the release, climate with the
// outdoor temperature, body and status frames, the factory multimedia, the clock both
// ways, commands as press and release, reports; 54 for its two wheel buttons.

#include <QCoreApplication>
#include <QSignalSpy>
#include <QtTest>

#include "canbus32/canbus32.h"
#include "common/kkmapkeys.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using L = QList<QByteArray>;
using C = QList<int>;

namespace {
Data32Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data32Info>(); }
Canbus32Obj* nissan(const DriverHarness& h) { return qobject_cast<Canbus32Obj*>(h.driver()); }
QByteArray key(int value, int state) { return frame(0x20, {value, state, 0}); }

// Each code pressed and released, as the keyboard device sees it.
QList<int> taps(const QList<int>& codes)
{
    QList<int> out;
    for (int c : codes)
        out << canbus::kkmapKey(c) << 1 << canbus::kkmapKey(c) << 0;
    return out;
}

#define FIELD(path) {#path, [](const Data32Info& d) { return QVariant(d.path).toString(); }}
struct Probe { const char* path; QString (*read)(const Data32Info&); };
const Probe kProbes[] = {
    FIELD(multimedia.radioFrequencyText), FIELD(multimedia.playStateText), FIELD(multimedia.audioLevel1),
    FIELD(multimedia.trayItem2),
    FIELD(multimedia.trayCount), FIELD(amplifier.ampBand1), FIELD(amplifier.ampBand5),
    FIELD(amplifier.ampVolume), FIELD(vehicleSetting.frame0AValue), FIELD(vehicleSetting.settingD1High),
    FIELD(vehicleSetting.settingRaw21), FIELD(mileage.odometerText), FIELD(mileage.distanceTextB),
    FIELD(mileage.statusBit1), FIELD(mileage.statusBit2), FIELD(mileage.voltageText),
    FIELD(mileage.engineText), FIELD(mileage.speedTextA), FIELD(functions.functionItem32),
};
QString probe(const Data32Info& d, const QString& path)
{
    for (const Probe& p : kProbes)
        if (path == QLatin1String(p.path))
            return p.read(d);
    return QStringLiteral("no probe");
}
}

class TestDriver32 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void climate_data();
    void climate();
    void climateSignals();
    void record_data();
    void record();
    void bodyAndSignals();
    void clock_data();
    void clock();
    void commands_data();
    void commands();
    void reports();
    void powerAndLink();
    void muranoKeys_data();
    void muranoKeys();
    void muranoHeldPhoneKey();
};

void TestDriver32::keys_data()
{
    QTest::addColumn<L>("frames");
    QTest::addColumn<int>("situation");   // 1 vehicle model 1, 2 during a call
    QTest::addColumn<C>("codes");
    QTest::addRow("1 tapped") << L{key(1, 1)} << 0 << C{0x1100025};
    QTest::addRow("0 1 taps the kept key") << L{key(1, 1), key(0, 1)} << 0 << C{0x1100025, 0x1100025};
    QTest::addRow("22 short at release") << L{key(22, 1), key(0, 0)} << 0 << C{0x110002B};
    QTest::addRow("22 long at release") << L{key(22, 2), key(0, 0)} << 0 << C{0x1100041};
    QTest::addRow("39 long held") << L{key(39, 2)} << 0 << C{};
    QTest::addRow("39 long released") << L{key(39, 2), key(0, 0)} << 0 << C{0x110002F};
    QTest::addRow("41 long clears") << L{key(41, 2), key(0, 0), key(0, 0)} << 0 << C{0x110003C};
    QTest::addRow("42 short clears") << L{key(42, 1), key(0, 0), key(0, 0)} << 0 << C{0x1100034};
    QTest::addRow("44 short keeps") << L{key(44, 1), key(0, 0), key(0, 0)} << 0 << C{0x1100036, 0x1100036};
    QTest::addRow("3 on model 1") << L{key(3, 1)} << 1 << C{0x110002F};
    QTest::addRow("9 in a call") << L{key(9, 1)} << 2 << C{0x1300058};
    QTest::addRow("panel 9") << L{frame(0x40, {9})} << 0 << C{0x1200065};
    QTest::addRow("phone 3") << L{frame(0x50, {3})} << 0 << C{0x1300059};
}

void TestDriver32::keys()
{
    QFETCH(L, frames);
    QFETCH(int, situation);
    QFETCH(C, codes);
    DriverHarness h(32);
    Data32Info d = info(h);
    d.mileage.carModel = situation == 1 ? 1 : 0;
    h.driver()->setDataInfo(QVariant::fromValue(d));
    h.driver()->setCallState(situation == 2);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keyEvents(), taps(codes));
}

void TestDriver32::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("2e2106 5f5750c468") << frame(0x21, {0x5F, 0x57, 0x50, 0xC4, 0x68, 0}) << false
        << QStringList{"airWindUpLeft=0", "airWindFrontRight=1", "airWindDownLeft=1", "airAuto=1",
                       "airOuterLoop=1", "airOnOff=1", "airPower=1", "airWindSpeedRight=5",
                       "airDefrostFront=1", "airDefrostRear=1", "airDual=1", "tempLeft=18.0",
                       "tempRightHigh=1", "tempLeftVisible=1", "outdoorTemp=12.0\u2103", "outdoorTempValid=1"};
    QTest::addRow("2e2106 8000 3c c0") << frame(0x21, {0x80, 0x00, 0x3C, 0xC0, 0x00, 0}) << false
        << QStringList{"airWindUpLeft=1", "airWindFrontLeft=0", "airWindDownRight=1", "tempLeftLow=1",
                       "tempRight=32.0", "tempRightHigh=0", "outdoorTempValid=0"};
    QTest::addRow("right hand swaps the codes") << frame(0x21, {0, 0, 0x40, 0xC4, 0x01, 0}) << true
        << QStringList{"tempLeftHigh=1", "tempRight=16.0", "outdoorTemp=-39.5\u2103"};
    QTest::addRow("D2 0 hides both") << frame(0x21, {0, 0, 0x00, 0x40, 0xFF, 0}) << false
        << QStringList{"tempLeftVisible=0", "tempRightVisible=0", "tempRight=16.0", "outdoorTempValid=0"};
}

void TestDriver32::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightHand);
    QFETCH(QStringList, fields);
    DriverHarness h(32);
    h.driver()->setRightDriver(rightHand);
    h.feed(frame);
    compareFields(*h.driver()->getAirData(), fields);
}

void TestDriver32::climateSignals()
{
    DriverHarness h(32);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(frame(0x21, {0x01, 0, 0x50, 0x50, 0x68, 0}));
    h.feed(frame(0x21, {0x01, 0, 0x50, 0x50, 0x68, 0}));   // the same bytes: nothing
    h.feed(frame(0x21, {0x03, 0, 0x50, 0x50, 0x68, 0}));   // outdoor byte unchanged
    QCOMPARE(air.count(), 2);
    QCOMPARE(outdoor.count(), 1);
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=120"});
    h.driver()->setPowerOffState();
    h.feed(frame(0x21, {0x01, 0, 0x50, 0x50, 0x6A, 0}));
    QCOMPARE(air.count() + outdoor.count(), 3);
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=130"});
}

void TestDriver32::record_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addRow("FM high byte") << frame(0x04, {3, 0, 1, 2, 0}) << "multimedia.radioFrequencyText" << "100.35MHz";
    QTest::addRow("AM 10 kHz") << frame(0x04, {1, 0, 0x80, 2, 0}) << "multimedia.radioFrequencyText" << "540KHz";
    QTest::addRow("AM 9 kHz") << frame(0x04, {6, 0, 0x01, 0, 0}) << "multimedia.radioFrequencyText" << "2826KHz";
    QTest::addRow("disc error") << frame(0x07, {0, 0, 3, 7, 8, 0}) << "multimedia.playStateText" << "disc error";
    QTest::addRow("audio level clamp") << frame(0x06, {0, 0xC0, 0, 0}) << "multimedia.audioLevel1" << "2";
    QTest::addRow("tray 2 of 1 wraps") << frame(0x68, {0x41, 0}) << "multimedia.trayItem2" << "10";
    QTest::addRow("tray count clamp") << frame(0x68, {0xE0, 0}) << "multimedia.trayCount" << "5";
    QTest::addRow("band 0") << frame(0x93, {0, 0, 9, 9, 9, 0, 0, 0, 0, 0}) << "amplifier.ampBand1" << "5";
    QTest::addRow("band 6") << frame(0x93, {0, 6, 9, 9, 9, 0, 0, 0, 0, 0}) << "amplifier.ampBand1" << "10";
    QTest::addRow("band 5 byte") << frame(0x93, {0, 0, 0, 0, 0, 0, 0, 2, 0, 0}) << "amplifier.ampBand5" << "7";
    QTest::addRow("volume clamp") << frame(0x93, {41, 0, 0, 0, 0, 0, 0, 0, 0, 0}) << "amplifier.ampVolume" << "40";
    QTest::addRow("0A clamp") << frame(0x0A, {0xFF}) << "vehicleSetting.frame0AValue" << "49";
    QTest::addRow("95 D1 6..5") << frame(0x95, {0, 0x60, 0, 0, 0}) << "vehicleSetting.settingD1High" << "3";
    QTest::addRow("94 too") << frame(0x94, {0, 0x20, 0, 0, 0}) << "vehicleSetting.settingD1High" << "1";
    QTest::addRow("60 21") << frame(0x60, {0x21, 7, 0}) << "vehicleSetting.settingRaw21" << "7";
    QTest::addRow("odometer km") << frame(0x27, {1, 1, 2, 3, 1, 0, 0}) << "mileage.odometerText" << "66051km";
    QTest::addRow("distance miles") << frame(0x27, {1, 1, 2, 3, 1, 0, 0}) << "mileage.distanceTextB" << "25.6mile";
    QTest::addRow("28 D1 bit 1") << frame(0x28, {0, 0x02, 0}) << "mileage.statusBit1" << "1";
    QTest::addRow("7d01 bit 4") << frame(0x7D, {1, 0x10, 0}) << "mileage.statusBit2" << "1";
    QTest::addRow("7d0b voltage") << frame(0x7D, {11, 0x10, 0x27, 0}) << "mileage.voltageText" << "10V";
    QTest::addRow("09 rpm") << frame(0x09, {0xDC, 0x05, 0}) << "mileage.engineText" << "1500rpm";
    QTest::addRow("6a speed") << frame(0x6A, {0x2C, 0x01, 0}) << "mileage.speedTextA" << "300km/h";
    QTest::addRow("7e D9 bit 4") << frame(0x7E, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0}) << "functions.functionItem32"
                                 << "1";
}

void TestDriver32::record()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, field);
    QFETCH(QString, value);
    DriverHarness h(32);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(probe(info(h), field), value);
    QVERIFY(changed.count() >= 1);
}

void TestDriver32::bodyAndSignals()
{
    DriverHarness h(32);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(frame(0x28, {0xC5, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorFrontLeft=1", "doorRearLeft=0", "doorHood=1"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=1"});
    h.feed(frame(0x29, {0x81, 0x02, 0}));
    h.feed(frame(0x29, {0x01, 0x02, 0}));
    h.feed(frame(0x7D, {8, 0xFF, 0xFF, 0}));   // the status word has no sign
    QCOMPARE(steering.at(0), (QList<QVariant>{258, 5400, true}));
    QCOMPARE(steering.at(1), (QList<QVariant>{-258, 5400, true}));
    QCOMPARE(steering.at(2), (QList<QVariant>{65535, 540, true}));
    const int bodyBefore = body.count();
    h.feed(frame(0x7D, {11, 0x10, 0x27, 0}));
    compareFields(*h.driver()->getCarbodyData(), {"batteryVoltage=100"});
    QCOMPARE(body.count(), bodyBefore + 1);
    h.feed(frame(0x6A, {0x2C, 0x01, 0}));
    compareFields(*h.driver()->getCarbodyData(), {"vehicleSpeed=30000", "speedUnit=0"});
    h.feed(frame(0x22, {1, 2, 3, 4, 0}));   // not reversing: dropped
    QCOMPARE(radar.count(), 0);
    h.driver()->setInReverse(true);
    h.feed(frame(0x22, {1, 2, 3, 0x90, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarRearLeft=2", "radarRearRight=32", "radarLevels=10", "radarOn=1"});
}

void TestDriver32::clock_data()
{
    QTest::addColumn<QTime>("before");
    QTest::addColumn<bool>("hour24");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QTime>("after");
    QTest::addColumn<int>("confirmed");   // the format flag of the confirmation; -1: none
    QTest::addRow("hour up wraps 23") << QTime(23, 5) << true << frame(0x60, {0x11, 33, 0}) << QTime(0, 5) << 1;
    QTest::addRow("hour up 12h wraps 12") << QTime(12, 5) << false << frame(0x60, {0x11, 33, 0}) << QTime(0, 5) << 0;
    QTest::addRow("hour up 12h 11") << QTime(11, 5) << false << frame(0x60, {0x11, 33, 0}) << QTime(12, 5) << 0;
    QTest::addRow("hour down stays at 1") << QTime(1, 5) << true << frame(0x60, {0x11, 49, 0}) << QTime(1, 5) << 1;
    QTest::addRow("hour down wraps 0") << QTime(0, 5) << true << frame(0x60, {0x11, 49, 0}) << QTime(23, 5) << 1;
    QTest::addRow("minute down wraps 0") << QTime(8, 0) << true << frame(0x60, {0x12, 49, 0}) << QTime(8, 59) << 1;
    QTest::addRow("minute up wraps 59") << QTime(8, 59) << false << frame(0x60, {0x12, 33, 0}) << QTime(8, 0) << 0;
    QTest::addRow("format saved") << QTime(8, 1) << true << frame(0x60, {0x14, 0, 0}) << QTime(8, 1) << 0;
    QTest::addRow("set hour D2 minute D1") << QTime(8, 0) << true << frame(0x60, {0x15, 7, 21}) << QTime(21, 7) << -1;
    QTest::addRow("01 hour D1 minute D2") << QTime(8, 0) << true << frame(0x01, {0, 14, 30, 0}) << QTime(14, 30) << -1;
}

void TestDriver32::clock()
{
    QFETCH(QTime, before);
    QFETCH(bool, hour24);
    QFETCH(QByteArray, frame);
    QFETCH(QTime, after);
    QFETCH(int, confirmed);
    DriverHarness h(32);
    DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), hour24);
    DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2026, 5, 4), before));
    h.feed(frame);
    const QTime now = DateTimeCtrl::getInstance()->getCurrentDateTime().time();
    QCOMPARE(QTime(now.hour(), now.minute()), after);
    QCOMPARE(h.sentFrames(), confirmed < 0 ? L{} : L{testframes::frame(0xC8, {after.minute(), after.hour(), confirmed, 0})});
    // The head unit's own report marks the other format.
    h.clearSent();
    nissan(h)->setCurrentTime(after.hour(), after.minute(), 0);
    const bool format24 = confirmed < 0 ? hour24 : confirmed == 1;
    QCOMPARE(h.sentFrames(), L{testframes::frame(0xC8, {after.minute(), after.hour(), !format24, 0})});
}

void TestDriver32::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<QByteArray>("press");   // the five button bytes; empty: nothing sent
    using testframes::bytes;
    QTest::addRow("AirOnOff") << "AirOnOff" << "" << false << bytes({0x80, 0, 0, 0, 0});
    QTest::addRow("AirInnerLoop on") << "AirInnerLoop" << "on" << false << bytes({0x04, 0, 0, 0, 0});
    QTest::addRow("AirInnerLoop off") << "AirInnerLoop" << "off" << false << bytes({0x08, 0, 0, 0, 0});
    QTest::addRow("AirDUAL") << "AirDUAL" << "" << false << bytes({0, 0x08, 0, 0, 0});
    QTest::addRow("AirWindSpeedFront add") << "AirWindSpeedFront" << "add" << false << bytes({0, 2, 0, 0, 0});
    QTest::addRow("AddSub with add") << "AirWindSpeedAddSubFront" << "add" << false << bytes({0, 1, 0, 0, 0});
    QTest::addRow("AddSub with 1") << "AirWindSpeedAddSubFront" << "1" << false << bytes({0, 2, 0, 0, 0});
    QTest::addRow("AirWindUpFrontRight") << "AirWindUpFrontRight" << "" << false << bytes({0, 0, 0x01, 0, 0});
    QTest::addRow("AirWindDownFront") << "AirWindDownFront" << "" << false << bytes({0, 0, 0x08, 0, 0});
    QTest::addRow("left sub") << "AirTempFrontLeft" << "sub" << false << bytes({0, 0, 0, 1, 0});
    QTest::addRow("left add right hand") << "AirTempFrontLeft" << "add" << true << bytes({0, 0, 0, 0, 2});
    QTest::addRow("right add") << "AirTempFrontRight" << "add" << false << bytes({0, 0, 0, 0, 2});
    QTest::addRow("unknown") << "AirECO" << "on" << false << QByteArray();
}

void TestDriver32::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, rightHand);
    QFETCH(QByteArray, press);
    DriverHarness h(32);
    h.driver()->setRightDriver(rightHand);
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), (press.isEmpty() ? L{} : L{frame(0xE1, press), frame(0xE1, QByteArray(5, '\0'))}));
}

void TestDriver32::reports()
{
    DriverHarness h(32);
    Canbus32Obj* d = nissan(h);
    d->languageChanged(QStringLiteral("en"));
    d->languageChanged(QStringLiteral("ko"));
    d->languageChanged(QStringLiteral("ch_ft"));
    d->setTcanBussend(400, 240, 800, 480, 0);
    d->setTcanBussend(400, 240, 800, 480, 1);
    d->setSrcState(CanbusInterface::SRC_RADIO, {3, 9850});
    d->setSrcState(CanbusInterface::SRC_MEDIA3, {0, 4, 12, 75, 0, QStringLiteral("Ab"), QString()});
    d->setSrcState(CanbusInterface::SRC_MEDIA1_A, {0, 4, 12, 0, 0, QStringLiteral("Ab"), QStringLiteral("C")});
    d->setSrcState(CanbusInterface::SRC_PHONE, {3, QStringLiteral("Jo")});
    d->setSrcState(CanbusInterface::SRC_PHONE, {4, QStringLiteral("Jo")});
    Data32Info model = info(h);
    model.mileage.carModel = 3;
    d->setDataInfo(QVariant::fromValue(model));
    d->exitSelectSlot();
    QCOMPARE(h.sentFrames(), (L{frame(0x83, {0x31, 1}), frame(0x83, {0x31, 0}), frame(0x98, {1, 0x01, 0xFF, 0x01, 0xF4, 0}),
                               frame(0xC0, {1, 1, 2, 0x7A, 0x26, 0, 0, 0}),
                               frame(0xC0, {11, 0x11, 5, 0, 12, 0, 1, 15}),
                               frame(0x70, {0x11, 'A', 0, 'b', 0, 0, 0}), frame(0x71, {0x11, 'C', 0, 0, 0}),
                               frame(0xC5, {2, 1, 'J', 'o'}), frame(0xE2, {0, 2})}));
    QCOMPARE(int(info(h).vehicleSetting.languageCode), 0);
}

void TestDriver32::powerAndLink()
{
    DriverHarness h(32);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x28, {0x40, 0}));
    h.driver()->setPowerOffState();
    h.driver()->setPowerOffState();
    QCOMPARE(doors.count(), 2);   // opened, then cleared once
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=0"});
    h.feed(frame(0x03, {0xF8}));
    QCOMPARE(changed.count(), 1);   // gated while off
    QCOMPARE(int(info(h).multimedia.mediaBit3), 1);
    h.driver()->setPowerOnState();
    nissan(h)->getCardoorState();
    QCOMPARE(h.sentFrames(), L{frame(0x90, {0x7D, 0x05})});
    // An incomplete tail waits for the rest of its frame.
    const QByteArray good = frame(0x0A, {0x05});
    QCOMPARE(h.driver()->setCanbusData(good + frame(0x0A, {0x06}).left(4)), good.size());
    QCOMPARE(h.driver()->checkProtocolData(frame(0x21, {1, 2})), 1);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x26, {1, 2})), 0);
    QVERIFY(!h.driver()->isConnectedState());
    h.feed(frame(0x30, QByteArray("NS 2.1\0", 7)));
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("NS 2.1"));
    // The tune button's keys go to the device as they are; panel 7 opens the music.
    QSignalSpy activity(h.driver(), SIGNAL(requestActivity(QString)));
    h.feed(frame(0x60, {0x13, 1, 0}));
    h.feed(frame(0x40, {7}));
    QCOMPARE(h.keyEvents(), (QList<int>{0x1200065, 1, 0x1200065, 0}));
    QCOMPARE(activity.count(), 1);
}

void TestDriver32::muranoKeys_data()
{
    QTest::addColumn<QString>("activity");
    QTest::addColumn<QString>("resource");
    QTest::addColumn<L>("frames");
    QTest::addColumn<C>("events");
    const int mode = canbus::kkmapKey(0x1200027);
    const int source = canbus::kkmapKey(0x1100041);
    QTest::addRow("radio playing") << "radio" << "radio" << L{key(7, 1), key(0, 0)} << C{mode, 1, mode, 0};
    QTest::addRow("radio over usb") << "radio" << "usb" << L{key(7, 1)} << C{source, 1};
    QTest::addRow("carplay") << "carplay" << "usb" << L{key(7, 1)} << C{mode, 1};
    QTest::addRow("state 2") << "radio" << "radio" << L{key(7, 2)} << C{};
    QTest::addRow("tap answers") << "" << "" << L{key(10, 1), key(0, 0)} << taps({0x1300058});
    QTest::addRow("5 bytes dropped") << "" << "" << L{frame(0x20, {1})} << C{};
    QTest::addRow("others as 32") << "" << "" << L{key(22, 1), key(0, 0)} << taps({0x110002B});
}

void TestDriver32::muranoKeys()
{
    QFETCH(QString, activity);
    QFETCH(QString, resource);
    QFETCH(L, frames);
    QFETCH(C, events);
    DriverHarness h(54);
    QVERIFY(h.driver()->inheritedById(32));
    qApp->setProperty("activity", activity);
    qApp->setProperty("resource", resource);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keyEvents(), events);
}

void TestDriver32::muranoHeldPhoneKey()
{
    DriverHarness h(54);
    h.feed(key(10, 1));
    QTRY_COMPARE_WITH_TIMEOUT(h.keyEvents(), taps({0x1300059}), 2000);
    h.feed(key(0, 0));   // the release after the hold gives nothing
    QCOMPARE(h.keyEvents(), taps({0x1300059}));
}

QTEST_GUILESS_MAIN(TestDriver32)
#include "tst_driver32.moc"
