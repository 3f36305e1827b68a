#pragma once
// The two lowest bytes of a number, as reports write counts, tracks and frequencies
// into frames byte by byte. Higher bits are dropped: a frame's field is as wide as it is.

#include <QtGlobal>

namespace canbus {

constexpr quint8 low(qulonglong v) { return quint8(v & 0xFF); }
constexpr quint8 high(qulonglong v) { return quint8((v >> 8) & 0xFF); }

} // namespace canbus
