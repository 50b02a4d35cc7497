#include "ptx/conversion/InputFile.h"

#include "ptx/readers/PackedFile.h"

#include <filesystem>
#include <fstream>

namespace ptx::conversion
{

namespace
{

constexpr std::size_t HeadSize = std::size_t{64} * 1024;

core::Failure unreadable(const std::string& path, const std::string& why)
{
    return {core::ExitCode::InputUnreadable, "cannot read " + path + ": " + why};
}

} // namespace

core::Outcome<InputFile> lookAtInput(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return unreadable(path, "there is no such file");
    if (error)
        return unreadable(path, error.message());
    if (!std::filesystem::is_regular_file(status))
        return unreadable(path, "it is not a file");
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return unreadable(path, "permission denied");
    InputFile result;
    result.head.resize(HeadSize);
    stream.read(result.head.data(), static_cast<std::streamsize>(HeadSize));
    result.head.resize(static_cast<std::size_t>(stream.gcount()));
    result.size = readers::packed::sizeOf(path);
    if (result.head.empty())
        return core::Failure{core::ExitCode::Damaged, "the file is empty"};
    if (!readers::packed::isPacked(result.head))
        return result;
    core::Outcome<std::string> head = readers::packed::content(path, HeadSize);
    if (!head)
        return head.failure();
    result.head = std::move(head.value());
    return result;
}

} // namespace ptx::conversion
