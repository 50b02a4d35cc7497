#include "tools/znimport/LargePages.h"

#include <fstream>

#ifdef ZN_FAST_ALLOCATOR
#    include <mimalloc.h>
#endif

namespace znimport
{

#ifdef ZN_FAST_ALLOCATOR

namespace
{

/// What cannot be read is none.
int countIn(const char* file)
{
    int count = 0;
    std::ifstream(file) >> count;
    return count;
}

} // namespace

void useLargePages()
{
    if (countIn("/proc/sys/vm/nr_hugepages") == 0 && countIn("/proc/sys/vm/nr_overcommit_hugepages") == 0)
        mi_option_enable(mi_option_large_os_pages);
}

#else

void useLargePages() {}

#endif

} // namespace znimport
