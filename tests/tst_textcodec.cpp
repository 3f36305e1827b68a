// Text in the encodings the boxes use, and the bounds-safe frame reader.

#include <QtTest>

#include "framereader.h"
#include "common/textcodec.h"

using namespace canbus;

class TestTextCodec : public QObject
{
    Q_OBJECT
private slots:
    void decode_data();
    void decode();
    void encodeRoundTrips();
    void readerStaysInBounds();
    void readerValues();
};

void TestTextCodec::decode_data()
{
    QTest::addColumn<QString>("codec");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addRow("utf16be") << "be" << QByteArray::fromHex("00410042") << "AB";
    QTest::addRow("utf16le") << "le" << QByteArray::fromHex("41004200") << "AB";
    QTest::addRow("utf16be odd byte dropped") << "be" << QByteArray::fromHex("004100") << "A";
    QTest::addRow("bom big endian") << "bom" << QByteArray::fromHex("feff0041") << "A";
    QTest::addRow("bom little endian") << "bom" << QByteArray::fromHex("fffe4100") << "A";
    QTest::addRow("no bom falls back to big endian") << "bom" << QByteArray::fromHex("0041") << "A";
    QTest::addRow("bom alone") << "bom" << QByteArray::fromHex("feff") << "";
    QTest::addRow("gbk") << "gbk" << QByteArray::fromHex("d6d0cec4") << QString::fromUtf8("中文");
    QTest::addRow("gbk stops at zero") << "gbk" << QByteArray::fromHex("41004242") << "A";
    QTest::addRow("utf8 stops at zero") << "utf8" << QByteArray::fromHex("c3a40041") << QString::fromUtf8("ä");
    QTest::addRow("empty") << "gbk" << QByteArray() << "";
}

void TestTextCodec::decode()
{
    QFETCH(QString, codec);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    using Decode = QString (*)(const QByteArray&);
    const QHash<QString, Decode> decoders = {
        {"be", [](const QByteArray& b) { return decodeUtf16(b, Utf16Order::BigEndian); }},
        {"le", [](const QByteArray& b) { return decodeUtf16(b, Utf16Order::LittleEndian); }},
        {"bom", [](const QByteArray& b) { return decodeUtf16Bom(b); }},
        {"gbk", decodeGbk},
        {"utf8", decodeUtf8}};
    const QString got = decoders.value(codec)(bytes);
    QCOMPARE(got, text);
}

void TestTextCodec::encodeRoundTrips()
{
    QCOMPARE(encodeUtf16(QStringLiteral("A"), Utf16Order::BigEndian), QByteArray::fromHex("0041"));
    QCOMPARE(encodeUtf16(QStringLiteral("A"), Utf16Order::LittleEndian, true), QByteArray::fromHex("fffe4100"));
    QCOMPARE(encodeUtf16(QStringLiteral("A"), Utf16Order::BigEndian, true), QByteArray::fromHex("feff0041"));
    QCOMPARE(encodeGbk(QString::fromUtf8("中")), QByteArray::fromHex("d6d0"));
    const QString text = QString::fromUtf8("Radio 中文 1");
    QCOMPARE(decodeGbk(encodeGbk(text)), text);
    QCOMPARE(decodeUtf8(encodeUtf8(text)), text);
}

void TestTextCodec::readerStaysInBounds()
{
    const QByteArray frame = QByteArray::fromHex("2e2102a1b2c3");
    const FrameReader r(frame);
    QCOMPARE(r.size(), 6);
    QCOMPARE(r.dataSize(), 3);
    QCOMPARE(r.d(0), quint8(0xA1));
    QCOMPARE(r.d(3), quint8(0));          // past the end
    QCOMPARE(r.at(-1), quint8(0));
    QCOMPARE(r.be16(5), quint16(0xC300));  // half inside, half outside
    QCOMPARE(r.be24(100), quint32(0));
    QCOMPARE(r.bytes(4, 10), QByteArray::fromHex("b2c3"));
    QVERIFY(r.bytes(9, 2).isEmpty());
    QCOMPARE(r.tail(3), QByteArray::fromHex("a1b2"));
    const QByteArray nothing;
    const FrameReader empty(nothing);
    QCOMPARE(empty.at(0), quint8(0));
    QCOMPARE(empty.dataSize(), 0);
    QVERIFY(empty.tail(3).isEmpty());
}

void TestTextCodec::readerValues()
{
    const QByteArray frame = QByteArray::fromHex("fe0180ff12345678");
    const FrameReader r(frame, kDataOffset2E);
    QCOMPARE(r.be16(0), quint16(0xFE01));
    QCOMPARE(r.le16(0), quint16(0x01FE));
    QCOMPARE(r.be24(4), quint32(0x123456));
    QCOMPARE(r.le24(4), quint32(0x563412));
    QCOMPARE(r.be32(4), quint32(0x12345678));
    QCOMPARE(r.le32(4), quint32(0x78563412));
    QCOMPARE(r.s8(3), qint8(-1));
    QCOMPARE(r.sbe16(2), qint16(-32513));   // 0x80ff
    QCOMPARE(r.highNibble(4), quint8(1));
    QCOMPARE(r.lowNibble(4), quint8(2));
    QCOMPARE(r.bits(4, 4, 3), quint8(1));
    QVERIFY(r.bit(2, 7));
    QVERIFY(!r.bit(2, 6));
}

QTEST_APPLESS_MAIN(TestTextCodec)
#include "tst_textcodec.moc"
