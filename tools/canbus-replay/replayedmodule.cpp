#include "replayedmodule.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "canbuscatalogue.h"
#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "commondriver.h"
#include "datasavecontrol.h"
#include "driverfactory.h"
#include "hexbytes.h"
#include "languagemanager.h"
#include "signaltap.h"

namespace replay {

namespace {

ReplayedModule* g_module = nullptr;
QtMessageHandler g_previousHandler = nullptr;
QLoggingCategory::CategoryFilter g_previousFilter = nullptr;

// Whatever QT_LOGGING_RULES says: the module needs the manager's dumps, and nothing
// else of the module's debug output.
void filter(QLoggingCategory* category)
{
    if (g_previousFilter)
        g_previousFilter(category);
    const char* name = category->categoryName();
    if (qstrncmp(name, "canbus", 6) == 0)
        category->setEnabled(QtDebugMsg, qstrcmp(name, "canbus.manager") == 0);
}

// The manager's dump of every buffer it hands to the driver is how the module learns
// what the reassembly passed on; the module's warnings are shown, its other debug
// lines dropped.
void handler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const char* category = context.category ? context.category : "";
    if (qstrncmp(category, "canbus", 6) != 0) {
        if (g_previousHandler)
            g_previousHandler(type, context, message);
        return;
    }
    if (!g_module || type != QtDebugMsg)
        return;
    canbox::CaptureEntry::Direction direction;
    QByteArray bytes;
    QString error;
    if (qstrcmp(category, "canbus.manager") == 0 && canbox::moduleLogBytes(message, &direction, &bytes, &error)
        && direction == canbox::CaptureEntry::In)
        g_module->onReceivedDump(bytes);
}

QString dataDirTemplate()
{
    return QDir::temp().filePath(QStringLiteral("canbus-replay-XXXXXX"));
}

} // namespace

ReplayedModule::ReplayedModule(host::HostOutput* out) : m_out(out), m_dataDir(dataDirTemplate())
{
    if (!m_dataDir.isValid()) {
        m_error = QStringLiteral("cannot make a temporary data folder: %1").arg(m_dataDir.errorString());
        return;
    }
    char name[256] = {};
    if (::openpty(&m_master, &m_slave, name, nullptr, nullptr) != 0) {
        m_error = QStringLiteral("cannot make a pseudo-terminal for the module's port");
        m_master = -1;
        return;
    }
    termios raw{};
    if (::tcgetattr(m_slave, &raw) == 0) {
        ::cfmakeraw(&raw);
        ::tcsetattr(m_slave, TCSANOW, &raw);
    }
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    ::fcntl(m_master, F_SETFD, FD_CLOEXEC);
    // Our copy of the slave stays open: the module's port may close and open again
    // at a new rate, and the master must not see a hang-up in between.
    ::fcntl(m_slave, F_SETFD, FD_CLOEXEC);

    qputenv("CANBUS_DATA_DIR", QFile::encodeName(m_dataDir.path()));
    qputenv("CANBUS_BOX_PORT", name);
    DataSaveControl::reload();
    DataSaveControl::saveUserData(QStringLiteral("CanIndex"), 0);

    g_module = this;
    g_previousHandler = qInstallMessageHandler(handler);
    g_previousFilter = QLoggingCategory::installFilter(filter);

    m_keys.reset(new host::KeyRecorder(
        [this](int key, bool pressed) {
            ++m_summary.events;
            if (m_out)
                m_out->key(key, pressed);
        },
        [this](const QByteArray& device, unsigned long request, unsigned long arg) {
            if (m_out)
                m_out->deviceCall(device, request, arg);
        }));
    InputInjector::install(m_keys.get());
    m_facade.reset(new CanbusModule);
    m_facade->initial();
    m_facade->implementation()->onAllModuleReady();
    tapFacade();
}

ReplayedModule::~ReplayedModule()
{
    m_classifier.reset();
    if (g_module == this) {
        // The link refers to the manager to the end, so it goes first.
        m_facade.reset();
        delete CanObj::instance();
        InputInjector::install(nullptr);
        qInstallMessageHandler(g_previousHandler);
        QLoggingCategory::installFilter(g_previousFilter);
        g_module = nullptr;
    }
    if (m_slave >= 0)
        ::close(m_slave);
    if (m_master >= 0)
        ::close(m_master);
}

void ReplayedModule::tapFacade()
{
    new host::SignalTap(m_facade.get(), {},
                        [this](const QMetaMethod& signal, const QVariantList& args) {
                            ++m_summary.events;
                            if (!m_out || m_records.show(m_facade.get(), signal, *m_out))
                                return;
                            m_out->signal(QStringLiteral("canbus"), QString::fromLatin1(signal.name()),
                                          signal.parameterNames(), args);
                        },
                        this);
}

