#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

/// What the tests of the house look at: the sources of a checkout with their include lines.
namespace house
{

/// A place in the sources that is not as it should be.
struct Finding {
    std::string file; ///< relative to the root, with '/'
    int line = 0;     ///< from 1; 0 where the file as a whole is meant
    std::string what; ///< what is wrong there

    bool operator==(const Finding&) const = default;
};

/// How a failed test shows it.
void PrintTo(const Finding& finding, std::ostream* output);

/// An include line.
struct Include {
    int line = 0;         ///< from 1
    std::string included; ///< as resolved: relative to the root for a file of ours, else as written

    bool operator==(const Include&) const = default;
};

/// A header or a source.
struct SourceFile {
    std::string path; ///< relative to the root, with '/'
    std::vector<Include> includes;
    std::vector<int> wideLines; ///< the lines of more than `widestLine` columns, from 1
    bool hasMain = false;       ///< defines the main function of a program

    bool operator==(const SourceFile&) const = default;
};

/// A line may be this long, counted in letters rather than in bytes.
constexpr std::size_t widestLine = 120;

/// The folder of a file, without a '/' at its end; empty for one in the root.
std::string folderOf(std::string_view path);
/// The name of a file without folder and suffix.
std::string stemOf(std::string_view path);
/// Whether `path` lies in `folder` or below it.
bool isBelow(std::string_view folder, std::string_view path);

/// The folders at the root that hold sources of ours.
const std::vector<std::string>& ownFolders();
/// Whether a file belongs to the product, which tests, benches and examples do not.
bool isProduct(std::string_view path);

/// Reads the headers and sources below `ownFolders()` in `root`, in the order of their paths; a folder that is not
/// there counts as empty. An include is resolved as the compiler does it: beside the including file first, then from
/// the root. Throws std::filesystem::filesystem_error where the tree cannot be read.
std::vector<SourceFile> readSourceTree(const std::filesystem::path& root);

} // namespace house
