// Texts for outbound frames: encoded and cut at a character boundary.

#include <QtTest>

#include "common/fixedtextframe.h"
#include "common/frametext.h"

using canbus::Utf16Order;

class TestFrameText : public QObject
{
    Q_OBJECT

private slots:
    void utf16_data();
    void utf16();
    void utf8_data();
    void utf8();
    void placeText_data();
    void placeText();
};

void TestFrameText::utf16_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("max");
    QTest::addColumn<bool>("littleEndian");
    QTest::addColumn<QByteArray>("bytes");
    const QString clef = QString::fromUtf8("a\xf0\x9d\x84\x9e");   // 'a' and a surrogate pair
    QTest::addRow("exactly") << "Ab" << 4 << false << QByteArray::fromHex("00410062");
    QTest::addRow("odd limit") << "Ab" << 3 << false << QByteArray::fromHex("0041");
    QTest::addRow("odd limit, little endian") << "Ab" << 3 << true << QByteArray::fromHex("4100");
    QTest::addRow("negative") << "Ab" << -4 << false << QByteArray();
    QTest::addRow("pair kept") << clef << 6 << false << QByteArray::fromHex("0061d834dd1e");
    QTest::addRow("pair not split") << clef << 4 << false << QByteArray::fromHex("0061");
}

void TestFrameText::utf16()
{
    QFETCH(QString, text);
    QFETCH(int, max);
    QFETCH(bool, littleEndian);
    QTEST(canbus::utf16Text(text, littleEndian ? Utf16Order::LittleEndian : Utf16Order::BigEndian, max), "bytes");
}

void TestFrameText::utf8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("max");
    QTest::addColumn<QByteArray>("bytes");
    const QString text = QString::fromUtf8("a\xc3\xa9\xe2\x82\xac");   // a, e-acute, euro
    QTest::addRow("inside the euro") << text << 5 << QByteArray("a\xc3\xa9");
    QTest::addRow("inside the e") << text << 2 << QByteArray("a");
    QTest::addRow("negative") << text << -1 << QByteArray();
}

void TestFrameText::utf8()
{
    QFETCH(QString, text);
    QFETCH(int, max);
    QTEST(canbus::utf8Text(text, max), "bytes");
}

void TestFrameText::placeText_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("max");
    QTest::addColumn<QByteArray>("after");   // a frame of six bytes "012345", "abcd" placed
    QTest::addColumn<int>("written");
    QTest::addRow("short: the rest stays") << 1 << 10 << QByteArray("0abcd5") << 4;
    QTest::addRow("up to the last byte") << 3 << 10 << QByteArray("012abc") << 3;
    QTest::addRow("at most max") << 0 << 2 << QByteArray("ab2345") << 2;
    QTest::addRow("outside the frame") << 6 << 10 << QByteArray("012345") << 0;
}

void TestFrameText::placeText()
{
    QFETCH(int, from);
    QFETCH(int, max);
    QFETCH(QByteArray, after);
    QFETCH(int, written);
    QByteArray frame("012345");
    QCOMPARE(canbus::placeText(frame, from, "abcd", max), written);
    QCOMPARE(frame, after);
}

QTEST_GUILESS_MAIN(TestFrameText)
#include "tst_frametext.moc"
