// The desktop stand-ins must behave like the head unit's libraries as far as the module
// relies on them: settings survive a restart, key events reach the device by
// open/ioctl/close, and the clock, language and mute report their changes.

#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "inputinjector.h"
#include "languagemanager.h"
#include "muteobj.h"
#include "platform.h"

#include <QFile>
#include <QScopedPointer>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>

using Call = RecordingInputInjector::Call;

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void tempDataIsGoneAfterReload();
    void kindsAndSettingGroupsAreSeparate();
    void dataDirectoryFollowsEnvironment();

    void keyEventOpensIoctlsCloses();
    void failedOpenSendsNothing_data();
    void failedOpenSendsNothing();
    void devicePaths_data();
    void devicePaths();

    void setDateTimeEmitsBoth();
    void clockReportsOnlyMinuteAndDayChanges_data();
    void clockReportsOnlyMinuteAndDayChanges();

    void languageEmitsOnlyOnChange_data();
    void languageEmitsOnlyOnChange();

    void muteHeldUntilEveryRequesterLetsGo();
    void muteReleasedWhenRequesterDies();

private:
    QScopedPointer<QTemporaryDir> m_dataDir;
    RecordingInputInjector m_recorder;
};

void TestPlatform::initTestCase()
{
    // Keeps the fallback location away from the user's real configuration.
    QStandardPaths::setTestModeEnabled(true);
    qunsetenv("CANBUS_KEY_DEVICE");
    qunsetenv("CANBUS_MCU_KEY_DEVICE");
    qunsetenv("CANBUS_TOUCH_DEVICE");
}

void TestPlatform::init()
{
    m_dataDir.reset(new QTemporaryDir);
    QVERIFY(m_dataDir->isValid());
    qputenv("CANBUS_DATA_DIR", QFile::encodeName(m_dataDir->path()));
    resetPlatformForTests();
    m_recorder.clear();
    m_recorder.failOpen("/dev/tq_virt_kb", false);
    m_recorder.setNextDescriptor(100);
    InputInjector::install(&m_recorder);
}

void TestPlatform::cleanup()
{
    InputInjector::install(nullptr);
    resetPlatformForTests();
}

// ---- DataSaveControl -------------------------------------------------------

void TestPlatform::tempDataIsGoneAfterReload()
{
    DataSaveControl::saveTempData(QStringLiteral("MCUVERSION"), QStringLiteral("0A0B0C"));
    QCOMPARE(DataSaveControl::readTempData(QStringLiteral("MCUVERSION")).toString(), QStringLiteral("0A0B0C"));

    DataSaveControl::reload();
    QVERIFY(!DataSaveControl::readTempData(QStringLiteral("MCUVERSION")).isValid());
    QFile file(DataSaveControl::filePath());
    if (file.open(QIODevice::ReadOnly))
        QVERIFY(!file.readAll().contains("MCUVERSION"));
}

void TestPlatform::kindsAndSettingGroupsAreSeparate()
{
    DataSaveControl::saveSettingData(QStringLiteral("Mode"), 1);
    DataSaveControl::saveSettingData(QStringLiteral("Mode"), 2, QStringLiteral("front"));
    DataSaveControl::saveUserData(QStringLiteral("Mode"), 4);
    DataSaveControl::reload();

    QCOMPARE(DataSaveControl::readSettingData(QStringLiteral("Mode"), -1).toInt(), 1);
    QCOMPARE(DataSaveControl::readSettingData(QStringLiteral("Mode"), -1, QStringLiteral("front")).toInt(), 2);
    QCOMPARE(DataSaveControl::readUserData(QStringLiteral("Mode"), -1).toInt(), 4);
    QCOMPARE(DataSaveControl::readFactoryData(QStringLiteral("Mode"), -1).toInt(), -1);
}

