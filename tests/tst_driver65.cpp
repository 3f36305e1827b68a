// New Mazda (65): a box that reports and takes nothing but the link and the language.
// Keys with hold and the panel's button 4 told short or long at release, radar and
// body frames with their signals, the record frames by the rules that can go wrong.

#include <QSignalSpy>
#include <QtTest>

#include "canbus65/canbus65.h"
#include "common/kkmapkeys.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using L = QList<QByteArray>;
using C = QList<int>;

namespace {
Data65Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data65Info>(); }
QByteArray key(int type, int value, int hold) { return frame(type, {value, hold, 0}); }
// A frame of `size` bytes with data bytes `data` at its start, the rest 0.
QByteArray sized(int type, int size, std::initializer_list<int> data)
{
    const QByteArray d = testframes::bytes(data);
    return frame(type, d + QByteArray(size - 4 - d.size(), '\0'));
}

QList<int> taps(const QList<int>& codes)
{
    QList<int> out;
    for (int c : codes)
        out << canbus::kkmapKey(c) << 1 << canbus::kkmapKey(c) << 0;
    return out;
}

#define FIELD(path) {#path, [](const Data65Info& d) { return QVariant(d.path).toString(); }}
struct Probe { const char* path; QString (*read)(const Data65Info&); };
const Probe kProbes[] = {
    FIELD(basic.clockText), FIELD(basic.basicByte1), FIELD(basic.basicByte2), FIELD(basic.basicWord),
    FIELD(maintenance.maintLevel), FIELD(maintenance.maintValue2), FIELD(driving.displayItem6),
    FIELD(setItems.setItem0), FIELD(setItems.setItem5), FIELD(setItems.setItem6),
    FIELD(fuelHistory.currentAverageText), FIELD(fuelHistory.fuelText1), FIELD(fuelHistory.fuelText6),
    FIELD(fuelHistory.fuelText21), FIELD(iStop.iStopTimeA), FIELD(iStop.iStopTimeB), FIELD(iStop.iStopConsumption),
    FIELD(iStop.iStopDistance), FIELD(iStop.iStopDuration), FIELD(disc.discState), FIELD(disc.discTime),
    FIELD(disc.discText2), FIELD(amplifier.ampItem5), FIELD(amplifier.ampItem10), FIELD(radio.radioFrequencyText),
    FIELD(radio.radioPreset), FIELD(security.securityItem11), FIELD(security.securityItem37),
    FIELD(mileage.speedTextA), FIELD(mileage.consumptionTextB), FIELD(mileage.percentItem5),
    FIELD(functions.functionItem36), FIELD(voice.voiceItem2),
};
QString probe(const Data65Info& d, const QString& path)
{
    for (const Probe& p : kProbes)
        if (path == QLatin1String(p.path))
            return p.read(d);
    return QStringLiteral("no probe");
}
}

class TestDriver65 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void record_data();
    void record();
    void radarAndBody();
    void linkAndReports();
};

void TestDriver65::keys_data()
{
    QTest::addColumn<L>("frames");
    QTest::addColumn<C>("events");
    const int up = canbus::kkmapKey(0x1100025);
    QTest::addRow("2102 0101 down, 0000 up") << L{key(0x21, 1, 1), key(0x21, 0, 0)} << C{up, 1, up, 0};
    QTest::addRow("21 unknown number is key 0") << L{key(0x21, 7, 2)} << C{0, 1};
    QTest::addRow("21 hold 3 keeps the panel's hold")
        << L{key(0x21, 4, 2), key(0x21, 0, 3), key(0x22, 4, 0)}
        << C{canbus::kkmapKey(0x110002E), 1, canbus::kkmapKey(0x110002E), 0} + taps({0x1200030});
    QTest::addRow("22 button 4 short at release") << L{key(0x22, 4, 1), key(0x22, 0, 0)} << taps({0x1100023});
    QTest::addRow("22 button 4 long at release") << L{key(0x22, 4, 2), key(0x22, 0, 0)} << taps({0x1200030});
    QTest::addRow("22 button 4 held: nothing yet") << L{key(0x22, 4, 1)} << C{};
    QTest::addRow("22 release clears the hold") << L{key(0x22, 4, 1), key(0x22, 0, 0), key(0x22, 0, 0)}
                                                << taps({0x1100023});
    QTest::addRow("22 button 7 taps at press") << L{key(0x22, 7, 1)} << taps({0x110002A});
    QTest::addRow("22 short frame dropped") << L{frame(0x22, {6})} << C{};
}

void TestDriver65::keys()
{
    QFETCH(L, frames);
    QFETCH(C, events);
    DriverHarness h(65);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keyEvents(), events);
    QCOMPARE(changed.count(), 0);
}

