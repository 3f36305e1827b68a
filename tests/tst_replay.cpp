// Captures of the line played again: canbox-sim records what crossed it while
// canbus-host runs the plug-in live and keeps the module's log; canbus-replay must make
// the same records of the recording and of the log, tell which protocol a capture
// speaks, and read on past whatever in a capture is broken.

#include <QtTest>

#include "capturefile.h"
#include "framebuilders.h"
#include "toolrun.h"

#ifdef CANBUS_HAVE_REPLAY
#include "linediff.h"
#include "ranking.h"
#include "replayedmodule.h"
#endif

using canbox::Capture;
using canbox::CaptureEntry;
using testframes::hex;
using namespace toolrun;

namespace {

// Climate, outdoor temperature, doors, a key, a settings page, the odometer and the
// tyres: types that vehicles of the same frame family don't all share.
const char kScenario[] = R"([
    {"delay": 100, "type": "21", "data": "c8 63 0d 0d 00 00 00 0d 00"},
    {"delay": 100, "type": "27", "data": "00 d7 00"},
    {"delay": 100, "type": "24", "data": "40 00"},
    {"delay": 100, "type": "20", "data": "01 01"},
    {"delay": 100, "type": "20", "data": "00 00"},
    {"delay": 100, "type": "40", "data": "00 01 00 00 00"},
    {"delay": 100, "type": "50", "data": "22 00 a0 86 01 00"},
    {"delay": 100, "type": "66", "data": "00 19 19 18 18 00"},
    {"delay": 100, "type": "24", "data": "00 00"}
])";

// What the module made of a run, in order: records with the fields that changed, keys,
// and the module's own signals; the time of each is left out.
QStringList moduleEvents(const QString& output)
{
    QStringList out;
    for (const QString& line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        QJsonObject o = QJsonDocument::fromJson(line.toUtf8()).object();
        const QString event = o.value(QLatin1String("event")).toString();
        const bool shown = event == QLatin1String("record") || event == QLatin1String("key")
            || (event == QLatin1String("signal") && o.value(QLatin1String("source")).toString() == QLatin1String("canbus"));
        if (!shown)
            continue;
        o.remove(QStringLiteral("t"));
        out.append(QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Compact)));
    }
    return out;
}

QJsonObject summaryOf(const QString& output)
{
    const QList<QJsonObject> found = events(output, QStringLiteral("summary"));
    return found.isEmpty() ? QJsonObject() : found.last();
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(content) == content.size();
}

QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// "in 2e 81" / "out ff", with the time in front where the capture has one.
QStringList entryTexts(const Capture& c)
{
    QStringList out;
    for (const CaptureEntry& e : c.entries) {
        out.append((e.seconds >= 0 ? QString::number(e.seconds) + QLatin1Char(' ') : QString())
                   + (e.direction == CaptureEntry::In ? QStringLiteral("in ") : QStringLiteral("out "))
                   + QString::fromLatin1(e.bytes.toHex(' ')));
    }
    return out;
}

QStringList problemTexts(const Capture& c)
{
    QStringList out;
    for (const canbox::CaptureProblem& p : c.problems)
        out.append(QStringLiteral("%1: %2").arg(p.line).arg(p.text));
    return out;
}

const QByteArray kLogLine = "canbus.manager: [QT] [CanObj] func: setData line: 188 ";

} // namespace

class TestReplay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void captureReading_data();
    void captureReading();
    void liveRunReplays_data();
    void liveRunReplays();
    void protocolAllRanksTheSpokenOneFirst_data();
    void protocolAllRanksTheSpokenOneFirst();
    void brokenCapturesCarryOn_data();
    void brokenCapturesCarryOn();
    void badArgumentsFail_data();
    void badArgumentsFail();
    void diffOfTwoProtocols_data();
    void diffOfTwoProtocols();

