#include "canbusmoduleimpl.h"

#include <QMutexLocker>
#include <QSerialPort>
#include <QTimerEvent>

#include "canbuslog.h"
#include "canbusmodule.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "modulemanager.h"
#include "portrecovery.h"
#include "signalwiring.h"

#define TAG "[CanbusModuleImpl]"

namespace {
constexpr int kProductionTestPeriodMs = 1000;

QObject* peerObject(const char* name)
{
    const auto peer = tqappframework::ModuleManager::self()->getModule(QLatin1String(name));
    return peer ? peer->getModuleObj() : nullptr;
}
} // namespace

CanbusModuleImpl::CanbusModuleImpl(CanbusModule* module)
    : QObject(nullptr), module(module), canObj(CanObj::instance())
{
    initSerialPort();
    canObj->setModule(module);
    connect(canObj, &CanObj::setBaudRateSig, this, &CanbusModuleImpl::onSetBaudRate);
    connect(canObj, &CanObj::sendDataToCan, this, &CanbusModuleImpl::sendCanbusData);

    // Any of the three telephone sources may report a call; the last one wins.
    using canbus::connectIfPresent;
    connectIfPresent(peerObject("hicar"), "hcCallStateChanged(bool)", this, "onCallStateChanged(bool)");
    connectIfPresent(peerObject("carplay"), "cpCallStateChanged(bool)", this, "onCallStateChanged(bool)");
    connectIfPresent(peerObject("bluetooth"), "callStateChanged(bool)", this, "onCallStateChanged(bool)");

    connect(tqappframework::ModuleManager::self().data(),
            &tqappframework::ModuleManager::allModuleStartupReady, this,
            &CanbusModuleImpl::onAllModuleReady);
    onModuleReady(QString());

    DateTimeCtrl* clock = DateTimeCtrl::getInstance();
    connect(clock, &DateTimeCtrl::dateChanged, canObj, &CanObj::onDataChanged);
    connect(clock, &DateTimeCtrl::timeChanged, canObj, &CanObj::onTimeChanged);

    // With a stored protocol this creates the driver and opens the port; the first
    // connect frame waits for onSystemFirstFrameReady.
    const int index = DataSaveControl::readUserData(QStringLiteral("CanIndex"), 0).toInt();
    canObj->setId(index, false);

    onSystemFirstFrameReady();
}

CanbusModuleImpl::~CanbusModuleImpl()
{
    // The manager outlives the facade; it must not relay to a facade that is gone.
    if (canObj && canObj->facade() == module)
        canObj->setModule(nullptr);
    delete serialPort;
}

QString CanbusModuleImpl::boxPortName()
{
    const QByteArray fromEnv = qgetenv("CANBUS_BOX_PORT");
    return fromEnv.isEmpty() ? QStringLiteral("/dev/ttyS4") : QString::fromLocal8Bit(fromEnv);
}

void CanbusModuleImpl::initSerialPort()
{
    if (serialPort)
        return;
    serialPort = new QSerialPort;
    connect(serialPort, &QSerialPort::readyRead, this, &CanbusModuleImpl::onReadyRead);
    // The driver, its records and the handshake state survive a lost device; a box
    // that lost power with its cable may have to be greeted again.
    recovery = new PortRecovery(
        serialPort, lcCanbusLink, QStringLiteral(TAG), [this] { return openPort(portRate); },
        [this] { canObj->sendConnectData(); });
}

void CanbusModuleImpl::onSetBaudRate(int rate)
{
    if (serialPort && serialPort->isOpen()) {
        if (serialPort->baudRate(QSerialPort::AllDirections) == rate)
            return;
        serialPort->close();
    }
    if (!serialPort)
        initSerialPort();
    // A new rate replaces any recovery under way at the old one.
    recovery->cancel();
    portRate = rate;
    if (openPort(rate)) {
        CB_DEBUG(lcCanbusLink, TAG) << "onSetBaudRate" << "reset serialport successed";
    } else {
        CB_ERROR(lcCanbusLink, TAG) << "onSetBaudRate" << "reset serialport fail. "
                                    << serialPort->errorString();
    }
}

bool CanbusModuleImpl::openPort(int rate)
{
    serialPort->setPortName(boxPortName());
    serialPort->setBaudRate(rate, QSerialPort::AllDirections);
    serialPort->setDataBits(QSerialPort::Data8);
    serialPort->setStopBits(QSerialPort::OneStop);
    serialPort->setParity(QSerialPort::NoParity);
    return serialPort->open(QIODevice::ReadWrite);
}

void CanbusModuleImpl::onReadyRead()
{
    while (serialPort && serialPort->bytesAvailable() > 0)
        onCheckCanbusData(serialPort->readAll());
}

void CanbusModuleImpl::sendCanbusData(QByteArray data)
{
    if (!serialPort || !serialPort->isOpen())
        return;
    serialPort->write(data.constData(), data.size());
    serialPort->flush();
    CB_DEBUG(lcCanbusLink, TAG) << canbus::hexDump(data);
}

