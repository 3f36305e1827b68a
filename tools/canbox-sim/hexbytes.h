#pragma once
// Bytes as people type them: "2e 81 01 01 7c", "0x2e,0x81", "2e8101017c".

#include <QByteArray>
#include <QString>

namespace canbox {

// Reads hex bytes separated by blanks or commas, each with or without "0x"; a
// token of more than two digits without separators is read two digits a byte.
// On failure `out` is left as it was and `error` says which token is wrong.
bool parseHexBytes(const QString& text, QByteArray& out, QString* error = nullptr);

// One hex byte, as in a frame type: "73", "0x73" (a string is always hex).
bool parseHexByte(const QString& text, quint8& out);

// "aa 55 01 ff": lower case, one blank between bytes.
QString spacedHex(const QByteArray& bytes);

} // namespace canbox