#ifdef CANBUS_HAVE_REPLAY
    void moduleCounts_data();
    void moduleCounts();
    void rankingOrder_data();
    void rankingOrder();
    void lineDiffMarks_data();
    void lineDiffMarks();
#endif

private:
    QString path(const char* name) const { return m_dir.filePath(QLatin1String(name)); }

    QTemporaryDir m_dir;
    QString m_hostOutput;   // canbus-host --json of the live run
#ifdef CANBUS_HAVE_REPLAY
    std::unique_ptr<replay::ReplayedModule> m_module;   // the module in this process, made once
#endif
};

// One live run serves every comparison: the box plays the scenario and records the
// line, the host shows what the module made of it and keeps the module's log.
void TestReplay::initTestCase()
{
    for (const char* tool : {"canbox-sim", "canbus-host", "canbus-replay"})
        QVERIFY2(QFileInfo(toolPath(tool)).isExecutable(), qPrintable(toolPath(tool) + QStringLiteral(" is not built")));
    QVERIFY(m_dir.isValid());
    QVERIFY(writeFile(path("scenario.json"), kScenario));

    Sim sim;
    QVERIFY(sim.start({"-p", "28", "--scenario", path("scenario.json"), "--record", path("live.cap"), "--duration", "20"}));
    const Run host = run("canbus-host", {"-p", "28", "--port", sim.port(), "--json", "--duration", "3",
                                         "--module-log", path("module.log")});
    QVERIFY2(host.exitCode == 0, qPrintable(host.err));
    sim.output();
    m_hostOutput = host.out;
    // Both ways are kept: the head unit's connect frame, the box's version frame.
    const QStringList recorded = entryTexts(canbox::readCapture(readFile(path("live.cap"))));
    QVERIFY2(!recorded.filter(QRegularExpression(QStringLiteral(" out 2e 81 01 01 7c$"))).isEmpty(), qPrintable(recorded.join('\n')));
    QVERIFY2(!recorded.filter(QRegularExpression(QStringLiteral(" in 2e 30 "))).isEmpty(), qPrintable(recorded.join('\n')));
    QVERIFY2(moduleEvents(m_hostOutput).filter(QStringLiteral("\"record\":\"doors\"")).size() == 2, qPrintable(m_hostOutput));

    // The module's log as a head unit keeps it, among other programs' lines.
    QByteArray mixed;
    for (const QByteArray& line : readFile(path("module.log")).split('\n'))
        mixed += "media: track 3 of 12\n" + line + "\nkernel: usb 1-1: reset\n";
    QVERIFY(writeFile(path("mixed.log"), mixed));
    // What the head unit read, as one raw stream.
    QByteArray raw;
    for (const CaptureEntry& e : canbox::readCapture(readFile(path("live.cap"))).entries) {
        if (e.direction == CaptureEntry::In)
            raw += e.bytes;
    }
    QVERIFY(writeFile(path("live.bin"), raw));
}

void TestReplay::cleanupTestCase()
{
#ifdef CANBUS_HAVE_REPLAY
    m_module.reset();
#endif
}

