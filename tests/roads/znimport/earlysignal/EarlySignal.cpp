// Sends the program SIGTERM when it sets its locale, which it does before all other work.

#include <dlfcn.h>

#include <clocale>
#include <csignal>

extern "C" char* setlocale(int category, const char* name)
{
    static bool isFirst = true;
    if (isFirst)
        std::raise(SIGTERM);
    isFirst = false;
    const auto real = reinterpret_cast<char* (*)(int, const char*)>(dlsym(RTLD_NEXT, "setlocale"));
    return real(category, name);
}
