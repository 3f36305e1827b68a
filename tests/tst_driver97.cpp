// southeast DX7/DX3/DX5 (97): keys, doors and body, values, status frames and the frames out.

#include <QtTest>

#include "canbus97/canbus97.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;

namespace {
Data97Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data97Info>(); }
}

class TestDriver97 : public QObject
{
    Q_OBJECT

private slots:
    void keys()
    {
        DriverHarness h(97);
        // Key 37 acts on release, long (state 2) or short; other wheel keys on state 1 alone.
        for (const QByteArray& f : {frame(0x20, {37, 2}), frame(0x20, {0, 0}), frame(0x20, {37, 1}), frame(0x20, {0, 0}),
                                    frame(0x20, {12, 2}), frame(0x20, {12, 1}), frame(0x21, {5, 1})})
            h.feed(f);
        QList<int> codes;   // each a whole press
        for (int code : {0x1200030, 0x1100023, 0x1300059, 0x110002A})
            codes << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
        QCOMPARE(h.keyEvents(), codes);
    }

    void gating()
    {
        DriverHarness h(97);
        QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
        QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        h.driver()->setPowerOffState();
        h.feed(frame(0x24, {0x84, 0x0A}));
        compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorFrontLeft=0", "doorHood=1"});
        compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=1", "bodyFlag1=0", "bodyFlag2=0"});
        // Status sub-frame 9: the body hears of the outdoor temperature, gate or not.
        h.feed(frame(0x7D, {9, 0x41, 0x41, 0x28}));
        QCOMPARE(info(h).body.outdoorTempText, h.driver()->getAirData()->outdoorTemp);
        QCOMPARE((QList<int>{doors.count(), body.count(), changed.count()}), (QList<int>{0, 2, 0}));
        h.driver()->setPowerOnState();
        h.feed(frame(0x24, {0x10, 0x05}));
        compareFields(*h.driver()->getCardoorData(), {"doorRearLeft=1", "doorHood=0"});
        compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=0", "bodyFlag31=1", "bodyFlag1=1", "bodyFlag2=1"});
        h.feed(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00}));
        QCOMPARE(info(h).mileage.speedText1, QStringLiteral("36KM/H"));
        // The door frame and sub-frame 3's speeds reach the body; the status page is news once on.
        QCOMPARE((QList<int>{doors.count(), body.count(), changed.count()}), (QList<int>{1, 4, 1}));
    }

    void radarTyresSteeringFuel()
    {
        DriverHarness h(97);
        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.feed(frame(0x23, {1, 2, 3, 4}));   // half bars
        compareFields(*h.driver()->getRadarData(), {"radarLevels=9", "radarFrontLeft=2", "radarFrontRight=8"});
        h.feed(frame(0x25, {0, 23, 0x01, 0x00, 0, 0, 0, 0, 0}));   // already scaled
        compareFields(*h.driver()->getAirData(), {"tirePressureFrontLeft=23.0bar",
                                                  "tirePressureFrontRight=256.0bar", "tireStatus=0"});
        h.feed(frame(0x29, {0x00, 0x10, 0}));
        QCOMPARE(steering.at(0), (QList<QVariant>{-16, 550, true}));
        h.feed(frame(0x33, {0x01, 0xF4, 0, 55, 0x01, 0x2C, 0x01, 0x00, 0x00, 0}));
        const FuelConsumptionAndMileageInformation97 fuel = info(h).fuel;
        QCOMPARE((QStringList{fuel.fuelText, fuel.percentText, fuel.distanceText, fuel.totalText}),
                 (QStringList{"50.0L", "55.0%", "300.0KM", "65536.0KM"}));
    }

    void framesOut()
    {
        DriverHarness h(97);
        auto* d = qobject_cast<Canbus97Obj*>(h.driver());
        d->languageChanged(QStringLiteral("ko"));
        d->languageChanged(QStringLiteral("en"));
        d->setCurrentTime(13, 5, 59);   // the language rides in the clock frame
        h.feed(frame(0x32, {0, 0, 9, 0}));   // the box's own choice, clamped
        d->setCurrentTime(7, 0, 0);
        d->setTcanBussend(1, 2, 3, 4, 0);
        h.feed(frame(0x40, {0x10, 0}));
        d->setTcanBussend(1, 2, 3, 4, 2);
        h.feed(frame(0x25, {0, 23, 0, 0, 0, 0, 0}));   // below 12: nothing
        QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0x82, {0, 0, 2}), frame(0x82, {13, 5, 2}),
                                                   frame(0x82, {7, 0, 2}), frame(0x83, {4, 1}), frame(0x83, {4, 0})}));
        QCOMPARE(h.driver()->getAirData()->tire.tirePressureFrontLeft, QStringLiteral("--"));
        QCOMPARE(h.driver()->checkProtocolData(frame(0x26, {1, 2, 3})), 0);
        h.driver()->setConnectedState(false);   // the frames above marked the box as answering
        int interval = 0;
        QByteArray out;
        QVERIFY(h.driver()->needSendConnect(interval, out));
        QVERIFY(h.driver()->needSendDisconnect(out));   // whatever the state
        QCOMPARE(out, hex("2e8101007d"));
    }
};

QTEST_GUILESS_MAIN(TestDriver97)
#include "tst_driver97.moc"
