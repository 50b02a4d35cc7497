#pragma once

#include <cstddef>
#include <filesystem>

/// A folder for one run, which goes with the program.
class SampleFolder
{
public:
    SampleFolder();
    SampleFolder(const SampleFolder&) = delete;
    SampleFolder& operator=(const SampleFolder&) = delete;
    ~SampleFolder();

    /// A document with this many instances in one graph, each with two values of user data and a transform, in the form
    /// in which PDM systems export them.
    std::filesystem::path instances(std::size_t count) const;

    /// A document with this many occurrences under the product definition, each with a path of four instances that no
    /// other one has.
    std::filesystem::path occurrences(std::size_t count) const;

private:
    std::filesystem::path m_folder;
};