canbus::FrameFamily ReplayedModule::family() const
{
    const canbus::DriverEntry* entry = canbus::findDriver(m_summary.protocol);
    return entry ? entry->family : canbus::FrameFamily::StartAA55;
}

bool ReplayedModule::select(int id)
{
    if (!isReady() || !canbus::findCatalogueRow(id) || !canbus::findDriver(id))
        return false;
    CanObj* manager = CanObj::instance();
    manager->setId(0, false);
    settle();
    readWrites();   // the last protocol's, not this one's
    m_summary = Summary();
    m_summary.protocol = id;
    m_records.forget();
    m_writes.reset(new canbox::FrameSplitter(family()));
    m_classifier.reset(canbus::createDriver(id, nullptr));
    if (m_classifier)
        m_classifier->initData();
    if (m_classifier)
        m_classifier->setReady(true);
    LanguageManager::getInstance()->setLanguage(QStringLiteral("en"));
    // As a host starts the module: the driver made, the module ready, the box greeted.
    // No power event: a host that has no MCU never sends one, and a driver's power-on
    // may hold back its first records until a timer runs out.
    manager->setId(id, false);
    manager->setReady();
    manager->sendConnectData();
    manager->getCurrentCanBusData().recvBuffer.clear();
    settle();
    takeWrites();
    return true;
}

void ReplayedModule::feed(const QByteArray& bytes)
{
    QByteArray& buffer = CanObj::instance()->getCurrentCanBusData().recvBuffer;
    const qint64 before = buffer.size();
    m_handed = false;
    m_handedOn.clear();
    m_facade->implementation()->onCheckCanbusData(bytes);
    // What came in and was neither handed on nor kept for the next read is lost; a
    // handed-on buffer keeps what its frames didn't use.
    const qint64 kept = m_handed ? m_handedOn.size() : buffer.size();
    m_summary.bytesIn += quint64(bytes.size());
    m_summary.dropped += quint64(std::max<qint64>(0, before + bytes.size() - kept));
    settle();
    takeWrites();
}

void ReplayedModule::onReceivedDump(const QByteArray& buffer)
{
    m_handed = true;
    m_handedOn = buffer;
    const auto* driver = qobject_cast<const CommonDriver*>(CanObj::instance()->currentDriver());
    if (!driver)
        return;
    // The same walk as the driver's, so the same frames; the classifier says, for each,
    // whether the vehicle's parser knows its type. Its keys go nowhere.
    canbus::FrameWalker walk(driver->profile().walk, buffer);
    InputInjector::install(&m_noKeys);
    while (walk.next()) {
        ++m_summary.accepted;
        if (m_classifier && m_classifier->checkProtocolData(buffer.mid(walk.frameStart(), walk.frameLength())) == 0)
            ++m_summary.unknown;
    }
    InputInjector::install(m_keys.get());
}

void ReplayedModule::run(int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, int(ms - clock.elapsed()));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        takeWrites();
        QThread::msleep(std::min<qint64>(5, std::max<qint64>(0, ms - clock.elapsed())));
    }
    settle();
    takeWrites();
}

void ReplayedModule::finish()
{
    settle();
    takeWrites();
    if (!m_writes)
        return;
    for (const canbox::LinkItem& item : m_writes->flush()) {
        ++m_summary.sent;
        if (m_out)
            m_out->event(QStringLiteral("sent"), canbox::spacedHex(item.bytes),
                         {{QStringLiteral("bytes"), canbox::spacedHex(item.bytes)}});
    }
}

void ReplayedModule::settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QByteArray ReplayedModule::readWrites()
{
    QByteArray written;
    char chunk[512];
    while (m_master >= 0) {
        const ssize_t n = ::read(m_master, chunk, sizeof chunk);
        if (n > 0) {
            written.append(chunk, int(n));
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        break;
    }
    return written;
}

void ReplayedModule::takeWrites()
{
    const QByteArray written = readWrites();
    if (written.isEmpty() || !m_writes)
        return;
    for (const canbox::LinkItem& item : m_writes->feed(written)) {
        ++m_summary.sent;
        if (item.kind == canbox::LinkItem::Nack)
            ++m_summary.refused;
        if (m_out)
            m_out->event(QStringLiteral("sent"), canbox::spacedHex(item.bytes),
                         {{QStringLiteral("bytes"), canbox::spacedHex(item.bytes)}});
    }
}

} // namespace replay
