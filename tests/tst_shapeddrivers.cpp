// The drivers with no frame tables of their own: each keeps its catalogue row, its walk of
// the 0x2E family and its connect and disconnect frames, also where it takes another
// driver's frames over. One row per driver, as the catalogue and the family lists give them.
#include <QtTest>

#include "canbusinterface.h"
#include "driverharness.h"
#include "framebuilders.h"

using testframes::frame;
using testframes::hex;

namespace {

enum class Walk { A, B, C };
enum class Link { Simple, Request23 };
enum class Off { Common, Base, Type82, Type84 };

struct Row
{
    int id;
    const char* make;
    const char* model;
    Walk walk;
    Link link;
    Off off;
    const char* vendor = "RuiZiCheng";
};

constexpr Row kRows[] = {
    {29, "Volkswagen", "PQ", Walk::C, Link::Simple, Off::Common},
    {34, "Volkswagen", "07-10 Old models", Walk::C, Link::Simple, Off::Common},
    {36, "Honda", "DA Series", Walk::B, Link::Simple, Off::Common},
    {38, "Buick", "Angkola(low profile)", Walk::B, Link::Simple, Off::Base},
    {39, "Buick", "GL8(Business Edition)", Walk::B, Link::Simple, Off::Base},
    {40, "Audi", "Audi", Walk::B, Link::Simple, Off::Common},
    {42, "Baojun", "compatible", Walk::A, Link::Simple, Off::Common},
    {43, "BAIC", "BAIC", Walk::B, Link::Simple, Off::Common},
    {44, "BAIC", "BJ40", Walk::B, Link::Simple, Off::Base},
    {45, "BAIC", "EU5", Walk::A, Link::Simple, Off::Common},
    {46, "BAIC", "EC180", Walk::A, Link::Simple, Off::Base},
    {47, "BAIC", "EC5", Walk::A, Link::Simple, Off::Base},
    {55, "BAIC", "D50", Walk::A, Link::Simple, Off::Base},
    {58, "Great Wall", "2014 payment C30", Walk::A, Link::Simple, Off::Common},
    {59, "Great Wall", "14~17 Fengjun 6", Walk::A, Link::Simple, Off::Common},
    {63, "Chana Automobile", "Yuexiang V7", Walk::A, Link::Simple, Off::Common},
    {70, "SAIC", "MAXUS", Walk::A, Link::Simple, Off::Common},
    {71, "SAIC", "Roewe", Walk::A, Link::Simple, Off::Common},
    {74, "Dongfeng", "scenery", Walk::A, Link::Request23, Off::Common},
    {75, "Dongfeng", "18 Scenery S560", Walk::A, Link::Simple, Off::Base},
    {76, "Dongfeng", "18 Scenery 580", Walk::A, Link::Simple, Off::Base},
    {77, "Dongfeng", "Jiangxi Isuzu", Walk::A, Link::Simple, Off::Base},
    {78, "Dongfeng", "Jing Yi", Walk::A, Link::Request23, Off::Common},
    {80, "Dongfeng", "Kai Chen", Walk::A, Link::Simple, Off::Common},
    {82, "Pentium", "14 models of B70", Walk::A, Link::Simple, Off::Type82},
    {84, "bisu", "M3/T3/T5", Walk::A, Link::Simple, Off::Type84},
    {93, "HaiMa", "M8", Walk::A, Link::Simple, Off::Common},
    {94, "HaiMa", "M5/M3/F5", Walk::A, Link::Simple, Off::Common},
    {95, "HaiMa", "16 models of V70", Walk::A, Link::Simple, Off::Base},
    {98, "FIAT", "compatible", Walk::A, Link::Simple, Off::Common},
    {110, "R3864", "GDH", Walk::A, Link::Simple, Off::Common, "oudi"},
};

// The connect frame takes the box's own link type where it has one.
int linkType(Off off)
{
    return off == Off::Type82 ? 0x82 : off == Off::Type84 ? 0x84 : 0x81;
}

} // namespace

class TestShapedDrivers : public QObject
{
    Q_OBJECT

private slots:
    void shape_data();
    void shape();
};

void TestShapedDrivers::shape_data()
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < std::size(kRows); ++i)
        QTest::addRow("%d", kRows[i].id) << int(i);
}

void TestShapedDrivers::shape()
{
    QFETCH(int, row);
    const Row& r = kRows[row];
    DriverHarness h(r.id);
    QVERIFY(h.driver());

    const CanBusData data = h.manager()->getCanBusDataById(r.id);
    QCOMPARE(data.make, QString::fromUtf8(r.make));
    QCOMPARE(data.model, QString::fromUtf8(r.model));
    QCOMPARE(data.vendor, QString::fromUtf8(r.vendor));
    QCOMPARE(data.baudRate, 38400);
    QVERIFY(data.ackEnabled);

    // The walk: A marks the box connected at each frame, B and C leave that to the driver;
    // C keeps an incomplete tail for the next bytes, A and B drop it. 0x6B is no box's
    // answer to the connect frame.
    h.driver()->setConnectedState(false);
    const QByteArray good = frame(0x6B, {0x01, 0x02});
    QCOMPARE(h.feed(good), 0);
    QCOMPARE(h.driver()->isConnectedState(), r.walk == Walk::A);
    QCOMPARE(h.manager()->setData(good + good.left(3)), good.size() + (r.walk == Walk::C ? 0 : 3));

    // Connect: the frame each second until the box answers, then nothing.
    h.driver()->setConnectedState(false);
    h.clearSent();
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out.toHex(' '), frame(linkType(r.off), {0x01}).toHex(' '));
    if (r.link == Link::Request23)
        QTRY_COMPARE_WITH_TIMEOUT(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x23})}, 1000);
    h.driver()->setConnectedState(true);
    out.clear();
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QVERIFY(out.isEmpty());

    // Disconnect: the frame while connected, or the base's silent forgetting.
    QVERIFY(h.driver()->needSendDisconnect(out));
    if (r.off == Off::Base) {
        QVERIFY(out.isEmpty());
        QVERIFY(!h.driver()->isConnectedState());
    } else {
        QCOMPARE(out.toHex(' '), frame(linkType(r.off), {0x00}).toHex(' '));
    }
}

QTEST_GUILESS_MAIN(TestShapedDrivers)
#include "tst_shapeddrivers.moc"
