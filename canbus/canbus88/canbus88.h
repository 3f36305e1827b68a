#pragma once
// jeep "Free Light/14~17 Grand Cherokee/Coolway", box by RuiZiCheng: climate with seat
// heating and cooling, rear climate, doors, radar, steering, the settings page, the
// factory CD player, the amplifier, the performance page and hybrid information. It
// tells the box about radio, media and calls in text frames of one fixed size, the
// clock, the language and, every 3 s, the chosen vehicle variant.
//
// The variants 89 to 92 read a few frames otherwise: the climate frame's vents and set
// points (given to the constructor below), the outdoor frame and the steering frame.

#include "data88info.h"
#include "common/payloadcache.h"
#include "common/temperature.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus88Obj : public RecordDriver<Data88Info>
{
    Q_OBJECT
public:
    explicit Canbus88Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void exitSelectSlot() override;
    void CallSelectSlot() override;
    void languageChanged(const QString& language);

protected:
    // How one set-point byte (not the low and high ends) reads on a vehicle: whether it
    // names a temperature, its text and whether that is in Fahrenheit.
    using SetPointText = bool (*)(int value, QString& text, bool& fahrenheit);
    // Byte 5 of the climate frame: which bits drive which vents.
    enum class VentLayout { Shared, SplitRight };
    // How a vehicle's climate frame 0x05 reads; the rest of the frame is read alike.
    struct ClimateForm
    {
        VentLayout vents;
        SetPointText left;    // the panel's left side, after the right-hand-drive swap
        SetPointText right;
    };

    // For the drivers that extend this one: the same link, their own climate frame.
    Canbus88Obj(int driverId, const ClimateForm& climate, QObject* parent);

    // The outdoor text, its signal and the record's copy.
    void showOutdoorTemperature(double value, int unit);

private:
    // Frame 0x05, read as `climateForm` says.
    void decodeClimate(const FrameReader& f);
    void onKey(const FrameReader& f, int (*codeOf)(int value));
    void onRearClimate(const FrameReader& f);
    void onSettings(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onCdStatus(const FrameReader& f);
    void onCdText(const FrameReader& f);
    void onOutdoorByte(quint8 raw);
    void onAmplifier(const FrameReader& f);
    void onPerformance(const FrameReader& f);
    void onHybrid(const FrameReader& f);
    void applySetPoint(AirData& a, const canbus::TempZone& zone, quint8 AirData::*fahrenheit, int value,
                       SetPointText text);

    int carModel() const;
    QByteArray textFrame(quint8 code, const QString& text) const;
    void sendMediaReport(int source, const QList<QVariant>& args);
    void sendPhoneReport(const QList<QVariant>& args);

    const ClimateForm climateForm;
    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x05
    QTimer* callTimer = nullptr;          // made, but nothing of this box starts it
    QString lastMediaTitle;
    int callSeconds = 0;
    quint8 tempLeftValue = 0;             // set-point bytes of the last frame 0x05,
    quint8 tempRightValue = 0;            // in the panel's order
};
