#pragma once
// Buick "Angkola(low profile)", box by RuiZiCheng: the GM box's frames, pages, commands and
// reports on a row of its own, with its own link forms: the connect frame every second
// until the box answers, without the GM row's requests.
#include "../canbus37/canbus37.h"

class Canbus38Obj : public Canbus37Obj
{
    Q_OBJECT
public:
    explicit Canbus38Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 37 || Canbus37Obj::inheritedById(id); }

    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
};
