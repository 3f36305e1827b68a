#include "canbusinterface.h"

#include <QTimer>
#include <algorithm>
#include <iterator>

#include "autoemitdataobject.h"
#include "datasavecontrol.h"
#include "infomodule.h"
#include "inputinjector.h"
#include "modulemanager.h"

namespace {

// Head-unit key code -> number of the kernel's virtual keyboard. Sorted by code.
struct KkmapKey { int code; int number; };
constexpr KkmapKey kKkmapKeys[] = {
    {0x1100023, 149}, {0x1100024, 167}, {0x1100025, 166}, {0x1100026, 246},
    {0x1100027, 248}, {0x1100028, 150}, {0x1100029, 305}, {0x110002A, 250},
    {0x110002B, 247}, {0x110002C, 314}, {0x110002D, 245}, {0x110002E, 233},
    {0x110002F, 232}, {0x1100030, 187}, {0x1100031, 188}, {0x1100032, 189},
    {0x1100033, 190}, {0x1100034, 191}, {0x1100035, 192}, {0x1100036, 193},
    {0x1100037, 194}, {0x1100038, 195}, {0x1100039, 196}, {0x110003C, 359},
    {0x110003D, 155}, {0x110003E, 156}, {0x110003F, 153}, {0x1100040, 154},
    {0x1100041, 157}, {0x1100045, 339}, {0x1100048, 352}, {0x110004D, 348},
    {0x110004E, 349},
    {0x120000B, 277}, {0x1200026, 314}, {0x1200027, 172}, {0x1200028, 316},
    {0x1200029, 226}, {0x120002B, 179}, {0x120002E, 324}, {0x120002F, 294},
    {0x1200030, 148}, {0x1200061, 325}, {0x1200062, 326}, {0x1200063, 311},
    {0x1200064, 327}, {0x1200065, 241}, {0x1200066, 240}, {0x1200067, 242},
    {0x1200080, 198}, {0x1200081, 199},
    {0x130000C, 272}, {0x130000E, 178}, {0x130000F, 356}, {0x1300010, 357},
    {0x1300011, 358}, {0x1300055, 344}, {0x1300058, 347}, {0x1300059, 351},
    {0x1300060, 360},
};

constexpr bool sortedByCode()
{
    for (std::size_t i = 1; i < std::size(kKkmapKeys); ++i) {
        if (kKkmapKeys[i - 1].code >= kKkmapKeys[i].code)
            return false;
    }
    return true;
}
static_assert(sortedByCode(), "the key table is searched by bisection");

// The virtual keyboard's ioctl numbers start above the kernel's own key codes.
constexpr int kKeyIoctlBase = 768;
constexpr int kLongPressMs = 1000;

} // namespace

CanbusInterface::CanbusInterface(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<CardoorData>("CardoorData");
    qRegisterMetaType<RadarData>("RadarData");
    qRegisterMetaType<DataIdInfo>("DataIdInfo");
}

CanbusInterface::~CanbusInterface()
{
    // Only the base form can run here; the derived driver is already gone. The frame
    // is empty: the real disconnect frame was sent by CanObj before the delete.
    QByteArray none;
    CanbusInterface::needSendDisconnect(none);
    emit sendDataToCan(none);
    delete airData;
    delete cardoorData;
    delete carbodyData;
    delete radarData;
    delete dataInfo;
    airData = nullptr;
    cardoorData = nullptr;
    carbodyData = nullptr;
    radarData = nullptr;
    dataInfo = nullptr;
    if (longPressTimer)
        longPressTimer->deleteLater();
}

int CanbusInterface::canbusId() const { return id; }
bool CanbusInterface::inheritedById(int) const { return false; }

void CanbusInterface::initData()
{
    clientId = DataSaveControl::readFactoryData(QStringLiteral("ClientId"), 0).toInt();
    showReverseLine =
        DataSaveControl::readSettingData(QStringLiteral("ParklineVisible"), false, QString()).toBool();
    radarEnabled = DataSaveControl::readFactoryData(QStringLiteral("CanRadarEnable"), true).toBool();
    rightDriver =
        DataSaveControl::readSettingData(QStringLiteral("FactoryRightDriver"), false, QString()).toBool();
    if (!airData)
        airData = new AirData;
    if (!cardoorData)
        cardoorData = new CardoorData;
    if (!carbodyData)
        carbodyData = new CarbodyData;
    if (!radarData)
        radarData = new RadarData;
    if (!longPressTimer) {
        longPressTimer = new QTimer(this);
        connect(longPressTimer, &QTimer::timeout, this, &CanbusInterface::onKeyLongPressed);
        longPressTimer->setInterval(kLongPressMs);
        longPressTimer->setSingleShot(true);
    }
}

int CanbusInterface::checkCanDataChecksum(const QByteArray&, int&, QByteArray&) { return -1; }
int CanbusInterface::setCanbusData(const QByteArray& data) { return data.size(); }
void CanbusInterface::setRightDriver(const bool& value) { rightDriver = value; }
void CanbusInterface::setShowReverseLine(bool value) { showReverseLine = value; }

