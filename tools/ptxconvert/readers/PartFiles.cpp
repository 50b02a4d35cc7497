#include "tools/ptxconvert/readers/PartFiles.h"

#include <QString>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>

namespace ptx
{

namespace
{

namespace fs = std::filesystem;

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool isDriveLetter(const std::string& text)
{
    return text.size() > 2 && text[1] == ':' && text[2] == '/';
}

std::string withSlashes(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

QString folded(const std::string& name)
{
    return QString::fromStdString(name).normalized(QString::NormalizationForm_C).toCaseFolded();
}

/// The entry of `folder` that is named as `name` but for the case of letters; of several the first by its bytes.
std::optional<fs::path> entryLike(const fs::path& folder, const std::string& name)
{
    std::error_code error;
    std::vector<fs::path> like;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (folded(entry->path().filename().string()) == folded(name))
            like.push_back(entry->path());
    return like.empty() ? std::nullopt : std::optional(*std::min_element(like.begin(), like.end()));
}

/// `path`, each step of which may be written in letters of another case.
std::optional<fs::path> forgiving(const fs::path& path)
{
    if (isFile(path))
        return path;
    fs::path found = path.root_path();
    for (const fs::path& step : path.relative_path()) {
        std::error_code error;
        const std::optional<fs::path> next =
            fs::exists(found / step, error) ? std::optional(found / step) : entryLike(found, step.string());
        if (!next)
            return std::nullopt;
        found = *next;
    }
    return isFile(found) ? std::optional(found) : std::nullopt;
}

} // namespace

std::string partFile(const std::string& folder, const std::string& written)
{
    const std::string text = withSlashes(written);
    const bool isAbsolute = isDriveLetter(text) || fs::path(text).is_absolute();
    const fs::path expected = (isDriveLetter(text) ? fs::path(text) : fs::path(folder) / text).lexically_normal();
    if (const auto found = forgiving(expected))
        return found->string();
    const fs::path beside = fs::path(folder) / fs::path(text).filename();
    if (isAbsolute)
        return forgiving(beside).value_or(beside).string();
    return expected.string();
}

std::string canonicalPath(const std::string& path)
{
    std::error_code error;
    const fs::path canonical = fs::canonical(path, error);
    return error ? path : canonical.string();
}

} // namespace ptx
