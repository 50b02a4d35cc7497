#pragma once

#include "files/references/ReferencePolicy.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace ptx::readers
{

/// Finds the files that a CAD file means when it names its parts.
///
/// Names are relative to the folder where the referring file lies. Separators may be those of another system and the
/// case of letters another one than on the disk. An absolute path that leads nowhere stems from another machine: then
/// the name alone is looked for in that folder. A STEP file that is not there may lie there packed ("a.stpz" for
/// "a.stp").
///
/// Where a file may not be read, nobody looks for it.
///
/// A folder is listed once, when the first name in letters of another case is looked for in it: what comes into it
/// later is found under its very name alone.
class PartFileFinder
{
public:
    /// All files may be read, or those that `policy` allows.
    PartFileFinder() = default;
    explicit PartFileFinder(files::references::Policy policy) : m_policy(std::move(policy)) {}

    /// Why the file at `path`, which `find` gave, is not to be read; nothing for one that may be.
    std::optional<std::string> refusal(const std::string& path) const;

    /// @return the absolute path of the file that is named `written` in a file in `folder`; where it would be expected
    /// if there is none
    std::string find(const std::string& folder, const std::string& written);

private:
    /// Names in a folder by what they are without the case of letters; of several the first by its bytes.
    using Listing = std::unordered_map<std::string, std::string>;

    const std::string* entryLike(const std::string& folder, const std::string& name);
    std::string forgiving(const std::string& path);
    std::string plainOrPacked(const std::string& path);

    files::references::Policy m_policy;
    std::unordered_map<std::string, Listing> m_listings;
};

/// The one path of an existing file that all its paths share, links resolved; `path` itself if there is no such file.
std::string canonicalPath(const std::string& path);

} // namespace ptx::readers
