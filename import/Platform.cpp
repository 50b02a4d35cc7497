#include "import/Platform.h"

#if !defined(_WIN32)

#    include <chrono>
#    include <thread>

void Sleep(unsigned milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

#endif
