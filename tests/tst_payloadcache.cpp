// The cache of a climate frame's data bytes: which bytes moved, whether the frame as a
// whole did, and the data bytes of a frame cut short.

#include <QtTest>

#include "common/payloadcache.h"
#include "framebuilders.h"

using canbus::PayloadCache;

namespace {
QByteArray frame(std::initializer_list<int> data) { return testframes::frame(0x21, data); }
} // namespace

class TestPayloadCache : public QObject
{
    Q_OBJECT

private slots:
    void changedBytes_data();
    void changedBytes();
    void store();
    void dataBytes_data();
    void dataBytes();
};

void TestPayloadCache::changedBytes_data()
{
    QTest::addColumn<QByteArray>("cached");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("changed");
    const QByteArray f = frame({1, 2, 3});
    // An empty cache, or bytes before the data, count as changed: nothing cached stands for them.
    QTest::addRow("empty cache") << QByteArray() << f << 3 << true;
    QTest::addRow("before the data") << QByteArray("\x2e\x21\x03", 3) << f << 0 << true;
    QTest::addRow("same byte 3") << QByteArray("\x01\x02\x03", 3) << f << 3 << false;
    QTest::addRow("other byte 4") << QByteArray("\x01\x09\x03", 3) << f << 4 << true;
    QTest::addRow("cache too short for byte 5") << QByteArray("\x01\x02", 2) << f << 5 << true;
    // Past the frame's end the frame reads 0.
    QTest::addRow("past the frame, cached 0") << QByteArray("\x01\x02\x03\x00\x00", 5) << f.left(4) << 7 << false;
}

void TestPayloadCache::changedBytes()
{
    QFETCH(QByteArray, cached);
    QFETCH(QByteArray, frame);
    QFETCH(int, index);
    QFETCH(bool, changed);
    PayloadCache cache;
    cache.store(cached);
    QCOMPARE(cache.changed(FrameReader(frame), index), changed);
}

void TestPayloadCache::store()
{
    PayloadCache cache;
    QVERIFY(cache.store(QByteArray("\x01\x02", 2)));
    QVERIFY(!cache.store(QByteArray("\x01\x02", 2)));
    QVERIFY(cache.store(QByteArray("\x01\x02\x00", 3)));   // a longer frame is another frame
    QVERIFY(cache.store(QByteArray("\x01", 1)));
    QCOMPARE(cache.bytes(), QByteArray("\x01", 1));
    // A step reading several bytes runs when any of them moved.
    const QByteArray f = frame({1, 2, 3});
    cache.store(QByteArray("\x01\x02\x03", 3));
    QVERIFY(!cache.changed(FrameReader(f), {3, 5}) && cache.changed(FrameReader(f), {3, 6}));
    cache.clear();
    QVERIFY(cache.isEmpty());
}

void TestPayloadCache::dataBytes_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("data");
    QTest::addRow("2e2103010203cs") << frame({1, 2, 3}) << QByteArray("\x01\x02\x03", 3);
    QTest::addRow("cut after byte 4") << frame({1, 2, 3}).left(5) << QByteArray("\x01\x02", 2);
    QTest::addRow("2e21") << frame({1}).left(2) << QByteArray();
}

void TestPayloadCache::dataBytes()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, data);
    QCOMPARE(PayloadCache::dataBytes(FrameReader(frame)), data);
}

QTEST_GUILESS_MAIN(TestPayloadCache)
#include "tst_payloadcache.moc"
