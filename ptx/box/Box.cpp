#include "ptx/box/Box.h"

#include "ptx/box/ProcessRules.h"
#include "ptx/box/SystemCalls.h"

#include <linux/seccomp.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

namespace ptx::box
{

namespace
{

namespace fs = std::filesystem;

#ifdef PTX_WITHOUT_BOX
constexpr bool IsBuilt = false;
#else
constexpr bool IsBuilt = true;
#endif

constexpr const char* SystemFolders[] = {"/usr",
                                         "/lib",
                                         "/lib64",
                                         "/etc/ld.so.cache",
                                         "/etc/localtime",
                                         "/sys/devices/system",
                                         "/proc/self/statm",
                                         "/proc/self/status",
                                         "/proc/self/maps",
                                         "/proc/meminfo",
                                         "/proc/cpuinfo",
                                         "/dev/null",
                                         "/dev/urandom"};

/// As it is called and, where that is a link, as what it leads to.
void addFolderOf(std::vector<std::string>& folders, const std::string& file)
{
    std::error_code error;
    folders.push_back(fs::path(file).parent_path().string());
    const fs::path target = fs::weakly_canonical(file, error);
    if (!error && target.parent_path() != folders.back())
        folders.push_back(target.parent_path().string());
}

/// Files that the process has code or data of: its libraries, the program and what starts programs.
std::set<std::string> mappedFiles()
{
    std::set<std::string> files;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
        if (const std::size_t path = line.find('/'); path != line.npos)
            files.insert(line.substr(path));
    return files;
}

bool isLoader(const std::string& file)
{
    const std::string name = fs::path(file).filename().string();
    return name.starts_with("ld-linux") || name.starts_with("ld-musl") || name.starts_with("ld64") ||
           (name.starts_with("ld-") && name.ends_with(".so"));
}

void addCode(FileAccess& access)
{
    std::error_code error;
    const std::string program = fs::read_symlink("/proc/self/exe", error).string();
    access.programs.push_back(program);
    for (const std::string& file : mappedFiles()) {
        if (isLoader(file))
            access.programs.push_back(file);
        if (file.find(".so") != file.npos || file == program)
            access.readable.push_back(file == program ? file : fs::path(file).parent_path().string());
    }
    if (const char* const libraries = std::getenv("LD_LIBRARY_PATH")) {
        const std::string text = libraries;
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find(':', start), text.size());
            if (end > start)
                access.readable.push_back(text.substr(start, end - start));
            start = end + 1;
        }
    }
}

bool hasSystemCallFilters()
{
    const std::uint32_t action = SECCOMP_RET_ALLOW;
    return ::syscall(SYS_seccomp, SECCOMP_GET_ACTION_AVAIL, 0, &action) == 0;
}

core::Failure notLocked(const std::string& why)
{
    return {core::ExitCode::WrongUse, "the conversion would not be locked in, which is required: " + why};
}

} // namespace

FileAccess accessFor(const Work& work)
{
    FileAccess access;
    access.readable.assign(std::begin(SystemFolders), std::end(SystemFolders));
    addCode(access);
    if (!work.readers.empty())
        access.readable.push_back(work.readers);
    for (const std::string& input : work.inputs)
        addFolderOf(access.readable, input);
    access.readable.insert(access.readable.end(), work.folders.begin(), work.folders.end());
    access.listed = work.listed;
    addFolderOf(access.writable, work.output);
    return access;
}

core::Outcome<std::string> lock(core::Sandbox wish, const Work& work)
{
    if (wish == core::Sandbox::Off)
        return std::string("not locked in, as was asked for");
    if (!IsBuilt)
        return wish == core::Sandbox::Require ? core::Outcome<std::string>(notLocked("this build has no box"))
                                              : std::string("not locked in: this build has no box");
    const FileAccess access = accessFor(work);
    restrictProcess();
    const std::optional<std::string> files = restrictFiles(access);
    const std::optional<std::string> calls = restrictSystemCalls();
    if (wish == core::Sandbox::Require && (files || calls))
        return notLocked(files.value_or(*calls));
    std::string text = "locked in: ";
    text +=
        files ? "no rules for files (" + *files + ")" : "files (Landlock " + std::to_string(fileRulesVersion()) + ")";
    text += calls ? ", no filter of system calls (" + *calls + ")" : ", system calls";
    return text;
}

std::string abilities()
{
    if (!IsBuilt)
        return "none: this build has no box";
    const int version = fileRulesVersion();
    const std::string files =
        version > 0 ? "files (Landlock " + std::to_string(version) + ")" : std::string("no rules for files (Landlock)");
    return files + (hasSystemCallFilters() ? ", system calls" : ", no filter of system calls");
}

} // namespace ptx::box
