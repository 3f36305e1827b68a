// GS5 variant of the GAC Trumpchi box: what differs from its base, the buttons on the
// camera picture.

#include <QtTest>

#include "canbus57/canbus57.h"
#include "driverharness.h"
#include "framebuilders.h"

using testframes::frame;
using Frames = QList<QByteArray>;

class TestDriver57 : public QObject
{
    Q_OBJECT

private slots:
    void identity();
    void touch_data();
    void touch();
};

void TestDriver57::identity()
{
    DriverHarness h(57);
    QVERIFY(h.driver()->inheritedById(33));
    h.feed(frame(0x24, {0x40, 0x00}));   // the base's frames decode
    QCOMPARE(int(h.driver()->getCardoorData()->doorFrontLeft), 1);
}

void TestDriver57::touch_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("model");
    QTest::addColumn<Frames>("sent");
    // On a 1600 x 960 picture the box's 800 x 480 screen is half the size: borders
    // land on even points, one step beside them on the odd ones.
    QTest::addRow("first button 12,806") << 12 << 806 << 2 << Frames{frame(0xC7, {0x01})};
    QTest::addRow("first button 138,916") << 138 << 916 << 2 << Frames{frame(0xC7, {0x01})};
    QTest::addRow("beside first 140,916") << 140 << 916 << 2 << Frames{frame(0x82, {0x00})};
    QTest::addRow("below buttons 12,918") << 12 << 918 << 2 << Frames{frame(0x82, {0x00})};
    QTest::addRow("fourth button 760,806") << 760 << 806 << 2 << Frames{frame(0xC7, {0x05})};
    QTest::addRow("gap 600,850") << 600 << 850 << 2 << Frames{frame(0x82, {0x00})};
    QTest::addRow("pressed") << 12 << 806 << 1 << Frames{};
}

void TestDriver57::touch()
{
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(int, model);
    QFETCH(Frames, sent);
    DriverHarness h(57);
    QVERIFY(QMetaObject::invokeMethod(h.driver(), "setTcanBussend", Q_ARG(int, x), Q_ARG(int, y),
                                      Q_ARG(int, 1600), Q_ARG(int, 960), Q_ARG(int, model)));
    QCOMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver57)
#include "tst_driver57.moc"
