#pragma once
// Small builders for inbound 0x2E frames in driver tests.

#include <QByteArray>
#include <initializer_list>

#include "framefamily.h"

namespace testframes {

inline QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
}

inline QByteArray frame(int type, const QByteArray& data)
{
    return canbus::buildFrame(canbus::FrameFamily::Start2E, quint8(type), data);
}

inline QByteArray frame(int type, std::initializer_list<int> data)
{
    return frame(type, bytes(data));
}

inline QByteArray hex(const char* text) { return QByteArray::fromHex(text); }

} // namespace testframes
