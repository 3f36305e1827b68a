// HAVAL box (60) and the boxes built on it: the H4 variants (61 commands, 62 panorama
// touches) and the make's other rows (58, 59). Frames in, records, signals and keys out;
// commands, reports and touches in, frames out.

#include <QTimer>
#include <QtTest>
#include <functional>

#include "canbus60/canbus60.h"
#include "datasavecontrol.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Action = std::function<void(CanbusInterface*)>;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // keyboard number, pressed
using Touches = QList<QList<int>>;      // x, y, model
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kUp = 166, kDown = 167;   // keyboard numbers of 0x1100025 and 0x1100024

Data60Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data60Info>(); }

void setInfo(DriverHarness& h, const std::function<void(Data60Info&)>& change)
{
    Data60Info d = info(h);
    change(d);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}

// The 38-byte text frames of the source reports.
QByteArray textFrame(int type, int code, const QByteArray& text)
{
    QByteArray data(34, '\0');
    data[0] = char(code);
    data.replace(1, text.size(), text);
    return frame(type, data);
}

} // namespace

class TestDriver60 : public QObject
{
    Q_OBJECT

private slots:
    void connection_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<Frames>("requests");
        QTest::addColumn<bool>("anyFrameConnects");
        const Frames both{frame(0x90, {0x23, 0x00}), frame(0x90, {0x7F, 0x00})};
        QTest::addRow("60 asks for data, waits for its version") << 60 << both << false;
        QTest::addRow("58 plain form, walk A") << 58 << Frames{} << true;
    }

    void connection()
    {
        QFETCH(int, id);
        QFETCH(Frames, requests);
        QFETCH(bool, anyFrameConnects);
        DriverHarness h(id);
        int interval = 0;
        QByteArray out;
        QVERIFY(h.driver()->needSendConnect(interval, out));
        QCOMPARE(interval, 1000);
        QCOMPARE(out, hex("2e8101017c"));
        QTest::qWait(200);
        QCOMPARE(h.sentFrames(), requests);
        h.feed(frame(0x3F, {0x01}));
        QCOMPARE(h.driver()->isConnectedState(), anyFrameConnects);
        h.feed(frame(0x7F, QByteArray("HV-2.0")));
        QCOMPARE(h.driver()->getVersionData(), QStringLiteral("HV-2.0"));
        QVERIFY(h.driver()->isConnectedState() && !h.driver()->needSendConnect(interval, out));
        QVERIFY(h.driver()->inheritedById(60) == (id != 60));
    }

    void climate_data()
    {
        QTest::addColumn<bool>("rightHand");
        QTest::addColumn<Frames>("frames");
        QTest::addColumn<QStringList>("expected");
        auto row = [](bool rightHand, const Frames& frames, const QStringList& e) {
            QTest::addRow("%s%s", frames.last().toHex().constData(), rightHand ? " right-hand" : "") << rightHand << frames << e;
        };
        // Byte 3 bit by bit (each bit set in one row, clear in the other); the fan clamps at 7; 112 and 144 are the ends of the degrees.
        row(false, {frame(0x23, {0xA9, 0, 9, 112, 144, 0x5A})},
            {"airOnOff=1", "airAC=0", "airInnerLoop=1", "airAuto=1", "airDual=0", "airDefrostRear=0", "airDefrostFront=1",
             "airWindSpeedLeft=7", "airWindSpeedRight=7", "tempLeft=16.0", "tempRight=32.0", "outdoorTemp=5.0\u2103"});
        row(false, {frame(0x23, {0x56, 0, 0, 0, 255, 0})},
            {"airPower=0", "airAC=1", "airOuterLoop=1", "airAuto=0", "airDual=1", "airDefrostRear=1",
             "airDefrostFront=0", "tempLeftLow=1", "tempLeftHigh=0", "tempRightHigh=1", "tempRightLow=0"});
        // The distribution sets both sides and the windscreen, over byte 3's bit 0.
        row(false, {frame(0x23, {0x01, 2, 0, 0, 0, 0})},
            {"airWindUpLeft=1", "airWindDownRight=1", "airWindFrontLeft=0", "airDefrostFront=0"});
        // A value without a row leaves the vents; 1..17 are levels, shown without a unit.
        row(false, {frame(0x23, {0x00, 6, 0, 5, 113, 0}), frame(0x23, {0x00, 8, 0, 18, 111, 0})},
            {"airWindUpLeft=1", "airDefrostFront=1", "tempLeft=5", "tempRight=16.5", "tempLeftFahrenheit=0",
             "tempRightFahrenheit=0"});
        row(true, {frame(0x23, {0x00, 0, 0, 17, 130, 0})}, {"tempRight=17", "tempRightFahrenheit=255", "tempLeft=25.0"});
        // 255 is no outdoor reading: the record shows the raw text, the body page "--".
        row(false, {frame(0x23, {0x00, 0, 0, 0, 0, 255})}, {"outdoorTemp=87.5\u2103"});
        // Seats: the driver's level in the high nibble; one massage level, the passenger side's.
        row(false, {frame(0x35, {0x23, 0x99, 0x12, 0x31, 0x34, 0, 0})},
            {"seatHotLeft=2", "seatHotRight=3", "seatCoolLeft=1", "seatCoolRight=2", "seatGroup3Left=3", "seatGroup3Right=1",
             "seatGroup4Level=4"});
        row(true, {frame(0x35, {0x23, 0, 0x12, 0x31, 0x34, 0, 0})},
            {"seatHotLeft=3", "seatHotRight=2", "seatCoolLeft=2", "seatGroup3Right=3", "seatGroup4Level=3"});
        row(false, {frame(0x35, {0x4F, 0, 0xF5, 0x5F, 0x6F, 0, 0})},
            {"seatHotLeft=3", "seatHotRight=3", "seatCoolLeft=3", "seatGroup3Right=3", "seatGroup4Level=5"});
    }

    void climate()
    {
        QFETCH(bool, rightHand);
        QFETCH(Frames, frames);
        QFETCH(QStringList, expected);
        DriverHarness h(60);
        h.driver()->setRightDriver(rightHand);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        for (const QByteArray& f : frames)
            h.feed(f);
        compareFields(*h.driver()->getAirData(), expected);
        const int told = air.count();
        h.feed(frames.last());   // the same again is no news
        QCOMPARE(air.count(), told);
        if (frames.last().at(1) == 0x35)
            return;
        const QString outdoor = frames.last().at(8) == char(255) ? QStringLiteral("--") : h.driver()->getAirData()->outdoorTemp;
        compareFields(info(h), {"outdoorText=" + outdoor});
    }

    void offStateWaitsASecond()
    {
        DriverHarness h(60);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
        h.feed(frame(0x23, {0x80, 1, 2, 120, 120, 0x50}));   // the outdoor byte moved: no news for the panel
        QCOMPARE(air.count(), 0);
        QCOMPARE(outdoor.count(), 1);
        h.feed(frame(0x23, {0xC0, 1, 2, 120, 120, 0x50}));   // on: at once
        QCOMPARE(air.count(), 1);
        h.feed(frame(0x23, {0x00, 1, 2, 120, 120, 0x50}));   // off: only if it lasts
        h.feed(frame(0x23, {0x80, 1, 2, 120, 120, 0x50}));
        QCOMPARE(air.count(), 2);
        QTest::qWait(1300);
        QCOMPARE(air.count(), 2);
        h.feed(frame(0x23, {0x00, 1, 3, 120, 120, 0x50}));
        QCOMPARE(air.count(), 2);
        QTRY_COMPARE(air.count(), 3);
        // The panel's climate button wakes it before the box does.
        h.feed(frame(0x22, {0x39, 0}));
        QCOMPARE(air.count(), 4);
        QCOMPARE(h.driver()->getAirData()->airPower, quint8(1));
    }

    void keys_data()
    {
        QTest::addColumn<Frames>("frames");
        QTest::addColumn<Keys>("keys");
        QTest::addColumn<Frames>("sent");
        auto row = [](const Frames& frames, const Keys& keys, const Frames& sent) {
            QTest::addRow("%s", frames.last().toHex().constData()) << frames << keys << sent;
        };
        // Byte 4 is passed as the key's state; a release (0) repeats the last key.
        row({frame(0x21, {1, 2}), frame(0x21, {0, 0})}, {{kUp, 2}, {kUp, 0}}, {});
        row({frame(0x21, {3, 1})}, {{0, 1}}, {});   // no key: the device still hears number 0
        row({frame(0x22, {73, 1})}, {{272, 1}}, {});
        // The fan buttons of the panel go back to the box as commands.
        row({frame(0x22, {0x37, 5})}, {}, {frame(0x84, {0x1C, 0x01})});
        row({frame(0x22, {0x38, 1}), frame(0x22, {0, 0})}, {}, {frame(0x84, {0x1D, 0x01}), frame(0x84, {0x1D, 0x00})});
        // The knob: one step per frame in the direction it moved; 255 restarts it at 0.
        row({frame(0x33, {0}), frame(0x33, {1}), frame(0x33, {0})}, {{kUp, 1}, {kUp, 0}, {kDown, 1}, {kDown, 0}}, {});
        row({frame(0x33, {255}), frame(0x33, {1})}, {{kUp, 1}, {kUp, 0}, {kUp, 1}, {kUp, 0}}, {});
    }

    void keys()
    {
        QFETCH(Frames, frames);
        QFETCH(Keys, keys);
        QFETCH(Frames, sent);
        DriverHarness h(60);
        for (const QByteArray& f : frames)
            h.feed(f);
        QCOMPARE(h.keys(), keys);
        QCOMPARE(h.sentFrames(), sent);
    }

    void pages_data()
    {
        QTest::addColumn<int>("carModel");
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QStringList>("expected");
        auto row = [](int model, const QByteArray& f, const QStringList& e) {
            QTest::addRow("%s model %d", f.toHex().constData(), model) << model << f << e;
        };
        row(0, frame(0x29, {0x44, 0x3C, 0x32, 0x64, 0x32}),
            {"temperatureTextA=3.0\u2103", "temperatureTextB=20.0\u2103", "voltageText=12.5V", "pressureText=35.0Kpa",
             "percentText=50.0%"});
        row(0, frame(0x31, {0xFF, 0x7F, 0x00, 0x08, 0x30, 0x07, 0x1F, 0x0F, 0x3D, 0x0F, 0, 0}),
            {"setup0=4", "setup1=4", "setup2=6", "setup22=2", "setup32=2", "setup36=20", "setup41=2", "setup42=2",
             "setup45=2", "setup51=2"});
        row(0, frame(0x31, {0x12, 0x4A, 0x30, 0, 0, 0, 0, 0, 0, 0, 0, 0}), {"setup0=1", "setup1=2", "setup2=4", "setup9=3"});
        row(0, frame(0x31, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), {"setup0=0"});   // short
        row(0, frame(0x32, {25}), {"levelText=--"});
        row(9, frame(0x32, {15}), {"levelText=0"});
        row(9, frame(0x32, {96}), {"levelText=--"});
        row(0, frame(0x36, {0x85, 0xFF, 0x05, 0x80, 0x01, 0x02, 0}),
            {"pitchText=Down5°", "percentTextB=--", "rollText=Left5°", "attitudeFlag=1", "distanceText=258KM"});
        row(0, frame(0x36, {0x05, 0x30, 0x85, 0x7F, 0, 0, 0}), {"pitchText=up5°", "percentTextB=48%", "rollText=right5°",
                                                              "attitudeFlag=0"});
        row(0, frame(0x37, {0x29, 0x15, 0, 0, 0, 0x14, 0x67, 0x05, 0x32, 0xFF}),
            {"ampVolume=40", "ampBand0=20", "ampBand1=0", "ampBand4=20", "ampMode=5", "ampFlag=1", "ampField=2",
             "ampLevel=4", "ampVoltage=12.5V", "ampTemperature=--"});
        row(0, frame(0x37, {0x10, 0, 0, 0, 0, 0, 0x41, 0x02, 0, 0x41}), {"ampMode=4", "ampFlag=0", "ampField=1",
                                                                         "ampTemperature=25\u2103"});
        row(0, frame(0x38, {0x7B, 0x01, 0x02, 0x00, 0x0A, 0x0E, 0x11, 0, 59}),
            {"cdState=1", "cdField=2", "cdMode=9", "cdTrack=258", "cdTrackCount=10", "cdTimeA=1:0:1", "cdTimeB=0:0:59"});
        row(0, frame(0x39, {2, 0xAA, 0xBB, 'H', 'i'}), {"cdTextA=--", "cdTextB=Hi"});
        row(0, frame(0x3F, {0x02}), {"flagBit0=0", "flagBit1=1"});
        row(0, frame(0x41, {0x05}), {"panoramaOption=1", "panoramaActive=0"});
        row(0, frame(0x42, {0x34, 0x85, 0x34}),
            {"panorama0=2", "panorama1=3", "panorama2=1", "panorama3=4", "panorama4=2", "panorama5=3"});
        row(0, frame(0x43, {15}), {"promptText=Please bring your belongings and lock the door"});
        row(0, frame(0x43, {16}), {"promptText=--"});
    }

    void pages()
    {
        QFETCH(int, carModel);
        QFETCH(QByteArray, frame);
        QFETCH(QStringList, expected);
        DriverHarness h(60);
        setInfo(h, [&](Data60Info& d) { d.body.carModel = quint8(carModel); });
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        QCOMPARE(h.feed(frame), 0);
        compareFields(info(h), expected);
        QCOMPARE(changed.count(), frame.size() >= 16 || frame.at(1) != 0x31 ? 1 : 0);
    }

    void bodyRadarAndTrajectory()
    {
        DriverHarness h(60);
        h.feed(frame(0x28, {0xA8, 0xD2}));
        compareFields(*h.driver()->getCardoorData(),
                      {"doorFrontRight=1", "doorFrontLeft=0", "doorRearRight=1", "doorRearLeft=0", "doorTrunk=1", "doorHood=0"});
        compareFields(*h.driver()->getCarbodyData(), {"bodyFlag2=1", "bodyFlag31=1", "bodyFlag1=0"});
        compareFields(info(h), {"bodyBit7=1", "bodyBit6=1", "bodyBit4=1"});

        QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
        h.feed(frame(0x26, {1, 2, 3, 4, 9}));
        h.feed(frame(0x26, {1, 2, 3, 4, 0}));   // the same four sensors: nothing
        h.feed(frame(0x27, {0, 0, 5, 0, 0}));
        const RadarData& r = *h.driver()->getRadarData();
        QCOMPARE(radar.count(), 2);
        QCOMPARE((QList<int>{r.radarRearLeft, r.radarRearRight, r.radarFrontRightMid, r.radarLevels, r.radarOn}),
                 (QList<int>{1, 4, 5, 10, 1}));

        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.feed(frame(0x30, {0xFF, 0xFD}));
        setInfo(h, [](Data60Info& d) { d.body.carModel = 4; });
        h.feed(frame(0x30, {0x00, 0x03}));   // bit 0 of the low byte turns the angle
        h.feed(frame(0x30, {0x00, 0x02}));
        QCOMPARE(steering.value(0), (QList<QVariant>{-3, 5500, true}));
        QCOMPARE(steering.value(1), (QList<QVariant>{-2, 10200, true}));
        QCOMPARE(steering.value(2), (QList<QVariant>{2, 10200, true}));
    }

    void commands_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<bool>("rightHand");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("code");
        auto row = [](int id, bool rightHand, const char* key, const char* value, int code) {
            QTest::addRow("%d %s %s%s", id, key, value, rightHand ? " right-hand" : "")
                << id << rightHand << QString::fromLatin1(key) << QString::fromLatin1(value) << code;
        };
        row(60, false, "AirWindSpeedAddSubFront", "1", 0x1C);
        row(60, false, "AirWindSpeedAddSubFront", "add", 0x1D);
        row(60, false, "AirTempFrontLeft", "add", 0x1E);
        row(60, true, "AirTempFrontLeft", "add", 0x20);
        row(60, true, "AirTempFrontRight", "sub", 0x1F);
        row(60, false, "AirDefrostRear", "", 0x00);   // not on this panel, still pressed
        row(61, true, "AirTempFrontLeft", "add", 0x05);
        row(61, true, "AirTempFrontRight", "sub", 0x02);
        row(61, true, "SeatHotRight", "", 0x0B);
        row(61, false, "AirWindUpFront", "", 0x00);
    }

    void commands()
    {
        QFETCH(int, id);
        QFETCH(bool, rightHand);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(int, code);
        DriverHarness h(id);
        h.driver()->setRightDriver(rightHand);
        h.driver()->setCanbusState(key, value);
        const int type = id == 61 ? 0xE0 : 0x84;
        QCOMPARE(h.sentFrames(), Frames{frame(type, {code, 0x01})});
        QTRY_COMPARE(h.sentFrames(), (Frames{frame(type, {code, 0x01}), frame(type, {code, 0x00})}));
    }

    void reports_data()
    {
        QTest::addColumn<bool>("hour24");
        QTest::addColumn<Action>("action");
        QTest::addColumn<Frames>("sent");
        const auto time = [](int hour, int minute) { return Action([=](CanbusInterface* d) { d->setCurrentTime(hour, minute, 0); }); };
        const auto source = [](CanbusInterface::srctype type, const QVariantList& items) {
            return Action([=](CanbusInterface* d) { d->setSrcState(type, items); });
        };
        const auto language = [](const char* code) {
            return Action([=](CanbusInterface* d) { QMetaObject::invokeMethod(d, "languageChanged", Q_ARG(QString, code)); });
        };
        QTest::addRow("13:05") << true << time(13, 5) << Frames{frame(0x83, {0x03, 13, 5})};
        QTest::addRow("13:05 on a 12-hour clock") << false << time(13, 5) << Frames{frame(0x83, {0x03, 1, 5})};
        QTest::addRow("00:30 on a 12-hour clock") << false << time(0, 30) << Frames{frame(0x83, {0x03, 12, 30})};
        QTest::addRow("language en") << true << language("en") << Frames{hex("2e83021b01005e")};
        QTest::addRow("language ko") << true << language("ko") << Frames{};
        QTest::addRow("FM1 87.5") << true << source(CanbusInterface::SRC_RADIO, {2, 8750})
                                  << Frames{frame(0xC0, {0x01, 0x01}), frame(0xC2, {0x01, 0x2E, 0x22, 0x00}), textFrame(0xC4, 1, "87.5MHZ")};
        QTest::addRow("AM2 1008") << true << source(CanbusInterface::SRC_RADIO, {6, 1008})
                                  << Frames{frame(0xC0, {0x01, 0x01}), frame(0xC2, {0x12, 0xF0, 0x03, 0x00}), textFrame(0xC4, 5, "1008KHZ")};
        QTest::addRow("radio without frequency") << true << source(CanbusInterface::SRC_RADIO, {2}) << Frames{};
        QTest::addRow("second media") << true << source(CanbusInterface::SRC_MEDIA2_A, {0, 3, 300, 3725, 0, "Song", "Band"})
                                      << Frames{frame(0xC0, {0x09, 0x11}), frame(0xC3, {0x2C, 0x01, 3, 0, 2, 5}),
                                                textFrame(0xC4, 10, "Song"), textFrame(0xC6, 3, "Band")};
        QTest::addRow("long title cut by the checksum") << true << source(CanbusInterface::SRC_MEDIA3, {0, 1, 1, 0, 0, QString(40, 'x')})
                                                        << Frames{frame(0xC0, {0x0B, 0x11}), frame(0xC3, {1, 0, 1, 0, 0, 0}),
                                                                  textFrame(0xC4, 11, QByteArray(33, 'x')), textFrame(0xC6, 3, "")};
        QTest::addRow("call running") << true << source(CanbusInterface::SRC_PHONE, {3, "Li"})
                                      << Frames{frame(0xC0, {0x05, 0x40}), frame(0xC5, {0x04, 0x01, 'L', 'i'})};
        QTest::addRow("call state unknown") << true << source(CanbusInterface::SRC_PHONE, {7})
                                            << Frames{frame(0xC0, {0x05, 0x40}), frame(0xC5, {0x05, 0x01})};
    }

    void reports()
    {
        QFETCH(bool, hour24);
        QFETCH(Action, action);
        QFETCH(Frames, sent);
        DriverHarness h(60);
        DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), hour24);
        action(h.driver());
        QCOMPARE(h.sentFrames(), sent);
    }

    void countdownAndReverse()
    {
        const QByteArray secondPage = frame(0x83, {0x23, 0x02, 0x00});
        {
            DriverHarness h(62);
            QTimer* timer = nullptr;
            for (QTimer* t : h.driver()->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly))
                timer = t->isSingleShot() ? timer : t;
            QVERIFY(timer && timer->isActive());
            QCOMPARE(timer->interval(), 3000);
            QMetaObject::invokeMethod(h.driver(), "onCountdown");
            QCOMPARE(h.sentFrames(), Frames{});   // no variant chosen
            setInfo(h, [](Data60Info& d) { d.body.carModel = 18; d.panorama.panoramaSetting = 2; });
            h.driver()->setInReverse(true);
            QCOMPARE(timer->interval(), 1000);
            QMetaObject::invokeMethod(h.driver(), "onCountdown");
            QCOMPARE(h.sentFrames(), (Frames{frame(0x85, {0x20}), frame(0x90, {0x30, 0x00})}));
            // The box with settings pages reopens the last one behind the camera.
            QTRY_VERIFY_WITH_TIMEOUT(h.sentFrames().contains(secondPage), 4000);
            h.driver()->setInReverse(false);
            QCOMPARE(timer->interval(), 3000);
            h.clearSent();
            setInfo(h, [](Data60Info& d) { d.body.carModel = 17; });
            QMetaObject::invokeMethod(h.driver(), "onCountdown");
            QCOMPARE(h.sentFrames(), Frames{frame(0x85, {17})});
        }
        DriverHarness haval(60);
        setInfo(haval, [](Data60Info& d) { d.panorama.panoramaSetting = 2; });
        haval.driver()->setInReverse(true);
        QTest::qWait(3200);
        QVERIFY(!haval.sentFrames().contains(secondPage));
        QVERIFY(haval.sentFrames().contains(frame(0x90, {0x30, 0x00})));
    }

    void touches_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("state");   // viewMode on 60, panoramaSetting on 62
        QTest::addColumn<Touches>("touches");
        QTest::addColumn<Frames>("sent");
        QTest::addColumn<int>("stateAfter");
        auto row = [](const char* name, int id, int state, const Touches& t, const Frames& sent, int after) {
            QTest::addRow("%d %s", id, name) << id << state << t << sent << after;
        };
        auto touch = [](int g, int i) { return frame(0x83, {g, i, 0}); };
        // On a 900 x 540 picture: w/3 300, w/11 81, 8w/33 218, 10w/11 818; 2h/9 120, 13h/18 390, h/9 60.
        row("view 1 corner", 60, 0, {{300, 120, 2}}, {touch(10, 1)}, 0);
        row("press does nothing", 60, 0, {{10, 10, 0}}, {}, 0);
        row("right of the column", 60, 0, {{301, 50, 2}}, {}, 0);
        row("view 4 edge", 60, 0, {{219, 389, 2}}, {touch(10, 4)}, 0);
        row("toggle to mode 2", 60, 0, {{82, 200, 2}}, {touch(20, 2)}, 2);
        row("toggle back", 60, 2, {{217, 200, 2}}, {touch(20, 1)}, 1);
        row("between the toggle and view 4", 60, 0, {{218, 200, 2}}, {}, 0);
        row("close", 60, 0, {{818, 60, 2}}, {touch(10, 5)}, 0);
        // Mode 2: 5w/9 500, 7w/9 700, 11h/27 220, 19h/27 380; swipes need w/5 180 down, h/5 108 across.
        row("tap front", 60, 2, {{600, 100, 0}, {605, 105, 2}}, {touch(20, 3)}, 2);
        row("tap in mode 1", 60, 1, {{600, 100, 0}, {605, 105, 2}}, {}, 1);
        row("swipe down", 60, 2, {{600, 100, 0}, {605, 290, 2}}, {touch(20, 8)}, 2);
        row("swipe down too short", 60, 2, {{600, 100, 0}, {605, 270, 2}}, {}, 2);
        row("swipe up", 60, 2, {{600, 300, 0}, {605, 100, 2}}, {}, 2);
        row("swipe right", 60, 2, {{400, 200, 0}, {515, 205, 2}}, {touch(20, 7)}, 2);
        // 62: 9w/10 810; 2h/7 154, 3h/7 231, 15h/28 289.
        row("no page: any release closes", 62, 0, {{5, 5, 0}, {450, 300, 2}}, {touch(0x25, 1), touch(0x25, 0)}, 0);
        row("page 1 view", 62, 1, {{10, 10, 2}}, {touch(0x24, 1)}, 1);
        row("page 1 opens page 2", 62, 1, {{811, 154, 2}}, {touch(0x23, 2)}, 2);
        row("page 1 edge of the page button", 62, 1, {{810, 200, 2}}, {}, 1);
        row("page 1 close", 62, 1, {{850, 231, 2}}, {touch(0x25, 1), touch(0x25, 0)}, 1);
        row("page 2 top edge", 62, 2, {{50, 0, 2}}, {touch(0x26, 3)}, 2);
        row("page 2 stays", 62, 2, {{850, 200, 2}}, {touch(0x23, 2)}, 2);
        row("page 2 close", 62, 2, {{850, 288, 2}}, {touch(0x27, 1), touch(0x27, 0)}, 2);
    }

    void touches()
    {
        QFETCH(int, id);
        QFETCH(int, state);
        QFETCH(Touches, touches);
        QFETCH(Frames, sent);
        QFETCH(int, stateAfter);
        DriverHarness h(id);
        quint8 PanoramaInformation60::*field = id == 62 ? &PanoramaInformation60::panoramaSetting : &PanoramaInformation60::viewMode;
        setInfo(h, [&](Data60Info& d) { d.panorama.*field = quint8(state); });
        for (const QList<int>& t : touches) {
            QMetaObject::invokeMethod(h.driver(), "setTcanBussend", Q_ARG(int, t[0]), Q_ARG(int, t[1]), Q_ARG(int, 900),
                                      Q_ARG(int, 540), Q_ARG(int, t[2]));
        }
        QCOMPARE(h.sentFrames(), sent);
        QCOMPARE(int(info(h).panorama.*field), stateAfter);
    }
};

QTEST_GUILESS_MAIN(TestDriver60)
#include "tst_driver60.moc"
