// The protocol manager: selecting drivers, the rules of the baud-rate signal, the
// catalogue, forwarding without a driver, and the connect handshake's timer.

#include <QtTest>

#include "canbusmodule.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "driverfactory.h"
#include "framefamily.h"
#include "languagemanager.h"
#include "platform.h"

class TestCanObj : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void idsWithoutDriver_data();
    void idsWithoutDriver();
    void baudSignalOnlyOnRateChange_data();
    void baudSignalOnlyOnRateChange();
    void baudSignalBeforeConnectFrame();
    void reselectingSameIdOnlyRewritesSetting();
    void oldDriverDisconnectsBeforeReplacement();
    void everyCatalogueIdHasItsDriver();
    void dataByIdFollowsInheritance();
    void driverSignalsReachFacade();
    void baseConnectFormSendsEmptyFrameOnce();
    void connectRetriesUntilAnswered();
    void disconnectOnlyWhenConnected();
    void languageChangeRebuildsCatalogue();

private:
    QTemporaryDir* dataDir = nullptr;
};

void TestCanObj::init()
{
    resetPlatformForTests();
    dataDir = new QTemporaryDir;
    qputenv("CANBUS_DATA_DIR", dataDir->path().toLocal8Bit());
    DataSaveControl::reload();
    delete CanObj::instance();
}

void TestCanObj::cleanup()
{
    delete CanObj::instance();
    delete dataDir;
    dataDir = nullptr;
}

void TestCanObj::idsWithoutDriver_data()
{
    QTest::addColumn<int>("id");
    for (int id : {0, 52, 121, -3})
        QTest::addRow("%d", id) << id;
}

// Ids without a driver: nothing is sent, bytes are taken and refused, and the
// manager's answers are neutral.
void TestCanObj::idsWithoutDriver()
{
    QFETCH(int, id);
    CanObj* can = CanObj::instance();
    QSignalSpy baud(can, &CanObj::setBaudRateSig);
    QSignalSpy sent(can, &CanObj::sendDataToCan);
    DataSaveControl::saveSettingData(QStringLiteral("CanBusReversingLinw"), true);
    can->setId(id, true);
    QVERIFY(!can->currentDriver());
    QCOMPARE(CanObj::id(), id);
    QVERIFY(!DataSaveControl::readSettingData(QStringLiteral("CanBusReversingLinw"), true).toBool());
    const QByteArray junk("\x2e\x81\x01\x01\x7c", 5);
    QCOMPARE(can->setData(junk), junk.size());
    int length = 0;
    QByteArray reply;
    QCOMPARE(CanObj::getCanDataChecksum(junk, length, reply), -1);
    QVERIFY(reply.isEmpty());
    QCOMPARE(can->getCanBusDataById(id).id, 0);
    QCOMPARE(can->getCurrentCanBusData().id, 27);   // the first row stands in
    QVERIFY(can->disableRadar() && !can->isInReverse() && !can->getAirData());
    QVERIFY(!can->getVersionData().isNull());
    QVERIFY(!can->getDataById(28).isValid());
    QByteArray out("x");
    can->getAckData(out);
    QCOMPARE(out, QByteArray("x"));
    can->sendConnectData();
    can->sendDisconnectData();
    can->sendStateToCan(QStringLiteral("AirAC"), QStringLiteral("1"));
    can->setInReverse(true);
    QCOMPARE(baud.count(), 0);
    QCOMPARE(sent.count(), 0);
}

void TestCanObj::baudSignalOnlyOnRateChange_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("signalledRate");   // 0: no signal
    QTest::addRow("first selection") << 0 << 28 << 38400;
    QTest::addRow("38400 to 38400") << 28 << 30 << 0;
    QTest::addRow("38400 to 19200") << 28 << 66 << 19200;
    QTest::addRow("19200 to 38400") << 87 << 120 << 38400;
    QTest::addRow("to an id without driver") << 28 << 52 << 0;
}

void TestCanObj::baudSignalOnlyOnRateChange()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, signalledRate);
    CanObj* can = CanObj::instance();
    can->setId(from, false);
    QSignalSpy baud(can, &CanObj::setBaudRateSig);
    can->setId(to, false);
    QCOMPARE(baud, signalledRate ? QList<QVariantList>{{signalledRate}} : QList<QVariantList>());
}

