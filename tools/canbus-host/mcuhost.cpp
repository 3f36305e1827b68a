#include "mcuhost.h"

#include <QMetaMethod>
#include <QTimer>

#include "exportedclass.h"
#include "hostoutput.h"
#include "signaltap.h"

namespace host {

namespace {

// An MCU that stops asking leaves an update standing still without a word; the host
// says so once it has heard nothing for this long.
constexpr int kStallMs = 10000;

} // namespace

McuHost::McuHost(HostOutput& output, QObject* parent)
    : QObject(parent), m_out(output), m_stallTimer(new QTimer(this))
{
    m_stallTimer->setSingleShot(true);
    m_stallTimer->setInterval(kStallMs);
    connect(m_stallTimer, &QTimer::timeout, this, &McuHost::onStalled);
}

McuHost::~McuHost()
{
    // The link's code lives in the plug-in, which stays loaded: it goes first.
    delete m_link;
}

bool McuHost::start(const QString& pluginPath, QString* error)
{
    m_library.setFileName(pluginPath);
    if (!m_library.load()) {
        *error = QStringLiteral("cannot load the plug-in %1: %2").arg(pluginPath, m_library.errorString());
        return false;
    }
    const QMetaObject* linkClass = exportedMetaObject(m_library, "SerialPortObj");
    if (!linkClass) {
        *error = QStringLiteral("the plug-in %1 exports no MCU link (SerialPortObj)").arg(pluginPath);
        return false;
    }
    m_link = linkClass->newInstance(Q_ARG(QObject*, nullptr));
    if (!m_link) {
        *error = QStringLiteral("the plug-in's MCU link cannot be created");
        return false;
    }
    new SignalTap(m_link, {}, [this](const QMetaMethod& s, const QVariantList& args) { onLinkSignal(s, args); }, this);
    // On the head unit this waits for the first frame on screen; here there is none.
    QMetaObject::invokeMethod(m_link, "startOnFirstFrameReady", Qt::DirectConnection);
    return true;
}

void McuHost::startUpdate(const QString& firmwarePath)
{
    m_out.info(QStringLiteral("firmware update from %1").arg(firmwarePath));
    m_stallTimer->start();
    QMetaObject::invokeMethod(m_link, "startMcuUpdate", Qt::DirectConnection, Q_ARG(QString, firmwarePath));
}

void McuHost::onLinkSignal(const QMetaMethod& signal, const QVariantList& args)
{
    const QByteArray name = signal.name();
    if (name == "progressChanged") {
        m_stallTimer->start();
        m_out.progress(args.value(0).toInt());
        return;
    }
    if (name == "updateFinished") {
        m_stallTimer->stop();
        const int result = args.value(0).toInt();
        m_out.endProgress();
        if (result == 0)
            m_out.info(QStringLiteral("firmware update finished: the MCU has taken it"));
        else
            m_out.problem(QStringLiteral("firmware update failed (result %1)").arg(result));
        emit updateFinished(result);
        return;
    }
    if (name == "updateMessage" && m_stallTimer->isActive())
        m_stallTimer->start();
    m_out.signal(QStringLiteral("mcu"), QString::fromLatin1(name), signal.parameterNames(), args);
}

void McuHost::onStalled()
{
    m_out.problem(QStringLiteral("the MCU has asked for nothing for %1 s; the update stands still").arg(kStallMs / 1000));
}

} // namespace host
