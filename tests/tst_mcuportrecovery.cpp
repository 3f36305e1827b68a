// An MCU that goes away and comes back at the same path: the link closes the dead
// port at the first error, reopens it once a second and reads on, with its timers
// running and nothing of the old device's bytes left over.

#include <QSerialPort>
#include <QtTest>

#include <memory>

#include "inputinjector.h"
#include "mcusimulator.h"
#include "ptypair.h"
#include "serialportobj.h"
#include "warningcounter.h"

class TestMcuPortRecovery : public QObject
{
    Q_OBJECT
private slots:
    void mcuComesBackTenTimes();
};

void TestMcuPortRecovery::mcuComesBackTenTimes()
{
    QTemporaryDir dir;
    const QString devicePath = dir.filePath(QStringLiteral("mcu"));
    auto mcu = std::make_unique<PtyPair>();
    if (!mcu->isOpen())
        QSKIP("no pseudo-terminals on this machine");
    QVERIFY(QFile::link(mcu->slavePath(), devicePath));

    qputenv("CANBUS_MCU_PORT", devicePath.toLocal8Bit());
    RecordingInputInjector input;
    InputInjector::install(&input);
    auto link = std::make_unique<SerialPortObj>();
    link->startOnFirstFrameReady();
    QSerialPort* port = link->findChild<QSerialPort*>();
    QVERIFY(port);
    QSignalSpy acc(link.get(), &SerialPortObj::accStateChanged);

    auto mcuWarnings = std::make_unique<WarningCounter>("canbus.mcu");
    const int cycles = 10;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        QTRY_VERIFY_WITH_TIMEOUT(port->isOpen(), 2500);

        // A whole frame is decoded; half of the next one is still in the link's buffer
        // when the MCU goes away. Left there, it would swallow the next device's
        // first frame.
        const bool on = cycle % 2 == 0;
        const int before = acc.count();
        QVERIFY(mcu->write(mcusim::ignitionFrame(on) + mcusim::keyFrame(3, 1).left(3)));
        QTRY_COMPARE(acc.count(), before + 1);
        QCOMPARE(acc.last().at(0).toBool(), on);

        // The device node goes with the device, and a new one appears.
        mcu.reset();
        QVERIFY(QFile::remove(devicePath));
        QTRY_VERIFY(!port->isOpen());
        mcu = std::make_unique<PtyPair>();
        QVERIFY(QFile::link(mcu->slavePath(), devicePath));
    }
    QTRY_VERIFY_WITH_TIMEOUT(port->isOpen(), 2500);
    const int warnings = mcuWarnings->count();
    mcuWarnings.reset();

    // The heartbeat carried on and reaches the last device.
    const QByteArray heartbeat = SerialPortObj::commandFrame(29, -1);
    QByteArray received;
    QElapsedTimer clock;
    clock.start();
    while (!received.contains(heartbeat) && clock.elapsed() < 2500)
        received += mcu->read(heartbeat.size(), 100);
    QVERIFY2(received.contains(heartbeat), received.toHex().constData());

    // A line for each loss and each return, not one for each of the errors the dead
    // device keeps reporting.
    QVERIFY2(warnings <= 2 * cycles, qPrintable(QString::number(warnings)));

    link.reset();
    InputInjector::install(nullptr);
}

QTEST_GUILESS_MAIN(TestMcuPortRecovery)
#include "tst_mcuportrecovery.moc"