void TestCanObj::baudSignalBeforeConnectFrame()
{
    CanObj* can = CanObj::instance();
    can->setId(28, false);
    QStringList events;
    connect(can, &CanObj::setBaudRateSig, this, [&](int rate) { events << QString::number(rate); });
    // A dying driver relays one empty frame (nothing reaches the wire); skip those.
    connect(can, &CanObj::sendDataToCan, this, [&](const QByteArray& f) {
        if (!f.isEmpty())
            events << QString::fromLatin1(f.toHex());
    });
    can->setId(42, true);   // same rate: no signal, just the connect frame
    can->setId(67, true);   // another rate: the signal, then 67's connect frame
    QCOMPARE(events, QStringList({QStringLiteral("2e8101017c"), QStringLiteral("19200"),
                                  QString::fromLatin1(canbus::buildFrame(canbus::FrameFamily::StartFD16, 0x04, {0x00}).toHex())}));
}

void TestCanObj::reselectingSameIdOnlyRewritesSetting()
{
    CanObj* can = CanObj::instance();
    can->setId(28, false);
    CanbusInterface* first = can->currentDriver();
    first->setConnectedState(true);
    DataSaveControl::saveSettingData(QStringLiteral("CanBusReversingLinw"), true);
    QSignalSpy sent(can, &CanObj::sendDataToCan);
    QSignalSpy baud(can, &CanObj::setBaudRateSig);
    can->setId(28, true);
    QCOMPARE(can->currentDriver(), first);
    QVERIFY(sent.isEmpty() && baud.isEmpty() && first->isConnectedState());
    QVERIFY(!DataSaveControl::readSettingData(QStringLiteral("CanBusReversingLinw"), true).toBool());
}

void TestCanObj::oldDriverDisconnectsBeforeReplacement()
{
    CanObj* can = CanObj::instance();
    can->setId(29, false);
    can->currentDriver()->setConnectedState(true);
    QSignalSpy sent(can, &CanObj::sendDataToCan);
    can->setId(30, false);
    QVERIFY(!sent.isEmpty());
    QCOMPARE(sent.at(0).at(0).toByteArray(), canbus::buildFrame(canbus::FrameFamily::Start2E, 0x81, {0x00}));
    QCOMPARE(can->currentDriver()->canbusId(), 30);
    // An unconnected driver of the common form has nothing to say on its way out.
    can->setId(31, false);
    sent.clear();
    can->setId(32, false);
    for (const auto& args : sent)
        QVERIFY(args.at(0).toByteArray().isEmpty());
}

void TestCanObj::everyCatalogueIdHasItsDriver()
{
    CanObj* can = CanObj::instance();
    int count = 0;
    const canbus::DriverEntry* entries = canbus::driverEntries(&count);
    QCOMPARE(count, 73);
    QSet<int> registered, catalogued;
    for (int i = 0; i < count; ++i)
        registered.insert(entries[i].id);
    for (const CanBusData& row : can->getCanBusList())
        catalogued.insert(row.id);
    QCOMPARE(registered, catalogued);

    for (const CanBusData& row : can->getCanBusList()) {
        can->setId(row.id, false);
        CanbusInterface* driver = can->currentDriver();
        QVERIFY2(driver, qPrintable(QString::number(row.id)));
        QCOMPARE(driver->canbusId(), row.id);
        QCOMPARE(QString::fromLatin1(driver->metaObject()->className()),
                 QStringLiteral("Canbus%1Obj").arg(row.id));
        QVERIFY(driver->getAirData() && driver->getCardoorData() && driver->getCarbodyData()
                && driver->getRadarData() && driver->getDataInfoPointer());
        const int parent = canbus::findDriver(row.id)->parentId;
        QVERIFY(!parent || driver->inheritedById(parent));
    }
}

