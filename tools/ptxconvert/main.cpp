#include "protocol/Options.h"
#include "ptx/conversion/Conversion.h"
#include "tools/ptxconvert/ReaderTable.h"
#include "tools/ptxconvert/server/ForkServer.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace
{

int print(const std::string& text)
{
    std::fputs(text.c_str(), stdout);
    return static_cast<int>(ptx::core::ExitCode::Success);
}

int perform(const ptx::core::CommandLine& line)
{
    switch (line.task) {
    case ptx::core::CommandLine::Task::Help:
        return print(ptx::core::usageText());
    case ptx::core::CommandLine::Task::HelpSettings:
        return print(ptx::core::settingsHelp());
    case ptx::core::CommandLine::Task::Version:
        return print("ptxconvert " ZN_VERSION "\n" + ptxconvert::readerVersions());
    case ptx::core::CommandLine::Task::Convert:
        break;
    }
    return static_cast<int>(ptx::conversion::convert(line, ptxconvert::formats()));
}

int run(const std::vector<std::string>& arguments)
{
    // File names are bytes that mean UTF-8, whatever locale the process was started under; numbers stay in "C".
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ptx::core::Outcome<ptx::core::CommandLine> line = ptx::core::parseCommandLine(arguments);
    if (!line) {
        std::fprintf(stderr, "ptxconvert: %s\n\n%s", line.failure().message.c_str(), ptx::core::usageText().c_str());
        return static_cast<int>(ptx::core::ExitCode::WrongUse);
    }
    line.value().arguments = arguments;
    return perform(line.value());
}

/// Readers are loaded once, by the server; a conversion is a copy of it.
int serve(const std::string& socket)
{
    ptxconvert::prepareReaders();
    const int error = ptxconvert::serve(socket, run);
    std::fprintf(stderr, "ptxconvert: %s: %s\n", socket.c_str(), std::strerror(error));
    return static_cast<int>(ptx::core::ExitCode::WrongUse);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], protocol::option::Serve) == 0)
        return serve(argv[2]);
    return run({argv + 1, argv + argc});
}
