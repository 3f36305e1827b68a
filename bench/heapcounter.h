#pragma once
// Counts the heap allocations of the whole process, Qt's included, for the replay
// benchmarks. Qt's containers (QByteArray, QString, QList, QVariant's payloads) take
// their memory with malloc and realloc, not with operator new, so counting operator
// new alone would miss most of the receive path; both are counted here. Linking
// heapcounter.cpp into a program replaces malloc, calloc, realloc and free and the
// global operator new and delete for everything in that process.

#include <cstddef>
#include <cstdint>

namespace bench {

struct HeapCount
{
    std::uint64_t allocations = 0;   // malloc, calloc, realloc (each call that hands out memory)
    std::uint64_t news = 0;          // operator new and new[], a subset of the above
};

HeapCount heapCount();
// Bytes handed out by malloc and not yet freed (mallinfo2's uordblks).
std::size_t heapInUse();

} // namespace bench
