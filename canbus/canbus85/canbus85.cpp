#include "canbus85.h"

#include "common/textcodec.h"

namespace {
QByteArray utf16(const QString& text) { return canbus::encodeUtf16(text, canbus::Utf16Order::LittleEndian); }
}

// The Pentium box's link forms too: only the id differs.
Canbus85Obj::Canbus85Obj(QObject* parent)
    : Canbus81Obj(parent)
{
    id = 85;
}

Canbus85Obj::TextForm Canbus85Obj::textForm() const
{
    return {0x10, &utf16};
}