void TestPlatform::dataDirectoryFollowsEnvironment()
{
    QCOMPARE(DataSaveControl::filePath(), QDir(m_dataDir->path()).absoluteFilePath(QStringLiteral("canbus.ini")));
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), 30);

    // Another directory is another unit: nothing carries over.
    QTemporaryDir other;
    qputenv("CANBUS_DATA_DIR", QFile::encodeName(other.path()));
    QCOMPARE(DataSaveControl::readUserData(QStringLiteral("CanIndex"), 0).toInt(), 30);   // not re-read before reload
    DataSaveControl::reload();
    QCOMPARE(DataSaveControl::readUserData(QStringLiteral("CanIndex"), 0).toInt(), 0);

}

// ---- Input injection ---------------------------------------------------------

void TestPlatform::keyEventOpensIoctlsCloses()
{
    injectDeviceEvent("/dev/tq_virt_kb", 0x1234 + 768, 1);

    const QList<Call>& calls = m_recorder.calls();
    QCOMPARE(calls.size(), 3);
    QCOMPARE(calls.at(0).kind, Call::Open);
    QCOMPARE(calls.at(0).path, QByteArray("/dev/tq_virt_kb"));
    QCOMPARE(calls.at(0).flags & O_ACCMODE, O_RDWR);
    QCOMPARE(calls.at(1).kind, Call::Ioctl);
    QCOMPARE(calls.at(1).request, 0x1234ul + 768);
    QCOMPARE(calls.at(1).arg, 1ul);
    QCOMPARE(calls.at(2).kind, Call::Close);
    QVERIFY(m_recorder.openDescriptors().isEmpty());
}

void TestPlatform::failedOpenSendsNothing_data()
{
    QTest::addColumn<bool>("failOpen");
    QTest::addColumn<int>("descriptor");
    QTest::newRow("open fails") << true << 100;
    QTest::newRow("descriptor 0") << false << 0;
}

void TestPlatform::failedOpenSendsNothing()
{
    QFETCH(bool, failOpen);
    QFETCH(int, descriptor);
    m_recorder.failOpen("/dev/tq_virt_kb", failOpen);
    m_recorder.setNextDescriptor(descriptor);

    injectDeviceEvent("/dev/tq_virt_kb", 800, 1);

    QCOMPARE(m_recorder.calls().size(), 1);
    QCOMPARE(m_recorder.calls().at(0).kind, Call::Open);
    QVERIFY(m_recorder.calls(Call::Ioctl).isEmpty());
}

void TestPlatform::devicePaths_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QByteArray>("fallback");
    QTest::newRow("key") << QByteArray("CANBUS_KEY_DEVICE") << QByteArray("/dev/tq_virt_kb");
    QTest::newRow("mcu key") << QByteArray("CANBUS_MCU_KEY_DEVICE") << QByteArray("/dev/V_KEY_DEV");
    QTest::newRow("touch") << QByteArray("CANBUS_TOUCH_DEVICE") << QByteArray("/dev/V_TOUCH_DEV");
}

void TestPlatform::devicePaths()
{
    QFETCH(QByteArray, variable);
    QFETCH(QByteArray, fallback);
    const auto path = [&variable] {
        if (variable == "CANBUS_KEY_DEVICE")
            return keyDevicePath();
        if (variable == "CANBUS_MCU_KEY_DEVICE")
            return mcuKeyDevicePath();
        return touchDevicePath();
    };

    QCOMPARE(path(), fallback);
    qputenv(variable.constData(), "/tmp/fake-device");
    QCOMPARE(path(), QByteArray("/tmp/fake-device"));
    qputenv(variable.constData(), "");
    QCOMPARE(path(), fallback);
    qunsetenv(variable.constData());
}

// ---- DateTimeCtrl --------------------------------------------------------------

void TestPlatform::setDateTimeEmitsBoth()
{
    DateTimeCtrl* clock = DateTimeCtrl::getInstance();
    clock->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(8, 15, 30)));
    QSignalSpy time(clock, &DateTimeCtrl::timeChanged);
    QSignalSpy date(clock, &DateTimeCtrl::dateChanged);

    // The same day and minute as now: a set still reports both.
    clock->setCurrentDateTime(QDate(2024, 3, 9), 8, 15, 0, 1);
    QCOMPARE(time.count(), 1);
    QCOMPARE(date.count(), 1);

    clock->setCurrentDateTime(QDate(2025, 12, 31), 23, 59, 58, 1);
    QCOMPARE(time.count(), 2);
    QCOMPARE(time.last(), QList<QVariant>({23, 59, 58}));
    QCOMPARE(date.last(), QList<QVariant>({2025, 12, 31}));
    QCOMPARE(DateTimeCtrl::currentDateTime(), QDateTime(QDate(2025, 12, 31), QTime(23, 59, 58)));
}

