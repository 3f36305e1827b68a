// Volkswagen MQB with the RuiZiCheng box: what the head unit sends. Command keys and
// their values in, exact frames out; the clock, the source, media texts, the call
// state, the language and reverse reported to the box.

#include <QSignalSpy>
#include <QtTest>

#include "canbus28/canbus28.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framefamily.h"
#include "languagemanager.h"

using canbus::FrameFamily;

namespace {

constexpr int kId = 28;

QByteArray frame28(quint8 type, const QByteArray& data)
{
    return canbus::buildFrame(FrameFamily::Start2E, type, data);
}

QByteArray frame28(quint8 type, std::initializer_list<quint8> data)
{
    return canbus::buildFrame(FrameFamily::Start2E, type, data);
}

QByteArray command(quint8 code, quint8 arg)
{
    return frame28(0xC6, {code, arg});
}

QByteArray utf16(const QString& text)
{
    QByteArray out;
    for (QChar c : text)
        out.append(char(c.unicode() >> 8)).append(char(c.unicode() & 0xFF));
    return out;
}

// The two frames of one media text: [type 10 chunk] and [type+1 10 next chunk].
QList<QByteArray> textFrames(quint8 type, const QByteArray& first, const QByteArray& second)
{
    return {frame28(type, QByteArray(1, '\x10') + first), frame28(quint8(type + 1), QByteArray(1, '\x10') + second)};
}

QList<QByteArray> frames(std::initializer_list<QByteArray> list)
{
    return QList<QByteArray>(list);
}

using Args = QList<QVariant>;

} // namespace

class TestDriver28Commands : public QObject
{
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void commandsFollowTheLiveRecord_data();
    void commandsFollowTheLiveRecord();
    void unknownCommand_data();
    void unknownCommand();

    void language_data();
    void language();
    void languageFromThePlatform();

    void clock_data();
    void clock();

    void source_data();
    void source();

    void reverse();
};

// ---- command keys --------------------------------------------------------------------

void TestDriver28Commands::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QByteArray>("frame");   // empty: nothing goes out
    auto row = [](const char* key, const char* value, bool rhd, const QByteArray& frame) {
        QTest::addRow("%s %s%s", key, value, rhd ? " rhd" : "")
            << QString::fromLatin1(key) << QString::fromLatin1(value) << rhd << frame;
    };
    row("AirOnOff", "on", false, command(0xB2, 1));
    row("AirOnOff", "ON", false, command(0xB2, 0));   // the word is taken as it is
    row("AirSYNC", "on", false, command(0xB3, 1));
    row("AirDUAL", "off", false, command(0xB3, 0));
    row("AirDUAL", "on", true, command(0xB3, 1));
    row("AirWindFrontFront", "on", false, command(0xB4, 1));
    row("AirWindDownFront", "on", false, command(0xB5, 1));
    row("AirWindUpFront", "off", false, command(0xB6, 0));
    row("AirWindSpeedFront", "5", false, command(0xB7, 5));
    row("AirWindSpeedFront", "9", false, command(0xB7, 7));     // the fan's top level
    row("AirWindSpeedFront", "-3", false, command(0xB7, 0));
    row("AirWindSpeedFront", "fast", false, QByteArray());
    row("AirWindSpeedFront", "3.5", false, QByteArray());
    row("AirWindSpeedAddSubFront", "1", false, command(0xB7, 1));
    row("AirWindSpeedAddSubFront", "0", false, command(0xB7, 0));   // already at the bottom
    row("AirTempFrontLeft", "add", false, command(0xB8, 1));
    row("AirTempFrontLeft", "22", false, command(0xB8, 0));   // anything but "add" lowers
    row("AirTempFrontLeft", "add", true, command(0xB9, 1));
    row("AirTempFrontRight", "add", false, command(0xB9, 1));
    row("AirTempFrontRight", "sub", true, command(0xB8, 0));
    row("AirTempRear", "add", false, command(0xBA, 1));
    row("AirTempRear", "sub", true, command(0xBA, 0));
    row("AirAUTO", "on", false, command(0xBB, 1));
    row("AirRearLock", "on", false, command(0xBC, 1));
    row("AirAC", "on", false, command(0xBD, 1));
    row("AirInnerLoop", "on", false, command(0xBE, 1));
    row("AirOuterLoop", "on", false, command(0xBE, 0));
    row("AirOuterLoop", "off", false, command(0xBE, 1));
    row("AirInnerOuterLoop", "", false, command(0xBE, 1));
    row("AirInnerLoopQAS", "on", false, command(0xB0, 1));
    row("AirDefrostFront", "on", false, command(0xCD, 1));
    row("SeatHotLeft", "", false, command(0xAD, 1));
    row("SeatHotRight", "whatever", false, command(0xAE, 1));
}