void TestCanObj::dataByIdFollowsInheritance()
{
    CanObj* can = CanObj::instance();
    can->setId(28, false);
    QVERIFY(!can->getDataById(27).isValid());
    const QVariant own = can->getDataById(28);
    QVERIFY(own.isValid());
    QCOMPARE(QString::fromLatin1(own.typeName()), QStringLiteral("Data28Info"));
    QVERIFY(can->getDataPointerById(28));
    can->setId(54, false);   // extends 32
    QVERIFY(can->getDataById(32).isValid());
    QVERIFY(can->getDataById(54).isValid());
    QVERIFY(!can->getDataById(31).isValid());
    QSignalSpy changed(can->currentDriver(), &CanbusInterface::dataChanged);
    can->setDataById(can->getDataById(32), 32);
    QCOMPARE(changed.count(), 1);
    can->setDataById(QVariant(5), 54);   // not a record of this driver
    QCOMPARE(changed.count(), 1);
}

void TestCanObj::driverSignalsReachFacade()
{
    CanbusModule facade;
    CanObj* can = CanObj::instance();
    can->setModule(&facade);
    can->setId(37, false);
    QSignalSpy air(&facade, &CanbusModule::airConditionerDataChanged);
    QSignalSpy ill(&facade, &CanbusModule::canbusIllChanged);
    QSignalSpy version(&facade, &CanbusModule::versionDataChanged);
    CanbusInterface* driver = can->currentDriver();
    emit driver->airConditionerDataChanged();
    emit driver->illChanged(true);
    driver->setVersionData(QStringLiteral("V1.2"));
    QVERIFY(air.count() == 1 && ill.count() == 1);
    QCOMPARE(version.at(0).at(0).toString(), QStringLiteral("V1.2"));
    QCOMPARE(can->getVersionData(), QStringLiteral("V1.2"));
    can->setModule(nullptr);
}

void TestCanObj::baseConnectFormSendsEmptyFrameOnce()
{
    CanObj* can = CanObj::instance();
    QSignalSpy sent(can, &CanObj::sendDataToCan);
    can->setId(27, true);   // listens only: the box talks at once
    QCOMPARE(sent.count(), 1);
    QVERIFY(sent.at(0).at(0).toByteArray().isEmpty());
    QTest::qWait(1300);
    QCOMPARE(sent.count(), 1);   // no retry timer
}

void TestCanObj::connectRetriesUntilAnswered()
{
    CanObj* can = CanObj::instance();
    QSignalSpy sent(can, &CanObj::sendDataToCan);
    const QByteArray connectFrame = canbus::buildFrame(canbus::FrameFamily::Start2E, 0x81, {0x01});
    can->setId(42, true);
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toByteArray(), connectFrame);
    can->sendConnectData();   // a second call sends again and keeps the timer as it is
    QCOMPARE(sent.count(), 2);
    QTRY_COMPARE_WITH_TIMEOUT(sent.count(), 3, 3000);
    QCOMPARE(sent.at(2).at(0).toByteArray(), connectFrame);
    can->currentDriver()->setConnectedState(true);   // the box has answered
    QTest::qWait(2500);
    QCOMPARE(sent.count(), 3);
}

void TestCanObj::disconnectOnlyWhenConnected()
{
    CanObj* can = CanObj::instance();
    can->setId(42, false);
    QSignalSpy sent(can, &CanObj::sendDataToCan);
    can->sendDisconnectData();
    QVERIFY(sent.isEmpty());
    can->currentDriver()->setConnectedState(true);
    can->sendDisconnectData();
    QCOMPARE(sent, QList<QVariantList>{{canbus::buildFrame(canbus::FrameFamily::Start2E, 0x81, {0x00})}});
    QVERIFY(!can->currentDriver()->isConnectedState());
    // The always form sends whatever the state.
    can->setId(30, false);
    sent.clear();
    can->sendDisconnectData();
    can->sendDisconnectData();
    QCOMPARE(sent.count(), 2);
}

void TestCanObj::languageChangeRebuildsCatalogue()
{
    CanObj* can = CanObj::instance();
    can->setId(28, false);
    can->getCurrentCanBusData().recvBuffer = QByteArray("\x2e\x20", 2);
    LanguageManager::getInstance()->setLanguage(QStringLiteral("ch_jt"));
    QVERIFY(can->getCurrentCanBusData().recvBuffer.isEmpty());
    QCOMPARE(can->getCanBusList().size(), 73);
    QCOMPARE(can->getCurrentCanBusData().id, 28);
}

QTEST_GUILESS_MAIN(TestCanObj)
#include "tst_canobj.moc"
