#pragma once
// Chana Automobile "Auchan series", box by RuiZiCheng. Keys with short and long
// presses, a climate with one set point for both zones, two radar forms, the panorama
// camera and its touch map, automatic parking prompts, tyres in bar, 75 vehicle
// settings, the energy page and the trip computer of its box form. The climate
// commands take one of two forms by the vehicle variant the user picked.
//
// Any whole frame counts as a sign of the box (walk A). Drivers of other models of the
// make derive from it.

#include "common/payloadcache.h"
#include "data64info.h"
#include "recorddriver.h"

class FrameReader;

class Canbus64Obj : public RecordDriver<Data64Info>
{
    Q_OBJECT
public:
    explicit Canbus64Obj(QObject* parent = nullptr);

    void initData() override;
    // Only reports the change to the camera: inReverse stays false.
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCanbusState(const QString& type, const QString& value) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    // Reports the chosen vehicle variant; every 3 s for the driver's life.
    void exitSelectSlot() override;
    // A touch on the panorama picture (model 2: released).
    void setTcanBussend(int x, int y, int w, int h, int model) override;
    void languageChanged(const QString& language);

protected:
    // For the drivers that extend this one.
    Canbus64Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

    int carModel() const;

private:
    // Frame handlers; `f` has passed the type's minimum size.
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onPanorama(const FrameReader& f);
    void onParkPrompt(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onTyreFlags(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onSetup(const FrameReader& f);
    void onEnergy(const FrameReader& f);
    void onVersion(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);
    void endStep();

    int getQtKeyFromValue(int value) const;
    // The two climate command sets.
    void sendButtonCommand(const QString& type, const QString& value);
    void sendComputedCommand(const QString& type, const QString& value);
    void sendMediaTexts(quint8 code, const QString& title, const QString& artist);
    void sendView(int view);
    void sendCycle();

    canbus::PayloadCache airFrameCache;   // data bytes of the last frame 0x21
    int lastKeyState = 0;       // 1 short, 2 long: how the held button was pressed
    QString lastTitle;          // texts already sent to the box
    QString lastArtist;
    quint8 lastTemperature = 0; // the set point as the box last reported it
};