void TestDriver28Commands::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, rightDriver);
    QFETCH(QByteArray, frame);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightDriver);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.manager()->sendStateToCan(key, value);
    QCOMPARE(h.sentFrames(), frame.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{frame});
    QCOMPARE(air.count(), 0);
}

void TestDriver28Commands::commandsFollowTheLiveRecord_data()
{
    QTest::addColumn<QByteArray>("climate");   // D0..D8 of the 0x21 frame taken first
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("frame");
    auto row = [](const char* climate, const char* key, const char* value, const QByteArray& frame) {
        QTest::addRow("%s %s %s", climate, key, value)
            << QByteArray::fromHex(climate) << QString::fromLatin1(key) << QString::fromLatin1(value) << frame;
    };
    row("800700000000000000", "AirWindSpeedAddSubFront", "1", command(0xB7, 7));
    row("800700000000000000", "AirWindSpeedAddSubFront", "0", command(0xB7, 6));
    row("800300000000000000", "AirWindSpeedAddSubFront", "1", command(0xB7, 4));
    row("800f00000000000000", "AirWindSpeedAddSubFront", "0", command(0xB7, 7));   // 15 - 1, kept to 7
    row("800000000000000000", "AirWindSpeedAddSubFront", "add", command(0xB7, 0));
    row("a00000000000000000", "AirInnerOuterLoop", "", command(0xBE, 0));
    row("800000000000000000", "AirInnerOuterLoop", "", command(0xBE, 1));
    row("800000000020000000", "SeatHotLeft", "", command(0xAD, 3));
    row("800000000030000000", "SeatHotLeft", "", command(0xAD, 0));
    row("800000000050000000", "SeatHotLeft", "", command(0xAD, 0));   // beyond the levels
    row("800000000002000000", "SeatHotRight", "", command(0xAE, 3));
    row("800000000003000000", "SeatHotRight", "", command(0xAE, 0));
    row("800000000007000000", "SeatHotRight", "", command(0xAE, 0));
    row("800000000070000000", "SeatHotRight", "", command(0xAE, 1));
}

void TestDriver28Commands::commandsFollowTheLiveRecord()
{
    QFETCH(QByteArray, climate);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, frame);
    DriverHarness h(kId);
    QCOMPARE(h.feed(frame28(0x21, climate)), 0);
    h.clearSent();
    h.manager()->sendStateToCan(key, value);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame});
}

void TestDriver28Commands::unknownCommand_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key : {"AirECO", "airac", "AirWindSpeedFrontLeft", "SeatCoolLeft", "", "AirAC "})
        QTest::addRow("'%s'", key) << QString::fromLatin1(key);
}

void TestDriver28Commands::unknownCommand()
{
    QFETCH(QString, key);
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    h.manager()->sendStateToCan(key, QStringLiteral("on"));
    QVERIFY(h.sentFrames().isEmpty());
    // The panel redraws what it has: the vehicle can't do what it asked.
    QCOMPARE(air.count(), 1);
    QCOMPARE(data.count(), 0);
}

// ---- language --------------------------------------------------------------------------

void TestDriver28Commands::language_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("number");   // -1: not a language of the vehicle's display
    const QList<QPair<const char*, int>> rows = {
        {"en", 1}, {"ch_jt", 23}, {"ch_ft", 23}, {"fa", 3}, {"ko", 18}, {"pty", 6}, {"dy", 0},
        {"teq", 22}, {"uk", 43}, {"ja", -1}, {"els", -1}, {"xby", -1}, {"th", -1}, {"in", -1},
        {"alb", -1}, {"xbl", -1}, {"ps", -1}, {"", -1}, {"EN", -1}, {"de", -1},
    };
    for (const auto& r : rows)
        QTest::addRow("'%s'", r.first) << QString::fromLatin1(r.first) << r.second;
}

void TestDriver28Commands::language()
{
    QFETCH(QString, code);
    QFETCH(int, number);
    DriverHarness h(kId);
    h.feed(frame28(0x40, {0x00, 9, 0, 0, 0}));   // the vehicle's own setting first
    h.clearSent();
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    QVERIFY(QMetaObject::invokeMethod(h.driver(), "languageChanged", Q_ARG(QString, code)));
    const int languageCode = h.driver()->getDataInfo().value<Data28Info>().bodyStatus.languageCode;
    if (number < 0) {
        QVERIFY(h.sentFrames().isEmpty());
        QCOMPARE(data.count(), 0);
        QCOMPARE(languageCode, 9);
        return;
    }
    QCOMPARE(h.sentFrames(), QList<QByteArray>{command(0x00, quint8(number))});
    QCOMPARE(data.count(), 1);
    QCOMPARE(languageCode, number);
}

