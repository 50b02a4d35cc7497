#include "ptx/conversion/Conversion.h"
#include "ptx/occt/OcctVersion.h"
#include "tools/ptxconvert/ReaderTable.h"

#include <clocale>
#include <cstdio>

namespace
{

int print(const std::string& text)
{
    std::fputs(text.c_str(), stdout);
    return static_cast<int>(ptx::ExitCode::Success);
}

int perform(const ptx::CommandLine& line)
{
    switch (line.task) {
    case ptx::CommandLine::Task::Help:
        return print(ptx::usageText());
    case ptx::CommandLine::Task::HelpSettings:
        return print(ptx::settingsHelp());
    case ptx::CommandLine::Task::Version:
        return print("ptxconvert " ZN_VERSION "\nOpen CASCADE " + std::string(ptx::occtVersion()) + "\n");
    case ptx::CommandLine::Task::Convert:
        break;
    }
    return static_cast<int>(ptx::convert(line, ptx::formats()));
}

} // namespace

int main(int argc, char** argv)
{
    // File names are bytes that mean UTF-8, whatever locale the process was started under; numbers stay in "C".
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const ptx::Outcome<ptx::CommandLine> line = ptx::parseCommandLine({argv + 1, argv + argc});
    if (!line) {
        std::fprintf(stderr, "ptxconvert: %s\n\n%s", line.failure().message.c_str(), ptx::usageText().c_str());
        return static_cast<int>(ptx::ExitCode::WrongUse);
    }
    return perform(line.value());
}
