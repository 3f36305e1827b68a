#include "commondriver.h"

#include <QTimerEvent>
#include <limits>

#include "common/temperature.h"
#include "common/vehiclemodel.h"

using namespace canbus;

CommonDriver::CommonDriver(int driverId, const DriverProfile& profile, QObject* parent)
    : CanbusInterface(parent), m_profile(profile)
{
    id = driverId;
}

int CommonDriver::checkCanDataChecksum(const QByteArray& data, int& frameLength, QByteArray& reply)
{
    return checkFrame(m_profile.family, data, frameLength, reply);
}

int CommonDriver::setCanbusData(const QByteArray& data)
{
    const bool marksConnected = walkMarksConnected(m_profile.walk);
    FrameWalker walk(m_profile.walk, data);
    while (walk.next()) {
        if (marksConnected)
            setConnectedState(true);
        ++m_framesParsed;
        checkProtocolData(data.mid(walk.frameStart(), walk.frameLength()));
    }
    return walk.consumed();
}

void CommonDriver::autoCalculateChecksum(QByteArray& frame) const
{
    writeChecksum(m_profile.family, frame);
}

void CommonDriver::createAckData(QByteArray& out, unsigned char value) const
{
    makeAck(m_profile.family, out, value);
}

void CommonDriver::createNackData(QByteArray& out, unsigned char value) const
{
    makeNack(m_profile.family, out, value);
}

void CommonDriver::setReady(bool value)
{
    ready = value;
}

void CommonDriver::setPowerOnState()
{
    powerOn = true;
}

void CommonDriver::setPowerOffState()
{
    powerOn = m_profile.powerOnWhileOff;
}

QByteArray CommonDriver::makeFrame(quint8 type, std::initializer_list<quint8> data) const
{
    return buildFrame(m_profile.family, type, data);
}

QByteArray CommonDriver::makeFrame(quint8 type, const QByteArray& data) const
{
    return buildFrame(m_profile.family, type, data);
}

void CommonDriver::sendFrame(quint8 type, std::initializer_list<quint8> data)
{
    emit sendDataToCan(makeFrame(type, data));
}

void CommonDriver::showRadarEnd(bool front, quint8 levels, const FrameReader& f, int first, RadarBars bars)
{
    if (!radarData)
        return;
    RadarData& r = *radarData;
    quint8* sensors[] = {&r.radarRearLeft, &r.radarRearLeftMid, &r.radarRearRightMid, &r.radarRearRight};
    if (front) {
        sensors[0] = &r.radarFrontLeft;
        sensors[1] = &r.radarFrontLeftMid;
        sensors[2] = &r.radarFrontRightMid;
        sensors[3] = &r.radarFrontRight;
    }
    r.radarLevels = levels;
    for (int i = 0; i < 4; ++i)
        *sensors[i] = bars ? bars(f.at(first + i)) : f.at(first + i);
    RadarDisplay();
    emit radarDataChanged();
}

void CommonDriver::sendFrame(quint8 type, const QByteArray& data)
{
    emit sendDataToCan(makeFrame(type, data));
}

bool CommonDriver::needSendConnect(int& intervalMs, QByteArray& frame)
{
    switch (m_profile.connect) {
    case ConnectForm::Base:
        return CanbusInterface::needSendConnect(intervalMs, frame);
    case ConnectForm::Never:
        return false;
    case ConnectForm::PollOnly:
        if (connected)
            return false;
        intervalMs = kConnectIntervalMs;
        return true;
    case ConnectForm::RequestFirst: {
        // The request goes out on every call, also once the box has answered.
        const ConnectRequest& r = m_profile.request;
        emitDataLater(makeFrame(r.type, QByteArray(reinterpret_cast<const char*>(r.bytes), r.size)),
                      r.delayMs);
        Q_FALLTHROUGH();
    }
    case ConnectForm::Simple:
        if (connected)
            return false;
        intervalMs = kConnectIntervalMs;
        frame = makeFrame(m_profile.linkType, {0x01});
        return true;
    }
    return false;
}

bool CommonDriver::needSendDisconnect(QByteArray& frame)
{
    switch (m_profile.disconnect) {
    case DisconnectForm::Base:
        return CanbusInterface::needSendDisconnect(frame);
    case DisconnectForm::Never:
        return false;
    case DisconnectForm::Common:
        if (!connected)
            return false;
        break;
    case DisconnectForm::Always:
        break;
    }
    frame = makeFrame(m_profile.linkType, {m_profile.disconnectValue});
    return true;
}

void CommonDriver::RadarDisplay()
{
    if (!radarData)
        return;
    // The second front sensor tells the scale. On the distance scale "not all above 10"
    // and "any below 11" are the same test, so the drivers that word it either way share
    // this.
    setRadarOnByScale(radarData->radarFrontLeftMid < 11);
}