// Decides what a frame is. The order of the steps matters: the check looks only at
// the front of the buffer, and a fresh chunk that starts a frame wins over older bytes.
void CanbusModuleImpl::onCheckCanbusData(QByteArray data)
{
    if (CanObj::id() < 1)
        return;   // no protocol: input is dropped, not buffered
    if (!allModuleReady && !CanObj::instance()->needCanbusDataBeforeReady())
        return;   // too early for this driver; the bytes are lost, not kept
    if (productionTestMode)
        checkProductionTestData(data);

    QMutexLocker lock(&mutex);
    int frameLength = 0;
    QByteArray reply;
    QByteArray& buf = canObj->getCurrentCanBusData().recvBuffer;
    buf.append(data);

    const int r = CanObj::getCanDataChecksum(buf, frameLength, reply);
    if (r != 0) {
        reply.resize(0);   // the nack of the first try goes nowhere
        const int r2 = CanObj::getCanDataChecksum(data, frameLength, reply);
        if (r == 1) {
            if (r2 != 0)
                return;   // keep waiting for the rest of the buffered frame
            buf = data;
        } else if (r2 == 0) {
            buf = data;
        } else if (r2 == 1) {
            buf = data;   // the chunk begins a new frame
            return;
        } else if (r2 < 0) {
            if (reply.size() > 0)
                sendCanbusData(reply);
            buf.clear();
            return;
        } else {
            return;
        }
    }

    // The acknowledgement goes out before the frame is acted on.
    if (reply.size() > 0)
        sendCanbusData(reply);
    const int used = CanObj::instance()->setData(buf);
    if (used > 0) {
        buf.remove(0, used);   // the rest starts a further frame, checked with the next bytes
        return;
    }
    buf.clear();
}

void CanbusModuleImpl::checkProductionTestData(const QByteArray& data)
{
    // The buffer is compared with its own head, not with the pattern: surplus bytes
    // are dropped from the front until n remain, which then count as one good echo.
    // The factory's fixture judges the content; this only counts arrivals.
    const int n = testPattern.size();
    testRxBuffer.append(data);
    if (n <= 0) {
        testRxBuffer.clear();
        return;
    }
    while (testRxBuffer.size() >= n) {
        if (testRxBuffer.left(n) == testRxBuffer) {
            testRxBuffer.remove(0, n);
            if (module)
                emit module->productionTestDataReady();
        } else {
            testRxBuffer.remove(0, 1);
        }
    }
}

void CanbusModuleImpl::entryProductionTestMode(bool on, int id)
{
    if (on) {
        productionTestMode = true;
        if (CanObj::id() < 1)
            canObj->setId(id, true);   // without a protocol the port is closed
        if (testTimerId == 0)
            testTimerId = startTimer(kProductionTestPeriodMs, Qt::CoarseTimer);
        testRxBuffer.clear();
        testPattern = QByteArrayLiteral("0123");
        return;
    }
    productionTestMode = false;
    canObj->setId(id, true);
    if (testTimerId != 0) {
        killTimer(testTimerId);
        testTimerId = 0;
    }
    testPattern.clear();
    testRxBuffer.clear();
}

void CanbusModuleImpl::timerEvent(QTimerEvent* event)
{
    if (testTimerId != 0 && event->timerId() == testTimerId) {
        sendCanbusData(testPattern);
        event->accept();
        return;
    }
    QObject::timerEvent(event);
}

void CanbusModuleImpl::setReverse(bool on)
{
    if (canObj)
        canObj->setInReverse(on);
}

void CanbusModuleImpl::setShowReverseLine(bool show)
{
    if (canObj)
        canObj->setShowReverseLine(show);
}

AirData* CanbusModuleImpl::getAirData() const
{
    return canObj ? canObj->getAirData() : nullptr;
}

QString CanbusModuleImpl::getVersionData() const
{
    return canObj ? canObj->getVersionData() : QString("");
}

void CanbusModuleImpl::onPowerStateChanged(bool on)
{
    if (on) {
        canObj->setPowerOnState();
        canObj->sendConnectData();
    } else {
        canObj->setPowerOffState();
        canObj->sendDisconnectData();
    }
}

void CanbusModuleImpl::onMcuConnected()
{
    // Kept because the mcu module has the signal; nothing to do on it.
}

void CanbusModuleImpl::onSystemFirstFrameReady()
{
    CB_DEBUG(lcCanbusLink, TAG) << "onSystemFirstFrameReady";
    firstFrameReady = true;
    canObj->setReady();
    canObj->sendConnectData();
}

void CanbusModuleImpl::onModuleReady(QString name)
{
    using canbus::connectIfPresent;
    const bool all = name.isEmpty();
    if (all || name == QLatin1String("mcu")) {
        QObject* mcu = peerObject("mcu");
        connectIfPresent(mcu, "mcuConnected()", this, "onMcuConnected()");
        connectIfPresent(mcu, "powerStateChanged(bool)", this, "onPowerStateChanged(bool)");
        connectIfPresent(mcu, "canbusDataReady(QByteArray)", this, "onCheckCanbusData(QByteArray)");
    }
    for (const char* source : {"radio", "mediaplay", "bluetooth"}) {
        if (all || name == QLatin1String(source)) {
            connectIfPresent(peerObject(source), "sendSrcStateToCan(int,QVariantList)", this,
                             "sendSrcStateToCan(int,QVariantList)");
        }
    }
}

void CanbusModuleImpl::onAllModuleReady()
{
    CB_DEBUG(lcCanbusLink, TAG) << "onAllModuleReady";
    allModuleReady = true;
    canObj->setReady();
}

void CanbusModuleImpl::onCallStateChanged(bool active)
{
    CB_DEBUG(lcCanbusLink, TAG) << "onCallStateChanged" << active << active;
    canObj->setCallState(active);
}

void CanbusModuleImpl::sendSrcStateToCan(int type, QVariantList args)
{
    canObj->sendSrcStateToCan(type, args);
}

void CanbusModuleImpl::sendEQStateToCan(int type, int value)
{
    canObj->sendEQStateToCan(type, value);
}

void CanbusModuleImpl::sendCanbusState(QString type, QString value)
{
    canObj->sendStateToCan(type, value);
}
