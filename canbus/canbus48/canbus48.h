#pragma once
// Ford "general", box by RuiZiCheng. Climate, doors, body values, tyres, radar,
// trajectory, steering-wheel keys, the vehicle settings, parking assist, the smart wind
// page, amplifier, seat massage, the SYNC display and the original unit's media. It
// reports clock, sources and language, climate buttons as press and release, and the
// chosen vehicle variant.
//
// The box counts as connected once it sent its version (frame 0x30).

#include <QByteArray>

#include "common/clockreport.h"
#include "common/payloadcache.h"
#include "data48info.h"
#include "recorddriver.h"

class FrameReader;

class Canbus48Obj : public RecordDriver<Data48Info>
{
    Q_OBJECT
public:
    explicit Canbus48Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentData(int year, int month, int day) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // Reports the chosen vehicle variant; every 3 s for the driver's life.
    void exitSelectSlot() override;
    void languageChanged(const QString& language);

private:
    // Frame handlers, one per type; `f` has passed the type's minimum size.
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onBody(const FrameReader& f);
    void onSettingItem(const FrameReader& f);
    void onAirQuality(const FrameReader& f);
    void onParking(const FrameReader& f);
    void onFilter(const FrameReader& f);
    void onFragrance(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onMassage(const FrameReader& f);
    void onSyncScreen(const FrameReader& f);
    void onSyncLine(const FrameReader& f);
    void onSyncCommand(const FrameReader& f);
    void onSyncTimer(const FrameReader& f);
    void onSyncState(const FrameReader& f);
    void onMediaFrequency(const FrameReader& f);
    void onMediaState(const FrameReader& f);
    void onMediaText(const FrameReader& f);

    // The head-unit key of a vehicle key number; `state` 1 short, 2 long press.
    int getQtKeyFromValue(int value, int state) const;
    void pressKey(int code);
    void sendRequest(quint8 type, int delayMs);
    void sendMediaReport(const QList<QVariant>& args);
    void sendPhoneReport(const QList<QVariant>& args);

    int lastKeyState = 0;                 // 1 short, 2 long: the state of the last press
    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x21
    canbus::KnownDate knownDate = canbus::KnownDate::today();
};
