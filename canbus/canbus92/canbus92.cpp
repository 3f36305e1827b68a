#include "canbus92.h"

#include "framereader.h"

Canbus92Obj::Canbus92Obj(QObject* parent)
    : Canbus91Obj(92, parent)
{
}

int Canbus92Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x09:
        // The word is centred on 0x700 and grows to the left.
        if (f.size() >= 6)
            emit trajectoryDataChanged(qint16(quint16(0x700 - f.be16(3))), 1200, true);
        return 1;
    default:
        return Canbus91Obj::checkProtocolData(frame);
    }
}
