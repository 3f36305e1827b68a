// Inputs that once broke the module under the fuzz targets, replayed through the same
// path as the targets take them: tests/data/fuzz/<target>-<name>.bin, the target named
// by the part before the dash. The sanitizer build shows a bad read or an undefined
// operation; every build checks that the frames sent towards the box stay well formed.

#include <QDir>
#include <QtTest>

#include <memory>

#include "../fuzz/commandcase.h"
#include "../fuzz/mcucase.h"
#include "../fuzz/receivecase.h"
#include "recordingdriver.h"

using namespace canbusfuzz;

class TestFuzzRegressions : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void receiveLayout_data();
    void receiveLayout();
    void encodedReadsComeBack_data();
    void encodedReadsComeBack();
    void mcuCaseComesBack_data();
    void mcuCaseComesBack();
    void replay_data();
    void replay();
    void sourceNumbersOutsideTheEnumerationStayOut_data();
    void sourceNumbersOutsideTheEnumerationStayOut();

private:
    std::unique_ptr<FuzzModule> module;
};

void TestFuzzRegressions::initTestCase()
{
    module.reset(new FuzzModule);
}

void TestFuzzRegressions::cleanupTestCase()
{
    module.reset();
}

// The cut points come from the back of the input, the bytes from the front.
void TestFuzzRegressions::receiveLayout_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("driverIndex");
    QTest::addColumn<QList<QByteArray>>("reads");

    QTest::addRow("empty") << QByteArray() << 0 << QList<QByteArray>{};
    QTest::addRow("49") << QByteArray::fromHex("49") << 0x49 << QList<QByteArray>{};
    QTest::addRow("002e8101017c05") << QByteArray::fromHex("002e8101017c05") << 0
                                    << QList<QByteArray>{QByteArray::fromHex("2e8101017c")};
    QTest::addRow("032e8101017c0203") << QByteArray::fromHex("032e8101017c0203") << 3
                                      << QList<QByteArray>{QByteArray::fromHex("2e8101"),
                                                           QByteArray::fromHex("017c")};
    // 0: all the rest in one read.
    QTest::addRow("052e8101017c00") << QByteArray::fromHex("052e8101017c00") << 5
                                    << QList<QByteArray>{QByteArray::fromHex("2e8101017c")};
    // A size beyond the end takes what is left.
    QTest::addRow("072e81ff") << QByteArray::fromHex("072e81ff") << 7
                              << QList<QByteArray>{QByteArray::fromHex("2e81")};
}

void TestFuzzRegressions::receiveLayout()
{
    QFETCH(QByteArray, input);
    QFETCH(int, driverIndex);
    QFETCH(QList<QByteArray>, reads);
    const ReceiveCase c = decodeReceive(FuzzInput(input));
    QCOMPARE(int(c.driverIndex), driverIndex);
    QCOMPARE(c.reads, reads);
}

void TestFuzzRegressions::encodedReadsComeBack_data()
{
    QTest::addColumn<QList<QByteArray>>("reads");
    QTest::addRow("one") << QList<QByteArray>{QByteArray::fromHex("2e8101017c")};
    QTest::addRow("three") << QList<QByteArray>{QByteArray("\x2e", 1), QByteArray(40, '\x11'),
                                                QByteArray("\x00\x00", 2)};
    QTest::addRow("exactly 255") << QList<QByteArray>{QByteArray(255, '\xAA')};
}

void TestFuzzRegressions::encodedReadsComeBack()
{
    QFETCH(QList<QByteArray>, reads);
    const ReceiveCase c = decodeReceive(FuzzInput(encodeReceive(9, reads)));
    QCOMPARE(int(c.driverIndex), 9);
    QCOMPARE(c.reads, reads);

    // A longer read comes back in parts of 255 bytes at most, nothing lost.
    const QByteArray big(600, '\x5A');
    const ReceiveCase split = decodeReceive(FuzzInput(encodeReceive(0, {big})));
    QCOMPARE(split.reads.size(), 3);
    QCOMPARE(split.reads.join(), big);
}

// The update's flag and firmware size share the first two bytes.
void TestFuzzRegressions::mcuCaseComesBack_data()
{
    QTest::addColumn<bool>("update");
    QTest::addColumn<int>("size");
    QTest::addRow("no update") << false << 0;
    QTest::addRow("1 byte") << true << 1;
    QTest::addRow("129 bytes") << true << 129;
    QTest::addRow("largest") << true << kMaxFirmwareSize;
}

void TestFuzzRegressions::mcuCaseComesBack()
{
    QFETCH(bool, update);
    QFETCH(int, size);
    const QList<QByteArray> reads{QByteArray::fromHex("2e0901"), QByteArray::fromHex("0000ff55")};
    const McuCase c = decodeMcu(FuzzInput(encodeMcu(update, size, reads)));
    QCOMPARE(c.update, update);
    QCOMPARE(c.firmwareSize, size);
    QCOMPARE(c.reads, reads);
}

void TestFuzzRegressions::replay_data()
{
    QTest::addColumn<QString>("path");
    const QDir dir(QStringLiteral(CANBUS_TEST_DATA_DIR "/fuzz"));
    const QStringList files = dir.entryList({QStringLiteral("*.bin")}, QDir::Files, QDir::Name);
    if (files.isEmpty())
        QSKIP("no captured inputs");
    for (const QString& file : files)
        QTest::newRow(qPrintable(file)) << dir.filePath(file);
}

void TestFuzzRegressions::replay()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
    const QByteArray input = file.readAll();
    const QString target = QFileInfo(path).fileName().section(QLatin1Char('-'), 0, 0);

    QByteArray bad;
    if (target == QLatin1String("fuzz_receive"))
        bad = runReceive(*module, decodeReceive(FuzzInput(input)));
    else if (target == QLatin1String("fuzz_commands"))
        bad = runCommands(*module, FuzzInput(input));
    else
        QFAIL(qPrintable(QStringLiteral("no fuzz target named %1").arg(target)));
    QVERIFY2(bad.isEmpty(), bad.toHex(' ').constData());
}

// A source number that srctype cannot hold never reaches a driver: converted, it
// would be undefined. Those it can hold all pass, known sources or not.
void TestFuzzRegressions::sourceNumbersOutsideTheEnumerationStayOut_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("reaches");
    QTest::addRow("1") << 1 << true;
    QTest::addRow("24") << 24 << true;
    QTest::addRow("0") << 0 << true;
    QTest::addRow("31") << 31 << true;
    QTest::addRow("32") << 32 << false;
    QTest::addRow("51") << 51 << false;
    QTest::addRow("-1") << -1 << false;
    QTest::addRow("-128") << -128 << false;
    QTest::addRow("2147483647") << 2147483647 << false;
}

void TestFuzzRegressions::sourceNumbersOutsideTheEnumerationStayOut()
{
    QFETCH(int, type);
    QFETCH(bool, reaches);
    RecordingDriverScope recording(28);
    int index = 0;
    while (FuzzModule::entry(quint8(index)).id != 28)
        ++index;
    module->select(quint8(index));
    QVERIFY(recording.driver());
    module->facade().sendSrcStateToCan(type, {QVariant(7)});
    QCOMPARE(recording.driver()->sources.size(), reaches ? 1 : 0);
    if (reaches)
        QCOMPARE(recording.driver()->sources.first().first, type);
    // The next case must not meet the recording driver.
    CanObj::instance()->setId(0, false);
}

QTEST_GUILESS_MAIN(TestFuzzRegressions)
#include "tst_fuzzregressions.moc"
