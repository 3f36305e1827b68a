// One sweep over every registered driver: frames of every type and length, broken
// frames and random bytes split at random points go through the whole receive path.
// Nothing may crash or read out of bounds (the sanitizer build watches), and broken
// input may not move a record.

#include <QRandomGenerator>
#include <QtTest>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "driverfactory.h"
#include "inputinjector.h"
#include "platform.h"

namespace {

// The module started on a port that cannot open: the receive path works, writes
// go nowhere.
class OfflineModule
{
public:
    explicit OfflineModule(int id)
    {
        resetPlatformForTests();
        delete CanObj::instance();
        qputenv("CANBUS_DATA_DIR", dir.path().toLocal8Bit());
        qputenv("CANBUS_BOX_PORT", "/nonexistent/canbox");
        DataSaveControl::reload();
        DataSaveControl::saveUserData(QStringLiteral("CanIndex"), id);
        InputInjector::install(&keys);
        facade.initial();
        facade.implementation()->onAllModuleReady();
    }
    ~OfflineModule()
    {
        delete CanObj::instance();
        InputInjector::install(nullptr);
    }
    void feed(const QByteArray& bytes) { facade.implementation()->onCheckCanbusData(bytes); }
    CanbusInterface* driver() const { return CanObj::instance()->currentDriver(); }

    QTemporaryDir dir;
    RecordingInputInjector keys;
    CanbusModule facade;
};

// Counts every change signal of the facade and every key sent.
class ChangeCounter
{
public:
    explicit ChangeCounter(OfflineModule& module)
        : m_module(module),
          m_spies{new QSignalSpy(&module.facade, &CanbusModule::airConditionerDataChanged),
                  new QSignalSpy(&module.facade, &CanbusModule::cardoorDataChanged),
                  new QSignalSpy(&module.facade, &CanbusModule::carbodyDataChanged),
                  new QSignalSpy(&module.facade, &CanbusModule::radarDataChanged),
                  new QSignalSpy(&module.facade, &CanbusModule::dataChanged),
                  new QSignalSpy(&module.facade, &CanbusModule::outdoorTemperatureChanged)}
    {
    }
    ~ChangeCounter() { qDeleteAll(m_spies); }
    int count() const
    {
        int n = m_module.keys.calls(RecordingInputInjector::Call::Ioctl).size();
        for (const QSignalSpy* spy : m_spies)
            n += spy->count();
        return n;
    }

private:
    OfflineModule& m_module;
    QList<QSignalSpy*> m_spies;
};

QByteArray randomBytes(QRandomGenerator& rng, int n)
{
    QByteArray bytes(n, '\0');
    for (char& c : bytes)
        c = char(rng.bounded(256));
    return bytes;
}

} // namespace

class TestDriverSweep : public QObject
{
    Q_OBJECT
private slots:
    void everyDriver_data();
    void everyDriver();
};

void TestDriverSweep::everyDriver_data()
{
    QTest::addColumn<int>("id");
    int count = 0;
    const canbus::DriverEntry* entries = canbus::driverEntries(&count);
    for (int i = 0; i < count; ++i)
        QTest::addRow("%d", entries[i].id) << entries[i].id;
}

void TestDriverSweep::everyDriver()
{
    QFETCH(int, id);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("reset serialport fail"));
    OfflineModule module(id);
    QVERIFY(module.driver());
    const canbus::FrameFamily family = canbus::findDriver(id)->family;
    QRandomGenerator rng(quint32(id) * 7919u);

    // Broken input moves nothing: empty reads, a lone start byte, frames whose
    // checksum is wrong, frames cut short and left unfinished.
    {
        ChangeCounter changes(module);
        module.feed(QByteArray());
        module.feed(QByteArray(1, '\xFD'));
        module.feed(QByteArray());
        for (int type = 0; type < 256; ++type) {
            QByteArray bad = canbus::buildFrame(family, quint8(type), randomBytes(rng, 1 + type % 12));
            bad[bad.size() - 1] = char(bad.at(bad.size() - 1) ^ 0x5A);
            module.feed(bad);
            // A second junk read so that no half frame is waiting for the next case.
            module.feed(QByteArray("\x00\x01", 2));
        }
        QCOMPARE(changes.count(), 0);
    }

    // Well-formed frames of every type with data of many lengths, including lengths
    // far shorter than any handler expects.
    for (int type = 0; type < 256; ++type) {
        for (int length : {1, 2, 3, 5, 8, 13, 24, 40}) {
            module.feed(canbus::buildFrame(family, quint8(type), randomBytes(rng, length)));
            module.feed(QByteArray("\x00", 1));
        }
    }

    // A stream of valid frames and noise, cut at random points.
    QByteArray stream;
    for (int i = 0; i < 300; ++i) {
        if (rng.bounded(4) == 0)
            stream += randomBytes(rng, rng.bounded(1, 20));
        else
            stream += canbus::buildFrame(family, quint8(rng.bounded(256)), randomBytes(rng, rng.bounded(1, 30)));
    }
    for (int pos = 0; pos < stream.size();) {
        const int n = rng.bounded(1, 65);
        module.feed(stream.mid(pos, n));
        pos += n;
    }

    // Random bytes alone.
    for (int i = 0; i < 200; ++i)
        module.feed(randomBytes(rng, rng.bounded(1, 80)));

    // What is left in the row's buffer is only ever a partial frame's worth.
    QVERIFY(CanObj::instance()->getCurrentCanBusData().recvBuffer.size() < 4096);
}

QTEST_GUILESS_MAIN(TestDriverSweep)
#include "tst_driversweep.moc"
