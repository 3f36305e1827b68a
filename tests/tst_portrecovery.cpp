// A CAN box that goes away and comes back: the link closes the dead port at the first
// error, looks for the device once a second and carries on with the same driver.

#include <QtTest>

#include <cstdio>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "framefamily.h"
#include "modulemanager.h"
#include "platform.h"
#include "ptypair.h"
#include "recordingdriver.h"
#include "warningcounter.h"

namespace {

// Points `link` at a new pseudo-terminal's slave in one step, as udev would.
bool pointAt(const QString& link, const QString& target)
{
    const QString temporary = link + QStringLiteral(".new");
    QFile::remove(temporary);
    return QFile::link(target, temporary)
        && std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(link).constData()) == 0;
}

} // namespace

class TestPortRecovery : public QObject
{
    Q_OBJECT
private slots:
    void boxComesBackTwentyTimes();
};

void TestPortRecovery::boxComesBackTwentyTimes()
{
    QTemporaryDir dir;
    const QString devicePath = dir.filePath(QStringLiteral("canbox"));
    auto box = std::make_unique<PtyPair>();
    if (!box->isOpen())
        QSKIP("no pseudo-terminals on this machine");
    QVERIFY(pointAt(devicePath, box->slavePath()));

    resetPlatformForTests();
    delete CanObj::instance();
    qputenv("CANBUS_DATA_DIR", dir.path().toLocal8Bit());
    qputenv("CANBUS_BOX_PORT", devicePath.toLocal8Bit());
    DataSaveControl::reload();
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), 42);
    RecordingDriverScope recording(42);
    CanbusModule facade;
    facade.initial();
    tqappframework::ModuleManager::self()->setAllModuleStartupReady();
    RecordingDriver* driver = recording.driver();
    QVERIFY(driver);

    auto linkWarnings = std::make_unique<WarningCounter>("canbus.link");
    const int cycles = 20;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        // The box is up: a frame is acknowledged and decoded.
        const QByteArray frame = canbus::buildFrame(canbus::FrameFamily::Start2E, 0x21, {quint8(cycle)});
        const int before = driver->frames.size();
        bool answered = false;
        QElapsedTimer clock;
        clock.start();
        while (!answered && clock.elapsed() < 2500) {
            box->write(frame);
            answered = box->read(1, 100).contains('\xFF');
        }
        QVERIFY2(answered, qPrintable(QStringLiteral("cycle %1: no answer").arg(cycle)));
        QTRY_VERIFY(driver->frames.size() > before);
        QCOMPARE(driver->frames.last(), frame);

        // The box goes away and a new one appears at the same path.
        box.reset();
        QTRY_VERIFY(!facade.implementation()->port()->isOpen());
        box = std::make_unique<PtyPair>();
        QVERIFY(pointAt(devicePath, box->slavePath()));
    }
    const int warnings = linkWarnings->count();
    linkWarnings.reset();

    // The same driver carried on throughout, and the log stayed short: at most a
    // line for each loss and each return.
    QCOMPARE(recording.driver(), driver);
    QCOMPARE(CanObj::instance()->currentDriver(), driver);
    QVERIFY2(warnings <= 2 * cycles + 2, qPrintable(QString::number(warnings)));
    delete CanObj::instance();
}

QTEST_GUILESS_MAIN(TestPortRecovery)
#include "tst_portrecovery.moc"
