#include "ptx/box/ProcessRules.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace ptx::box
{

namespace
{

constexpr rlim_t MostDescriptors = 1024;
constexpr rlim_t LargestFile = rlim_t{64} << 30;

constexpr std::string_view KeptVariables[] = {"LANG", "LC_",     "LOCPATH", "TZ",        "TMPDIR",         "LD_",
                                              "CSF_", "CASROOT", "MALLOC_", "MIMALLOC_", "GLIBC_TUNABLES", "PATH",
                                              "PTX_", "ZN_"};

void limit(int what, rlim_t most)
{
    rlimit limits{};
    if (::getrlimit(what, &limits) != 0)
        return;
    limits.rlim_max = std::min(limits.rlim_max, most);
    limits.rlim_cur = std::min(limits.rlim_cur, limits.rlim_max);
    ::setrlimit(what, &limits);
}

void cutEnvironment()
{
    std::vector<std::string> names;
    for (char** variable = environ; variable && *variable; ++variable) {
        const std::string_view text = *variable;
        const bool isKept = std::any_of(std::begin(KeptVariables), std::end(KeptVariables),
                                        [text](std::string_view start) { return text.starts_with(start); });
        if (!isKept)
            names.emplace_back(text.substr(0, text.find('=')));
    }
    for (const std::string& name : names)
        ::unsetenv(name.c_str());
}

} // namespace

void restrictProcess()
{
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_NOFILE, MostDescriptors);
    limit(RLIMIT_FSIZE, LargestFile);
#ifdef SYS_close_range
    ::syscall(SYS_close_range, STDERR_FILENO + 1, ~0U, 0);
#endif
    cutEnvironment();
}

} // namespace ptx::box