void TestPlatform::clockReportsOnlyMinuteAndDayChanges_data()
{
    QTest::addColumn<QDateTime>("next");
    QTest::addColumn<int>("timeSignals");
    QTest::addColumn<int>("dateSignals");
    const QDate day(2024, 3, 9);
    QTest::newRow("seconds only") << QDateTime(day, QTime(8, 15, 59)) << 0 << 0;
    QTest::newRow("next minute") << QDateTime(day, QTime(8, 16, 0)) << 1 << 0;
    QTest::newRow("same time next day") << QDateTime(day.addDays(1), QTime(8, 15, 0)) << 1 << 1;
}

void TestPlatform::clockReportsOnlyMinuteAndDayChanges()
{
    QFETCH(QDateTime, next);
    QFETCH(int, timeSignals);
    QFETCH(int, dateSignals);
    DateTimeCtrl* clock = DateTimeCtrl::getInstance();
    clock->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(8, 15, 0)));
    QSignalSpy time(clock, &DateTimeCtrl::timeChanged);
    QSignalSpy date(clock, &DateTimeCtrl::dateChanged);

    clock->setFixedDateTime(next);
    QCOMPARE(time.count(), timeSignals);
    QCOMPARE(date.count(), dateSignals);
}

// ---- LanguageManager -------------------------------------------------------------

void TestPlatform::languageEmitsOnlyOnChange_data()
{
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<QStringList>("emitted");
    QTest::newRow("default again") << QStringList{"en"} << QStringList{};
    QTest::newRow("repeat") << QStringList{"ch_jt", "ch_jt"} << QStringList{"ch_jt"};
    QTest::newRow("there and back") << QStringList{"ja", "en"} << QStringList{"ja", "en"};
}

void TestPlatform::languageEmitsOnlyOnChange()
{
    QFETCH(QStringList, codes);
    QFETCH(QStringList, emitted);
    LanguageManager* languages = LanguageManager::getInstance();
    QCOMPARE(languages->language(), QStringLiteral("en"));
    QSignalSpy spy(languages, &LanguageManager::languageChanged);

    for (const QString& code : codes)
        languages->setLanguage(code);

    QStringList seen;
    for (const QList<QVariant>& args : spy)
        seen << args.at(0).toString();
    QCOMPARE(seen, emitted);
    QCOMPARE(languages->language(), codes.last());
}

// ---- The observing stand-ins -----------------------------------------------------

void TestPlatform::muteHeldUntilEveryRequesterLetsGo()
{
    QObject mcu, phone;
    QSignalSpy muted(MuteObj::getInstance(), &MuteObj::mutedChanged);

    MuteObj::mute(&mcu, 0);
    MuteObj::mute(&mcu, 0);
    MuteObj::mute(&phone, 0);
    QCOMPARE(MuteObj::holdCount(), 2);

    MuteObj::unMute(&mcu, 0);
    QVERIFY(MuteObj::isMuted());   // the phone still holds it
    MuteObj::unMute(&phone, 1);    // another type: not the phone's hold
    QVERIFY(MuteObj::isMuted());
    MuteObj::unMute(&phone, 0);
    QVERIFY(!MuteObj::isMuted());
    QCOMPARE(muted.count(), 2);
}

void TestPlatform::muteReleasedWhenRequesterDies()
{
    auto* requester = new QObject;
    MuteObj::mute(requester, 0);
    QVERIFY(MuteObj::isMutedBy(requester, 0));
    delete requester;
    QVERIFY(!MuteObj::isMuted());
}

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
