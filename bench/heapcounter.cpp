#include "heapcounter.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

// glibc's own entry points: the replacements below count and pass on to them, so
// that the allocator, and mallinfo2's view of it, stay glibc's.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* ptr, std::size_t size);
void __libc_free(void* ptr);
}

namespace {
// Relaxed: the benchmarks run on one thread; the atomics only keep Qt's helper
// threads, if any start, from tearing a count.
std::atomic<std::uint64_t> g_allocations{0};
std::atomic<std::uint64_t> g_news{0};

void* allocateForNew(std::size_t size)
{
    g_news.fetch_add(1, std::memory_order_relaxed);
    // Through the counted malloc: a new is an allocation like any other.
    if (void* p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}
} // namespace

extern "C" {
void* malloc(std::size_t size)
{
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size)
{
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}
void* realloc(void* ptr, std::size_t size)
{
    // A realloc may grow in place; it counts as an allocation all the same, as it
    // is a trip into the allocator that a steady state should not need.
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(ptr, size);
}
void free(void* ptr)
{
    __libc_free(ptr);
}
}

void* operator new(std::size_t size) { return allocateForNew(size); }
void* operator new[](std::size_t size) { return allocateForNew(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    g_news.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    g_news.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size ? size : 1);
}
void operator delete(void* ptr) noexcept { std::free(ptr); }
void operator delete[](void* ptr) noexcept { std::free(ptr); }
void operator delete(void* ptr, std::size_t) noexcept { std::free(ptr); }
void operator delete[](void* ptr, std::size_t) noexcept { std::free(ptr); }
void operator delete(void* ptr, const std::nothrow_t&) noexcept { std::free(ptr); }
void operator delete[](void* ptr, const std::nothrow_t&) noexcept { std::free(ptr); }

namespace bench {

HeapCount heapCount()
{
    return {g_allocations.load(std::memory_order_relaxed), g_news.load(std::memory_order_relaxed)};
}

std::size_t heapInUse()
{
    return mallinfo2().uordblks;
}

} // namespace bench
