#include "canobj.h"

#include <QDateTime>
#include <QTimerEvent>

#include "canbuslog.h"
#include "canbusmodule.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverfactory.h"
#include "languagemanager.h"
#include "signalwiring.h"

#define TAG "[CanObj]"

CanObj* CanObj::ins = nullptr;

CanObj* CanObj::instance()
{
    if (!ins)
        ins = new CanObj;
    return ins;
}

int CanObj::id()
{
    return instance()->currentId;
}

int CanObj::getCanDataChecksum(const QByteArray& data, int& frameLength, QByteArray& reply)
{
    CanObj* self = instance();
    if (!self->driver)
        return -1;
    return self->driver->checkCanDataChecksum(data, frameLength, reply);
}

void CanObj::autoCalculateChecksum(QByteArray& frame)
{
    if (ins && ins->driver)
        ins->driver->autoCalculateChecksum(frame);
}

CanObj::CanObj()
{
    initCanbusList();
    connect(LanguageManager::getInstance(), &LanguageManager::languageChanged, this,
            &CanObj::initCanbusList);
}

CanObj::~CanObj()
{
    if (ins == this)
        ins = nullptr;
    stopConnectTimer();
    if (driver)
        driver->deleteLater();
}

void CanObj::initCanbusList()
{
    // A rebuild drops every row's partial frame; the box's next frame resynchronises.
    canBusList.clear();
    canBusList.reserve(canbus::kCatalogueSize);
    for (const canbus::CatalogueRow& row : canbus::kCatalogue) {
        canBusList.append(CanBusData(row.id, row.baudRate, CanObj::tr(row.make),
                                     CanObj::tr(row.model), QObject::tr(row.vendor),
                                     row.ackEnabled, row.ackByte, row.nackByte));
    }
}

CanBusData CanObj::getCanBusDataById(int id) const
{
    for (const CanBusData& row : canBusList) {
        if (row.id == id)
            return row;
    }
    return CanBusData();
}

CanBusData& CanObj::getCurrentCanBusData()
{
    for (CanBusData& row : canBusList) {
        if (row.id == currentId)
            return row;
    }
    return canBusList.first();
}

void CanObj::stopConnectTimer()
{
    if (connectTimerId) {
        killTimer(connectTimerId);
        connectTimerId = 0;
    }
}

void CanObj::setId(int newId, bool sendConnect)
{
    bool reverseLine = false;
    if (newId != currentId) {
        stopConnectTimer();
        int oldRate = 0;
        if (driver) {
            QByteArray bytes;
            if (driver->needSendDisconnect(bytes) && !bytes.isEmpty())
                emit sendDataToCan(bytes);
            oldRate = getCurrentCanBusData().baudRate;
            delete driver;
            driver = nullptr;
        }
        CB_DEBUG(lcCanbusManager, TAG) << " 当前选中协议序号 ：" << newId;
        if (newId > 0)
            driver = canbus::createDriver(newId, this);
        if (driver) {
            driver->initData();
            currentId = newId = driver->canbusId();
            reverseLine = driver->hadReverseLine();
            connectDriver();
            // Only a change of rate reopens the port; the first selection always does.
            const int newRate = getCanBusDataById(newId).baudRate;
            if (newRate != oldRate)
                emit setBaudRateSig(newRate);
            if (sendConnect)
                sendConnectData();
        }
        // Also an id without a driver is kept: asking for it again changes nothing.
        currentId = newId;
    }
    DataSaveControl::saveSettingData(QStringLiteral("CanBusReversingLinw"), QVariant(reverseLine),
                                     QString());
}

namespace {

struct Relay { const char* from; const char* to; };

// Driver notifications that the facade passes on under the same or a public name.
constexpr Relay kDriverToModule[] = {
    {"airConditionerVisibleChanged(bool)", "airConditionerVisibleChanged(bool)"},
    {"airConditionerDataChanged()", "airConditionerDataChanged()"},
    {"cardoorDataChanged()", "cardoorDataChanged()"},
    {"carbodyDataChanged()", "carbodyDataChanged()"},
    {"radarDataChanged()", "radarDataChanged()"},
    {"outdoorTemperatureChanged(QString,int)", "outdoorTemperatureChanged(QString,int)"},
    {"trajectoryDataChanged(int,int,bool)", "trajectoryDataChanged(int,int,bool)"},
    {"speedDataChanged(int,QString)", "speedDataChanged(int,QString)"},
    {"warningDataChanged(bool,bool)", "warningDataChanged(bool,bool)"},
    {"versionDataChanged(QString)", "versionDataChanged(QString)"},
    {"illChanged(bool)", "canbusIllChanged(bool)"},
    {"illLevelChanged(float)", "canbusIllLevelChanged(float)"},
    {"dataChanged()", "dataChanged()"},
    {"eqChanged(qint8,qint8)", "eqChanged(qint8,qint8)"},
    {"requestActivity(QString)", "requestActivity(QString)"},
};

// Climate panel commands emitted on the facade, taken by drivers that have the slot.
constexpr const char* kPanelCommands[] = {
    "setAuto()", "SetleftPlus()", "setinnerLoop()", "SetleftLess()", "SetrightPlus()",
    "SetrightLess()", "SetDUAL()", "SetAc()", "SetfrontDefrostLeftL()",
    "SetrearDefrostLeftL()", "Setsmall()", "SetGale()", "SetSwitch()",
    "LeftHeatingButton(int)", "RightHeatingButton(int)", "BlowOn(bool)", "MediumBlow(bool)",
    "BlowDown(bool)", "setTcanBussend(int,int,int,int,int)",
};

} // namespace

