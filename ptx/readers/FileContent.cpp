#include "ptx/readers/FileContent.h"

#include <filesystem>
#include <fstream>

namespace ptx::readers
{

core::Outcome<std::string> readContent(const std::string& path)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    std::ifstream stream(path, std::ios::binary);
    if (error || !stream)
        return core::Failure{core::ExitCode::InputUnreadable, "cannot read " + path};
    std::string content(static_cast<std::size_t>(size), '\0');
    stream.read(content.data(), static_cast<std::streamsize>(size));
    content.resize(static_cast<std::size_t>(stream.gcount()));
    return content;
}

} // namespace ptx::readers
