#pragma once
// Great Wall "2014 payment C30", box by RuiZiCheng: the HAVAL's frames on a row of its
// own, with its own walk and link forms.
#include "../canbus60/canbus60.h"

class Canbus58Obj : public Canbus60Obj
{
    Q_OBJECT
public:
    explicit Canbus58Obj(QObject* parent = nullptr);
    bool inheritedById(int id) const override { return id == 60 || Canbus60Obj::inheritedById(id); }
    // The plain connect form: no data requests ahead of it.
    bool needSendConnect(int& intervalMs, QByteArray& frame) override
    {
        return CommonDriver::needSendConnect(intervalMs, frame);
    }
};
