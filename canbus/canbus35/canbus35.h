#pragma once
// NISSAN "Infiniti QX50", box by RuiZiCheng: climate, doors, radar, keys, steering, the
// trip values and two setup frames in; climate buttons out as press and release. No
// time and no source reports go to this box.
#include <QMetaType>
#include <QString>

#include "common/payloadcache.h"
#include "recorddriver.h"

class FrameReader;

// Frames 0x27 and 0x29: the trip values with their units.
struct MileageInformation35
{
    Q_GADGET
    Q_PROPERTY(quint8 distanceUnitB MEMBER distanceUnitB)
    Q_PROPERTY(quint8 distanceUnitA MEMBER distanceUnitA)
    Q_PROPERTY(QString odometerText MEMBER odometerText)
    Q_PROPERTY(QString rangeText MEMBER rangeText)
    Q_PROPERTY(quint8 fuelUnit MEMBER fuelUnit)
    Q_PROPERTY(QString fuelText MEMBER fuelText)
public:
    void clear() { *this = MileageInformation35(); }

    quint8 distanceUnitB = 0;   // 1: the range in miles
    quint8 distanceUnitA = 0;   // 1: the odometer in miles
    QString odometerText;
    QString rangeText;
    quint8 fuelUnit = 0;        // 0 mpg, 1 km/l, 2 l/100km, 3 none
    QString fuelText;
};

// Frames 0x71 and 0x72.
struct VehicleSetupInformation35
{
    void clear() { *this = VehicleSetupInformation35(); }

    quint8 setupFlag = 0;
    quint8 setupLevel = 0;   // 0..4
    quint8 setupMode = 0;    // 0..7
    quint8 setupBit0 = 0;
    quint8 setupBit1 = 0;
};

class Data35Info : public DataIdInfo
{
public:
    void clear() { *this = Data35Info(); }

    MileageInformation35 mileage;
    VehicleSetupInformation35 vehicleSetup;
};
Q_DECLARE_METATYPE(Data35Info)

class Canbus35Obj : public RecordDriver<Data35Info>
{
    Q_OBJECT
public:
    explicit Canbus35Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setCanbusState(const QString& key, const QString& value) override;
    int checkProtocolData(const QByteArray& frame) override;

private:
    void onClimate(const FrameReader& f);
    void onMileage(const FrameReader& f);
    void onFuel(const FrameReader& f);

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x21
};
