// Volkswagen MQB (28): what the head unit sends. Command keys and the language in,
// [C6 02 code arg] out; the clock, the source and call reports, reverse.

#include <QSignalSpy>
#include <QTextCodec>
#include <QtTest>

#include "canbus28/canbus28.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "languagemanager.h"

using testframes::frame;
using testframes::hex;
using Frames = QList<QByteArray>;

namespace {

constexpr int kId = 28;

// Code and argument of the frames sent, "-" for none.
QString sent(const DriverHarness& h)
{
    QStringList out;
    for (const QByteArray& f : h.sentFrames())
        out << QString(f.mid(3, 2).toHex());
    return out.isEmpty() ? QStringLiteral("-") : out.join(',');
}

QByteArray utf16(const QString& text) { return QTextCodec::codecForName("UTF-16BE")->fromUnicode(text).mid(2); }

// One media text in its two frames: [type 10 first] [type+1 10 second].
QList<QByteArray> text(int type, const QByteArray& first, const QByteArray& second = QByteArray())
{
    return {frame(type, QByteArray(1, '\x10') + first), frame(type + 1, QByteArray(1, '\x10') + second)};
}

} // namespace

class TestDriver28Commands : public QObject
{
    Q_OBJECT

private slots:
    void commandCodes();
    void arguments_data();
    void arguments();
    void clock();
    void source_data();
    void source();
    void reverse();
};

// Keys it doesn't know send nothing: the panel redraws what it has. Known languages go
// to the box and into the record; others leave the vehicle's own.
void TestDriver28Commands::commandCodes()
{
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    QStringList codes;
    for (const char* key : {"AirOnOff", "AirSYNC", "AirDUAL", "AirWindFrontFront", "AirWindDownFront", "AirWindUpFront",
                            "AirTempFrontLeft", "AirTempFrontRight", "AirTempRear", "AirAUTO", "AirRearLock", "AirAC",
                            "AirInnerLoop", "AirInnerLoopQAS", "AirDefrostFront", "AirECO", "airac"}) {
        h.clearSent();
        h.manager()->sendStateToCan(key, QStringLiteral("on"));
        codes << sent(h);
    }
    for (const char* language : {"ch_ft", "dy", "uk", "ja", "EN"}) {
        h.clearSent();
        QMetaObject::invokeMethod(h.driver(), "languageChanged", Q_ARG(QString, language));
        codes << sent(h) + '/' + QString::number(h.driver()->getDataInfo().value<Data28Info>().bodyStatus.languageCode);
    }
    QCOMPARE(codes.join(' '), QStringLiteral("b201 b301 b301 b401 b501 b601 b800 b900 ba00 bb01 bc01 bd01 be01 b001 "
                                             "cd01 - - 0017/23 0000/0 002b/43 -/43 -/43"));
    QCOMPARE(air.count(), 2);
    QCOMPARE(data.count(), 3);
    h.clearSent();
    h.manager()->sendStateToCan(QStringLiteral("AirAC"), QStringLiteral("on"));
    LanguageManager::getInstance()->setLanguage(QStringLiteral("ko"));
    QCOMPARE(h.sentFrames(), (Frames{hex("2ec602bd0179"), hex("2ec602001225")}));
}

void TestDriver28Commands::arguments_data()
{
    QTest::addColumn<QByteArray>("climate");   // D0..D8 of a 0x21 frame taken first
    QTest::addColumn<QString>("command");   // key, a blank, value
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QString>("sent");
    auto row = [](const char* live, const char* cmd, bool rhd, const char* sent) {
        QTest::addRow("%s %s%s", live, cmd, rhd ? " rhd" : "") << hex(live) << QString(cmd) << rhd << QString(sent);
    };
    row("", "AirOuterLoop on", false, "be00");
    row("", "AirWindSpeedFront 9", false, "b707");   // the fan's top level
    row("", "AirTempFrontLeft add", true, "b901");
    row("", "AirTempFrontRight sub", true, "b800");
    row("800700000000000000", "AirWindSpeedAddSubFront 1", false, "b707");
    row("800700000000000000", "AirWindSpeedAddSubFront 0", false, "b706");
    row("800300000000000000", "AirWindSpeedAddSubFront 1", false, "b704");
    row("a00000000000000000", "AirInnerOuterLoop", false, "be00");
    row("800000000000000000", "AirInnerOuterLoop", false, "be01");
    row("800000000020000000", "SeatHotLeft", false, "ad03");
    row("800000000030000000", "SeatHotLeft", false, "ad00");   // off after three levels
    row("800000000070000000", "SeatHotRight", false, "ae01");
}

