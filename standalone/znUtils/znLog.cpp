#include "host/znUtils/znLog.h"

#include "protocol/Printable.h"
#include "standalone/znUtils/LogSink.h"

#include <cstdio>
#include <utility>

namespace zn::utils
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

} // namespace zn::utils

void znLog::error(const char* text)
{
    if (!text)
        return;
    if (zn::utils::sink())
        zn::utils::sink()(text);
    else
        protocol::print(stderr, std::string(text) + '\n');
}
