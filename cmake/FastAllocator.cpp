// How programs of ours use mimalloc. It is a C library, whose own operators end the program when memory is
// out: C cannot throw. And it keeps what was freed for 25 ms, by which time a reader's tables are still there
// when its parts are healed: less than 2 ms later they are not, which takes a tenth from the peak and no
// time. Large buffers get large pages: a reader that clears one of 16 MB for the smallest of files touches
// 4,096 small pages for that, half of its time.

#include <mimalloc.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <sys/mman.h>

namespace
{

/// The advice is taken for what is not in use yet, and where the system knows such pages.
void useLargePages(void* memory, std::size_t size)
{
    constexpr std::uintptr_t page = 4096;
    const auto begin = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t first = (begin + page - 1) / page * page;
    (void)madvise(reinterpret_cast<void*>(first), (begin + size - first) / page * page, MADV_HUGEPAGE);
}

} // namespace

void* operator new(std::size_t size)
{
    constexpr std::size_t large = 8 << 20;
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    if (size >= large)
        useLargePages(memory, size);
    return memory;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

namespace
{

/// The variable MIMALLOC_DECOMMIT_DELAY still has the last word.
[[gnu::constructor]] void releaseSoon()
{
    constexpr long milliseconds = 2;
    mi_option_set_default(mi_option_decommit_delay, milliseconds);
}

} // namespace
