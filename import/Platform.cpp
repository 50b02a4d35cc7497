#include "import/Platform.h"

#if !defined(_WIN32)

#    include "import/Rest.h"

namespace
{

bool isSeparator(char letter)
{
    return letter == '/' || letter == '\\';
}

bool isLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

} // namespace

void Sleep(unsigned milliseconds)
{
    frame::restUntilEvents(std::chrono::milliseconds(milliseconds));
}

int PathIsRelativeA(const char* path)
{
    const bool isAbsolute = isSeparator(path[0]) || (isLetter(path[0]) && path[1] == ':');
    return isAbsolute ? 0 : 1;
}

const char* PathFindFileNameA(const char* path)
{
    const char* name = path;
    for (; *path; ++path)
        if (isSeparator(*path) && path[1] && !isSeparator(path[1]))
            name = path + 1;
    return name;
}

#endif
