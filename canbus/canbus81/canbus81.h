#pragma once
// Pentium "Brand new Pentium", box by RuiZiCheng: climate, doors with the outdoor
// temperature, radar, steering and two settings in; climate commands as press and
// release, radio, media and telephone as text frames, the clock and edge taps out.
#include <QString>

#include "common/payloadcache.h"
#include "common/touchgrid.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

struct VehicleInformation81
{
    void clear() { *this = VehicleInformation81(); }

    QString outdoorTempText = QStringLiteral("--");
    quint8 modeValue = 0;     // frame 0x40, 0..6
    quint8 modeEnabled = 0;   // frame 0x52: some climate commands need it
    quint8 spare2 = 0;
};

class Data81Info : public DataIdInfo
{
public:
    void clear() { vehicle.clear(); }

    VehicleInformation81 vehicle;
};
Q_DECLARE_METATYPE(Data81Info)

class Canbus81Obj : public RecordDriver<Data81Info>
{
    Q_OBJECT
public:
    explicit Canbus81Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void exitSelectSlot() override;
    // One more second of the running call; nothing starts its timer.
    void CallSelectSlot() override;
    // action 0: the touch went down; 2: it was released.
    void setTcanBussend(int x, int y, int width, int height, int action) override;

protected:
    // For the drivers that extend this one.
    Canbus81Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    // How the source reports' texts go to the box: their encoding and the byte that
    // names it in the frame.
    struct TextForm
    {
        quint8 code;
        QByteArray (*encode)(const QString& text);
    };
    virtual TextForm textForm() const;

private:
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void sendMediaReport(int source, const QList<QVariant>& args);
    void sendPhoneReport(const QList<QVariant>& args);
    int wheelKeyCode(int value) const;
    int panelKeyCode(int value) const;

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x21
    QTimer* callTimer = nullptr;
    int keyValue = 0;
    int fanRaw = 0;
    int tempLeftValue = 0;    // b7 of each side's set point: the half-degree scale
    int tempRightValue = 0;
    QString lastMediaTitle;
    QString lastMediaArtist;
    int callSeconds = 0;
    canbus::TouchPress touchPress;
};
