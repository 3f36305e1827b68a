// The cache of a climate frame's data bytes: which bytes moved, whether the frame as a
// whole did, and the data bytes of a frame cut short.

#include <QtTest>

#include "framefamily.h"
#include "common/payloadcache.h"

using canbus::PayloadCache;

namespace {

QByteArray frame(std::initializer_list<int> data)
{
    QByteArray bytes;
    for (int v : data)
        bytes.append(char(v));
    return canbus::buildFrame(canbus::FrameFamily::Start2E, 0x21, bytes);
}

} // namespace

class TestPayloadCache : public QObject
{
    Q_OBJECT

private slots:
    void emptyCacheChangesEverything();
    void changedBytes_data();
    void changedBytes();
    void store();
    void dataBytes_data();
    void dataBytes();
};

void TestPayloadCache::emptyCacheChangesEverything()
{
    PayloadCache cache;
    QVERIFY(cache.isEmpty());
    const QByteArray bytes = frame({1, 2, 3});
    const FrameReader f(bytes);
    QVERIFY(cache.changed(f, 3));
    QVERIFY(cache.changed(f, 5));
    QVERIFY(cache.changed(f, {4, 5}));
    // Bytes before the data count as changed too: nothing cached stands for them.
    QVERIFY(cache.changed(f, 0));
}

void TestPayloadCache::changedBytes_data()
{
    QTest::addColumn<QByteArray>("cached");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("changed");
    const QByteArray f = frame({1, 2, 3});
    QTest::addRow("same byte 3") << QByteArray("\x01\x02\x03", 3) << f << 3 << false;
    QTest::addRow("same byte 5") << QByteArray("\x01\x02\x03", 3) << f << 5 << false;
    QTest::addRow("other byte 4") << QByteArray("\x01\x09\x03", 3) << f << 4 << true;
    QTest::addRow("cache too short for byte 5") << QByteArray("\x01\x02", 2) << f << 5 << true;
    // Past the frame's end the frame reads 0.
    QTest::addRow("past the frame, cached 0") << QByteArray("\x01\x02\x03\x00\x00", 5) << f.left(4) << 7 << false;
    QTest::addRow("past the frame, cached 5") << QByteArray("\x01\x02\x03\x00\x05", 5) << f.left(4) << 7 << true;
}

void TestPayloadCache::changedBytes()
{
    QFETCH(QByteArray, cached);
    QFETCH(QByteArray, frame);
    QFETCH(int, index);
    QFETCH(bool, changed);
    PayloadCache cache;
    QVERIFY(cache.store(cached));
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
    QVERIFY(!cache.differs(QByteArray("\x01", 1)));
    cache.clear();
    QVERIFY(cache.isEmpty());
    const QByteArray shortFrame = frame({1});
    QVERIFY(cache.changed(FrameReader(shortFrame), 3));
}

void TestPayloadCache::dataBytes_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("data");
    QTest::addRow("2e2103010203cs") << frame({1, 2, 3}) << QByteArray("\x01\x02\x03", 3);
    QTest::addRow("cut after byte 4") << frame({1, 2, 3}).left(5) << QByteArray("\x01\x02", 2);
    QTest::addRow("2e21") << frame({1}).left(2) << QByteArray();
    QTest::addRow("empty") << QByteArray() << QByteArray();
}

void TestPayloadCache::dataBytes()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, data);
    QCOMPARE(PayloadCache::dataBytes(FrameReader(frame)), data);
}

QTEST_GUILESS_MAIN(TestPayloadCache)
#include "tst_payloadcache.moc"
