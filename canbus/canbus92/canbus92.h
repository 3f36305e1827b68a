#pragma once
// jeep "16-20 Guides", box by RuiZiCheng.
// Reads as 88 but for the climate and outdoor frames as 91 and a steering word centred on 0x700.
#include "../canbus91/canbus91.h"

// Built on 91 for its climate and outdoor frames; it still counts as a variant of 88 only.
class Canbus92Obj : public Canbus91Obj
{
    Q_OBJECT
public:
    explicit Canbus92Obj(QObject* parent = nullptr);
    int checkProtocolData(const QByteArray& frame) override;
};
