// The MCU firmware update over a pseudo-terminal, with the simulated MCU asking for packets.

#include <QtTest>

#include "framebuilders.h"
#include "mcusimulator.h"
#include "mcutestlink.h"
#include "platform.h"
#include "serialportobj.h"

using mcusim::UpdateTarget;
using testframes::hex;

namespace {

QByteArray randomFile(int size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, '\0');
    for (char& b : bytes)
        b = char(random.bounded(256));
    return bytes;
}

// The first argument of every emission, as text.
QStringList seen(const QSignalSpy& spy, int argument = 0)
{
    QStringList list;
    for (const QVariantList& args : spy)
        list << args.value(argument).toString();
    return list;
}

} // namespace

class TestMcuUpdate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void wholeUpdate_data();
    void wholeUpdate();
    void headUnitFramesByteForByte();
    void refusedStart_data();
    void refusedStart();
    void framesOutsideTheDialogue_data();
    void framesOutsideTheDialogue();

private:
    void watch();
    // Starts an update of `path` and plays the MCU until it is over.
    bool runUpdate(const QString& path, UpdateTarget& target);
    QString writeFile(const QByteArray& bytes);

    QTemporaryDir m_dir;
    McuTestLink m_mcu;
    QScopedPointer<QSignalSpy> m_progress, m_messages, m_finished;
    QList<QByteArray> m_headUnitFrames;
    int m_files = 0;
};

void TestMcuUpdate::initTestCase()
{
    QVERIFY(m_dir.isValid());
    qputenv("CANBUS_DATA_DIR", m_dir.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("canbus.*.debug=false"));
}

void TestMcuUpdate::init()
{
    resetPlatformForTests();
    QVERIFY(m_mcu.start());
    watch();
    m_headUnitFrames.clear();
}

void TestMcuUpdate::watch()
{
    m_progress.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::progressChanged));
    m_messages.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::updateMessage));
    m_finished.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::updateFinished));
}

void TestMcuUpdate::cleanup()
{
    m_mcu.stop();
    for (int i = 0; i < 100 && !m_mcu.pty().drain(20).isEmpty(); ++i) {
    }
    resetPlatformForTests();
}

QString TestMcuUpdate::writeFile(const QByteArray& bytes)
{
    const QString path = m_dir.filePath(QStringLiteral("firmware-%1.bin").arg(++m_files));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return QString();
    return path;
}

bool TestMcuUpdate::runUpdate(const QString& path, UpdateTarget& target)
{
    mcusim::HeadUnitReader reader;
    m_mcu.link()->startMcuUpdate(path);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 30000) {
        if (target.state() == UpdateTarget::State::Done || target.state() == UpdateTarget::State::Failed)
            return target.state() == UpdateTarget::State::Done;
        reader.feed(m_mcu.pty().read(1, 50));
        mcusim::HeadUnitMessage message;
        while (reader.next(message)) {
            if (message.kind != mcusim::HeadUnitMessage::Frame)
                continue;
            m_headUnitFrames << message.bytes;
            for (const QByteArray& reply : target.handle(message.bytes))
                m_mcu.send(reply);
        }
    }
    return false;
}

void TestMcuUpdate::wholeUpdate_data()
{
    QTest::addColumn<int>("before");   // size of an update run first, 0 for none
    QTest::addColumn<int>("size");
    QTest::addColumn<QStringList>("expectedProgress");
    QTest::addRow("128 bytes, no padding") << 0 << 128 << QStringList{"25", "50", "75", "100"};
    QTest::addRow("640 bytes, truncated") << 0 << 640 << QStringList{"12", "25", "37", "50", "62", "75", "87", "100"};
    // Nothing of the first update's packets or counts is left for the second.
    QTest::addRow("130 bytes after 1000") << 1000 << 130 << QStringList{"20", "40", "60", "80", "100"};
}