void TestDriver28Commands::languageFromThePlatform()
{
    DriverHarness h(kId);
    LanguageManager::getInstance()->setLanguage(QStringLiteral("ko"));
    QCOMPARE(h.sentFrames(), QList<QByteArray>{QByteArray::fromHex("2ec6020012" "25")});
}

// ---- clock ----------------------------------------------------------------------------

void TestDriver28Commands::clock_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QVariant>("format24");   // invalid: never set
    QTest::addColumn<QByteArray>("data");
    auto at = [](int y, int mo, int d, int h, int mi, int s) { return QDateTime(QDate(y, mo, d), QTime(h, mi, s)); };
    QTest::addRow("2024-03-09 14:05:07") << at(2024, 3, 9, 14, 5, 7) << QVariant()
                                         << QByteArray::fromHex("180309 0e0507 01");
    QTest::addRow("24 hours") << at(2024, 3, 9, 14, 5, 7) << QVariant(true)
                              << QByteArray::fromHex("180309 0e0507 01");
    QTest::addRow("12 hours") << at(2024, 3, 9, 14, 5, 7) << QVariant(false)
                              << QByteArray::fromHex("180309 8e0507 01");
    QTest::addRow("12 hours, midnight") << at(2031, 12, 31, 0, 0, 59) << QVariant(false)
                                        << QByteArray::fromHex("1f0c1f 80003b 01");
    QTest::addRow("2000") << at(2000, 1, 1, 23, 59, 0) << QVariant() << QByteArray::fromHex("000101 173b00 01");
    QTest::addRow("2255") << at(2255, 6, 15, 8, 30, 0) << QVariant() << QByteArray::fromHex("ff060f 081e00 01");
}

void TestDriver28Commands::clock()
{
    QFETCH(QDateTime, now);
    QFETCH(QVariant, format24);
    QFETCH(QByteArray, data);
    DriverHarness h(kId);
    if (format24.isValid())
        DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), format24);
    DateTimeCtrl::getInstance()->setFixedDateTime(now);
    // The arguments don't count: the box gets the clock as it is.
    h.driver()->setCurrentTime(1, 2, 3);
    DateTimeCtrl::getInstance()->clearFixedDateTime();
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame28(0xA6, data)});
}

// ---- source reports -------------------------------------------------------------------

