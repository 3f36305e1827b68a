// Nissan (32) and Murano (54): keys told short or long at the release, the frames' fields,
// the clock both ways, commands as press and release, reports; 54 for its two wheel buttons.

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
using S = QStringList;

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
    FIELD(multimedia.trayItem2), FIELD(multimedia.trayCount), FIELD(amplifier.ampBand1), FIELD(amplifier.ampBand5),
    FIELD(amplifier.ampVolume), FIELD(vehicleSetting.frame0AValue), FIELD(vehicleSetting.settingD1High),
    FIELD(mileage.odometerText), FIELD(mileage.distanceTextB), FIELD(mileage.voltageText), FIELD(mileage.speedTextA),
    FIELD(functions.functionItem32),
};

// "name=value" from the first record that has the name: the shared records in turn
// (air first), then the driver's own record by its dotted path.
QString readField(const DriverHarness& h, const QString& item)
{
    const QStringList one{item};
    for (const QStringList& v : {fieldValues(*h.driver()->getAirData(), one), fieldValues(*h.driver()->getCarbodyData(), one),
                                 fieldValues(*h.driver()->getCardoorData(), one), fieldValues(*h.driver()->getRadarData(), one)})
        if (!v.first().endsWith(QLatin1String("no such field")))
            return v.first();
    const QString path = item.section(QLatin1Char('='), 0, 0);
    for (const Probe& p : kProbes)
        if (path == QLatin1String(p.path))
            return path + QLatin1Char('=') + p.read(info(h));
    return path + QLatin1String(": no probe");
}
}

class TestDriver32 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data(); void keys();
    void fields_data(); void fields();
    void clock_data(); void clock();
    void commands_data(); void commands();
    void reports(); void signalsAndPower();
};

void TestDriver32::keys_data()
{
    QTest::addColumn<int>("driver");
    QTest::addColumn<QString>("setup");   // "model 1", "call", "held" (then let go) or the activity/resource playing
    QTest::addColumn<L>("frames");
    QTest::addColumn<C>("events");
    const int mode = canbus::kkmapKey(0x1200027);
    const int source = canbus::kkmapKey(0x1100041);
    QTest::addRow("0 1 taps the kept key") << 32 << "" << L{key(1, 1), key(0, 1)} << taps({0x1100025, 0x1100025});
    QTest::addRow("22 short at release") << 32 << "" << L{key(22, 1), key(0, 0)} << taps({0x110002B});
    QTest::addRow("22 long at release") << 32 << "" << L{key(22, 2), key(0, 0)} << taps({0x1100041});
    QTest::addRow("39 long held") << 32 << "" << L{key(39, 2)} << C{};
    QTest::addRow("41 long clears") << 32 << "" << L{key(41, 2), key(0, 0), key(0, 0)} << taps({0x110003C});
    QTest::addRow("44 short keeps") << 32 << "" << L{key(44, 1), key(0, 0), key(0, 0)} << taps({0x1100036, 0x1100036});
    QTest::addRow("3 on model 1") << 32 << "model 1" << L{key(3, 1)} << taps({0x110002F});
    QTest::addRow("9 in a call") << 32 << "call" << L{key(9, 1)} << taps({0x1300058});
    QTest::addRow("panel 9") << 32 << "" << L{frame(0x40, {9})} << taps({0x1200065});
    QTest::addRow("phone 3") << 32 << "" << L{frame(0x50, {3})} << taps({0x1300059});
    QTest::addRow("54 radio playing") << 54 << "radio/radio" << L{key(7, 1), key(0, 0)} << C{mode, 1, mode, 0};
    QTest::addRow("54 radio over usb") << 54 << "radio/usb" << L{key(7, 1)} << C{source, 1};
    QTest::addRow("54 carplay") << 54 << "carplay/usb" << L{key(7, 1)} << C{mode, 1};
    QTest::addRow("54 state 2") << 54 << "radio/radio" << L{key(7, 2)} << C{};
    QTest::addRow("54 held hangs up") << 54 << "held" << L{key(10, 1)} << taps({0x1300059});
    QTest::addRow("54 tap answers") << 54 << "" << L{key(10, 1), key(0, 0)} << taps({0x1300058});
    QTest::addRow("54 5 bytes dropped") << 54 << "" << L{frame(0x20, {1})} << C{};
    QTest::addRow("54 others as 32") << 54 << "" << L{key(22, 1), key(0, 0)} << taps({0x110002B});
}

