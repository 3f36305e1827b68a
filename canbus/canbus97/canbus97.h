#pragma once
// southeast "DX7/DX3/DX5", box by RuiZiCheng: doors and body flags, radar, tyres,
// steering, fuel and distance values and the shared status frames in; the clock with
// the display language, the language and a touch request out. No climate, no commands,
// no source reports.
#include "data97info.h"
#include "recorddriver.h"

class FrameReader;

class Canbus97Obj : public RecordDriver<Data97Info>
{
    Q_OBJECT
public:
    explicit Canbus97Obj(QObject* parent = nullptr);

    void initData() override;
    void setInReverse(bool value) override;
    bool hadExInfo() const override;
    bool hadReverseLine() const override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void exitSelectSlot() override;
    // Any touch, pressed or released, asks the box for its page or back.
    void setTcanBussend(int x, int y, int width, int height, int action) override;
    void languageChanged(const QString& language);

private:
    void onWheelKey(const FrameReader& f);
    void onPanelKey(const FrameReader& f);
    void onRadar(const FrameReader& f, bool front);
    void onDoors(const FrameReader& f);
    void onTyres(const FrameReader& f);
    void onFuel(const FrameReader& f);
    void onItems(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void emitGated(void (CanbusInterface::*signal)());

    int keyValue = 0;   // last nonzero key number of frames 0x20 and 0x21
    int keyState = 0;   // 1 or 2: how the last wheel key went down
};
