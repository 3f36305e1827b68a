#pragma once
// Record fields taken from runs of bits of a frame, as tables: one row a field, in
// the order the record lists them.
//
//   constexpr canbus::BitField<Setup> kSetup[] = {
//       canbus::bitOf(&Setup::byte3Bit7, 3, 7),
//       canbus::bitsOf(&Setup::byte3Bits5To4, 3, 5, 4, 2),   // clamped to 2
//       canbus::byteOf(&Setup::byte8, 8, 10),
//   };
//   canbus::applyBitFields(kSetup, frame, record);

#include <cstddef>

#include <QtGlobal>

#include "framereader.h"

namespace canbus {

constexpr quint8 kNoClamp = 255;

template <typename Record>
struct BitField
{
    quint8 Record::*field;
    quint8 byte;    // frame index
    quint8 low;     // lowest bit of the run
    quint8 count;   // bits in the run, 8 for the whole byte
    quint8 max;     // values above it are clamped to it; kNoClamp for none
};

// One bit.
template <typename Record>
constexpr BitField<Record> bitOf(quint8 Record::*field, int byte, int bit)
{
    return {field, quint8(byte), quint8(bit), 1, kNoClamp};
}

// Bits `high` down to `low`, clamped to `max`.
template <typename Record>
constexpr BitField<Record> bitsOf(quint8 Record::*field, int byte, int high, int low,
                                  int max = kNoClamp)
{
    return {field, quint8(byte), quint8(low), quint8(high - low + 1), quint8(max)};
}

// The whole byte, clamped to `max`. A clamp of 1 turns the byte into a flag: 1 when it
// is not 0.
template <typename Record>
constexpr BitField<Record> byteOf(quint8 Record::*field, int byte, int max = kNoClamp)
{
    return {field, quint8(byte), 0, 8, quint8(max)};
}

template <typename Record>
quint8 readBitField(const BitField<Record>& row, const FrameReader& frame)
{
    const quint8 value = row.count >= 8 ? frame.at(row.byte) : frame.bits(row.byte, row.low, row.count);
    return qMin(value, row.max);
}

template <typename Record, std::size_t N>
void applyBitFields(const BitField<Record> (&rows)[N], const FrameReader& frame, Record& record)
{
    for (const BitField<Record>& row : rows)
        record.*row.field = readBitField(row, frame);
}

// The same runs without a named field: each value goes to the next entry of an array,
// for records that keep a page of mechanical values in frame order.
struct BitRun
{
    quint8 byte;
    quint8 low;
    quint8 count;
    quint8 max;
};

// Bits `high` down to `low` of frame byte `byte`, clamped to `max`.
constexpr BitRun runOf(int byte, int high, int low, int max = kNoClamp)
{
    return {quint8(byte), quint8(low), quint8(high - low + 1), quint8(max)};
}

inline quint8 readBitRun(const BitRun& run, const FrameReader& frame)
{
    const quint8 value = run.count >= 8 ? frame.at(run.byte) : frame.bits(run.byte, run.low, run.count);
    return qMin(value, run.max);
}

// Writes one value a run into out[0], out[1], ...; `out` holds N entries.
template <std::size_t N>
void applyBitRuns(const BitRun (&runs)[N], const FrameReader& frame, quint8 (&out)[N])
{
    for (std::size_t i = 0; i < N; ++i)
        out[i] = readBitRun(runs[i], frame);
}

} // namespace canbus
