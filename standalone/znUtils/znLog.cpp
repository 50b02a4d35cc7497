#include "host/znUtils/znLog.h"

#include "standalone/znUtils/LogSink.h"

#include <cstdio>
#include <utility>

namespace znUtils
{

namespace
{

LogSink& sink()
{
    static LogSink current;
    return current;
}

} // namespace

void setLogSink(LogSink newSink)
{
    sink() = std::move(newSink);
}

} // namespace znUtils

void znLog::error(const char* text)
{
    if (!text)
        return;
    if (znUtils::sink())
        znUtils::sink()(text);
    else
        std::fprintf(stderr, "%s\n", text);
}