void TestDriver65::record_data()
{
    QTest::addColumn<L>("frames");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addRow("27 year from 2018") << L{frame(0x27, {6, 5, 4, 13, 7, 0})} << "basic.clockText" << "2024/5/4-13:7";
    QTest::addRow("30 D2 clamp 12") << L{sized(0x30, 12, {1, 1, 13})} << "basic.basicByte2" << "12";
    QTest::addRow("30 ff keeps") << L{sized(0x30, 12, {1, 9}), sized(0x30, 12, {1, 0xFF})} << "basic.basicByte1" << "9";
    QTest::addRow("30 word kept on D5 ff") << L{sized(0x30, 12, {0, 0, 0, 0, 1, 2}), sized(0x30, 12, {0, 0, 0, 0, 3, 0xFF})}
                                            << "basic.basicWord" << "258";
    QTest::addRow("31 level clamp 36") << L{sized(0x31, 14, {0x7F})} << "maintenance.maintLevel" << "36";
    QTest::addRow("31 value 2 big-endian") << L{sized(0x31, 14, {0, 0, 0, 0, 1, 2})} << "maintenance.maintValue2" << "258";
    QTest::addRow("40 D4 6..3 clamp 10") << L{sized(0x40, 9, {0, 0, 0, 0, 0x78})} << "driving.displayItem6" << "10";
    QTest::addRow("41 D0 7..5 clamp 5") << L{frame(0x41, {0xE0})} << "setItems.setItem0" << "5";
    QTest::addRow("41 size 6 sets item 5") << L{frame(0x41, {0x80, 0x60})} << "setItems.setItem5" << "2";
    QTest::addRow("41 size 6 stops before D2") << L{frame(0x41, {0x80, 0x60})} << "setItems.setItem6" << "0";
    QTest::addRow("50 tenths") << L{sized(0x50, 20, {0, 12})} << "fuelHistory.currentAverageText" << "1.2L/100KM";
    QTest::addRow("50 ffff keeps") << L{sized(0x50, 20, {0, 0, 0xFF, 0xFF})} << "fuelHistory.fuelText1" << "--";
    QTest::addRow("50 text 6 from D14") << L{sized(0x50, 20, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2})}
                                         << "fuelHistory.fuelText6" << "0.2L/100KM";
    QTest::addRow("51 last pair") << L{frame(0x51, QByteArray(29, '\0') + char(5))} << "fuelHistory.fuelText21"
                                  << "0.5L/100KM";
    QTest::addRow("52 time h:m:s") << L{sized(0x52, 17, {0, 0, 0x0E, 0x8D})} << "iStop.iStopTimeA" << "1:2:5";
    QTest::addRow("52 time 0") << L{sized(0x52, 17, {0, 0, 0, 0, 0, 1})} << "iStop.iStopTimeA" << "--:--:--";
    QTest::addRow("52 time B from D4") << L{sized(0x52, 17, {0, 0, 0, 0, 0, 61})} << "iStop.iStopTimeB" << "0:1:1";
    QTest::addRow("52 distance D7 D8") << L{sized(0x52, 17, {0, 0, 0, 0, 0, 0, 0, 1, 2})} << "iStop.iStopDistance"
                                        << "25.8KM";
    QTest::addRow("52 duration D9 D10") << L{sized(0x52, 17, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 125})}
                                         << "iStop.iStopDuration" << "2:5";
    QTest::addRow("52 consumption 0") << L{sized(0x52, 17, {})} << "iStop.iStopConsumption" << "--";
    QTest::addRow("61 state clamp") << L{sized(0x61, 16, {9})} << "disc.discState" << "5";
    QTest::addRow("61 time D6..D8") << L{sized(0x61, 16, {0, 0, 0, 0, 0, 0, 1, 2, 3})} << "disc.discTime" << "1:2:3";
    QTest::addRow("62 GBK line 2") << L{frame(0x62, QByteArray("\x02\x00\xc4\xe3" "A", 5))} << "disc.discText2"
                                   << QString::fromUtf8("\u4f60A");
    QTest::addRow("70 D5 clamp 63") << L{sized(0x70, 12, {0, 0, 0, 0, 0, 64})} << "amplifier.ampItem5" << "63";
    QTest::addRow("71 D0 5..0") << L{sized(0x71, 8, {0xFF})} << "amplifier.ampItem10" << "63";
    QTest::addRow("72 AM 9 kHz from 522") << L{sized(0x72, 8, {1, 0, 0, 2})} << "radio.radioFrequencyText" << "531.0KHZ";
    QTest::addRow("72 FM 50 kHz from 87.5") << L{sized(0x72, 8, {0, 0, 0, 21})} << "radio.radioFrequencyText"
                                             << "88.5MHZ";
    QTest::addRow("72 preset clamp 6") << L{sized(0x72, 8, {0, 9})} << "radio.radioPreset" << "6";
    QTest::addRow("74 D4 7..5 clamp 4") << L{sized(0x74, 18, {0, 0, 0, 0, 0xE0})} << "security.securityItem11" << "4";
    QTest::addRow("74 D13 7..6 clamp 2") << L{sized(0x74, 18, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xC0})}
                                          << "security.securityItem37" << "2";
    QTest::addRow("7d03 D5 1 miles") << L{frame(0x7D, {3, 0x10, 0x27, 0, 0, 1, 0})} << "mileage.speedTextA" << "100MPH";
    QTest::addRow("7d07 D5 4 l/h") << L{frame(0x7D, {7, 0, 0, 5, 0, 4, 0})} << "mileage.consumptionTextB" << "0.5l/h";
    QTest::addRow("7d07 size 8 too short") << L{frame(0x7D, {7, 0, 0, 5})} << "mileage.consumptionTextB" << "";
    QTest::addRow("7d10 clamp 100") << L{frame(0x7D, {16, 0, 0, 0, 0, 0xFF})} << "mileage.percentItem5" << "100";
    QTest::addRow("7def item 2") << L{frame(0x7D, {0xEF, 2, 1, 7})} << "voice.voiceItem2" << "7";
    QTest::addRow("7e D11 bit 4") << L{sized(0x7E, 16, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10})}
                                  << "functions.functionItem36" << "1";
}

