#pragma once

#include "tests/house/SourceTree.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace house
{

/// A small made-up source tree in a folder of its own, gone with this object.
class MadeTree
{
public:
    MadeTree()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "zn house \xc3\xa4 XXXXXX").string();
        m_root = mkdtemp(pattern.data());
    }
    ~MadeTree() { std::filesystem::remove_all(m_root); }
    MadeTree(const MadeTree&) = delete;
    MadeTree& operator=(const MadeTree&) = delete;

    const std::filesystem::path& root() const { return m_root; }

    /// Writes a file, with the folders above it.
    void write(const std::filesystem::path& file, const std::string& text = {}) const
    {
        std::filesystem::create_directories((m_root / file).parent_path());
        std::ofstream(m_root / file) << text;
    }

    /// Writes a file that includes others.
    void writeIncluding(const std::filesystem::path& file, const std::vector<std::string>& included) const
    {
        std::string text;
        for (const std::string& name : included)
            text += "#include \"" + name + "\"\n";
        write(file, text);
    }

    std::vector<SourceFile> read() const { return readSourceTree(m_root); }

private:
    std::filesystem::path m_root;
};

} // namespace house
