// Pentium (81), and the CX65 (85) that differs in its source texts only: keys and knobs,
// climate with its two set-point scales, radar, doors with the outdoor temperature,
// commands gated by the box's mode, source reports, clock and edge taps.

#include <QSignalSpy>
#include <QtTest>

#include "canbus85/canbus85.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;

class TestDriver81 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void climate_data();
    void climate();
    void radarAndSteering();
    void doorsAndOutdoor();
    void commands();
    void everyCommandKey();
    void sourceReports();
    void cx65Texts();
    void clockAndTouch();
};

void TestDriver81::keys_data()
{
    QTest::addColumn<bool>("inCall");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("presses");
    QTest::addRow("wheel 3") << false << frame(0x20, {3, 1}) << 0x110002F << 1;
    QTest::addRow("wheel 3 in a call") << true << frame(0x20, {3, 1}) << 0x1300058 << 1;
    QTest::addRow("wheel 3 state 2") << false << frame(0x20, {3, 2}) << 0 << 0;
    QTest::addRow("knob 2, three steps") << false << frame(0x24, {2, 3}) << 0x1100025 << 3;
    QTest::addRow("panel 26 in a call") << true << frame(0x24, {26, 1}) << 0x120002B << 1;
    QTest::addRow("panel 26 state 2") << false << frame(0x24, {26, 2}) << 0 << 0;
}

void TestDriver81::keys()
{
    QFETCH(bool, inCall);
    QFETCH(QByteArray, frame);
    QFETCH(int, code);
    QFETCH(int, presses);
    DriverHarness h(81);
    h.driver()->setCallState(inCall);
    h.feed(frame);
    QList<int> expected;
    for (int i = 0; i < presses; ++i)
        expected << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
    QCOMPARE(h.keyEvents(), expected);
}

void TestDriver81::climate_data()
{
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("2e2106ce020910f1") << false << hex("ce020910f100")
        << QStringList{"airEco=1", "airAC=1", "airAuto=1", "airDual=1", "airInnerLoop=0",
                       "airOuterLoop=1", "airDefrostRear=1", "airWindUpRight=1", "airRearSpare[0]=1",
                       "airWindUpLeft=0", "airWindDownLeft=1", "airDefrostFront=0", "airWindSpeedLeft=7",
                       "airPower=1", "tempLeft=16", "tempLeftFahrenheit=0", "tempRightLow=1",
                       "tempRightFahrenheit=255", "tempRight=26.5"};
    QTest::addRow("loop 1, screen, half degrees, right-hand") << true << hex("10050081f200")
        << QStringList{"airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=1", "airPower=0",
                       "tempRight=18.5", "tempLeftHigh=1", "tempLeft=27"};
}

void TestDriver81::climate()
{
    QFETCH(bool, rightDriver);
    QFETCH(QByteArray, data);
    QFETCH(QStringList, expected);
    DriverHarness h(81);
    h.driver()->setRightDriver(rightDriver);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x21, data));
    h.feed(frame(0x21, data));
    compareFields(*h.driver()->getAirData(), expected);
    QCOMPARE(air.count(), 1);
}

