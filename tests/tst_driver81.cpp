// Pentium (81), and the CX65 (85) that differs in its source texts only.

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
    void keys()
    {
        DriverHarness h(81);
        // Wheel keys and panel keys send on state 1 only; a panel knob's state counts its steps.
        for (const QByteArray& f : {frame(0x20, {3, 1}), frame(0x20, {3, 2}), frame(0x24, {2, 3}), frame(0x24, {26, 2})})
            h.feed(f);
        h.driver()->setCallState(true);
        h.feed(frame(0x20, {3, 1}));
        h.feed(frame(0x24, {26, 1}));
        QList<int> expected;   // each pressed and released
        for (int code : {0x110002F, 0x1100025, 0x1100025, 0x1100025, 0x1300058, 0x120002B})
            expected << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
        QCOMPARE(h.keyEvents(), expected);
    }

    void climateRadarAndSteering()
    {
        DriverHarness h(81);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        h.feed(frame(0x21, hex("ce020910f100")));
        h.feed(frame(0x21, hex("ce020910f100")));   // no news, no signal
        QCOMPARE(air.count(), 1);
        // 0xF1: low, and b7 set makes it half degrees from 18 (n 17 is 26.5) in the 0xFF unit.
        compareFields(*h.driver()->getAirData(),
                      {"airEco=1", "airAC=1", "airAuto=1", "airDual=1", "airOuterLoop=1", "airDefrostRear=1",
                       "airWindUpRight=1", "airRearSpare[0]=1", "airWindDownLeft=1", "airWindSpeedLeft=7",
                       "airPower=1", "tempLeft=16", "tempRightLow=1", "tempRightFahrenheit=255", "tempRight=26.5"});
        h.driver()->setRightDriver(true);
        h.feed(frame(0x21, hex("10050081f200")));
        compareFields(*h.driver()->getAirData(), {"airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=1", "airPower=0",
                                                  "tempRight=18.5", "tempLeftHigh=1", "tempLeft=27"});

        h.feed(frame(0x22, {1, 4, 0, 2, 0}));   // classes, nearest first
        compareFields(*h.driver()->getRadarData(),
                      {"radarLevels=9", "radarRearLeft=6", "radarRearLeftMid=0", "radarRearRightMid=0", "radarRearRight=4"});
        h.feed(frame(0x23, {3, 0, 0, 0, 0}));
        compareFields(*h.driver()->getRadarData(), {"radarLevels=10", "radarFrontLeft=2"});
        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.feed(frame(0x30, {0x81, 0x02, 0}));
        h.feed(frame(0x30, {0x01, 0x02, 0}));
        QCOMPARE(steering.at(0) + steering.at(1), (QList<QVariant>{258, 5400, true, -258, 5400, true}));
    }

    void doorsAndOutdoor()
    {
        DriverHarness h(81);
        QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
        QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
        QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
        h.driver()->setPowerOffState();
        h.feed(frame(0x28, {0x47, 61, 0}));
        compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorHood=1", "doorFrontRight=0"});
        compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=0"});
        QCOMPARE(h.driver()->getAirData()->outdoorTemp, QString::fromUtf8("21.0\xe2\x84\x83"));
        // Doors gated; the body hears of the door change and of the warning, not gated.
        QCOMPARE((QList<int>{doors.count(), body.count(), outdoor.count()}), (QList<int>{0, 2, 1}));
        // The unknown mark sits in byte 3: "--" whatever byte 4 says, and no signal.
        h.feed(frame(0x28, {0xFF, 61, 0}));
        QCOMPARE(h.driver()->getAirData()->outdoorTemp, QStringLiteral("--"));
        QCOMPARE(outdoor.count(), 1);
    }

    void commands()
    {
        DriverHarness h(81);
        using Keys = QList<QPair<const char*, const char*>>;
        QList<int> codes;   // the command byte of the press; -1: nothing sent
        auto press = [&h, &codes](const Keys& keys) {
            for (const auto& k : keys) {
                h.clearSent();
                h.driver()->setCanbusState(QLatin1String(k.first), QLatin1String(k.second));
                codes << (h.sentFrames().isEmpty() ? -1 : int(quint8(h.sentFrames().first().at(3))));
            }
        };
        const Keys byMode = {{"AirOnOff", ""}, {"AirAUTO", ""}, {"AirWindUpFront", ""}, {"AirWindDownFront", ""}};
        press(byMode);
        h.feed(frame(0x52, {1, 1, 0}));   // the box's mode, which these keys follow
        press(byMode);
        press({{"AirAC", ""}, {"AirWindSpeedAddSubFront", "1"}, {"AirWindSpeedAddSubFront", "0"},
               {"AirTempFrontLeft", "add"}, {"AirTempFrontRight", "sub"}, {"AirDefrostRear", ""}, {"AirSYNC", ""}});
        QCOMPARE(codes, (QList<int>{-1, -1, 7, 9, 0, 2, 17, 17, 1, 11, 12, 13, 16, 23, -1}));
        h.clearSent();
        QTRY_VERIFY(h.sentFrames().contains(frame(0xA8, {23, 0})));   // the release follows
    }

    void reportsClockAndTouch()
    {
        DriverHarness h(81);
        h.driver()->setSrcState(CanbusInterface::SRC_RADIO, {5, 1008});
        h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {1, QStringLiteral("Anna"), QStringLiteral("12345")});
        // The name frame's length byte follows the number, its bytes the name.
        QByteArray name = frame(0xCA, QByteArray("\x04\x02" "Anna", 6));
        name[2] = 7;
        canbus::writeChecksum(canbus::FrameFamily::Start2E, name);
        QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xC0, {1, 1, 16, 0, 0, 0, 0, 0}), frame(0xC5, {0, 1}),
                                                       frame(0xCA, QByteArray("\x03\x02" "12345", 7)), name}));

        h.clearSent();
        h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, {0, 1, 2, 65, 3725, QStringLiteral("T"), QStringLiteral("A")});
        QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xC0, {11, 0, 0, 0, 0, 0, 0, 0}),
                                                       frame(0x70, QByteArray("\x02T/A", 4)),
                                                       frame(0x71, QByteArray("\x02") + "1:2:5/0:1:5")}));

        // The clock as the box wants it (hour doubled, minute less one), and edge taps only.
        h.clearSent();
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

    void cx65Texts()
    {
        DriverHarness h(85);
        const QVariantList media{0, 1, 2, 0, 0, QStringLiteral("T"), QString()};
        h.driver()->setSrcState(CanbusInterface::SRC_MEDIA1_A, media);
        h.driver()->setSrcState(CanbusInterface::SRC_MEDIA1_A, media);
        QTRY_COMPARE(h.sentFrames().size(), 5);   // 0x70 the first time only, 0x71 both times
        // The two source frames go at once, the texts 300 ms later.
        QCOMPARE(h.sentFrames().at(2), frame(0x70, QByteArray("\x10T\0/\0", 5)));
        QCOMPARE(h.sentFrames().at(3).at(1), '\x71');
        QCOMPARE(h.sentFrames().at(4), frame(0x71, QByteArray("\x10") + QByteArray("0\0:\0""0\0:\0""0\0/\0""0\0:\0""0\0:\0""0\0", 22)));
    }
};

QTEST_GUILESS_MAIN(TestDriver81)
#include "tst_driver81.moc"
