// What several drivers share besides their frames: the vehicle variant setting and
// its timer, the telephone module's call state, and press-and-release commands.

#include <QSignalSpy>
#include <QtTest>

#include "common/bluetoothcalls.h"
#include "commondriver.h"
#include "datasavecontrol.h"
#include "module.h"
#include "modulemanager.h"
#include "platform.h"
#include "common/pressrelease.h"
#include "common/vehiclemodel.h"

namespace {

class Listener : public QObject
{
    Q_OBJECT
public:
    int calls = 0;
    bool last = false;
signals:
    void callStateChanged(bool active);
public slots:
    void btCallStatesChangeSlot(bool active)
    {
        ++calls;
        last = active;
    }
};

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};

} // namespace

class TestDriverTimers : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void carModel_data();
    void carModel();
    void repeatingTimer();
    void bluetooth();
    void pressAndRelease();
    void releaseOf();

private:
    QTemporaryDir m_dir;
};

void TestDriverTimers::init()
{
    resetPlatformForTests();
    qputenv("CANBUS_DATA_DIR", m_dir.path().toLocal8Bit());
    DataSaveControl::reload();
}

void TestDriverTimers::carModel_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("highest");
    QTest::addColumn<int>("model");
    QTest::addRow("none") << QVariant() << 19 << 0;
    QTest::addRow("5") << QVariant(5) << 19 << 5;
    QTest::addRow("20 of 19") << QVariant(20) << 19 << 19;
    QTest::addRow("-3") << QVariant(-3) << 15 << 0;
    QTest::addRow("text") << QVariant(QStringLiteral("7")) << 15 << 7;
    QTest::addRow("junk") << QVariant(QStringLiteral("x")) << 15 << 0;
}

void TestDriverTimers::carModel()
{
    QFETCH(QVariant, stored);
    QFETCH(int, highest);
    QFETCH(int, model);
    if (stored.isValid())
        DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), stored, QString());
    QCOMPARE(canbus::storedCarModel(highest), model);
}

void TestDriverTimers::repeatingTimer()
{
    auto* owner = new Listener;
    QTimer* timer = canbus::startRepeatingTimer(owner, 10, &Listener::deleteLater);
    QVERIFY(timer->isActive());
    QCOMPARE(timer->parent(), owner);
    QVERIFY(!timer->isSingleShot());
    QTimer* idle = canbus::makeTimer(owner, 1000, &Listener::deleteLater);
    QVERIFY(!idle->isActive());
    QCOMPARE(idle->interval(), 1000);
    QPointer<Listener> guard(owner);
    QTRY_VERIFY(guard.isNull());   // the timer fired and its owner took it along
}

void TestDriverTimers::bluetooth()
{
    Listener driver;
    QVERIFY(!canbus::connectBluetoothCalls(&driver));
    Listener phone;
    tqappframework::ModuleManager::self()->registerModule(
        QStringLiteral("bluetooth"),
        QSharedPointer<tqappframework::Module>(new tqappframework::PeerModule(QStringLiteral("bluetooth"), &phone)));
    QVERIFY(canbus::connectBluetoothCalls(&driver));
    emit phone.callStateChanged(true);
    QCOMPARE(driver.calls, 1);
    QVERIFY(driver.last);
    // A receiver without the slot is left alone.
    QObject plain;
    QVERIFY(!canbus::connectBluetoothCalls(&plain));
    tqappframework::ModuleManager::self()->unregisterModule(QStringLiteral("bluetooth"));
}

void TestDriverTimers::pressAndRelease()
{
    CommonDriver driver(99, kProfile);
    QSignalSpy sent(&driver, SIGNAL(sendDataToCan(QByteArray)));
    canbus::sendPressRelease(driver, 0x8A, {0x05, 0x01}, {0x05, 0x00}, 20);
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toByteArray(), QByteArray::fromHex("2e8a0205016d"));
    QTRY_COMPARE(sent.count(), 2);
    QCOMPARE(sent.at(1).at(0).toByteArray(), QByteArray::fromHex("2e8a0205006e"));
}

void TestDriverTimers::releaseOf()
{
    const QByteArray press = QByteArray::fromHex("80102030");
    QCOMPARE(canbus::releaseOf(press, {0, 2}), QByteArray::fromHex("00100030"));
    QCOMPARE(canbus::releaseOf(press, {3, 9, -1}), QByteArray::fromHex("80102000"));
}

QTEST_GUILESS_MAIN(TestDriverTimers)
#include "tst_drivertimers.moc"
