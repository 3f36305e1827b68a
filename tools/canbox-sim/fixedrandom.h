#pragma once
// A small fixed generator of numbers: the same sequence for a seed on every machine
// and every run, for streams and corpora that must come out the same each time.

#include <QtGlobal>

class FixedRandom
{
public:
    explicit FixedRandom(quint32 seed) : m_state(seed * 2654435761u + 1u) {}
    // A number in [0, bound).
    quint32 next(quint32 bound)
    {
        m_state = m_state * 1664525u + 1013904223u;
        return (m_state >> 8) % bound;
    }
    // A number in [low, high].
    int between(int low, int high) { return low + int(next(quint32(high - low + 1))); }

private:
    quint32 m_state;
};
