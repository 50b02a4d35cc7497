#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Watches over the direction of the include lines: which folder may include from which.
///
/// The contract (host/) stands below everything and knows only itself and the vocabulary of file types. What host side
/// and converter side agree on (protocol/) knows no more. The library and
/// the open host (standalone/) both stand on the contract and never see each other. The importer and the tools may see
/// all of them. Library and contract include no headers that one operating system alone has, but in one file. Nobody but tests and benches includes from tests/ or bench/.
namespace house
{

/// An include line that points the wrong way.
struct BrokenLayer {
    std::string file;     ///< the including file, relative to the root, with '/'
    int line = 0;         ///< from 1
    std::string included; ///< as resolved: relative to the root for a file of ours, else as written

    bool operator==(const BrokenLayer&) const = default;
};

struct LayerReport {
    std::vector<std::string> files; ///< every source and header looked at, sorted
    std::vector<BrokenLayer> broken;
};

/// Looks at every source and header below the layers' folders in `root`; a folder that is not there counts as empty.
/// An include is resolved as the compiler does it: beside the including file first, then from the root.
/// Throws std::filesystem::filesystem_error where the tree cannot be read.
LayerReport scanLayers(const std::filesystem::path& root);

} // namespace house