void TestDriver65::record()
{
    QFETCH(L, frames);
    QFETCH(QString, field);
    QFETCH(QString, value);
    DriverHarness h(65);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    QCOMPARE(probe(info(h), field), value);
    QCOMPARE(changed.count(), frames.size());
}

void TestDriver65::radarAndBody()
{
    DriverHarness h(65);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    // Not reversing: the box's radar is shown all the same.
    h.feed(frame(0x23, {1, 0, 0, 6, 0}));
    h.feed(frame(0x24, {0, 7, 0, 0, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarLevels=8", "radarRearLeft=2", "radarRearRight=12",
                                                "radarFrontLeftMid=14", "radarFrontLeft=0", "radarOn=1"});
    QCOMPARE(radar.count(), 2);
    h.feed(frame(0x26, {100, 1, 2, 3, 0}));
    compareFields(*h.driver()->getAirData(), {"tirePressureFrontLeft=200.0kPa", "tirePressureRearRight=6.0kPa"});
    QCOMPARE(changed.count(), 3);
    // Power off hides the door signal but not the body's.
    h.driver()->setPowerOffState();
    h.feed(frame(0x28, {0x84, 0x40, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorHood=1", "doorFrontLeft=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=1"});
    QCOMPARE(doors.count(), 0);
    QCOMPARE(body.count(), 2);
    h.driver()->setPowerOnState();
    h.feed(frame(0x28, {0x84, 0x40, 0}));   // nothing changed
    h.feed(frame(0x28, {0x08, 0x40, 0}));
    QCOMPARE(doors.count(), 1);
    QCOMPARE(body.count(), 3);
    h.feed(frame(0x29, {0xFF, 0x38}));
    QCOMPARE(steering.at(0), (QList<QVariant>{-200, 540, true}));
    QCOMPARE(changed.count(), 3);
}

void TestDriver65::linkAndReports()
{
    DriverHarness h(65);
    auto* mazda = qobject_cast<Canbus65Obj*>(h.driver());
    QCOMPARE(int(h.driver()->getAirData()->airValid), 0);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(out, testframes::hex("2e8101017c"));
    QTRY_COMPARE(h.sentFrames(), L{frame(0xF1, {0x01})});
    h.clearSent();
    // Nothing of the head unit's state reaches the box but the language.
    h.driver()->setCanbusState(QStringLiteral("AirAC"), QStringLiteral("on"));
    h.driver()->setSrcState(CanbusInterface::SRC_RADIO, {3, 9850});
    h.driver()->setCurrentTime(12, 30, 0);
    mazda->setTcanBussend(1, 2, 3, 4, 0);
    mazda->languageChanged(QStringLiteral("ko"));
    mazda->languageChanged(QStringLiteral("en"));
    mazda->languageChanged(QStringLiteral("ch_ft"));
    QCOMPARE(h.sentFrames(), (L{frame(0x83, {0x12, 0}), frame(0x83, {0x12, 1})}));
    QCOMPARE(int(info(h).setItems.setItem15), 1);
    // The version frame names the box and changes no record.
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x7F, QByteArray("MZ 3.0\0x", 8)));
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("MZ 3.0"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x25, {1, 2, 3})), 0);
    h.driver()->setInReverse(true);
    QVERIFY(!h.driver()->isInReverse());
}

QTEST_GUILESS_MAIN(TestDriver65)
#include "tst_driver65.moc"
