// The MCU firmware update, end to end over a pseudo-terminal: the link feeds a file
// to the simulated MCU, which asks for every packet and checks what it gets.

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

#include "mcusimulator.h"
#include "mcutestlink.h"
#include "platform.h"
#include "serialportobj.h"

using mcusim::HeadUnitMessage;
using mcusim::UpdateTarget;
using Messages = QList<QPair<int, QString>>;

namespace {

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

QByteArray randomFile(int size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, '\0');
    for (char& b : bytes)
        b = char(random.bounded(256));
    return bytes;
}

QByteArray padded(const QByteArray& bytes)
{
    const int tail = bytes.size() % 128;
    return tail == 0 ? bytes : bytes + QByteArray(128 - tail, '\0');
}

// Percentages of the k-th of n + 3 steps, truncated, for packet counts too large to
// list by hand.
QList<int> progressFor(int packets)
{
    QList<int> values;
    for (int k = 1; k <= packets + 2; ++k)
        values << k * 100 / (packets + 3);
    values << 100;
    return values;
}

// Hooks into the conversation: `corruptPacket` makes the MCU see the first packet
// with a bad checksum; `beforeSend` may change or add to what the MCU sends.
struct Hooks
{
    bool corruptPacket = false;
    std::function<QList<QByteArray>(const QByteArray&)> beforeSend;
};

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
    void closedPortRefusesStart();
    void requestOutOfRangeIsRefusedAndUpdateGoesOn();
    void requestWithoutUpdateIsOutOfRange();
    void corruptedPacketIsAskedForAgain();
    void corruptedRequestIsDroppedSilently();
    void otherUpdateFramesAreIgnored_data();
    void otherUpdateFramesAreIgnored();
    void secondUpdateStartsAfresh();

private:
    // Starts an update of `path` and plays the MCU until it is over.
    bool runUpdate(const QString& path, UpdateTarget& target, const Hooks& hooks = Hooks());
    QString writeFile(const QByteArray& bytes);
    Messages messages() const;
    QList<int> progress() const;
    QList<int> finished() const;

    QTemporaryDir m_dir;
    McuTestLink m_mcu;
    QScopedPointer<QSignalSpy> m_progress;
    QScopedPointer<QSignalSpy> m_messages;
    QScopedPointer<QSignalSpy> m_finished;
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
    m_progress.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::progressChanged));
    m_messages.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::updateMessage));
    m_finished.reset(new QSignalSpy(m_mcu.link(), &SerialPortObj::updateFinished));
    m_headUnitFrames.clear();
}

void TestMcuUpdate::cleanup()
{
    m_progress.reset();
    m_messages.reset();
    m_finished.reset();
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

Messages TestMcuUpdate::messages() const
{
    Messages list;
    for (const QVariantList& args : *m_messages)
        list.append({args.value(0).toInt(), args.value(1).toString()});
    return list;
}

QList<int> TestMcuUpdate::progress() const
{
    QList<int> list;
    for (const QVariantList& args : *m_progress)
        list << args.value(0).toInt();
    return list;
}

QList<int> TestMcuUpdate::finished() const
{
    QList<int> list;
    for (const QVariantList& args : *m_finished)
        list << args.value(0).toInt();
    return list;
}

bool TestMcuUpdate::runUpdate(const QString& path, UpdateTarget& target, const Hooks& hooks)
{
    bool corruptPacket = hooks.corruptPacket;
    mcusim::HeadUnitReader reader;
    m_mcu.link()->startMcuUpdate(path);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 30000) {
        if (target.state() == UpdateTarget::State::Done || target.state() == UpdateTarget::State::Failed)
            return target.state() == UpdateTarget::State::Done;
        if (!m_finished->isEmpty() && m_finished->last().value(0).toInt() != 0)
            return false;
        reader.feed(m_mcu.pty().read(1, 50));
        HeadUnitMessage message;
        while (reader.next(message)) {
            QList<QByteArray> replies;
            if (message.kind == HeadUnitMessage::Frame) {
                m_headUnitFrames << message.bytes;
                if (corruptPacket && message.bytes.size() == 144) {
                    corruptPacket = false;
                    replies = target.handleBadFrame();
                } else {
                    replies = target.handle(message.bytes);
                }
            }
            for (const QByteArray& reply : replies) {
                const QList<QByteArray> out = hooks.beforeSend ? hooks.beforeSend(reply) : QList<QByteArray>{reply};
                for (const QByteArray& bytes : out)
                    m_mcu.send(bytes);
            }
        }
    }
    return false;
}

