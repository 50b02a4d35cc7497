#include "tools/ptxconvert/ReaderModules.h"

#include <dlfcn.h>

#include <filesystem>
#include <string_view>
#include <system_error>

namespace ptxconvert
{

namespace
{

ptx::core::Failure unusable(const std::string& path, const std::string& why)
{
    return {ptx::core::ExitCode::Unsupported, "the reader " + path + " cannot be used: " + why};
}

std::string pathOf(const std::string& name)
{
    return (std::filesystem::path(readersFolder()) / (name + ".so")).string();
}

std::string loaderText()
{
    const char* text = dlerror();
    return text ? text : "the loader gives no reason";
}

} // namespace

std::string readersFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / PTX_READERS_FROM_PROGRAM).lexically_normal().string();
}

ptx::core::Trouble checkBuild(const ptx::readers::Module& module)
{
    const ptx::readers::Module own = ptx::readers::moduleOf("", nullptr);
    if (std::string_view(module.version) != own.version)
        return ptx::core::Failure{ptx::core::ExitCode::Unsupported, "it belongs to version " +
                                                                        std::string(module.version) +
                                                                        ", the program is version " + own.version};
    if (module.bytesOfJob != own.bytesOfJob || module.bytesOfModel != own.bytesOfModel)
        return ptx::core::Failure{ptx::core::ExitCode::Unsupported, "it comes from another build than the program"};
    return std::nullopt;
}

ptx::core::Outcome<const ptx::readers::Module*> loadReader(const std::string& name, Binding binding)
{
    const std::string path = pathOf(name);
    void* library = dlopen(path.c_str(), (binding == Binding::AtOnce ? RTLD_NOW : RTLD_LAZY) | RTLD_LOCAL);
    if (!library)
        return unusable(path, loaderText());
    const auto entry = reinterpret_cast<ptx::readers::ModuleEntry*>(dlsym(library, name.c_str()));
    if (!entry)
        return unusable(path, loaderText());
    const ptx::readers::Module* module = entry();
    if (const ptx::core::Trouble trouble = checkBuild(*module))
        return unusable(path, trouble->message);
    return module;
}

} // namespace ptxconvert