void CanObj::connectDriver()
{
    connect(driver, &CanbusInterface::sendDataToCan, this, &CanObj::sendDataToCan);
    canbus::connectIfPresent(LanguageManager::getInstance(), "languageChanged(QString)", driver,
                             "languageChanged(QString)");
    if (!module)
        return;
    for (const Relay& r : kDriverToModule)
        canbus::connectIfPresent(driver, r.from, module, r.to, true);
    for (const char* command : kPanelCommands)
        canbus::connectIfPresent(module, command, driver, command);
    // The facade has no such signal; the slot stays reachable by a direct call.
    canbus::connectIfPresent(module, "TrajectoryStateChanged(bool)", this,
                             "TrajectoryStateChanged(bool)");
}

int CanObj::setData(const QByteArray& data)
{
    if (currentId < 1 || !driver)
        return data.size();
    CB_DEBUG(lcCanbusManager, TAG) << canbus::hexDump(data);
    return driver->setCanbusData(data);
}

void CanObj::getAckData(QByteArray& out) const
{
    if (driver)
        driver->createAckData(out, 0);
}

void CanObj::getNackData(QByteArray& out) const
{
    if (driver)
        driver->createNackData(out, 0);
}

void CanObj::setRightDriver(const bool& value) { if (driver) driver->setRightDriver(value); }
void CanObj::setShowReverseLine(bool value) { if (driver) driver->setShowReverseLine(value); }
void CanObj::TrajectoryStateChanged(bool value) { setShowReverseLine(value); }
void CanObj::setInReverse(bool value) { if (driver) driver->setInReverse(value); }
bool CanObj::isRightDriver() const { return driver && driver->isRightDriver(); }
bool CanObj::isShowReverseLine() const { return driver && driver->isShowReverseLine(); }
bool CanObj::isInReverse() const { return driver && driver->isInReverse(); }
bool CanObj::disableRadar() const { return !driver || driver->isDisableRadar(); }
bool CanObj::hadExInfo() const { return driver && driver->hadExInfo(); }
bool CanObj::hadReverseLine() const { return driver && driver->hadReverseLine(); }
bool CanObj::needCanbusDataBeforeReady() const { return driver && driver->needCanbusDataBeforeReady(); }
AirData* CanObj::getAirData() const { return driver ? driver->getAirData() : nullptr; }
CardoorData* CanObj::getCardoorData() const { return driver ? driver->getCardoorData() : nullptr; }
CarbodyData* CanObj::getCarbodyData() const { return driver ? driver->getCarbodyData() : nullptr; }
RadarData* CanObj::getRadarData() const { return driver ? driver->getRadarData() : nullptr; }
QString CanObj::getVersionData() const { return driver ? driver->getVersionData() : QString(""); }
void CanObj::setCallState(bool active) { if (driver) driver->setCallState(active); }

namespace {
// The source numbers fit in five bits, and so does every value srctype can hold: a
// number outside that names no source, and cast to srctype it would be a value the
// enumeration cannot represent.
constexpr int kSourceTypeLimit = 32;
static_assert(CanbusInterface::SRC_PHONE < kSourceTypeLimit, "srctype outgrew five bits");
} // namespace

void CanObj::sendSrcStateToCan(int type, const QList<QVariant>& args)
{
    if (driver && type >= 0 && type < kSourceTypeLimit)
        driver->setSrcState(static_cast<CanbusInterface::srctype>(type), args);
}

void CanObj::sendEQStateToCan(int type, int value) { if (driver) driver->setEQState(type, value); }

void CanObj::sendStateToCan(const QString& type, const QString& value)
{
    if (driver)
        driver->setCanbusState(type, value);
}

void CanObj::onDataChanged(int year, int month, int day)
{
    if (driver)
        driver->setCurrentData(year, month, day);
}

void CanObj::onTimeChanged(int hour, int minute, int second)
{
    if (driver)
        driver->setCurrentTime(hour, minute, second);
}

void CanObj::sendCurrentTimeToCan()
{
    const QTime now = DateTimeCtrl::currentDateTime().time();
    onTimeChanged(now.hour(), now.minute(), now.second());
}

void CanObj::setReady()
{
    if (driver)
        driver->setReady(true);
    ready = true;
}

void CanObj::setPowerOnState()
{
    if (driver)
        driver->setPowerOnState();
    powerOn = true;
}

void CanObj::setPowerOffState()
{
    if (driver)
        driver->setPowerOffState();
    powerOn = false;
}

void CanObj::sendConnectData()
{
    if (!driver)
        return;
    int intervalMs = 0;
    QByteArray bytes;
    if (driver->needSendConnect(intervalMs, bytes)) {
        emit sendDataToCan(bytes);
        if (intervalMs >= 1 && connectTimerId == 0)
            connectTimerId = startTimer(intervalMs, Qt::CoarseTimer);
    } else {
        // The box has answered: the handshake is over.
        stopConnectTimer();
    }
}

void CanObj::sendDisconnectData()
{
    if (!driver)
        return;
    QByteArray bytes;
    if (driver->needSendDisconnect(bytes)) {
        emit sendDataToCan(bytes);
        driver->setConnectedState(false);
    }
}

void CanObj::timerEvent(QTimerEvent* event)
{
    if (connectTimerId != 0 && event->timerId() == connectTimerId)
        sendConnectData();
}

bool CanObj::servesId(int id) const
{
    return driver && (driver->canbusId() == id || driver->inheritedById(id));
}

QVariant CanObj::getDataById(int id) const
{
    return servesId(id) ? driver->getDataInfo() : QVariant();
}

void CanObj::setDataById(const QVariant& value, int id)
{
    if (servesId(id))
        driver->setDataInfo(value);
}

void* CanObj::getDataPointerById(int id)
{
    return servesId(id) ? driver->getDataInfoPointer() : nullptr;
}
