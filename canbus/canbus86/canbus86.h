#pragma once
// Peugeot "Peugeot(Keep the original car displayb)", box by RuiZiCheng: the vehicle keeps
// its own display, so the box sends only keys, radar, steering, the trip computer and the
// outdoor temperature, and takes the source. Change signals go on while the unit is off.
#include "../canbus87/tripcomputer87.h"
#include "recorddriver.h"

class FrameReader;

// The trip computer texts of the full box's frames.
class Data86Info : public DataIdInfo, public TripTexts87
{
public:
    void clear() { *this = Data86Info(); }
};
Q_DECLARE_METATYPE(Data86Info)

class Canbus86Obj : public RecordDriver<Data86Info>
{
    Q_OBJECT
public:
    explicit Canbus86Obj(QObject* parent = nullptr);

    void initData() override;
    void setSrcState(srctype type, const QList<QVariant>& args) override;
    int checkProtocolData(const QByteArray& frame) override;

    int getQtKeyFromValue(int value);

private:
    void onKey(const FrameReader& f);
    void onRadar(const FrameReader& f);
};
