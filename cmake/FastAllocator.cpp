// How programs of ours use mimalloc. It is a C library, whose own operators end the program when memory is
// out: C cannot throw. And it keeps what was freed for 25 ms, by which time a reader's tables are still there
// when its parts are healed: less than 2 ms later they are not, which takes a tenth from the peak and no
// time.

#include <mimalloc.h>

#include <cstddef>
#include <cstdlib>
#include <new>

void* operator new(std::size_t size)
{
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
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