void TestReplay::captureReading_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("raw");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QStringList>("problems");

    const int text = Capture::Text;
    const int log = Capture::ModuleLog;
    QTest::addRow("recording: time, direction, header")
        << QByteArray("# canbox-sim capture: protocol 28 (x)\n0.5 in 2e 81\n0.625 out ff\n") << false << text << 28
        << QStringList{"0.5 in 2e 81", "0.625 out ff"} << QStringList();
    // A dump's first byte has no decimal point: it isn't a time.
    QTest::addRow("dump 12 34 without time") << QByteArray("12 34\r\n") << false << text << 0
                                             << QStringList{"in 12 34"} << QStringList();
    QTest::addRow("odd digits 2e8") << QByteArray("2e8\n2e 81\n") << false << text << 0 << QStringList{"in 2e 81"}
                                    << QStringList{"1: '2e8' is not hex bytes"};
    QTest::addRow("direction without bytes") << QByteArray("0.1 in\n") << false << text << 0 << QStringList()
                                             << QStringList{"1: no bytes"};
    QTest::addRow("last line cut") << QByteArray("2e 81\n2e 8") << false << text << 0
                                   << QStringList{"in 2e 81", "in 2e 08"}
                                   << QStringList{"2: the last line has no end; it may be cut short"};
    QTest::addRow("control bytes in a line")
        << QByteArray("2e 24 02 40 00 99\n2e 24 02 00 00 d9\n\x01\x02\n2e 24 02 40 00 99\n2e 24 02 00 00 d9\n") << false
        << text << 0 << QStringList{"in 2e 24 02 40 00 99", "in 2e 24 02 00 00 d9", "in 2e 24 02 40 00 99", "in 2e 24 02 00 00 d9"}
        << QStringList{"3: binary noise; the line is skipped"};
    QTest::addRow("no UTF-8 in a line") << QByteArray("2e 81\n\xfe\xff\n") << false << text << 0 << QStringList{"in 2e 81"}
                                        << QStringList{"2: binary noise; the line is skipped"};
    QTest::addRow("log: received dump") << kLogLine + "0x2e 0x21 0x9 \n" << false << log << 0
                                        << QStringList{"in 2e 21 09"} << QStringList();
    QTest::addRow("log: sent dump")
        << QByteArray("canbus.link: [QT] [CanbusModuleImpl] func: sendCanbusData line: 128 0xff \n") << false << log << 0
        << QStringList{"out ff"} << QStringList();
    // Words from the same functions and other programs' lines say nothing.
    QTest::addRow("log: words and foreign lines")
        << QByteArray("kernel: 2e 81 zz\n") + kLogLine + "0x2e 0x24 \n"
               + "canbus.link: [QT] [CanbusModuleImpl] func: sendCanbusData line: 9 reset serialport\n"
        << false << log << 0 << QStringList{"in 2e 24"} << QStringList();
    QTest::addRow("log: the protocol selected first")
        << QByteArray("canbus.manager: [QT] [CanObj] func: setId line: 112  当前选中协议序号 ： 0\n"
                      "canbus.manager: [QT] [CanObj] func: setId line: 112  当前选中协议序号 ： 28\n"
                      "canbus.manager: [QT] [CanObj] func: setId line: 112  当前选中协议序号 ： 30\n")
               + kLogLine + "0x2e \n"
        << false << log << 28 << QStringList{"in 2e"} << QStringList();
    QTest::addRow("log: dump cut at 0x") << kLogLine + "0x2e 0x\n" << false << log << 0 << QStringList()
                                         << QStringList{"1: '0x' is not hex bytes"};
    QTest::addRow("binary file aa5502") << hex("aa5502730102770000") << false << int(Capture::Raw) << 0
                                        << QStringList{"in aa 55 02 73 01 02 77 00 00"} << QStringList();
    QTest::addRow("text taken raw") << QByteArray("2e\n") << true << int(Capture::Raw) << 0
                                    << QStringList{"in 32 65 0a"} << QStringList();
}

void TestReplay::captureReading()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, raw);
    QFETCH(int, kind);
    QFETCH(int, protocol);
    QFETCH(QStringList, entries);
    QFETCH(QStringList, problems);
    const Capture c = canbox::readCapture(content, raw);
    QCOMPARE(int(c.kind), kind);
    QCOMPARE(c.protocol, protocol);
    QCOMPARE(entryTexts(c), entries);
    QCOMPARE(problemTexts(c), problems);
}

void TestReplay::liveRunReplays_data()
{
    QTest::addColumn<QString>("capture");
    QTest::addColumn<QStringList>("args");
    QTest::addRow("recording") << "live.cap" << QStringList();
    QTest::addRow("recording with its timing") << "live.cap" << QStringList{"--timed"};
    QTest::addRow("module log") << "module.log" << QStringList();
    QTest::addRow("module log among other lines") << "mixed.log" << QStringList();
    QTest::addRow("raw bytes") << "live.bin" << QStringList{"-p", "28"};
}

