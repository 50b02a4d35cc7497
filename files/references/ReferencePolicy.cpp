#include "files/references/ReferencePolicy.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

namespace files::references
{

namespace
{

namespace fs = std::filesystem;

constexpr std::array<std::pair<Rule, const char*>, 3> Words = {
    {{Rule::Parts, "parts"}, {Rule::Below, "below"}, {Rule::None, "none"}}};

/// Both absolute and without "..".
bool isIn(const fs::path& path, const fs::path& folder)
{
    const auto [ofFolder, ofPath] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return ofFolder == folder.end() || (ofFolder->empty() && std::next(ofFolder) == folder.end());
}

/// Where links lead; nothing for what is not there, and where they lead round in a circle.
std::optional<fs::path> resolved(const fs::path& path)
{
    std::error_code error;
    fs::path target = fs::canonical(path, error);
    return error ? std::nullopt : std::optional(std::move(target));
}

/// Folders that are open, as they are called and as they are.
class OpenFolders
{
public:
    void add(const std::string& folder)
    {
        if (folder.empty())
            return;
        const fs::path plain = plainPath(folder);
        m_names.push_back(plain);
        if (auto target = resolved(plain)) {
            m_names.push_back(*target);
            m_targets.push_back(std::move(*target));
        }
    }

    /// Each step of `path` below the folder that it begins with stays in one of the folders, links followed.
    bool hold(const fs::path& path) const
    {
        return std::any_of(m_names.begin(), m_names.end(),
                           [&](const fs::path& name) { return isIn(path, name) && staysInside(path, name); });
    }

private:
    bool staysInside(const fs::path& path, const fs::path& start) const
    {
        fs::path at = start;
        for (const fs::path& step : path.lexically_relative(start)) {
            at /= step;
            std::error_code error;
            const auto status = fs::symlink_status(at, error);
            if (status.type() == fs::file_type::not_found)
                return true; // nothing is there, and nothing below it
            const std::optional<fs::path> target = resolved(at);
            // A link that leads nowhere now may lead somewhere in the next moment.
            if (!target || !isTarget(*target))
                return false;
        }
        return true;
    }

    bool isTarget(const fs::path& path) const
    {
        return std::any_of(m_targets.begin(), m_targets.end(), [&](const fs::path& each) { return isIn(path, each); });
    }

    std::vector<fs::path> m_names;
    std::vector<fs::path> m_targets;
};

} // namespace

std::string plainPath(const std::string& path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return (error ? fs::path(path) : absolute).lexically_normal().string();
}

std::optional<Refusal> Policy::refusal(Use use, const std::string& path, const std::string& folder) const
{
    if (use == Use::Document && rule == Rule::None)
        return Refusal::NotFollowed;
    if (use == Use::Document && rule == Rule::Parts)
        return std::nullopt;
    OpenFolders open;
    open.add(use == Use::Bytes ? folder : top);
    for (const std::string& each : folders)
        open.add(each);
    // A name with a zero byte is another one to the system than to us.
    if (path.find('\0') == path.npos && open.hold(plainPath(path)))
        return std::nullopt;
    return use == Use::Bytes ? Refusal::BytesOutside : Refusal::DocumentOutside;
}

const char* word(Rule rule)
{
    return Words[static_cast<std::size_t>(rule)].second;
}

std::optional<Rule> ruleOf(std::string_view word)
{
    const auto row = std::find_if(Words.begin(), Words.end(), [&](const auto& each) { return word == each.second; });
    return row == Words.end() ? std::nullopt : std::optional(row->first);
}

const char* sentence(Refusal refusal)
{
    switch (refusal) {
    case Refusal::BytesOutside:
        return "refused, as it does not lie below the folder of the file that names it; --allow-references DIR allows "
               "it";
    case Refusal::DocumentOutside:
        return "refused, as it does not lie below the folder of the imported file (files.references=below); "
               "--allow-references DIR allows it";
    case Refusal::NotFollowed:
        break;
    }
    return "refused, as no references are followed (files.references=none); files.references=parts allows it";
}

} // namespace files::references
