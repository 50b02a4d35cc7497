#include "ptx/box/FileRules.h"

#include "ptx/core/FileDescriptor.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

namespace ptx::box
{

namespace
{

// The headers of the system may be older than its kernel, so all that is used stands here.
constexpr long CreateRuleset = 444;
constexpr long AddRule = 445;
constexpr long RestrictSelf = 446;
constexpr unsigned AskVersion = 1;
constexpr int BelowPath = 1; ///< the type of a rule

namespace right
{

constexpr std::uint64_t Execute = 1U << 0;
constexpr std::uint64_t WriteFile = 1U << 1;
constexpr std::uint64_t ReadFile = 1U << 2;
constexpr std::uint64_t ReadFolder = 1U << 3;
constexpr std::uint64_t RemoveFile = 1U << 5;
constexpr std::uint64_t MakeFile = 1U << 8;
constexpr std::uint64_t Truncate = 1U << 14;
constexpr std::uint64_t OfFirst = (1U << 13) - 1;
constexpr std::uint64_t OfFiles = Execute | WriteFile | ReadFile | Truncate;

/// All that the version knows of: what it knows and no rule gives is refused.
constexpr std::uint64_t all(int version)
{
    std::uint64_t rights = OfFirst;
    for (const auto& [since, bit] : {std::pair(2, 13), std::pair(3, 14), std::pair(5, 15)})
        rights |= version >= since ? std::uint64_t(1) << bit : 0;
    return rights;
}

} // namespace right

struct Ruleset {
    std::uint64_t files = 0;
    std::uint64_t network = 0; ///< binding and connecting TCP
    std::uint64_t scopes = 0;  ///< abstract sockets and signals
};

struct [[gnu::packed]] Rule {
    std::uint64_t rights = 0;
    std::int32_t folder = -1;
};

/// How much of the ruleset the version takes.
std::size_t sizeFor(int version)
{
    return version >= 6 ? sizeof(Ruleset) : version >= 4 ? 2 * sizeof(std::uint64_t) : sizeof(std::uint64_t);
}

std::string failed(const char* what)
{
    return std::string(what) + ": " + std::strerror(errno);
}

bool isFolder(int descriptor)
{
    struct stat status {
    };
    return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

class Rules
{
public:
    explicit Rules(int version) : m_all(right::all(version)), m_descriptor(make(version)) {}

    bool isMade() const { return static_cast<bool>(m_descriptor); }

    bool allow(const std::vector<std::string>& paths, std::uint64_t rights) const
    {
        for (const std::string& path : paths) {
            const core::FileDescriptor target(::open(path.c_str(), O_PATH | O_CLOEXEC));
            if (!target)
                continue; // what is not there, nobody reads
            Rule rule;
            rule.rights = rights & m_all & (isFolder(target.get()) ? m_all : right::OfFiles);
            rule.folder = target.get();
            if (::syscall(AddRule, m_descriptor.get(), BelowPath, &rule, 0) != 0)
                return false;
        }
        return true;
    }

    bool restrict() const { return ::syscall(RestrictSelf, m_descriptor.get(), 0) == 0; }

private:
    static int make(int version)
    {
        Ruleset set;
        set.files = right::all(version);
        set.network = 3;
        set.scopes = 3;
        return static_cast<int>(::syscall(CreateRuleset, &set, sizeFor(version), 0));
    }

    std::uint64_t m_all;
    core::FileDescriptor m_descriptor;
};

} // namespace

int fileRulesVersion()
{
    return static_cast<int>(std::max(0L, ::syscall(CreateRuleset, nullptr, std::size_t{0}, AskVersion)));
}

std::optional<std::string> restrictFiles(const FileAccess& access)
{
    const int version = fileRulesVersion();
    if (version == 0)
        return "the kernel has no rules for files (Landlock)";
    const Rules rules(version);
    if (!rules.isMade())
        return failed("the kernel makes no rules for files");
    using namespace right;
    const std::uint64_t writing = ReadFile | ReadFolder | WriteFile | RemoveFile | MakeFile | Truncate;
    if (!rules.allow(access.readable, ReadFile | ReadFolder) || !rules.allow(access.writable, writing) ||
        !rules.allow(access.programs, ReadFile | Execute) || !rules.allow(access.listed, ReadFolder))
        return failed("the kernel takes no rule for files");
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !rules.restrict())
        return failed("the kernel does not hold the process to rules for files");
    return std::nullopt;
}

} // namespace ptx::box