void TestMcuUpdate::wholeUpdate()
{
    QFETCH(int, before);
    QFETCH(int, size);
    QFETCH(QStringList, expectedProgress);
    if (before) {
        UpdateTarget first;
        QVERIFY(runUpdate(writeFile(randomFile(before, 11)), first));
        watch();
    }
    const QByteArray content = randomFile(size, quint32(size));
    UpdateTarget target;
    QVERIFY2(runUpdate(writeFile(content), target), qPrintable(target.error()));
    QCOMPARE(target.packetCount(), quint32((size + 127) / 128));
    // The MCU has the file, the last packet filled up with zeroes.
    QCOMPARE(target.image(), content + QByteArray(int(target.packetCount()) * 128 - size, '\0'));
    QCOMPARE(seen(*m_progress), expectedProgress);
    QCOMPARE(seen(*m_messages, 1), QStringList({"update ...", "Successed"}));
    QCOMPARE(seen(*m_messages), QStringList({"0", "0"}));
    QCOMPARE(seen(*m_finished), QStringList{"0"});
}

void TestMcuUpdate::headUnitFramesByteForByte()
{
    const QByteArray content = randomFile(129, 7);
    UpdateTarget target;
    QVERIFY(runUpdate(writeFile(content), target));
    QCOMPARE(m_headUnitFrames.size(), 5);
    QCOMPARE(m_headUnitFrames.at(0).toHex(), QByteArray("ff550986" "00000000000000" "8f"));
    QCOMPARE(m_headUnitFrames.at(1).toHex(), QByteArray("ff550d8601" "000000000000" "00000002" "96"));
    QByteArray first = hex("ff558d8602" "000000000000" "00000000") + content.left(128) + '\0';
    SerialPortObj::setChecksum(first);
    QCOMPARE(m_headUnitFrames.at(2).toHex(), first.toHex());
    QByteArray second = hex("ff558d8602" "000000000000" "00000001") + content.mid(128) + QByteArray(128, '\0');
    SerialPortObj::setChecksum(second);
    QCOMPARE(m_headUnitFrames.at(3).toHex(), second.toHex());
    QCOMPARE(m_headUnitFrames.at(4).toHex(), QByteArray("ff55098603" "000000000000" "92"));
}

void TestMcuUpdate::refusedStart_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("portOpen");
    QTest::addRow("empty file") << writeFile(QByteArray()) << true;
    QTest::addRow("missing file") << m_dir.filePath(QStringLiteral("no-such-firmware.bin")) << true;
    QTest::addRow("a directory") << m_dir.path() << true;
    QTest::addRow("closed port") << writeFile(randomFile(300, 1)) << false;
}

void TestMcuUpdate::refusedStart()
{
    QFETCH(QString, path);
    QFETCH(bool, portOpen);
    if (!portOpen) {
        QVERIFY(m_mcu.start(QStringLiteral("/nonexistent/ttyMCU")));
        watch();
    }
    m_mcu.link()->startMcuUpdate(path);
    QCOMPARE(seen(*m_messages, 1), QStringList{"Please check file"});
    QCOMPARE(seen(*m_finished), QStringList{"-1"});
    QVERIFY(m_progress->isEmpty());
    QCOMPARE(m_mcu.pty().drain(50).toHex(), QByteArray());
}

void TestMcuUpdate::framesOutsideTheDialogue_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("message");
    // A request with no update running asks for a packet beyond the (empty) list.
    QTest::addRow("request without an update") << mcusim::packetRequestFrame(0) << "Package ID out of range";
    // Ignored: bytes 6, 5 or 7 set, an unknown step, a short request, a long ready.
    QTest::addRow("ff55090801000100") << mcusim::ff55Frame(hex("0801000100000000")) << "";
    QTest::addRow("ff55090803010000") << mcusim::ff55Frame(hex("0803010000000000")) << "";
    QTest::addRow("ff550d0802000001") << mcusim::ff55Frame(hex("080200000100000000000000")) << "";
    QTest::addRow("ff55090804") << mcusim::ff55Frame(hex("0804000000000000")) << "";
    QTest::addRow("ff55090802 short request") << mcusim::ff55Frame(hex("0802000000000000")) << "";
    QTest::addRow("ff550d0801 long ready") << mcusim::ff55Frame(hex("080100000000000000000000")) << "";
}

void TestMcuUpdate::framesOutsideTheDialogue()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, message);
    QVERIFY(m_mcu.send(frame));
    QVERIFY(m_mcu.sync());
    QCOMPARE(seen(*m_messages, 1).join(QString()), message);
    QVERIFY(m_progress->isEmpty());
    QVERIFY(m_finished->isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

QTEST_GUILESS_MAIN(TestMcuUpdate)
#include "tst_mcuupdate.moc"
