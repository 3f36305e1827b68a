#include "canbusinterface.h"

#include "autoemitdataobject.h"
#include "datasavecontrol.h"
#include "infomodule.h"
#include "inputinjector.h"
#include "common/kkmapkeys.h"
#include "common/longpresskey.h"
#include "modulemanager.h"

CanbusInterface::CanbusInterface(QObject* parent)
    : QObject(parent),
      longPress(new LongPressKey([this](int key, int pressed) { sendKeyToQt(key, pressed); }, this))
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
    longPress->armTimer();
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
    injectDeviceEvent(keyDevicePath().constData(), static_cast<unsigned long>(key + canbus::kKeyIoctlBase),
                      static_cast<unsigned long>(pressed));
}

bool CanbusInterface::checkKeyLongPressed(bool pressed, int key, int longKey)
{
    return longPress->check(pressed, key, longKey);
}

void CanbusInterface::onKeyLongPressed()
{
    longPress->onHoldTimeout();
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
    return canbus::kkmapKey(key);
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
