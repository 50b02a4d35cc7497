#pragma once

#include <cstddef>
#include <filesystem>

/// A folder of documents for one run, which goes with the program.
class AssemblyDocuments
{
public:
    AssemblyDocuments();
    AssemblyDocuments(const AssemblyDocuments&) = delete;
    AssemblyDocuments& operator=(const AssemblyDocuments&) = delete;
    ~AssemblyDocuments();

    /// An assembly of this many instances in groups of 100, each with a transform of its own and a part that refers to
    /// a file; a thousand parts in all. With `occurrences` each instance has an occurrence in the active view, which
    /// gives it another transform.
    std::filesystem::path assembly(std::size_t instances, bool occurrences) const;

private:
    std::filesystem::path m_folder;
};
