// Record fields read from runs of bits by a table, with their clamps.

#include <QtTest>

#include "common/bitfields.h"

namespace {

struct Page
{
    quint8 top = 0, pair = 0, nibble = 0, level = 0, flag = 0, raw = 0, far = 0;
};

constexpr canbus::BitField<Page> kPage[] = {
    canbus::bitOf(&Page::top, 3, 7),
    canbus::bitsOf(&Page::pair, 3, 5, 4, 2),
    canbus::bitsOf(&Page::nibble, 3, 3, 0),
    canbus::byteOf(&Page::level, 4, 100),
    canbus::byteOf(&Page::flag, 5, 1),
    canbus::byteOf(&Page::raw, 6),
    canbus::bitOf(&Page::far, 40, 0),   // beyond any frame: reads 0
};

} // namespace

class TestBitFields : public QObject
{
    Q_OBJECT

private slots:
    void fields_data();
    void fields();
};

void TestBitFields::fields_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QList<int>>("values");   // top, pair, nibble, level, flag, raw, far
    QTest::addRow("2e4004ba65 02ff") << QByteArray::fromHex("2e4004ba6502ff00")
                                     << QList<int>{1, 2, 10, 100, 1, 255, 0};
    QTest::addRow("2e40043f640000") << QByteArray::fromHex("2e40043f64000000")
                                    << QList<int>{0, 2, 15, 100, 0, 0, 0};
    QTest::addRow("2e4004102a0000") << QByteArray::fromHex("2e4004102a000000")
                                    << QList<int>{0, 1, 0, 42, 0, 0, 0};
    QTest::addRow("cut after byte 3") << QByteArray::fromHex("2e4004ff") << QList<int>{1, 2, 15, 0, 0, 0, 0};
}

void TestBitFields::fields()
{
    QFETCH(QByteArray, frame);
    QFETCH(QList<int>, values);
    Page page;
    page.far = 9;
    canbus::applyBitFields(kPage, FrameReader(frame), page);
    QCOMPARE((QList<int>{page.top, page.pair, page.nibble, page.level, page.flag, page.raw, page.far}), values);
}

QTEST_GUILESS_MAIN(TestBitFields)
#include "tst_bitfields.moc"
