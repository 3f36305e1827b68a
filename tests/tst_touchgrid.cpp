// The 3 by 3 touch grid of the panorama pages: cells with their border lines, taps
// and swipes, and the code tables.

#include <QtTest>
#include <limits>

#include "common/touchgrid.h"

using canbus::GridColumn;
using canbus::GridRow;
using canbus::Swipe;

Q_DECLARE_METATYPE(canbus::GridColumn)
Q_DECLARE_METATYPE(canbus::GridRow)
Q_DECLARE_METATYPE(canbus::Swipe)

class TestTouchGrid : public QObject
{
    Q_OBJECT

private slots:
    void cells_data();
    void cells();
    void gestures_data();
    void gestures();
    void tables();
};

void TestTouchGrid::cells_data()
{
    QTest::addColumn<QList<int>>("touch");   // x, y, width, height
    QTest::addColumn<GridColumn>("column");
    QTest::addColumn<GridRow>("row");
    // 800 x 480: lines at x 266, 533 and y 160, 320 (integer division).
    QTest::addRow("265,159") << QList<int>{265, 159, 800, 480} << GridColumn::Left << GridRow::Top;
    QTest::addRow("266,200") << QList<int>{266, 200, 800, 480} << GridColumn::Line << GridRow::Middle;
    QTest::addRow("267,161") << QList<int>{267, 161, 800, 480} << GridColumn::Centre << GridRow::Middle;
    QTest::addRow("533,319") << QList<int>{533, 319, 800, 480} << GridColumn::Line << GridRow::Middle;
    QTest::addRow("534,320") << QList<int>{534, 320, 800, 480} << GridColumn::Right << GridRow::Line;
    QTest::addRow("outside -5,900") << QList<int>{-5, 900, 800, 480} << GridColumn::Left << GridRow::Bottom;
    QTest::addRow("empty screen") << QList<int>{0, 0, 0, 0} << GridColumn::Line << GridRow::Line;
    QTest::addRow("huge width") << QList<int>{5, 5, std::numeric_limits<int>::max(), 2} << GridColumn::Left
                                << GridRow::Bottom;
}

void TestTouchGrid::cells()
{
    QFETCH(QList<int>, touch);
    const canbus::GridCell cell = canbus::gridCell(touch[0], touch[1], touch[2], touch[3]);
    QTEST(cell.column, "column");
    QTEST(cell.row, "row");
}

void TestTouchGrid::gestures_data()
{
    QTest::addColumn<QList<int>>("move");   // pressX, pressY, x, y
    QTest::addColumn<bool>("narrow");       // vertical swipes need a small sideways move
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("tap");
    QTest::addColumn<Swipe>("swipe");
    // On 1000 x 500: a fifth is 200 across and 100 down.
    auto row = [](const char* name, QList<int> m, bool narrow, bool horizontal, bool tap, Swipe s) {
        QTest::addRow("%s", name) << m << narrow << horizontal << tap << s;
    };
    row("20 both ways", {10, 10, 30, 30}, true, true, true, Swipe::None);
    row("21 down", {10, 10, 10, 31}, true, true, false, Swipe::None);
    row("down 101", {10, 10, 10, 111}, true, true, false, Swipe::Down);
    row("down 100", {10, 10, 10, 110}, true, true, false, Swipe::None);
    row("up 101", {10, 200, 50, 99}, true, true, false, Swipe::Up);
    row("down and 200 across", {10, 10, 210, 120}, true, true, false, Swipe::None);
    row("down and 200 across, wide allowed", {10, 10, 210, 120}, false, true, false, Swipe::Down);
    row("right 201", {10, 10, 211, 50}, true, true, false, Swipe::Right);
    row("left 201", {300, 10, 99, 50}, true, true, false, Swipe::Left);
    row("left, horizontal off", {300, 10, 99, 50}, true, false, false, Swipe::None);
    row("right, 100 down", {10, 10, 211, 110}, true, true, false, Swipe::None);
    row("extremes", {std::numeric_limits<int>::min(), 0, std::numeric_limits<int>::max(), 0}, true, true,
        false, Swipe::Right);
}

void TestTouchGrid::gestures()
{
    QFETCH(QList<int>, move);
    QFETCH(bool, narrow);
    QFETCH(bool, horizontal);
    const canbus::TouchMove m{move[0], move[1], move[2], move[3], 1000, 500};
    QTEST(m.isTap(), "tap");
    canbus::SwipeRule rule;
    rule.verticalNeedsNarrowMove = narrow;
    rule.horizontal = horizontal;
    QTEST(m.swipe(rule), "swipe");
}

void TestTouchGrid::tables()
{
    constexpr canbus::GridCode kTaps[] = {{GridColumn::Centre, GridRow::Middle, 7}, {GridColumn::Left, GridRow::Top, 9}};
    QCOMPARE(*canbus::gridCode(kTaps, {GridColumn::Left, GridRow::Top}), quint8(9));
    QVERIFY(!canbus::gridCode(kTaps, {GridColumn::Left, GridRow::Middle}));   // column alone isn't enough
    constexpr canbus::SwipeCode kSwipes[] = {{Swipe::Up, 0}, {Swipe::Down, 1}};
    QCOMPARE(*canbus::swipeCode(kSwipes, Swipe::Up), quint8(0));
    QVERIFY(!canbus::swipeCode(kSwipes, Swipe::None));
}

QTEST_GUILESS_MAIN(TestTouchGrid)
#include "tst_touchgrid.moc"
