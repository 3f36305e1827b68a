#pragma once
// Chery "compatible", box by RuiZiCheng: climate, doors, radar, outdoor temperature,
// steering and numbered vehicle settings in; climate commands, the vehicle model,
// radio, media and telephone, the clock, the language and screen taps out. Model 3
// takes its texts in UTF-16, the others in UTF-8.
#include "common/payloadcache.h"
#include "data68info.h"
#include "common/touchgrid.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus68Obj : public RecordDriver<Data68Info>
{
    Q_OBJECT
public:
    explicit Canbus68Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // The chosen vehicle model, every 3 s, once one is chosen.
    void exitSelectSlot() override;
    // One more second of the running call, reported to the box.
    void CallSelectSlot() override;
    // action 2 (released) sends a code for where the finger left the screen.
    void setTcanBussend(int x, int y, int width, int height, int action) override;
    void languageChanged(const QString& language);

private:
    int getQtKeyFromValue(int value) const;
    void onOutdoorTemperature(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onSettingItem(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void sendMediaReport(int source, const QList<QVariant>& args);
    void sendPhoneReport(const QList<QVariant>& args);
    QByteArray textFrame(quint8 type, QByteArray prefix, const QString& text) const;
    bool wideTexts() const;

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x21
    QTimer* callTimer = nullptr;
    int keyValue = 0;
    int keyState = 0;
    QString lastMediaTitle;
    QString lastMediaArtist;
    int callSeconds = 0;
    canbus::TouchPress touchPress;
};
