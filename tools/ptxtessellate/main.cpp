#include "protocol/Printable.h"
#include "ptx/tessellation/Tessellation.h"

#include <clocale>
#include <cstdio>

int main(int argc, char** argv)
{
    // File names are bytes that mean UTF-8, whatever locale the process was started under; numbers stay in "C".
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const auto options = ptx::tessellation::parseTessellationOptions({argv + 1, argv + argc});
    if (!options) {
        protocol::print(stderr, "ptxtessellate: " + options.failure().message + "\n\n" +
                                    ptx::tessellation::tessellationUsage());
        return static_cast<int>(ptx::core::ExitCode::WrongUse);
    }
    return static_cast<int>(ptx::tessellation::tessellateFile(options.value()));
}
