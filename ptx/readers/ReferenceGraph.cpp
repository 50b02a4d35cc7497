#include "ptx/readers/ReferenceGraph.h"

#include "ptx/readers/PartFiles.h"

#include <filesystem>
#include <map>

namespace ptx::readers
{

namespace
{

/// Who refers to whom, among the files that can be reached from a root.
class ReferenceGraph
{
public:
    ReferenceGraph(const std::string& root, const PartNamesOf& namesOf, const files::references::Policy& policy)
        : m_finder(policy)
    {
        m_queue.push_back(root);
        m_known.insert(root);
        for (std::size_t next = 0; next < m_queue.size(); ++next)
            follow(std::string(m_queue[next]), namesOf);
    }

    std::set<std::string> leadingTo(const std::string& target) const
    {
        std::set<std::string> result;
        std::vector<std::string> open = {target};
        while (!open.empty()) {
            const auto from = m_referrers.find(open.back());
            open.pop_back();
            if (from != m_referrers.end())
                for (const std::string& file : from->second)
                    if (result.insert(file).second)
                        open.push_back(file);
        }
        return result;
    }

private:
    void follow(const std::string& file, const PartNamesOf& namesOf)
    {
        const std::string folder = std::filesystem::path(file).parent_path().string();
        for (const std::string& name : namesOf(file)) {
            const std::string found = m_finder.find(folder, name);
            if (m_finder.refusal(found))
                continue;
            const std::string part = canonicalPath(found);
            std::error_code error;
            if (!std::filesystem::is_regular_file(part, error))
                continue;
            m_referrers[part].insert(file);
            if (m_known.insert(part).second)
                m_queue.push_back(part);
        }
    }

    PartFileFinder m_finder;
    std::vector<std::string> m_queue;
    std::set<std::string> m_known;
    std::map<std::string, std::set<std::string>> m_referrers;
};

} // namespace

std::set<std::string> filesLeadingBackTo(const std::string& root, const PartNamesOf& namesOf,
                                         const files::references::Policy& policy)
{
    const std::string target = canonicalPath(root);
    return ReferenceGraph(target, namesOf, policy).leadingTo(target);
}

} // namespace ptx::readers
