#include "host.h"

#include <QMetaMethod>
#include <QSocketNotifier>

#include <unistd.h>

#include "activitymanager.h"
#include "airdata.h"
#include "canbuscontrol.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "infomodule.h"
#include "keyrecorder.h"
#include "languagemanager.h"
#include "module.h"
#include "modulemanager.h"
#include "muteobj.h"
#include "screenlockctrl.h"
#include "signaltap.h"
#include "tipdialog.h"
#include "tqplatformcontrol.h"

namespace host {

namespace {

using tqappframework::ModuleManager;

// Platform calls worth showing: the signal that each stand-in emits for a call.
struct PlatformSource
{
    const char* name;
    QObject* (*object)();
    const char* signalNames;   // comma-separated
};
const PlatformSource kPlatformSources[] = {
    {"CanbusControl", [] { return static_cast<QObject*>(CanbusControl::getInstance()); }, "otherPropertyChanged"},
    {"TipDialog", [] { return static_cast<QObject*>(TipDialog::getInstance()); }, "messageShown"},
    {"DataSaveControl", [] { return static_cast<QObject*>(DataSaveControl::notifier()); }, "dataSaved"},
    {"ScreenLockCtrl", [] { return static_cast<QObject*>(ScreenLockCtrl::getInstance()); }, "nightModeSet"},
    {"MuteObj", [] { return static_cast<QObject*>(MuteObj::getInstance()); }, "muteRequested,unMuteRequested"},
    {"ActivityManager", [] { return static_cast<QObject*>(tqappframework::ActivityManager::getInstance()); },
     "activityStarted,activityBroughtToFront"},
    {"DateTimeCtrl", [] { return static_cast<QObject*>(DateTimeCtrl::getInstance()); }, "dateTimeSet"},
    {"TQPlatformControl", [] { return static_cast<QObject*>(tqplfctrl::TQPlatformControl::peekInstance()); },
     "gpioWritten"},
    {"LanguageManager", [] { return static_cast<QObject*>(LanguageManager::getInstance()); }, "languageChanged"},
};

void registerPeer(const char* name, QObject* object)
{
    const QString peerName = QLatin1String(name);
    ModuleManager::self()->registerModule(
        peerName, QSharedPointer<tqappframework::Module>(new tqappframework::PeerModule(peerName, object)));
}

} // namespace

Host::Host(const Settings& settings, HostEvents& output)
    : m_settings(settings), m_out(output)
{
}

Host::~Host()
{
    if (m_started)
        m_module->final();
    ModuleManager::self()->clear();
    InputInjector::install(nullptr);
}

bool Host::load(QString* error)
{
    if (m_module)
        return true;
    // No device node of this machine is touched: keys and touches come here instead.
    m_keys.reset(new KeyRecorder([this](int key, bool pressed) { m_out.key(key, pressed); },
                                 [this](const QByteArray& device, unsigned long request, unsigned long arg) {
                                     m_out.deviceCall(device, request, arg);
                                 }));
    InputInjector::install(m_keys.get());
    registerPeers();
    tapPlatform();

    m_loader.setFileName(m_settings.pluginPath);
    QObject* instance = m_loader.instance();
    if (!instance) {
        *error = QStringLiteral("cannot load the plug-in %1: %2").arg(m_settings.pluginPath, m_loader.errorString());
        return false;
    }
    m_module = qobject_cast<tqappframework::Module*>(instance);
    if (!m_module) {
        *error = QStringLiteral("%1 is a Qt plug-in but not a head-unit module (interface %2)")
                     .arg(m_settings.pluginPath, QLatin1String(TQModule_iid));
        return false;
    }
    const auto property = m_module->getProperty();
    m_out.info(QStringLiteral("plug-in %1: module \"%2\"").arg(m_settings.pluginPath, property ? property->name() : QString()));
    return true;
}

Host::StartResult Host::start(QString* error)
{
    if (!load(error))
        return Failed;
    // The module reads its protocol as it starts.
    const QVariant storedIndex = DataSaveControl::readUserData(QStringLiteral("CanIndex"), 0);
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), m_settings.protocol);

    m_module->initial();
    m_started = true;   // final() is owed from here on
    // The facade exists from initial() on; taps go on before startup() so that the
    // start sequence shows too.
    m_facade = m_module->getModuleObj();
    if (!m_facade) {
        *error = QStringLiteral("the module has no module object after initial()");
        return Failed;
    }
    tapModule(m_facade);
    const int started = m_module->startup();
    if (started != 0) {
        *error = QStringLiteral("the module's startup() returned %1").arg(started);
        return Failed;
    }
    // Every driver has a climate record; without one the protocol selected nothing.
    AirData* air = nullptr;
    QMetaObject::invokeMethod(m_facade, "getAirData", Qt::DirectConnection, Q_RETURN_ARG(AirData*, air));
    if (!air) {
        // A kept data folder keeps the protocol it had.
        DataSaveControl::saveUserData(QStringLiteral("CanIndex"), storedIndex);
        *error = QStringLiteral("there is no vehicle protocol %1 in the catalogue").arg(m_settings.protocol);
        return NoSuchProtocol;
    }

    // The head unit's module manager says so once every module has started; until
    // then the module ignores the box.
    ModuleManager::self()->setAllModuleStartupReady();
    return Started;
}

