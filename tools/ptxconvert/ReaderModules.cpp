#include "tools/ptxconvert/ReaderModules.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
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

ptx::core::Trouble checkBuild(std::string_view version, std::string_view own, bool hasSameTypes)
{
    using ptx::core::ExitCode;
    if (version != own)
        return ptx::core::Failure{ExitCode::Unsupported, "it belongs to version " + std::string(version) +
                                                             ", the program is version " + std::string(own)};
    if (!hasSameTypes)
        return ptx::core::Failure{ExitCode::Unsupported, "it comes from another build than the program"};
    return std::nullopt;
}

/// Whether the end of a library is missing, where its table of sections stands. The loader maps what the beginning
/// promises, and a page behind the end of the file would end the process with SIGBUS.
bool isCutShort(const std::string& path)
{
    ElfW(Ehdr) header = {};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(&header), sizeof header) ||
        std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0)
        return false; // the loader knows what it is
    const std::uint64_t bytesOfTable = std::uint64_t(header.e_shnum) * header.e_shentsize;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return !error && (header.e_shoff > size || bytesOfTable > size - header.e_shoff);
}

/// What the library exports under its own name.
ptx::core::Outcome<void*> loadEntry(const std::string& name, Binding binding)
{
    const std::string path = pathOf(name);
    if (isCutShort(path))
        return unusable(path, "the file is cut short");
    void* library = dlopen(path.c_str(), (binding == Binding::AtOnce ? RTLD_NOW : RTLD_LAZY) | RTLD_LOCAL);
    if (!library)
        return unusable(path, loaderText());
    void* entry = dlsym(library, name.c_str());
    if (!entry)
        return unusable(path, loaderText());
    return entry;
}

template <class Module>
ptx::core::Outcome<const Module*> load(const std::string& name, Binding binding)
{
    const ptx::core::Outcome<void*> entry = loadEntry(name, binding);
    if (!entry)
        return entry.failure();
    const Module* module = reinterpret_cast<const Module* (*)()>(entry.value())();
    if (const ptx::core::Trouble trouble = ptxconvert::checkBuild(*module))
        return unusable(pathOf(name), trouble->message);
    return module;
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
    const bool isAlike = module.bytesOfJob == own.bytesOfJob && module.bytesOfModel == own.bytesOfModel;
    return checkBuild(module.version, own.version, isAlike);
}

ptx::core::Trouble checkBuild(const MeshModule& module)
{
    const MeshModule own = meshModuleOf(nullptr);
    const bool isAlike = module.bytesOfOptions == own.bytesOfOptions && module.bytesOfResult == own.bytesOfResult;
    return checkBuild(module.version, own.version, isAlike);
}

ptx::core::Trouble checkBuild(const DocumentModule& module)
{
    return checkBuild(module.version, ZN_VERSION, module.bytesOfResult == sizeof(ptx::conversion::ReadDocument));
}

ptx::core::Outcome<const ptx::readers::Module*> loadReader(const std::string& name, Binding binding)
{
    return load<ptx::readers::Module>(name, binding);
}

ptx::core::Outcome<const MeshModule*> loadMeshReader(Binding binding)
{
    return load<MeshModule>("ptxmesh", binding);
}

ptx::core::Outcome<const DocumentModule*> loadDocumentReader(Binding binding)
{
    return load<DocumentModule>("ptxplmxml", binding);
}

} // namespace ptxconvert
