#pragma once
// jeep "Guides", box by RuiZiCheng.
// Reads as 88 but for the climate frame as 90 and the outdoor frame offset by 85.
#include "../canbus90/canbus90.h"

// Built on 90 for its climate frame; it still counts as a variant of 88 only.
class Canbus91Obj : public Canbus90Obj
{
    Q_OBJECT
public:
    explicit Canbus91Obj(QObject* parent = nullptr);
    int checkProtocolData(const QByteArray& frame) override;

protected:
    // For 92, which reads the outdoor frame as this one does.
    Canbus91Obj(int driverId, QObject* parent);
};