void TestReplay::liveRunReplays()
{
    QFETCH(QString, capture);
    QFETCH(QStringList, args);
    const Run r = run("canbus-replay", args + QStringList{"--json", m_dir.filePath(capture)});
    QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    QVERIFY2(r.err.isEmpty(), qPrintable(r.err));
    // The box may have answered once more as the host was stopping: what the host never
    // read can only be a reply at the very end, never a record or a key.
    const QStringList live = moduleEvents(m_hostOutput);
    const QStringList replayed = moduleEvents(r.out);
    QCOMPARE(replayed.mid(0, live.size()), live);
    const QStringList late = replayed.mid(live.size());
    QVERIFY2(late.filter(QRegularExpression(QStringLiteral("\"event\":\"(record|key)\""))).isEmpty(),
             qPrintable(late.join(QLatin1Char('\n'))));
    const QJsonObject summary = summaryOf(r.out);
    QCOMPARE(summary.value(QLatin1String("protocol")).toInt(), 28);
    QCOMPARE(summary.value(QLatin1String("unknown")).toInt(), 0);
    QCOMPARE(summary.value(QLatin1String("refused")).toInt(), 0);
    // Every frame of the box's, the version frame at least once besides.
    QVERIFY2(summary.value(QLatin1String("accepted")).toInt() > 9, qPrintable(r.out));
}

void TestReplay::protocolAllRanksTheSpokenOneFirst_data()
{
    QTest::addColumn<QString>("capture");
    QTest::addRow("recording") << "live.cap";
    QTest::addRow("module log") << "module.log";
}

void TestReplay::protocolAllRanksTheSpokenOneFirst()
{
    QFETCH(QString, capture);
    const Run r = run("canbus-replay", {"--protocol", "all", "--json", m_dir.filePath(capture)});
    QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    const QList<QJsonObject> ranks = events(r.out, QStringLiteral("rank"));
    QVERIFY2(ranks.size() > 60, qPrintable(r.out));
    QCOMPARE(ranks.first().value(QLatin1String("protocol")).toInt(), 28);
    // A protocol of another frame family takes none of it.
    QCOMPARE(ranks.last().value(QLatin1String("accepted")).toInt(), 0);
}

void TestReplay::brokenCapturesCarryOn_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("accepted");

    const QByteArray open = "2e 24 02 40 00 99\n";
    const QByteArray shut = "2e 24 02 00 00 d9\n";
    QTest::addRow("odd digits") << open + "2e2\n" + shut << ":2: '2e2' is not hex bytes" << 2;
    QTest::addRow("binary noise") << open + "\x13\x37\n" + shut << ":2: binary noise" << 2;
    // The cut frame's checksum is wrong: it is refused, not taken.
    QTest::addRow("cut short") << open + shut.left(16) << ":2: the last line has no end" << 1;
    QTest::addRow("unknown protocol named")
        << "# canbox-sim capture: protocol 52 (x)\n" + open + shut << ":1: there is no vehicle protocol 52" << 2;
    QTest::addRow("empty") << QByteArray() << ": nothing to play" << 0;
}

void TestReplay::brokenCapturesCarryOn()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    QFETCH(int, accepted);
    QVERIFY(writeFile(path("broken.cap"), content));
    const Run r = run("canbus-replay", {"-p", "28", "--json", path("broken.cap")});
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.err.contains(path("broken.cap") + message), qPrintable(r.err));
    QCOMPARE(summaryOf(r.out).value(QLatin1String("accepted")).toInt(), accepted);
}