void TestDriver28Commands::arguments()
{
    QFETCH(QByteArray, climate);
    QFETCH(QString, command);
    QFETCH(bool, rightDriver);
    QFETCH(QString, sent);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightDriver);
    h.feed(frame(0x21, climate));
    h.clearSent();
    h.manager()->sendStateToCan(command.section(' ', 0, 0), command.section(' ', 1));
    QCOMPARE(::sent(h), sent);
}

// The clock as it is, whatever the arguments: the year less 2000, and bit 7 of the hour
// for the 12-hour format.
void TestDriver28Commands::clock()
{
    DriverHarness h(kId);
    DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), false);
    DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2001, 3, 9), QTime(14, 5, 7)));
    h.driver()->setCurrentTime(1, 2, 3);
    DateTimeCtrl::getInstance()->clearFixedDateTime();
    QCOMPARE(h.sentFrames(), Frames{frame(0xA6, hex("010309 8e0507 01"))});
}

void TestDriver28Commands::source_data()
{
    using Args = QList<QVariant>;
    QTest::addColumn<int>("type");
    QTest::addColumn<Args>("args");
    QTest::addColumn<Frames>("frames");
    QTest::addRow("radio") << 1 << Args{2, 10170} << Frames{frame(0xC0, {1, 1, 1, 0xBA, 0x27, 0, 0, 0})};
    // from its second second on, the place in the track: number (from 0), count, time
    QTest::addRow("media 16, 2 s") << 16 << Args{0, 299, 1000, 2, 0, "T", ""}
                                   << Frames{frame(0xC0, {9, 0x11, 0x2C, 0x01, 0xE8, 0x03, 0, 2})};
    // before, title and artist in two frames each (the two bytes behind a short text go
    // along); a title over 20 is cut to 17 and "...", the artist is not
    const QByteArray two(2, '\0');
    QTest::addRow("media 13, 1 s") << 13 << Args{0, 4, 12, 1, 0, "Hi", "Bo"}
                                   << text(0x70, utf16("Hi") + two) + text(0x72, utf16("Bo") + two);
    const QString artist = QStringLiteral("An artist whose name is long");
    QTest::addRow("title of 21") << 13 << Args{0, 0, 0, 0, 0, "ABCDEFGHIJKLMNOPQRSTU", artist}
                                 << text(0x70, utf16("ABCDEFGHIJ"), utf16("KLMNOPQ..."))
                                        + text(0x72, utf16(artist.left(10)), utf16(artist.mid(10, 10)));
    // the phone as the source, the call state, the name
    const QByteArray phone = frame(0xC0, {1, 0x40, 0, 0, 0, 0, 0, 0});
    auto line = [](const QByteArray& name) { return frame(0xCA, "\x03\x01" + name.leftJustified(18, '\0')); };
    QTest::addRow("phone incoming") << 24 << Args{1, "Anna"} << Frames{phone, frame(0xC5, {0x55, 0x51}), line("Anna")};
    QTest::addRow("phone, other state, long name") << 24 << Args{7, "Bartholomew Featherstonehaugh"}
                                                   << Frames{phone, frame(0xC5, {0x55, 0}), line("Bartholomew Feathe")};
    QTest::addRow("source 15") << 15 << Args{2, 10170, 1, 300, 0, "T"} << Frames{};
}

void TestDriver28Commands::source()
{
    QFETCH(int, type);
    QFETCH(QList<QVariant>, args);
    QFETCH(QList<QByteArray>, frames);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::srctype(type), args);
    QCOMPARE(h.sentFrames(), frames);
}

// Reverse tells the box the vehicle's reverse mode (settings page 0x40) and asks for the
// steering angle until it ends.
void TestDriver28Commands::reverse()
{
    DriverHarness h(kId);
    h.feed(frame(0x40, {0x40, 0, 0, 0, 0x20}));
    h.clearSent();
    h.driver()->setInReverse(true);
    const QByteArray poll = frame(0x90, {0x29, 0x00});
    QTRY_VERIFY(h.sentFrames().size() >= 3);
    QCOMPARE(h.sentFrames().mid(0, 3), (Frames{frame(0xC6, {0x45, 2}), poll, poll}));
    h.driver()->setInReverse(false);
    h.clearSent();
    QTest::qWait(600);
    QVERIFY(h.sentFrames().isEmpty());
}

QTEST_GUILESS_MAIN(TestDriver28Commands)
#include "tst_driver28_commands.moc"