void TestDriver81::radarAndSteering()
{
    DriverHarness h(81);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x22, {1, 4, 0, 2, 0}));
    compareFields(*h.driver()->getRadarData(),
                  {"radarLevels=9", "radarRearLeft=6", "radarRearLeftMid=0", "radarRearRightMid=0", "radarRearRight=4"});
    h.feed(frame(0x23, {3, 0, 0, 0, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarLevels=10", "radarFrontLeft=2"});
    h.feed(frame(0x30, {0x81, 0x02, 0}));
    h.feed(frame(0x30, {0x01, 0x02, 0}));
    QCOMPARE(steering.at(0), (QList<QVariant>{258, 5400, true}));
    QCOMPARE(steering.at(1), (QList<QVariant>{-258, 5400, true}));
}

void TestDriver81::doorsAndOutdoor()
{
    DriverHarness h(81);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.driver()->setPowerOffState();
    h.feed(frame(0x28, {0x47, 61, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorHood=1", "doorFrontRight=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=0"});
    QCOMPARE(doors.count(), 0);   // gated
    QCOMPARE(body.count(), 2);    // the door change and the warning, not gated
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(h.driver()->getAirData()->outdoorTemp, QString::fromUtf8("21.0\xe2\x84\x83"));
    // The unknown mark sits in byte 3: "--" whatever byte 4 says, and no signal.
    h.feed(frame(0x28, {0xFF, 61, 0}));
    QCOMPARE(h.driver()->getAirData()->outdoorTemp, QStringLiteral("--"));
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(h.driver()->getDataInfo().value<Data81Info>().vehicle.outdoorTempText, QStringLiteral("--"));
}

void TestDriver81::commands()
{
    DriverHarness h(81);
    h.driver()->setCanbusState(QStringLiteral("AirOnOff"), QStringLiteral("1"));   // mode off: nothing
    h.driver()->setCanbusState(QStringLiteral("AirWindUpFront"), QString());
    h.feed(frame(0x52, {1, 1, 0}));
    h.driver()->setCanbusState(QStringLiteral("AirOnOff"), QString());
    h.driver()->setCanbusState(QStringLiteral("AirWindUpFront"), QString());
    h.driver()->setCanbusState(QStringLiteral("AirTempFrontRight"), QStringLiteral("add"));
    h.driver()->setCanbusState(QStringLiteral("AirSYNC"), QStringLiteral("1"));
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xA8, {7, 1}), frame(0xA8, {0, 1}),
                                               frame(0xA8, {17, 1}), frame(0xA8, {15, 1})}));
    QTRY_COMPARE(h.sentFrames().size(), 8);
    QCOMPARE(h.sentFrames().at(7), frame(0xA8, {15, 0}));
}

void TestDriver81::everyCommandKey()
{
    DriverHarness h(81);
    h.feed(frame(0x52, {1, 1, 0}));   // the mode that on/off and AUTO need
    const QList<QPair<const char*, const char*>> keys = {
        {"AirOnOff", ""}, {"AirAC", ""}, {"AirAUTO", ""}, {"AirDefrostFront", ""}, {"AirWindDownFront", ""},
        {"AirWindSpeedAddSubFront", "1"}, {"AirWindSpeedAddSubFront", "0"}, {"AirTempFrontLeft", "add"},
        {"AirTempFrontLeft", "sub"}, {"AirTempFrontRight", "sub"}, {"AirInnerLoop", ""}, {"AirDefrostRear", ""}};
    QList<int> codes;
    for (const auto& k : keys) {
        h.clearSent();
        h.driver()->setCanbusState(QLatin1String(k.first), QLatin1String(k.second));
        codes << (h.sentFrames().isEmpty() ? -1 : int(quint8(h.sentFrames().first().at(3))));
    }
    QCOMPARE(codes, (QList<int>{0, 1, 2, 6, 17, 11, 12, 13, 14, 16, 21, 23}));
}

void TestDriver81::sourceReports()
{
    DriverHarness h(81);
    h.driver()->setSrcState(CanbusInterface::SRC_RADIO, {5, 1008});
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {1, QStringLiteral("Anna"), QStringLiteral("12345")});
    QTRY_COMPARE(h.sentFrames().size(), 4);
    QCOMPARE(h.sentFrames().at(0), frame(0xC0, {1, 1, 16, 0, 0, 0, 0, 0}));
    QCOMPARE(h.sentFrames().at(1), frame(0xC5, {0, 1}));
    QCOMPARE(h.sentFrames().at(2), frame(0xCA, QByteArray("\x03\x02" "12345", 7)));
    // The name frame's length byte follows the number, its bytes the name.
    QByteArray name = frame(0xCA, QByteArray("\x04\x02" "Anna", 6));
    name[2] = 7;
    canbus::writeChecksum(canbus::FrameFamily::Start2E, name);
    QCOMPARE(h.sentFrames().at(3), name);

    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, {0, 1, 2, 65, 3725, QStringLiteral("T"), QStringLiteral("A")});
    QTRY_COMPARE(h.sentFrames().size(), 3);
    QCOMPARE(h.sentFrames().at(0), frame(0xC0, {11, 0, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(h.sentFrames().at(1), frame(0x70, QByteArray("\x02T/A", 4)));
    QCOMPARE(h.sentFrames().at(2), frame(0x71, QByteArray("\x02") + "1:2:5/0:1:5"));
}

void TestDriver81::cx65Texts()
{
    DriverHarness h(85);
    QCOMPARE(h.driver()->canbusId(), 85);
    const QVariantList media{0, 1, 2, 0, 0, QStringLiteral("T"), QString()};
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA1_A, media);
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA1_A, media);
    QTRY_COMPARE(h.sentFrames().size(), 5);   // 0x70 the first time only, 0x71 both times
    // The two source frames go at once, the texts 300 ms later.
    QCOMPARE(h.sentFrames().at(2), frame(0x70, QByteArray("\x10T\0/\0", 5)));
    QCOMPARE(h.sentFrames().at(3).at(1), '\x71');
    QCOMPARE(h.sentFrames().at(4), frame(0x71, QByteArray("\x10") + QByteArray("0\0:\0""0\0:\0""0\0/\0""0\0:\0""0\0:\0""0\0", 22)));
}

void TestDriver81::clockAndTouch()
{
    DriverHarness h(81);
    DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2026, 3, 9), QTime(7, 0, 5)));
    h.driver()->setCurrentTime(0, 0, 0);
    DateTimeCtrl::getInstance()->clearFixedDateTime();
    auto* d = qobject_cast<Canbus81Obj*>(h.driver());
    d->setTcanBussend(450, 100, 900, 600, 0);
    d->setTcanBussend(455, 105, 900, 600, 2);   // a tap at the top middle
    d->setTcanBussend(450, 100, 900, 600, 0);
    d->setTcanBussend(450, 300, 900, 600, 2);   // a swipe: nothing
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xA6, {0x1A, 3, 9, 14, 0xFF, 5, 0}), frame(0xA7, {1})}));
}

QTEST_GUILESS_MAIN(TestDriver81)
#include "tst_driver81.moc"