void TestReplay::badArgumentsFail_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");
    QTest::addRow("unknown protocol") << QStringList{"-p", "52", "x.cap"} << 2 << "no vehicle protocol '52'";
    QTest::addRow("unknown protocol to diff") << QStringList{"-p", "28", "--diff", "x", "x.cap"} << 2 << "no vehicle protocol 'x'";
    QTest::addRow("diff with all") << QStringList{"-p", "all", "--diff", "30", "x.cap"} << 2 << "can't go with";
    QTest::addRow("no capture") << QStringList{"-p", "28"} << 2 << "which capture";
    QTest::addRow("missing capture") << QStringList{"-p", "28", "/nonexistent/x.cap"} << 1 << "cannot read";
    QTest::addRow("no protocol named") << QStringList{"/dev/null"} << 1 << "names no protocol";
    QTest::addRow("negative linger") << QStringList{"--linger", "-5", "x.cap"} << 2 << "--linger";
}

void TestReplay::badArgumentsFail()
{
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const Run r = run("canbus-replay", args);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
}

void TestReplay::diffOfTwoProtocols_data()
{
    QTest::addColumn<QString>("other");
    QTest::addColumn<bool>("sameRecords");
    // 29 extends 28 without frames of its own: only the summary's protocol differs.
    QTest::addRow("28 against its extension 29") << "29" << true;
    QTest::addRow("28 against 30") << "30" << false;
}

void TestReplay::diffOfTwoProtocols()
{
    QFETCH(QString, other);
    QFETCH(bool, sameRecords);
    const Run r = run("canbus-replay", {"-p", "28", "--diff", other, path("live.cap")});
    QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.value(0), QStringLiteral("--- protocol 28"));
    QCOMPARE(lines.value(1), QStringLiteral("+++ protocol %1").arg(other));
    const QStringList mine = lines.filter(QRegularExpression(QStringLiteral("^- ")));
    QVERIFY2(mine.filter(QStringLiteral("summary protocol 28:")).size() == 1, qPrintable(r.out));
    // 30 reads 0x21 as the speed, not the climate.
    QCOMPARE(mine.filter(QStringLiteral(" air ")).isEmpty(), sameRecords);
    QCOMPARE(lines.size() == 4, sameRecords);
}

#ifdef CANBUS_HAVE_REPLAY

void TestReplay::moduleCounts_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QList<QByteArray>>("reads");
    QTest::addColumn<QList<int>>("counts");   // accepted, unknown, refused, dropped

    QTest::addRow("2e2402400099") << 28 << QList<QByteArray>{hex("2e2402400099")} << QList<int>{1, 0, 0, 0};
    QTest::addRow("2e24 then 02400099") << 28 << QList<QByteArray>{hex("2e24"), hex("02400099")} << QList<int>{1, 0, 0, 0};
    QTest::addRow("2e2402400098 bad checksum") << 28 << QList<QByteArray>{hex("2e2402400098")} << QList<int>{0, 0, 1, 6};
    QTest::addRow("2e7e010080 unknown type") << 28 << QList<QByteArray>{hex("2e7e010080")} << QList<int>{1, 1, 0, 0};
    QTest::addRow("ff from the box") << 28 << QList<QByteArray>{hex("ff")} << QList<int>{0, 0, 0, 1};
    // A new frame's start throws away the one before it that never ended.
    QTest::addRow("2e2402 then 2e2402400099") << 28 << QList<QByteArray>{hex("2e2402"), hex("2e2402400099")}
                                              << QList<int>{1, 0, 0, 3};
    QTest::addRow("aa5502730102 77") << 27 << QList<QByteArray>{hex("aa550273010277")} << QList<int>{1, 0, 0, 0};
}

