#include "ptx/conversion/LockIn.h"

#include "protocol/Formats.h"
#include "ptx/box/Box.h"
#include "ptx/readers/PartFiles.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

namespace ptx::conversion
{

namespace
{

namespace fs = std::filesystem;

const readers::Format* formatOf(const std::string& file, readers::Formats formats)
{
    const std::string extension = protocol::extensionOf(file);
    const auto reads = [&extension](const readers::Format& format) {
        return std::find(format.extensions.begin(), format.extensions.end(), extension) != format.extensions.end();
    };
    const auto found = std::find_if(formats.begin(), formats.end(), reads);
    return found == formats.end() ? nullptr : &*found;
}

class PartSearch
{
public:
    PartSearch(const core::CommandLine& line, readers::Formats formats)
        : m_formats(formats), m_finder(line.referencePolicy())
    {
        std::error_code error;
        if (fs::is_regular_file(line.input, error)) // nobody opens a pipe
            meet(line.input);
        for (std::size_t next = 0; next < m_files.size(); ++next)
            follow(std::string(m_files[next]));
    }

    std::vector<std::string> folders() const { return {m_folders.begin(), m_folders.end()}; }
    std::vector<std::string> listed() const { return {m_listed.begin(), m_listed.end()}; }

private:
    void follow(const std::string& file)
    {
        const readers::Format* const format = formatOf(file, m_formats);
        if (!format || !format->partNames)
            return;
        const std::string folder = fs::path(file).parent_path().string();
        for (const std::string& name : format->partNames(file)) {
            const std::string part = m_finder.find(folder, name);
            std::error_code error;
            if (m_finder.refusal(part) || !fs::is_regular_file(part, error))
                continue;
            noteListing(folder, name, part);
            meet(part);
        }
    }

    /// A name in letters of another case is found in a list of the folder where the letters differ.
    void noteListing(const std::string& folder, std::string name, const std::string& part)
    {
        std::replace(name.begin(), name.end(), '\\', '/');
        const fs::path written = (fs::path(folder) / name).lexically_normal();
        const fs::path found = part;
        fs::path common;
        for (auto a = written.begin(), b = found.begin(); a != written.end() && b != found.end() && *a == *b; ++a, ++b)
            common /= *a;
        if (written != found)
            m_listed.insert(common.string());
    }

    /// Links lead to a folder, too.
    void meet(const std::string& file)
    {
        const std::string target = readers::canonicalPath(file);
        for (const std::string& each : {file, target})
            m_folders.insert(fs::path(each).parent_path().string());
        if (m_known.insert(target).second)
            m_files.push_back(file);
    }

    readers::Formats m_formats;
    readers::PartFileFinder m_finder;
    std::vector<std::string> m_files;
    std::set<std::string> m_known;
    std::set<std::string> m_folders;
    std::set<std::string> m_listed;
};

} // namespace

core::Outcome<std::string> lockIn(const core::CommandLine& line, readers::Formats formats)
{
    const files::references::Policy policy = line.referencePolicy();
    box::Work work{{line.input}, policy.folders, line.output, line.readers, {}};
    if (policy.rule == files::references::Rule::Below)
        work.folders.push_back(policy.top);
    if (policy.rule == files::references::Rule::Parts && line.sandbox != core::Sandbox::Off) {
        const PartSearch search(line, formats);
        const std::vector<std::string> folders = search.folders();
        work.listed = search.listed();
        work.folders.insert(work.folders.end(), folders.begin(), folders.end());
    }
    return box::lock(line.sandbox, work);
}

} // namespace ptx::conversion
