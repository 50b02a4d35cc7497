#include "ptx/readers/PartFiles.h"

#include "protocol/Formats.h"

#include <QString>

#include <algorithm>
#include <filesystem>

namespace ptx::readers
{

namespace
{

namespace fs = std::filesystem;

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool isThere(const fs::path& path)
{
    std::error_code error;
    return fs::exists(path, error);
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

std::string folded(const std::string& name)
{
    return QString::fromStdString(name).normalized(QString::NormalizationForm_C).toCaseFolded().toStdString();
}

} // namespace

const std::string* PartFileFinder::entryLike(const std::string& folder, const std::string& name)
{
    const auto [listing, isNew] = m_listings.try_emplace(folder);
    if (isNew) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
             entry.increment(error)) {
            const std::string here = entry->path().filename().string();
            const auto [known, isFirst] = listing->second.try_emplace(folded(here), here);
            known->second = std::min(known->second, here);
        }
    }
    const auto found = listing->second.find(folded(name));
    return found == listing->second.end() ? nullptr : &found->second;
}

/// `path`, each step of which may be written in letters of another case; empty if there is no such file.
std::string PartFileFinder::forgiving(const std::string& path)
{
    if (isFile(path))
        return path;
    fs::path found = fs::path(path).root_path();
    for (const fs::path& step : fs::path(path).relative_path()) {
        if (isThere(found / step)) {
            found /= step;
            continue;
        }
        const std::string* const like = entryLike(found.string(), step.string());
        if (!like)
            return {};
        found /= *like;
    }
    return isFile(found) ? found.string() : std::string();
}

std::optional<std::string> PartFileFinder::refusal(const std::string& path) const
{
    const auto refusal = m_policy.refusal(files::references::Use::Document, path, m_policy.top);
    return refusal ? std::optional<std::string>(files::references::sentence(*refusal)) : std::nullopt;
}

/// The file `path`, or one in which it is packed.
std::string PartFileFinder::plainOrPacked(const std::string& path)
{
    if (refusal(path))
        return {};
    std::string found = forgiving(path);
    if (!found.empty())
        return found;
    for (const std::string& name : protocol::packedNames(path))
        if (found = forgiving(name); !found.empty())
            break;
    return found;
}

std::string PartFileFinder::find(const std::string& folder, const std::string& written)
{
    const std::string text = withSlashes(written);
    const bool isAbsolute = isDriveLetter(text) || fs::path(text).is_absolute();
    const fs::path expected = (isDriveLetter(text) ? fs::path(text) : fs::path(folder) / text).lexically_normal();
    if (std::string found = plainOrPacked(expected.string()); !found.empty())
        return found;
    if (!isAbsolute)
        return expected.string();
    const fs::path beside = fs::path(folder) / fs::path(text).filename();
    const std::string found = plainOrPacked(beside.string());
    if (!found.empty())
        return found;
    return refusal(expected.string()) ? expected.string() : beside.string();
}

std::string canonicalPath(const std::string& path)
{
    std::error_code error;
    const fs::path canonical = fs::canonical(path, error);
    return error ? path : canonical.string();
}

} // namespace ptx::readers
