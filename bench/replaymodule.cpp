#include "replaymodule.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMetaMethod>

#include "canbus120/canbus120.h"
#include "canbus27/canbus27.h"
#include "canbus28/canbus28.h"
#include "canbus29/canbus29.h"
#include "canbus33/canbus33.h"
#include "canbus66/canbus66.h"
#include "canbus67/canbus67.h"
#include "canbus72/canbus72.h"
#include "canbus83/canbus83.h"
#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "languagemanager.h"
#include "platform.h"

namespace bench {

namespace {

std::uint64_t g_parsed = 0;

// The driver as it is, with a count of the frames its parser gets: one increment on
// a path of hundreds of instructions.
template <typename Driver>
class Watched : public Driver
{
public:
    using Driver::Driver;
    int checkProtocolData(const QByteArray& frame) override
    {
        ++g_parsed;
        return Driver::checkProtocolData(frame);
    }
};

template <typename Driver>
CanbusInterface* makeWatched(QObject* parent)
{
    return new Watched<Driver>(parent);
}

struct WatchedDriver
{
    int id;
    CanbusInterface* (*create)(QObject* parent);
};

// The drivers the benchmarks replay: those with box scenarios, and one of each frame
// family besides.
const WatchedDriver kWatched[] = {
    {27, &makeWatched<Canbus27Obj>},  {28, &makeWatched<Canbus28Obj>},
    {29, &makeWatched<Canbus29Obj>},  {33, &makeWatched<Canbus33Obj>},
    {66, &makeWatched<Canbus66Obj>},  {67, &makeWatched<Canbus67Obj>},
    {72, &makeWatched<Canbus72Obj>},  {83, &makeWatched<Canbus83Obj>},
    {120, &makeWatched<Canbus120Obj>},
};

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
    for (const WatchedDriver& w : kWatched)
        m_overrides.emplace_back(new canbus::DriverOverride(w.id, w.create));
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

bool ReplayModule::watchable(int id)
{
    for (const WatchedDriver& w : kWatched) {
        if (w.id == id)
            return true;
    }
    return false;
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
    return {g_parsed, m_counter.signalCount, m_counter.writeCount, m_keys.events()};
}

void ReplayModule::setDebugLogging(bool on)
{
    QLoggingCategory::setFilterRules(on ? QStringLiteral("canbus.*.debug=true")
                                        : QStringLiteral("canbus.*.debug=false"));
}

} // namespace bench
