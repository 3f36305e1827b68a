#pragma once
// Mitsubishi car series "compatible", box by RuiZiCheng. In: wheel keys with rotary
// steps, the factory amplifier, a body byte, fuel texts, vehicle settings, and the
// status frames it shares with the Mazda box. Out: the clock, the source with its
// texts (each sent only when it changed), the telephone and a screen tap.
#include "data96info.h"
#include "recorddriver.h"

class FrameReader;
class QTimer;

class Canbus96Obj : public RecordDriver<Data96Info>
{
    Q_OBJECT
public:
    explicit Canbus96Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadExInfo() const override;
    // No frame of this box depends on the gear.
    void setInReverse(bool value) override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    void setCurrentTime(int hour, int minute, int second) override;
    int checkProtocolData(const QByteArray& frame) override;

public slots:
    void setTcanBussend(int x, int y, int width, int height, int model) override;

private:
    int getQtKeyFromValue(int value) const;

    void onKey(const FrameReader& f);
    void onAmplifier(const FrameReader& f);
    void onBody(const FrameReader& f);
    void onFuel(const FrameReader& f);
    void onSetting(const FrameReader& f);
    void onStatus(const FrameReader& f);
    void onFunctions(const FrameReader& f);

    // Reports to the box (reports96.cpp).
    void reportRadio(const QList<QVariant>& args);
    void reportMedia(quint8 source, const QList<QVariant>& args);
    void reportPhone(const QList<QVariant>& args);

    QTimer* selectTimer = nullptr;
    QString lastTitle, lastArtist;   // the media texts the box shows now
    bool phoneLinked = false;        // from a call coming in until it is hung up
};
