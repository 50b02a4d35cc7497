#include "ptx/tessellation/Tessellation.h"

#include <clocale>
#include <cstdio>

int main(int argc, char** argv)
{
    // File names are bytes that mean UTF-8, whatever locale the process was started under; numbers stay in "C".
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const auto options = ptx::tessellation::parseTessellationOptions({argv + 1, argv + argc});
    if (!options) {
        std::fprintf(stderr, "ptxtessellate: %s\n\n%s", options.failure().message.c_str(),
                     ptx::tessellation::tessellationUsage().c_str());
        return static_cast<int>(ptx::core::ExitCode::WrongUse);
    }
    return static_cast<int>(ptx::tessellation::tessellateFile(options.value()));
}