void TestDriver32::keys()
{
    QFETCH(int, driver);
    QFETCH(QString, setup);
    QFETCH(L, frames);
    QFETCH(C, events);
    DriverHarness h(driver);
    Data32Info d = info(h);
    d.mileage.carModel = setup == QLatin1String("model 1") ? 1 : 0;
    h.driver()->setDataInfo(QVariant::fromValue(d));
    h.driver()->setCallState(setup == QLatin1String("call"));
    qApp->setProperty("activity", setup.contains(QLatin1Char('/')) ? setup.section(QLatin1Char('/'), 0, 0) : QString());
    qApp->setProperty("resource", setup.section(QLatin1Char('/'), 1, 1));
    for (const QByteArray& f : frames)
        h.feed(f);
    QTRY_COMPARE_WITH_TIMEOUT(h.keyEvents(), events, 2000);
    if (setup == QLatin1String("held")) {
        h.feed(key(0, 0));   // the release after the hold gives nothing
        QCOMPARE(h.keyEvents(), events);
    }
}

void TestDriver32::fields_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("setup");   // "right hand" or "reverse"
    QTest::addColumn<S>("fields");
    QTest::addRow("2e2106 5f5750c468") << frame(0x21, {0x5F, 0x57, 0x50, 0xC4, 0x68, 0}) << ""
        << S{"airWindUpLeft=0", "airWindFrontRight=1", "airWindSpeedRight=5", "tempLeft=18.0", "tempRightHigh=1",
             "tempLeftVisible=1", "outdoorTemp=12.0\u2103", "outdoorTempValid=1"};
    QTest::addRow("2e2106 8000 3c c0") << frame(0x21, {0x80, 0x00, 0x3C, 0xC0, 0x00, 0}) << ""
        << S{"airWindUpLeft=1", "tempLeftLow=1", "tempRight=32.0", "tempRightHigh=0", "outdoorTempValid=0"};
    QTest::addRow("right hand swaps the codes") << frame(0x21, {0, 0, 0x40, 0xC4, 0x01, 0}) << "right hand"
        << S{"tempLeftHigh=1", "tempRight=16.0", "outdoorTemp=-39.5\u2103"};
    QTest::addRow("D2 0 hides both") << frame(0x21, {0, 0, 0x00, 0x40, 0xFF, 0}) << ""
        << S{"tempLeftVisible=0", "tempRightVisible=0", "tempRight=16.0", "outdoorTempValid=0"};
    QTest::addRow("doors") << frame(0x28, {0xC5, 0}) << "" << S{"doorFrontLeft=1", "doorHood=1", "bodyWarning36=1"};
    QTest::addRow("radar only in reverse") << frame(0x22, {1, 2, 3, 4, 0}) << "" << S{"radarRearLeft=0"};
    QTest::addRow("radar") << frame(0x22, {1, 2, 3, 0x90, 0}) << "reverse"
        << S{"radarRearLeft=2", "radarRearRight=32", "radarLevels=10", "radarOn=1"};
    QTest::addRow("FM high byte") << frame(0x04, {3, 0, 1, 2, 0}) << "" << S{"multimedia.radioFrequencyText=100.35MHz"};
    QTest::addRow("AM 10 kHz") << frame(0x04, {1, 0, 0x80, 2, 0}) << "" << S{"multimedia.radioFrequencyText=540KHz"};
    QTest::addRow("AM 9 kHz") << frame(0x04, {6, 0, 0x01, 0, 0}) << "" << S{"multimedia.radioFrequencyText=2826KHz"};
    QTest::addRow("disc error") << frame(0x07, {0, 0, 3, 7, 8, 0}) << "" << S{"multimedia.playStateText=disc error"};
    QTest::addRow("audio level clamp") << frame(0x06, {0, 0xC0, 0, 0}) << "" << S{"multimedia.audioLevel1=2"};
    QTest::addRow("tray 2 of 1 wraps") << frame(0x68, {0x41, 0}) << "" << S{"multimedia.trayItem2=10"};
    QTest::addRow("tray count clamp") << frame(0x68, {0xE0, 0}) << "" << S{"multimedia.trayCount=5"};
    QTest::addRow("93 offsets, clamps") << frame(0x93, {41, 6, 9, 9, 9, 0, 0, 2, 0, 0}) << ""
        << S{"amplifier.ampVolume=40", "amplifier.ampBand1=10", "amplifier.ampBand5=7"};
    QTest::addRow("0A clamp") << frame(0x0A, {0xFF}) << "" << S{"vehicleSetting.frame0AValue=49"};
    QTest::addRow("95 D1 6..5") << frame(0x95, {0, 0x60, 0, 0, 0}) << "" << S{"vehicleSetting.settingD1High=3"};
    QTest::addRow("27 km, miles") << frame(0x27, {1, 1, 2, 3, 1, 0, 0}) << ""
        << S{"mileage.odometerText=66051km", "mileage.distanceTextB=25.6mile"};
    QTest::addRow("7d0b voltage") << frame(0x7D, {11, 0x10, 0x27, 0}) << "" << S{"mileage.voltageText=10V", "batteryVoltage=100"};
    QTest::addRow("6a speed") << frame(0x6A, {0x2C, 0x01, 0}) << "" << S{"mileage.speedTextA=300km/h", "vehicleSpeed=30000"};
    QTest::addRow("7e D9 bit 4") << frame(0x7E, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0}) << "" << S{"functions.functionItem32=1"};
}