void CanbusInterface::setInReverse(bool value)
{
    inReverse = value;
    if (!value && radarData) {
        radarData->clear();
        emit radarDataChanged();
    }
}

bool CanbusInterface::isRightDriver() const { return rightDriver; }
bool CanbusInterface::isShowReverseLine() const { return showReverseLine; }
bool CanbusInterface::isInReverse() const { return inReverse; }
bool CanbusInterface::isDisableRadar() const { return !radarEnabled; }
bool CanbusInterface::hadExInfo() const { return false; }
bool CanbusInterface::hadReverseLine() const { return false; }
bool CanbusInterface::needCanbusDataBeforeReady() const { return false; }

void CanbusInterface::setDataInfo(const QVariant&)
{
    if (dataInfo)
        emit dataChanged();
}

QVariant CanbusInterface::getDataInfo() const
{
    return dataInfo ? QVariant::fromValue(*dataInfo) : QVariant();
}

void* CanbusInterface::getDataInfoPointer() { return dataInfo; }
AirData* CanbusInterface::getAirData() const { return airData; }
CardoorData* CanbusInterface::getCardoorData() const { return cardoorData; }
CarbodyData* CanbusInterface::getCarbodyData() const { return carbodyData; }
RadarData* CanbusInterface::getRadarData() const { return radarData; }
QString CanbusInterface::getVersionData() const { return versionData; }
void CanbusInterface::setReady(bool value) { ready = value; }

bool CanbusInterface::needSendConnect(int&, QByteArray&) { return !connected; }

bool CanbusInterface::needSendDisconnect(QByteArray&)
{
    connected = false;
    return true;
}

void CanbusInterface::setConnectedState(bool value) { connected = value; }
void CanbusInterface::setPowerOnState() {}
void CanbusInterface::setPowerOffState() {}
void CanbusInterface::setCallState(bool active) { callState = active; }
void CanbusInterface::setSrcState(srctype, const QList<QVariant>&) {}
void CanbusInterface::setEQState(int, int) {}
void CanbusInterface::setCanbusState(const QString&, const QString&) {}
void CanbusInterface::setCurrentData(int, int, int) {}
void CanbusInterface::setCurrentTime(int, int, int) {}
void CanbusInterface::autoCalculateChecksum(QByteArray&) const {}
void CanbusInterface::createAckData(QByteArray&, unsigned char) const {}
void CanbusInterface::createNackData(QByteArray&, unsigned char) const {}
int CanbusInterface::checkProtocolData(const QByteArray&) { return 1; }

void CanbusInterface::setVersionData(const QString& text)
{
    versionData = text;
    emit versionDataChanged(text);
}

void CanbusInterface::emitDataLater(const QByteArray& frame, int delayMs)
{
    new AutoEmitDataObject(delayMs, frame, this);
}

void CanbusInterface::sendKeyToQt(int key, int pressed)
{
    injectDeviceEvent(keyDevicePath().constData(), static_cast<unsigned long>(key + kKeyIoctlBase),
                      static_cast<unsigned long>(pressed));
}

bool CanbusInterface::checkKeyLongPressed(bool pressed, int key, int longKey)
{
    if (longPressTimer && longPressTimer->isActive())
        longPressTimer->stop();
    if (pressed) {
        longPressKey = key;
        longPressLongKey = longKey;
        if (longPressTimer)
            longPressTimer->start();
        return true;
    }
    if (longPressKey < 1)
        return false;
    sendKeyToQt(longPressKey, 1);
    sendKeyToQt(longPressKey, 0);
    longPressKey = 0;
    longPressLongKey = 0;
    return true;
}

void CanbusInterface::onKeyLongPressed()
{
    if (longPressLongKey != 0) {
        sendKeyToQt(longPressLongKey, 1);
        sendKeyToQt(longPressLongKey, 0);
    }
    longPressKey = 0;
    longPressLongKey = 0;
}

void CanbusInterface::sendContinueKey(int key, int times)
{
    for (int i = 0; i < times; ++i) {
        sendKeyToQt(key, 1);
        sendKeyToQt(key, 0);
    }
}

int CanbusInterface::toKkmapKey(int key) const
{
    const auto it = std::lower_bound(std::begin(kKkmapKeys), std::end(kKkmapKeys), key,
                                     [](const KkmapKey& k, int code) { return k.code < code; });
    return (it != std::end(kKkmapKeys) && it->code == key) ? it->number : 0;
}

void CanbusInterface::startActivity(const QString& name)
{
    emit requestActivity(name);
}

QString CanbusInterface::getMediaActivity()
{
    const auto module = tqappframework::ModuleManager::self()->getModule(QStringLiteral("info"));
    auto* info = qobject_cast<InfoModule*>(module.data());
    if (!info)
        return QString();
    for (const char* name : {"usb", "card", "disc", "btMusicMode"}) {
        if (info->getSysState(QLatin1String(name)).toBool())
            return QLatin1String(name);
    }
    return QString();
}
