#pragma once
// Peugeot "Peugeot Citroen", box by RuiZiCheng: climate, doors and the car's state,
// radar, steering, trip computer, settings pages, hybrid pages and keys in; climate
// commands, the clock, the language, sources with their texts and screen gestures out.
// Change signals go on while the head unit is off.
#include "data87info.h"
#include "recorddriver.h"
#include "common/payloadcache.h"
#include "common/touchgrid.h"

class FrameReader;
class QTimer;

class Canbus87Obj : public RecordDriver<Data87Info>
{
    Q_OBJECT
public:
    explicit Canbus87Obj(QObject* parent = nullptr);

    void initData() override;
    void setDataInfo(const QVariant& value) override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    int checkProtocolData(const QByteArray& frame) override;

    int getQtKeyFromValue(int value);
    // The panel's buttons reach the head unit through the same key frame.
    int getQtKeyPanelButtonsValue(int value);

public slots:
    void CallSelectSlot() override;
    void exitSelectSlot() override;
    // A tap on a third of the screen or a swipe across it, as a code for the box.
    void setTcanBussend(int x, int y, int width, int height, int phase) override;
    void languageChanged(const QString& language);

private:
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onPreset(const FrameReader& f);
    void onRadar(const FrameReader& f);
    void onTrip(const FrameReader& f);
    void onStoredTrip(const FrameReader& f);
    void onOutdoor(const FrameReader& f);
    void onCarState(const FrameReader& f);
    void onMemorySpeeds(const FrameReader& f);
    void onCruising(const FrameReader& f);
    void onCruisingFlags(const FrameReader& f);
    void onDisplayLevel(const FrameReader& f);
    void onItems(const FrameReader& f);
    void onEnergyFlow(const FrameReader& f);
    void onStatistics(const FrameReader& f);
    void onChargeTime(const FrameReader& f);
    void onChargeState(const FrameReader& f);
    void onVersion(const FrameReader& f);

    void sendCommand(quint8 code, quint8 value, int delayMs);
    // Title and call texts for the box's display, sent when they changed.
    void sendDisplayText(const QString& text);

    canbus::PayloadCache lastAirPayload{canbus::kDataOffsetFD};
    QString lastMediaText;
    canbus::TouchPress gesture;
    int gestureMode = 0;   // what a tap in the middle asks for, by the display level
    QTimer* callSelectTimer = nullptr;
};