void CommonDriver::setRadarOnByScale(bool barScale)
{
    if (!radarData)
        return;
    bool on = false;
    for (quint8 s : radarData->sensors())
        on = on || (barScale ? s != 0 : s < 11);
    radarData->radarOn = on ? 1 : 0;
}

void CommonDriver::btCallStatesChangeSlot(bool active)
{
    btCallActive = active;
}

void CommonDriver::CallSelectSlot()
{
    ++callSelectCount;
}

void CommonDriver::exitSelectSlot() {}

void CommonDriver::setTcanBussend(int, int, int, int, int) {}

void CommonDriver::startExitSelectTimer(int intervalMs)
{
    if (!exitSelectTimer)
        exitSelectTimer = canbus::startRepeatingTimer(this, intervalMs, &CommonDriver::exitSelectSlot);
}

void CommonDriver::startAirOffTimer(int ms)
{
    // A newer frame with the climate off moves the deadline: the panel hears of it once,
    // `ms` after the last such frame.
    if (m_airOffTimerId != 0)
        killTimer(m_airOffTimerId);
    m_airOffTimerId = startTimer(ms, Qt::CoarseTimer);
}

void CommonDriver::timerEvent(QTimerEvent* event)
{
    if (m_airOffTimerId == 0 || event->timerId() != m_airOffTimerId) {
        CanbusInterface::timerEvent(event);
        return;
    }
    event->accept();
    killTimer(m_airOffTimerId);
    m_airOffTimerId = 0;
    if (airData && !airData->airPower)
        emit airConditionerDataChanged();
}

bool CommonDriver::updateAirData(AirData fresh, bool notify)
{
    fresh.id = id;
    if (!airData || fresh.compare(*airData))
        return false;
    fresh.airValid = airData->airValid;
    fresh.airShowFlag = airData->airShowFlag;
    *airData = fresh;
    if (notify)
        emit airConditionerDataChanged();
    return true;
}

bool CommonDriver::updateCardoorData(const CardoorData& fresh, bool notify)
{
    if (!cardoorData || fresh.compare(*cardoorData))
        return false;
    *cardoorData = fresh;
    if (notify)
        emit cardoorDataChanged();
    return true;
}

bool CommonDriver::updateCarbodyData(const CarbodyData& fresh, bool notify)
{
    if (!carbodyData || fresh.compare(*carbodyData))
        return false;
    *carbodyData = fresh;
    if (notify)
        emit carbodyDataChanged();
    return true;
}

bool CommonDriver::updateOutdoorText(double value, int unit, bool valid)
{
    if (!airData)
        return false;
    const QString text = outdoorTemperatureText(value, unit == 1);
    const quint8 validByte = valid ? 1 : 0;
    if (text == airData->outdoorTemp && validByte == airData->outdoorTempValid)
        return false;
    airData->outdoorTempUnit = static_cast<qint8>(unit);
    airData->outdoorTempValid = validByte;
    airData->outdoorTemp = text;
    emit outdoorTemperatureChanged(text, unit);
    return true;
}

bool CommonDriver::updateOutdoorBody(double value, int unit)
{
    if (!carbodyData)
        return false;
    constexpr double lo = std::numeric_limits<qint16>::min();
    constexpr double hi = std::numeric_limits<qint16>::max();
    // Bounded before rounding: a value beyond the field must not overflow the int.
    const qint16 tenths = static_cast<qint16>(qRound(qBound(lo, value * 10.0, hi)));
    const quint8 unitByte = static_cast<quint8>(unit);
    if (carbodyData->outdoorTempUnit == unitByte && carbodyData->outdoorTempTenths == tenths)
        return false;
    carbodyData->outdoorTempUnit = unitByte;
    carbodyData->outdoorTempTenths = tenths;
    emit carbodyDataChanged();
    return true;
}

void CommonDriver::updateOutdoorTemperature(double value, int unit, bool valid)
{
    updateOutdoorText(value, unit, valid);
    updateOutdoorBody(value, unit);
}

QString CommonDriver::showOutdoorCelsius(bool known, int degrees)
{
    if (!airData)
        return QString();
    AirData& a = *airData;
    a.outdoorTempUnit = 0;
    a.outdoorTempValid = 1;
    if (!known) {
        a.outdoorTemp = QStringLiteral("--");
        return a.outdoorTemp;
    }
    a.outdoorTemp = oneDecimalCelsius(degrees);
    emit outdoorTemperatureChanged(a.outdoorTemp, a.outdoorTempUnit);
    return a.outdoorTemp;
}

void CommonDriver::sendKeyCode(int code, int pressed, ZeroKey zero)
{
    if (code == 0 && zero == ZeroKey::Skip)
        return;
    sendKeyToQt(toKkmapKey(code), pressed);
}
