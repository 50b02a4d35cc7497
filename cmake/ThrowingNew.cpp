// mimalloc is a C library, whose own operators end the program when memory is out: C cannot throw.

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
