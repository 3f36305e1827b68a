#include "common/pressrelease.h"

#include "commondriver.h"

namespace canbus {

void sendPressRelease(CommonDriver& driver, quint8 type, const QByteArray& press,
                      const QByteArray& release, int delayMs)
{
    emit driver.sendDataToCan(driver.makeFrame(type, press));
    driver.emitDataLater(driver.makeFrame(type, release), delayMs);
}

namespace {
QByteArray bytesOf(std::initializer_list<quint8> values)
{
    QByteArray bytes;
    for (quint8 v : values)
        bytes.append(static_cast<char>(v));
    return bytes;
}
} // namespace

void sendPressRelease(CommonDriver& driver, quint8 type, std::initializer_list<quint8> press,
                      std::initializer_list<quint8> release, int delayMs)
{
    sendPressRelease(driver, type, bytesOf(press), bytesOf(release), delayMs);
}

QByteArray releaseOf(QByteArray press, std::initializer_list<int> indexes)
{
    for (int i : indexes) {
        if (i >= 0 && i < press.size())
            press[i] = '\0';
    }
    return press;
}

} // namespace canbus