void TestDriver28Commands::source_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<Args>("args");
    QTest::addColumn<QList<QByteArray>>("frames");

    // radio: band and frequency
    QTest::addRow("radio FM1") << 1 << Args{2, 10170} << frames({frame28(0xC0, {1, 1, 1, 0xBA, 0x27, 0, 0, 0})});
    QTest::addRow("radio AM1") << 1 << Args{5, 1008} << frames({frame28(0xC0, {1, 1, 0x11, 0xF0, 0x03, 0, 0, 0})});
    QTest::addRow("radio other band") << 1 << Args{7, 100} << frames({frame28(0xC0, {1, 1, 0, 100, 0, 0, 0, 0})});
    QTest::addRow("radio without frequency") << 1 << Args{2} << frames({});

    // media past its first two seconds: track (from 0 in the list), count, position
    const Args playing{0, 4, 12, 125, 300, QStringLiteral("Title"), QStringLiteral("Artist")};
    QTest::addRow("media 13") << 13 << playing << frames({frame28(0xC0, {8, 0x11, 5, 0, 12, 0, 2, 5})});
    QTest::addRow("media 16") << 16 << playing << frames({frame28(0xC0, {9, 0x11, 5, 0, 12, 0, 2, 5})});
    QTest::addRow("media 22") << 22 << playing << frames({frame28(0xC0, {0x0B, 0x11, 5, 0, 12, 0, 2, 5})});
    QTest::addRow("media position 2")
        << 13 << Args{0, 299, 1000, 2, 0, QStringLiteral("T"), QString()}
        << frames({frame28(0xC0, {8, 0x11, 0x2C, 0x01, 0xE8, 0x03, 0, 2})});

    // the first two seconds: title and artist, each in two frames
    QTest::addRow("media texts")
        << 13 << Args{0, 4, 12, 1, 300, QStringLiteral("Hi"), QStringLiteral("Bo")}
        << (textFrames(0x70, utf16("Hi") + QByteArray(2, '\0'), QByteArray())
            + textFrames(0x72, utf16("Bo") + QByteArray(2, '\0'), QByteArray()));
    QTest::addRow("media texts, empty")
        << 22 << Args{0, 0, 0, 0, 0, QString(), QString()}
        << (textFrames(0x70, QByteArray(2, '\0'), QByteArray()) + textFrames(0x72, QByteArray(2, '\0'), QByteArray()));
    const QString twenty = QStringLiteral("ABCDEFGHIJKLMNOPQRST");
    QTest::addRow("title of 20 is not cut")
        << 13 << Args{0, 0, 0, 0, 0, twenty, QString()}
        << (textFrames(0x70, utf16(twenty.left(10)), utf16(twenty.mid(10)))
            + textFrames(0x72, QByteArray(2, '\0'), QByteArray()));
    QTest::addRow("title of 21 is cut")
        << 13 << Args{0, 0, 0, 0, 0, twenty + QLatin1Char('U'), QString()}
        << (textFrames(0x70, utf16(QStringLiteral("ABCDEFGHIJ")), utf16(QStringLiteral("KLMNOPQ...")))
            + textFrames(0x72, QByteArray(2, '\0'), QByteArray()));
    const QString longArtist = QStringLiteral("An artist whose name is long");
    QTest::addRow("artist is not cut, only what two frames hold")
        << 13 << Args{0, 0, 0, 0, 0, QStringLiteral("\u00e9t\u00e9"), longArtist}
        << (textFrames(0x70, utf16(QStringLiteral("\u00e9t\u00e9")) + QByteArray(2, '\0'), QByteArray())
            + textFrames(0x72, utf16(longArtist.left(10)), utf16(longArtist.mid(10, 10))));

    // telephone: the source, the state, the name
    const QByteArray phoneSource = frame28(0xC0, {1, 0x40, 0, 0, 0, 0, 0, 0});
    auto call = [](quint8 state) { return frame28(0xC5, {0x55, state}); };
    auto line = [](const QByteArray& text) {
        QByteArray data("\x03\x01", 2);
        data += text;
        data.append(20 - data.size(), '\0');
        return frame28(0xCA, data);
    };
    QTest::addRow("phone incoming") << 24 << Args{1, QStringLiteral("Anna"), QStringLiteral("123")}
                                    << frames({phoneSource, call(0x51), line("Anna")});
    QTest::addRow("phone calling") << 24 << Args{3, QString()} << frames({phoneSource, call(0x54), line("")});
    QTest::addRow("phone unknown state") << 24 << Args{7, QStringLiteral("B")} << frames({phoneSource, call(0), line("B")});
    QTest::addRow("phone long name") << 24 << Args{1, QStringLiteral("Bartholomew Featherstonehaugh")}
                                     << frames({phoneSource, call(0x51), line("Bartholomew Feathe")});
    // a character that doesn't fit whole is left out
    QTest::addRow("phone name cut between characters")
        << 24 << Args{1, QStringLiteral("J\u00fcrgen M\u00fcller-L\u00fc")}
        << frames({phoneSource, call(0x51), line(QStringLiteral("J\u00fcrgen M\u00fcller-L").toUtf8())});

    // sources this box doesn't take
    for (int type : {0, 15, 99})
        QTest::addRow("source %d", type) << type << Args{2, 10170, 1, 300, 0, QStringLiteral("T")} << frames({});
}

void TestDriver28Commands::source()
{
    QFETCH(int, type);
    QFETCH(Args, args);
    QFETCH(QList<QByteArray>, frames);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::srctype(type), args);
    QCOMPARE(h.sentFrames(), frames);
}

// ---- reverse -------------------------------------------------------------------------

void TestDriver28Commands::reverse()
{
    DriverHarness h(kId);
    auto* d = qobject_cast<Canbus28Obj*>(h.driver());
    h.feed(frame28(0x40, {0x40, 0, 0, 0, 0x20}));   // the vehicle's reverse mode: 2
    h.clearSent();
    QSignalSpy radar(d, SIGNAL(radarDataChanged()));

    d->setInReverse(true);
    QVERIFY(d->isInReverse());
    QCOMPARE(h.sentFrames(), QList<QByteArray>{command(0x45, 2)});
    QCOMPARE(radar.count(), 0);

    // While reversing the steering angle is asked for again and again.
    const QByteArray request = frame28(0x90, {0x29, 0x00});
    h.clearSent();
    d->onCountdown();
    QCOMPARE(h.sentFrames(), QList<QByteArray>{request});
    QTRY_VERIFY(h.sentFrames().size() >= 2);
    QCOMPARE(h.sentFrames().at(1), request);

    h.feed(frame28(0x22, {1, 1, 1, 1, 0, 0}));
    QCOMPARE(radar.count(), 1);
    d->setInReverse(false);
    QCOMPARE(radar.count(), 2);
    QCOMPARE(int(d->getRadarData()->radarRearLeft), 0);
    QCOMPARE(int(d->getRadarData()->radarLevels), 12);
}

QTEST_GUILESS_MAIN(TestDriver28Commands)
#include "tst_driver28_commands.moc"
