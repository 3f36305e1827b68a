#include "replaymodule.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMetaMethod>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "commondriver.h"
#include "datasavecontrol.h"
#include "languagemanager.h"
#include "platform.h"

namespace bench {

namespace {

// Settings are saved at every selection; in memory that costs no disk flush.
QString dataDirTemplate()
{
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    const QString dir = shm.isDir() && shm.isWritable() ? shm.filePath() : QDir::tempPath();
    return dir + QStringLiteral("/canbus-bench-XXXXXX");
}

} // namespace

ReplayModule::ReplayModule() : m_dataDir(dataDirTemplate())
{
    resetPlatformForTests();
    qputenv("CANBUS_DATA_DIR", m_dataDir.path().toLocal8Bit());
    qputenv("CANBUS_BOX_PORT", "/nonexistent/canbox");
    DataSaveControl::reload();
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), 0);
    InputInjector::install(&m_keys);
    m_facade.reset(new CanbusModule);
    m_facade->initial();
    m_facade->implementation()->onAllModuleReady();
    // The port can't open; trying again at every selection would only log failures.
    QObject::disconnect(CanObj::instance(), &CanObj::setBaudRateSig, m_facade->implementation(), nullptr);
}

ReplayModule::~ReplayModule()
{
    // The link refers to the manager to the end, so it goes first.
    m_facade.reset();
    delete CanObj::instance();
    InputInjector::install(nullptr);
}

void ReplayModule::select(int id)
{
    CanObj* manager = CanObj::instance();
    manager->setId(0, false);
    LanguageManager::getInstance()->setLanguage(QStringLiteral("en"));
    manager->setId(id, false);
    manager->setPowerOnState();
    manager->setReady();
    manager->sendConnectData();
    manager->getCurrentCanBusData().recvBuffer.clear();
    watchDriver();
    settle();
}

void ReplayModule::watchDriver()
{
    QObject* driver = CanObj::instance()->currentDriver();
    if (!driver)
        return;
    const QMetaObject* counter = m_counter.metaObject();
    const QMetaMethod onSignal = counter->method(counter->indexOfSlot("onSignal()"));
    const QMetaMethod onWrite = counter->method(counter->indexOfSlot("onWrite()"));
    const QMetaObject* meta = driver->metaObject();
    // QObject's own signals (destroyed, objectNameChanged) say nothing about frames.
    for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod m = meta->method(i);
        if (m.methodType() != QMetaMethod::Signal)
            continue;
        QObject::connect(driver, m, &m_counter, m.name() == "sendDataToCan" ? onWrite : onSignal);
    }
}

void ReplayModule::feed(const QByteArray& bytes)
{
    m_facade->implementation()->onCheckCanbusData(bytes);
}

void ReplayModule::settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

ReplayCounts ReplayModule::counts() const
{
    const auto* driver = qobject_cast<const CommonDriver*>(CanObj::instance()->currentDriver());
    return {driver ? driver->framesParsed() : 0, m_counter.signalCount, m_counter.writeCount, m_keys.events()};
}

void ReplayModule::setDebugLogging(bool on)
{
    QLoggingCategory::setFilterRules(on ? QStringLiteral("canbus.*.debug=true")
                                        : QStringLiteral("canbus.*.debug=false"));
}

} // namespace bench