void TestDriver32::fields()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, setup);
    QFETCH(S, fields);
    DriverHarness h(32);
    h.driver()->setRightDriver(setup == QLatin1String("right hand"));
    h.driver()->setInReverse(setup == QLatin1String("reverse"));
    QCOMPARE(h.feed(frame), 0);
    QStringList actual;
    for (const QString& item : fields)
        actual << readField(h, item);
    QCOMPARE(actual, fields);
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
    QTest::addRow("AirInnerLoop on") << "AirInnerLoop" << "on" << false << bytes({0x04, 0, 0, 0, 0});
    QTest::addRow("AirInnerLoop off") << "AirInnerLoop" << "off" << false << bytes({0x08, 0, 0, 0, 0});
    QTest::addRow("AddSub with add") << "AirWindSpeedAddSubFront" << "add" << false << bytes({0, 1, 0, 0, 0});
    QTest::addRow("AddSub with 1") << "AirWindSpeedAddSubFront" << "1" << false << bytes({0, 2, 0, 0, 0});
    QTest::addRow("AirWindDownFront") << "AirWindDownFront" << "" << false << bytes({0, 0, 0x08, 0, 0});
    QTest::addRow("left sub") << "AirTempFrontLeft" << "sub" << false << bytes({0, 0, 0, 1, 0});
    QTest::addRow("left add right hand") << "AirTempFrontLeft" << "add" << true << bytes({0, 0, 0, 0, 2});
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
    for (const char* language : {"en", "ko", "ch_ft"})
        d->languageChanged(QLatin1String(language));
    for (int state : {0, 1})
        d->setTcanBussend(400, 240, 800, 480, state);
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
                               frame(0xC0, {1, 1, 2, 0x7A, 0x26, 0, 0, 0}), frame(0xC0, {11, 0x11, 5, 0, 12, 0, 1, 15}),
                               frame(0x70, {0x11, 'A', 0, 'b', 0, 0, 0}), frame(0x71, {0x11, 'C', 0, 0, 0}),
                               frame(0xC5, {2, 1, 'J', 'o'}), frame(0xE2, {0, 2})}));
    QCOMPARE(int(info(h).vehicleSetting.languageCode), 0);
}

void TestDriver32::signalsAndPower()
{
    DriverHarness h(32);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x21, {0x01, 0, 0x50, 0x50, 0x68, 0}));
    h.feed(frame(0x21, {0x01, 0, 0x50, 0x50, 0x68, 0}));   // the same bytes: nothing
    h.feed(frame(0x21, {0x03, 0, 0x50, 0x50, 0x68, 0}));   // outdoor byte unchanged
    QCOMPARE(air.count(), 2);
    QCOMPARE(outdoor.count(), 1);
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=120"});
    h.feed(frame(0x29, {0x81, 0x02, 0}));
    h.feed(frame(0x29, {0x01, 0x02, 0}));
    h.feed(frame(0x7D, {8, 0xFF, 0xFF, 0}));   // the status word has no sign
    QCOMPARE(QList<QList<QVariant>>(steering),
             (QList<QList<QVariant>>{{258, 5400, true}, {-258, 5400, true}, {65535, 540, true}}));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.feed(frame(0x7D, {11, 0x10, 0x27, 0}));
    QCOMPARE(body.count(), 1);
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
    // Off: the outdoor temperature is kept, without a signal.
    h.feed(frame(0x21, {0x01, 0, 0x50, 0x50, 0x6A, 0}));
    QCOMPARE(air.count() + outdoor.count(), 3);
    compareFields(*h.driver()->getCarbodyData(), {"outdoorTempTenths=130"});
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

QTEST_GUILESS_MAIN(TestDriver32)
#include "tst_driver32.moc"
