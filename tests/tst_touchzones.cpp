// Touches scaled to a box's fixed screen and looked up in a table of buttons.

#include <QtTest>
#include <limits>

#include "common/touchzones.h"

namespace {

constexpr canbus::TouchZone kButtons[] = {
    {10, 20, 10, 20, 1},
    {15, 30, 15, 30, 2},   // overlaps the first: the first wins
    {-10, -1, 0, 5, 3},
};

} // namespace

class TestTouchZones : public QObject
{
    Q_OBJECT

private slots:
    void scale_data();
    void scale();
    void zones_data();
    void zones();
};

void TestTouchZones::scale_data()
{
    QTest::addColumn<QList<int>>("touch");   // x, y, width, height
    QTest::addColumn<double>("screenWidth");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QList<int>>("point");
    // The screen is 480 high in every row.
    QTest::addRow("truncated") << QList<int>{1, 1, 3, 3} << 800.0 << true << QList<int>{266, 160};
    QTest::addRow("negative truncates towards zero") << QList<int>{-1, -1, 3, 3} << 800.0 << true
                                                     << QList<int>{-266, -160};
    QTest::addRow("zero width") << QList<int>{1, 1, 0, 10} << 800.0 << false << QList<int>{};
    QTest::addRow("negative height") << QList<int>{1, 1, 10, -10} << 800.0 << false << QList<int>{};
    QTest::addRow("huge") << QList<int>{std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 1, 1}
                          << 2000.0 << true
                          << QList<int>{std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
}

void TestTouchZones::scale()
{
    QFETCH(QList<int>, touch);
    QFETCH(double, screenWidth);
    QFETCH(bool, valid);
    const auto p = canbus::scaleTouch(touch[0], touch[1], touch[2], touch[3], screenWidth, 480.0);
    QCOMPARE(bool(p), valid);
    if (p)
        QTEST((QList<int>{p->x, p->y}), "point");
}

void TestTouchZones::zones_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("code");   // -1: none
    QTest::addRow("corner 10,10") << 10 << 10 << 1;
    QTest::addRow("corner 20,20") << 20 << 20 << 1;
    QTest::addRow("overlap 18,18") << 18 << 18 << 1;
    QTest::addRow("second 21,20") << 21 << 20 << 2;
    QTest::addRow("past 31,30") << 31 << 30 << -1;
    QTest::addRow("negative -10,5") << -10 << 5 << 3;
}

void TestTouchZones::zones()
{
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(int, code);
    const auto found = canbus::touchZoneCode(kButtons, canbus::ScreenPoint{x, y});
    QCOMPARE(found ? *found : -1, code);
}

QTEST_GUILESS_MAIN(TestTouchZones)
#include "tst_touchzones.moc"
