#pragma once
// What nearly all drivers do alike, driven by their DriverProfile: the family's
// check, walk, checksum and acknowledgements, the connect and disconnect forms, the
// power and ready flags, the radar display and the common slots.

#include "canbusinterface.h"
#include "driverprofile.h"

class CommonDriver : public CanbusInterface
{
    Q_OBJECT
public:
    CommonDriver(int driverId, const canbus::DriverProfile& profile, QObject* parent = nullptr);

    const canbus::DriverProfile& profile() const { return m_profile; }

    int checkCanDataChecksum(const QByteArray& data, int& frameLength, QByteArray& reply) override;
    int setCanbusData(const QByteArray& data) override;
    void autoCalculateChecksum(QByteArray& frame) const override;
    void createAckData(QByteArray& out, unsigned char value) const override;
    void createNackData(QByteArray& out, unsigned char value) const override;

    void setReady(bool value) override;
    void setPowerOnState() override;
    void setPowerOffState() override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    bool needSendDisconnect(QByteArray& frame) override;

    // Decides whether the radar overlay is up from the eight sensors.
    virtual void RadarDisplay();

    // A frame of the driver's family, checksum included.
    QByteArray makeFrame(quint8 type, std::initializer_list<quint8> data) const;
    QByteArray makeFrame(quint8 type, const QByteArray& data) const;
    void sendFrame(quint8 type, std::initializer_list<quint8> data);

public slots:
    virtual void btCallStatesChangeSlot(bool active);
    virtual void CallSelectSlot();
    virtual void exitSelectSlot();
    virtual void setTcanBussend(int a, int b, int c, int d, int e);

protected:
    // One-shot timer whose end tells the panel about a climate that is still off.
    void startAirOffTimer(int ms);
    void timerEvent(QTimerEvent* event) override;

    bool btCallActive = false;
    int callSelectCount = 0;

private:
    canbus::DriverProfile m_profile;
    int m_airOffTimerId = 0;
};