void TestMcuUpdate::wholeUpdate_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("expectedProgress");
    QTest::addRow("1 byte") << 1 << QList<int>{25, 50, 75, 100};
    QTest::addRow("127 bytes") << 127 << QList<int>{25, 50, 75, 100};
    QTest::addRow("128 bytes") << 128 << QList<int>{25, 50, 75, 100};
    QTest::addRow("129 bytes") << 129 << QList<int>{20, 40, 60, 80, 100};
    QTest::addRow("640 bytes") << 640 << QList<int>{12, 25, 37, 50, 62, 75, 87, 100};
    QTest::addRow("5000 bytes") << 5000 << progressFor(40);
    QTest::addRow("12800 bytes") << 12800 << progressFor(100);
}

void TestMcuUpdate::wholeUpdate()
{
    QFETCH(int, size);
    QFETCH(QList<int>, expectedProgress);
    const QByteArray content = randomFile(size, quint32(size));
    const QString path = writeFile(content);
    QVERIFY(!path.isEmpty());

    UpdateTarget target;
    QVERIFY2(runUpdate(path, target), qPrintable(target.error()));
    QCOMPARE(target.packetCount(), quint32((size + 127) / 128));
    // The MCU has the file, the last packet filled up with zeroes.
    QCOMPARE(target.image(), padded(content));
    QCOMPARE(progress(), expectedProgress);
    QCOMPARE(messages(), Messages({{0, QStringLiteral("update ...")}, {0, QStringLiteral("Successed")}}));
    QCOMPARE(finished(), QList<int>{0});
}

void TestMcuUpdate::headUnitFramesByteForByte()
{
    const QByteArray content = randomFile(129, 7);
    UpdateTarget target;
    QVERIFY(runUpdate(writeFile(content), target));
    QCOMPARE(m_headUnitFrames.size(), 5);
    QCOMPARE(m_headUnitFrames.at(0).toHex(), QByteArray("ff550986" "00000000000000" "8f"));
    QCOMPARE(m_headUnitFrames.at(1).toHex(), QByteArray("ff550d8601" "000000000000" "00000002" "96"));
    QByteArray first = hex("ff558d8602" "000000000000" "00000000") + content.left(128);
    first.append('\0');
    SerialPortObj::setChecksum(first);
    QCOMPARE(m_headUnitFrames.at(2).toHex(), first.toHex());
    QByteArray second = hex("ff558d8602" "000000000000" "00000001") + content.mid(128) + QByteArray(127, '\0');
    second.append('\0');
    SerialPortObj::setChecksum(second);
    QCOMPARE(m_headUnitFrames.at(3).toHex(), second.toHex());
    QCOMPARE(m_headUnitFrames.at(4).toHex(), QByteArray("ff55098603" "000000000000" "92"));
}

void TestMcuUpdate::refusedStart_data()
{
    QTest::addColumn<QString>("path");
    QTest::addRow("empty file") << QStringLiteral("empty");
    QTest::addRow("missing file") << QStringLiteral("missing");
    QTest::addRow("a directory") << QStringLiteral("directory");
    QTest::addRow("empty path") << QString();
}

