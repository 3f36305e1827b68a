#pragma once
// Volkswagen "general", box by Hiworld: a listener only. It decodes climate, doors,
// body data, steering keys, steering angle and parking radar, and sends nothing but
// the acknowledgements of its AA 55 frames. The box talks without a handshake.
#include <QByteArray>

#include "recorddriver.h"

class FrameReader;

// Raw payloads that the user interface decodes itself.
class Data27Info : public DataIdInfo
{
public:
    void clear() { *this = Data27Info(); }

    QByteArray unusedPayload;   // no frame fills it
    QByteArray versionPayload;  // frame 0xF0
    QByteArray infoPayload;     // frame 0x47
    QByteArray spare;           // no frame fills it
    QByteArray mileagePayload;  // frame 0x13
};
Q_DECLARE_METATYPE(Data27Info)

class Canbus27Obj : public RecordDriver<Data27Info>
{
    Q_OBJECT
public:
    explicit Canbus27Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadReverseLine() const override;
    int checkProtocolData(const QByteArray& frame) override;

private:
    int getQtKeyFromValue(int value) const;

    void onBodyStatus(const FrameReader& f);
    void onMileage(const FrameReader& f, const QByteArray& payload);
    void onInfo(const QByteArray& payload);
    void onBody(const QByteArray& payload);
    void onClimate(const FrameReader& f);
    void onVersion(const QByteArray& payload);

    void onOutdoorTemperature(quint8 raw, AirData& air);
    void onSteering(bool leftChanged, quint8 left, bool rightChanged, quint8 right);

    QByteArray lastBodyFrame;   // payload of the last 0x72 frame
};