void Host::registerPeers()
{
    registerPeer("mcu", &m_mcu);
    registerPeer("bluetooth", &m_phone);
    registerPeer("radio", &m_radio);
    registerPeer("mediaplay", &m_media);
    m_info = new InfoModule;
    ModuleManager::self()->registerModule(QStringLiteral("info"), QSharedPointer<tqappframework::Module>(m_info));
}

void Host::tapPlatform()
{
    for (const PlatformSource& p : kPlatformSources) {
        const QString source = QLatin1String(p.name);
        new SignalTap(p.object(), QByteArray(p.signalNames).split(','),
                      [this, source](const QMetaMethod& s, const QVariantList& args) {
                          m_out.signal(source, QString::fromLatin1(s.name()), s.parameterNames(), args);
                      },
                      this);
    }
    new SignalTap(m_info, {"sysStateChanged"},
                  [this](const QMetaMethod& s, const QVariantList& args) {
                      m_out.signal(QStringLiteral("info"), QString::fromLatin1(s.name()), s.parameterNames(), args);
                  },
                  this);
}

void Host::tapModule(QObject* facade)
{
    new SignalTap(facade, {}, [this](const QMetaMethod& s, const QVariantList& args) { onModuleSignal(s, args); }, this);
}

void Host::onModuleSignal(const QMetaMethod& signal, const QVariantList& args)
{
    if (m_records.show(m_facade, signal, m_out))
        return;
    m_out.signal(QStringLiteral("canbus"), QString::fromLatin1(signal.name()), signal.parameterNames(), args);
}

void Host::readCommands()
{
    m_stdin = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(m_stdin, &QSocketNotifier::activated, this, &Host::readStdin);
}

void Host::readStdin()
{
    char chunk[1024];
    const ssize_t n = ::read(STDIN_FILENO, chunk, sizeof chunk);
    if (n <= 0) {
        // End of input: the host goes on showing the module until it is stopped.
        m_stdin->setEnabled(false);
        if (!m_pendingInput.isEmpty())
            runCommand(QString::fromLocal8Bit(m_pendingInput));
        m_pendingInput.clear();
        return;
    }
    m_pendingInput.append(chunk, int(n));
    int end;
    while ((end = m_pendingInput.indexOf('\n')) >= 0) {
        const QByteArray line = m_pendingInput.left(end);
        m_pendingInput.remove(0, end + 1);
        runCommand(QString::fromLocal8Bit(line));
    }
}

} // namespace host
