// The climate panel's buttons to a box's command codes.

#include <QtTest>

#include "common/climatebuttons.h"

using canbus::ClimateButton;

Q_DECLARE_METATYPE(canbus::ClimateButton)

namespace {

constexpr canbus::ClimateButtonRow kButtons[] = {
    {ClimateButton::Ac, 1, 1},
    {ClimateButton::LeftPlus, 13, 15},
    {ClimateButton::RightPlus, 15, 13},
    {ClimateButton::Ac, 99, 99},   // a later row for the same button is never reached
};

} // namespace

class TestClimateButtons : public QObject
{
    Q_OBJECT

private slots:
    void codes_data();
    void codes();
};

void TestClimateButtons::codes_data()
{
    QTest::addColumn<ClimateButton>("button");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<int>("code");   // -1: the box has no such command
    QTest::addRow("Ac") << ClimateButton::Ac << false << 1;
    QTest::addRow("Ac right-hand") << ClimateButton::Ac << true << 1;
    QTest::addRow("LeftPlus") << ClimateButton::LeftPlus << false << 13;
    QTest::addRow("LeftPlus right-hand") << ClimateButton::LeftPlus << true << 15;
    QTest::addRow("RightPlus right-hand") << ClimateButton::RightPlus << true << 13;
    QTest::addRow("BlowOn") << ClimateButton::BlowOn << false << -1;
}

void TestClimateButtons::codes()
{
    QFETCH(ClimateButton, button);
    QFETCH(bool, rightHand);
    QFETCH(int, code);
    const auto found = canbus::climateButtonCode(kButtons, button, rightHand);
    QCOMPARE(found ? *found : -1, code);
}

QTEST_GUILESS_MAIN(TestClimateButtons)
#include "tst_climatebuttons.moc"
