#pragma once
// Chana Automobile "Yuexiang V7", box by RuiZiCheng. The make's frames are those of
// the Auchan box (64); this box keeps the plain connect frame of its own.
#include "../canbus64/canbus64.h"

class Canbus63Obj : public Canbus64Obj
{
    Q_OBJECT
public:
    explicit Canbus63Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 64 || Canbus64Obj::inheritedById(id); }
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
};
