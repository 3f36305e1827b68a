#pragma once
// Geely "general", box by RuiZiCheng. Climate with its fine-dust page, doors, body byte,
// radar while reversing, parking trajectory, steering-wheel keys (which switch the
// camera's views while reversing), the panorama page, three pages of settings, tyres,
// range and a few vehicle values. It reports clock, sources and language, the chosen
// vehicle variant, and the climate commands as a press and a release.
//
// Every whole frame marks the box as connected; its version frame (0x7F) also asks for
// the box's data again.

#include "common/clockreport.h"
#include "common/payloadcache.h"
#include "data49info.h"
#include "recorddriver.h"

class FrameReader;

class Canbus49Obj : public RecordDriver<Data49Info>
{
    Q_OBJECT
public:
    explicit Canbus49Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
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
    // Any touch on the camera picture closes the box's own camera menu.
    void setTcanBussend(int x, int y, int w, int h, int model) override;
    void languageChanged(const QString& language);

private:
    // Frame handlers, one per type; `f` has passed the type's minimum size.
    void onBodyByte(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onClimate(const FrameReader& f);
    void onFineDust(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onOutdoor(const FrameReader& f);
    void onPanorama(const FrameReader& f);
    void onSettingItem(const FrameReader& f);
    void onSettingBitsA(const FrameReader& f);
    void onSettingBitsB(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onVersion(const FrameReader& f);

    int getQtKeyFromValue(int value) const;
    // The camera view a wheel key asks for while reversing; false for other keys.
    bool sendCameraKey(int value);
    void sendMediaTexts(const QList<QVariant>& args);
    void sendPhone(const QList<QVariant>& args);
    // The two data requests of the connect call and of the version frame.
    void requestData();

    canbus::PayloadCache airFrameCache;   // bytes 3..9 of the last climate frame signalled
    bool reverseActive = false;
    int lastKeyState = 0;   // 1 or 2: how the last wheel key was pressed
    canbus::KnownDate knownDate = canbus::KnownDate::today();
};