void TestMcuUpdate::refusedStart()
{
    QFETCH(QString, path);
    if (path == QLatin1String("empty"))
        path = writeFile(QByteArray());
    else if (path == QLatin1String("missing"))
        path = m_dir.filePath(QStringLiteral("no-such-firmware.bin"));
    else if (path == QLatin1String("directory"))
        path = m_dir.path();

    m_mcu.link()->startMcuUpdate(path);
    QCOMPARE(messages(), Messages({{0, QStringLiteral("Please check file")}}));
    QCOMPARE(finished(), QList<int>{-1});
    QVERIFY(progress().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestMcuUpdate::closedPortRefusesStart()
{
    QVERIFY(m_mcu.start(QStringLiteral("/nonexistent/ttyMCU")));
    QSignalSpy messagesSpy(m_mcu.link(), &SerialPortObj::updateMessage);
    QSignalSpy finishedSpy(m_mcu.link(), &SerialPortObj::updateFinished);
    m_mcu.link()->startMcuUpdate(writeFile(randomFile(300, 1)));
    QCOMPARE(messagesSpy.count(), 1);
    QCOMPARE(messagesSpy.at(0).value(1).toString(), QStringLiteral("Please check file"));
    QCOMPARE(finishedSpy.count(), 1);
    QCOMPARE(finishedSpy.at(0).value(0).toInt(), -1);
}

void TestMcuUpdate::requestOutOfRangeIsRefusedAndUpdateGoesOn()
{
    const QByteArray content = randomFile(300, 3);
    UpdateTarget target;
    target.setAskOutOfRangeFirst(true);
    // Had the link answered the bad request, the MCU would have failed on a packet it
    // never asked for.
    QVERIFY2(runUpdate(writeFile(content), target), qPrintable(target.error()));
    QCOMPARE(target.image(), padded(content));
    QCOMPARE(messages(), Messages({{0, QStringLiteral("update ...")},
                                   {0, QStringLiteral("Package ID out of range")},
                                   {0, QStringLiteral("Successed")}}));
    QCOMPARE(progress(), QList<int>({16, 33, 50, 66, 83, 100}));
    QCOMPARE(finished(), QList<int>{0});
}

void TestMcuUpdate::requestWithoutUpdateIsOutOfRange()
{
    QVERIFY(m_mcu.send(mcusim::packetRequestFrame(0)));
    QVERIFY(m_mcu.sync());
    QCOMPARE(messages(), Messages({{0, QStringLiteral("Package ID out of range")}}));
    QVERIFY(progress().isEmpty());
    QVERIFY(finished().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestMcuUpdate::corruptedPacketIsAskedForAgain()
{
    // The MCU's retry is what recovers a damaged packet: the link answers the same
    // request twice and reports that packet's progress twice.
    const QByteArray content = randomFile(256, 5);
    UpdateTarget target;
    Hooks hooks;
    hooks.corruptPacket = true;
    QVERIFY2(runUpdate(writeFile(content), target, hooks), qPrintable(target.error()));
    QCOMPARE(target.image(), content);
    QCOMPARE(progress(), QList<int>({20, 40, 60, 60, 80, 100}));
    QCOMPARE(finished(), QList<int>{0});
}

void TestMcuUpdate::corruptedRequestIsDroppedSilently()
{
    const QByteArray content = randomFile(200, 9);
    UpdateTarget target;
    Hooks hooks;
    bool first = true;
    hooks.beforeSend = [&first](const QByteArray& frame) {
        if (!first || frame != mcusim::packetRequestFrame(0))
            return QList<QByteArray>{frame};
        first = false;
        QByteArray damaged = frame;
        damaged[damaged.size() - 1] = char(damaged.at(damaged.size() - 1) ^ 0x40);
        return QList<QByteArray>{damaged, frame};
    };
    QVERIFY2(runUpdate(writeFile(content), target, hooks), qPrintable(target.error()));
    QVERIFY(!first);
    QCOMPARE(target.image(), padded(content));
    QCOMPARE(progress(), QList<int>({20, 40, 60, 80, 100}));
}

void TestMcuUpdate::otherUpdateFramesAreIgnored_data()
{
    QTest::addColumn<QByteArray>("frame");
    // Ready, done and request with something in bytes 5 to 7, unknown steps, and a
    // request in a short frame.
    QTest::addRow("ff55090801000100") << mcusim::ff55Frame(hex("0801000100000000"));
    QTest::addRow("ff55090803010000") << mcusim::ff55Frame(hex("0803010000000000"));
    QTest::addRow("ff550d0802000001") << mcusim::ff55Frame(hex("080200000100000000000000"));
    QTest::addRow("ff55090804") << mcusim::ff55Frame(hex("0804000000000000"));
    QTest::addRow("ff55090802 short request") << mcusim::ff55Frame(hex("0802000000000000"));
    QTest::addRow("ff550d0801 long ready") << mcusim::ff55Frame(hex("080100000000000000000000"));
}

void TestMcuUpdate::otherUpdateFramesAreIgnored()
{
    QFETCH(QByteArray, frame);
    QVERIFY(m_mcu.send(frame));
    QVERIFY(m_mcu.sync());
    QVERIFY(messages().isEmpty());
    QVERIFY(progress().isEmpty());
    QVERIFY(finished().isEmpty());
    QCOMPARE(m_mcu.takeSent().toHex(), QByteArray());
}

void TestMcuUpdate::secondUpdateStartsAfresh()
{
    UpdateTarget first;
    QVERIFY(runUpdate(writeFile(randomFile(1000, 11)), first));
    m_progress->clear();
    m_messages->clear();
    m_finished->clear();
    const QByteArray content = randomFile(130, 12);
    UpdateTarget second;
    QVERIFY2(runUpdate(writeFile(content), second), qPrintable(second.error()));
    QCOMPARE(second.packetCount(), 2u);
    QCOMPARE(second.image(), padded(content));
    QCOMPARE(progress(), QList<int>({20, 40, 60, 80, 100}));
}

QTEST_GUILESS_MAIN(TestMcuUpdate)
#include "tst_mcuupdate.moc"
