#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

/// A folder of its own for the outputs of a benchmark, gone with the object.
class BenchFolder
{
public:
    BenchFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "bench-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~BenchFolder() { std::filesystem::remove_all(m_path); }
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;
    std::string file(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};