void TestReplay::moduleCounts()
{
    QFETCH(int, protocol);
    QFETCH(QList<QByteArray>, reads);
    QFETCH(QList<int>, counts);
    if (!m_module)
        m_module.reset(new replay::ReplayedModule(nullptr));
    replay::ReplayedModule& module = *m_module;
    QVERIFY2(module.isReady(), qPrintable(module.error()));
    QVERIFY(module.select(protocol));
    for (const QByteArray& bytes : reads)
        module.feed(bytes);
    module.finish();
    const replay::Summary s = module.summary();
    QCOMPARE((QList<int>{int(s.accepted), int(s.unknown), int(s.refused), int(s.dropped)}), counts);
    QVERIFY(!module.select(52));
}

void TestReplay::rankingOrder_data()
{
    QTest::addColumn<QList<QList<int>>>("summaries");   // protocol, accepted, unknown, events, refused, dropped
    QTest::addColumn<QList<int>>("order");
    QTest::addRow("understood before accepted") << QList<QList<int>>{{30, 9, 5, 0, 0, 0}, {28, 6, 0, 0, 0, 0}}
                                                << QList<int>{28, 30};
    QTest::addRow("events break a tie") << QList<QList<int>>{{42, 6, 0, 0, 0, 0}, {28, 6, 0, 4, 0, 0}}
                                        << QList<int>{28, 42};
    QTest::addRow("fewer refused") << QList<QList<int>>{{27, 6, 0, 4, 2, 0}, {31, 6, 0, 4, 1, 0}}
                                   << QList<int>{31, 27};
    QTest::addRow("fewer dropped") << QList<QList<int>>{{27, 6, 0, 4, 1, 9}, {31, 6, 0, 4, 1, 3}}
                                   << QList<int>{31, 27};
    QTest::addRow("the lower id on a full tie") << QList<QList<int>>{{34, 6, 0, 4, 0, 0}, {28, 6, 0, 4, 0, 0}}
                                                << QList<int>{28, 34};
}

void TestReplay::rankingOrder()
{
    QFETCH(QList<QList<int>>, summaries);
    QFETCH(QList<int>, order);
    QList<replay::Summary> given;
    for (const QList<int>& v : summaries) {
        replay::Summary s;
        s.protocol = v[0];
        s.accepted = quint64(v[1]);
        s.unknown = quint64(v[2]);
        s.events = quint64(v[3]);
        s.refused = quint64(v[4]);
        s.dropped = quint64(v[5]);
        given.append(s);
    }
    QList<int> got;
    for (const replay::Summary& s : replay::ranked(given))
        got.append(s.protocol);
    QCOMPARE(got, order);
}

void TestReplay::lineDiffMarks_data()
{
    QTest::addColumn<QStringList>("a");
    QTest::addColumn<QStringList>("b");
    QTest::addColumn<qint64>("maxCells");
    QTest::addColumn<QStringList>("diff");
    const qint64 plenty = 1000;
    QTest::addRow("same") << QStringList{"x", "y"} << QStringList{"x", "y"} << plenty << QStringList();
    QTest::addRow("one changed") << QStringList{"x", "y", "z"} << QStringList{"x", "Y", "z"} << plenty
                                 << QStringList{"- y", "+ Y"};
    QTest::addRow("one inserted") << QStringList{"x", "z"} << QStringList{"x", "y", "z"} << plenty << QStringList{"+ y"};
    QTest::addRow("one removed") << QStringList{"x", "y", "z"} << QStringList{"x", "z"} << plenty << QStringList{"- y"};
    // Too many to compare all with all: an insertion then shows as a change at each place.
    QTest::addRow("by position past the limit") << QStringList{"x", "z"} << QStringList{"x", "y", "z"} << qint64(4)
                                                << QStringList{"- z", "+ y", "+ z"};
}

void TestReplay::lineDiffMarks()
{
    QFETCH(QStringList, a);
    QFETCH(QStringList, b);
    QFETCH(qint64, maxCells);
    QFETCH(QStringList, diff);
    QCOMPARE(replay::lineDiff(a, b, maxCells), diff);
}

#endif // CANBUS_HAVE_REPLAY

QTEST_GUILESS_MAIN(TestReplay)
#include "tst_replay.moc"
