// Mitsubishi (96): keys with rotary step counts, the amplifier's bands, fuel texts,
// settings, the status frames shared with the Mazda box, and the reports: the clock,
// the source with texts sent only when they change, the telephone and a tap.

#include <QSignalSpy>
#include <QtTest>

#include "canbus96/canbus96.h"
#include "common/kkmapkeys.h"
#include "driverharness.h"
#include "framebuilders.h"

using testframes::frame;
using L = QList<QByteArray>;
using Read = QString (*)(const Data96Info&);
Q_DECLARE_METATYPE(Read)

namespace {
Data96Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data96Info>(); }
QByteArray amplifier(int index, int value)
{
    QByteArray d(15, '\0');
    d[index] = char(value);
    return frame(0x17, d);
}
// [C0 lead... 10 part count text] with the text in UTF-16BE.
QByteArray text(QByteArray lead, int part, const QString& s)
{
    QByteArray t;
    for (QChar c : s)
        t.append(char(c.unicode() >> 8)).append(char(c.unicode() & 0xFF));
    return frame(0xC0, lead + char(0x10) + char(part) + char(t.size()) + t);
}
}

class TestDriver96 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data()
    {
        QTest::addColumn<L>("frames");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("taps");
        QTest::addRow("82 03: three steps") << L{frame(0x20, {130, 3, 0})} << 0x1100025 << 3;
        QTest::addRow("kept 86 counts") << L{frame(0x20, {134, 1, 0}), frame(0x20, {0, 2, 0})} << 0x110002F << 3;
        QTest::addRow("16 01 taps once") << L{frame(0x20, {22, 1, 0})} << 0x1100041 << 1;
        QTest::addRow("16 02 nothing") << L{frame(0x20, {22, 2, 0})} << 0x1100041 << 0;
    }

    void keys()
    {
        QFETCH(L, frames);
        QFETCH(int, code);
        QFETCH(int, taps);
        DriverHarness h(96);
        for (const QByteArray& f : frames)
            h.feed(f);
        QList<int> events;
        for (int i = 0; i < taps; ++i)
            events << canbus::kkmapKey(code) << 1 << canbus::kkmapKey(code) << 0;
        QCOMPARE(h.keyEvents(), events);
    }

    void record_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QString>("values");
        using D = Data96Info;
        QTest::addColumn<Read>("read");
        const auto band = [](const D& d) { return QStringLiteral("%1 %2").arg(d.amplifier.ampBand1).arg(d.amplifier.ampBand4); };
        QTest::addRow("17 band below 2") << amplifier(3, 1) << "0 0" << +band;
        QTest::addRow("17 band 2 to 12 less 2") << amplifier(3, 5) << "3 0" << +band;
        QTest::addRow("17 band 4 top") << amplifier(6, 9) << "0 6" << +band;
        QTest::addRow("17 volume clamp 45") << amplifier(7, 46) << "45"
                                            << +[](const D& d) { return QString::number(d.amplifier.ampVolume); };
        QTest::addRow("17 flag D13 bit 0") << amplifier(13, 0xFE) << "0"
                                           << +[](const D& d) { return QString::number(d.amplifier.ampFlag); };
        QTest::addRow("40 L/100km, -- on ffff") << frame(0x40, {1, 0x01, 0x02, 0, 5, 0xFF, 0xFF, 0, 0, 0}) << "258km 0.5L/100km --"
            << +[](const D& d) { return d.fuel.fuelDistanceText + ' ' + d.fuel.fuelTextA + ' ' + d.fuel.fuelTextB; };
        QTest::addRow("40 unit 3, range ffff") << frame(0x40, {3, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0x0C, 0}) << "-- 1.2mpg(UK)"
            << +[](const D& d) { return d.fuel.fuelDistanceText + ' ' + d.fuel.fuelTextC; };
        QTest::addRow("50 item 31") << frame(0x50, {31, 7, 0}) << "7"
                                    << +[](const D& d) { return QString::number(d.settings.settingItem31); };
        QTest::addRow("7d09 outdoor text") << frame(0x7D, {9, 60, 62, 64, 0}) << QString::fromUtf8("22.0\u2103 22\u2103")
            << +[](const D& d) { return d.body.outdoorText + ' ' + d.mileage.tempTextB; };
        QTest::addRow("7e D9 bit 4") << frame(0x7E, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0}) << "1"
                                     << +[](const D& d) { return QString::number(d.functions.functionItem32); };
    }

    void record()
    {
        QFETCH(QByteArray, frame);
        QFETCH(QString, values);
        QFETCH(Read, read);
        DriverHarness h(96);
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        QCOMPARE(h.feed(frame), 0);
        QCOMPARE(read(info(h)), values);
        QCOMPARE(changed.count(), 1);
    }

    void mediaTexts()
    {
        DriverHarness h(96);
        auto* d = h.driver();
        const QByteArray usb(1, char(0x08));
        d->setSrcState(CanbusInterface::SRC_MEDIA1_A, {0, 1, 9, 0, 0, QStringLiteral("Ab"), QStringLiteral("C")});
        QCOMPARE(h.sentFrames(), L{text(usb, 1, QStringLiteral("Ab"))});   // the artist waits
        QTRY_COMPARE(h.sentFrames(), (L{text(usb, 1, QStringLiteral("Ab")), text(usb, 2, QStringLiteral("C"))}));
        h.clearSent();
        // The same texts again: nothing; a new artist alone: only its frame, later.
        d->setSrcState(CanbusInterface::SRC_MEDIA1_B, {0, 1, 9, 0, 0, QStringLiteral("Ab"), QStringLiteral("C")});
        d->setSrcState(CanbusInterface::SRC_MEDIA2_A, {0, 1, 9, 0, 0, QStringLiteral("Ab"), QStringLiteral("D")});
        QCOMPARE(h.sentFrames(), L{});
        QTRY_COMPARE(h.sentFrames(), L{text(QByteArray(1, char(0x06)), 2, QStringLiteral("D"))});
    }

    void reports()
    {
        DriverHarness h(96);
        auto* d = qobject_cast<Canbus96Obj*>(h.driver());
        QCOMPARE(int(d->getAirData()->airValid), 0);
        d->setCurrentTime(13, 45, 10);
        d->setSrcState(CanbusInterface::SRC_RADIO, {5, 1008});
        d->setSrcState(CanbusInterface::SRC_RADIO, {5});
        d->setTcanBussend(10, 20, 30, 40, 0);
        d->setTcanBussend(10, 20, 30, 40, 1);
        QCOMPARE(h.sentFrames(), (L{frame(0xC8, {45, 13, 0}), frame(0xC0, {1, 0x11, 0xF0, 0x03, 0}), frame(0xC7, {1})}));
        // A call in progress before any incoming call is status 4; once a call came in, 2.
        const QByteArray lead4("\x05\x04", 2), lead2("\x05\x02", 2);
        h.clearSent();
        d->setSrcState(CanbusInterface::SRC_PHONE, {3, QStringLiteral("Jo"), QStringLiteral("12")});
        QTRY_COMPARE(h.sentFrames(), (L{text(lead4, 1, QStringLiteral("12")), text(lead4, 2, QStringLiteral("Jo"))}));
        h.clearSent();
        d->setSrcState(CanbusInterface::SRC_PHONE, {1, QString(), QString()});
        d->setSrcState(CanbusInterface::SRC_PHONE, {3, QString(), QStringLiteral("9")});
        d->setSrcState(CanbusInterface::SRC_PHONE, {7, QString(), QStringLiteral("9")});
        QTRY_COMPARE(h.sentFrames().size(), 4);
        QCOMPARE(h.sentFrames().at(1), text(lead2, 1, QStringLiteral("9")));
        // Connect without a request once the box answers.
        int interval = 0;
        QByteArray out;
        QVERIFY(d->needSendConnect(interval, out));
        QCOMPARE(out, testframes::hex("2e8101017c"));
        h.feed(frame(0x7F, QByteArray("MT 1\0", 5)));
        QVERIFY(!d->needSendConnect(interval, out));
        QCOMPARE(d->getVersionData(), QStringLiteral("MT 1"));
    }
};

QTEST_GUILESS_MAIN(TestDriver96)
#include "tst_driver96.moc"
