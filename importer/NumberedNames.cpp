#include "importer/NumberedNames.h"

#include "host/OSGSystem/Names.h"
#include "scene/NodeWalk.h"

#include <charconv>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace importer
{

namespace
{

/// A name of letters and the number behind them.
struct Numbered {
    std::string_view stem;
    std::uint64_t number = 0;
};

std::string_view nameOf(const osg::NodePtr& node)
{
    const char* name = osg::getName(node);
    return name ? name : std::string_view();
}

std::optional<Numbered> numberedName(std::string_view name)
{
    const std::size_t stem = name.find_last_not_of("0123456789") + 1;
    if (stem == 0 || stem == name.size())
        return std::nullopt;
    Numbered result{name.substr(0, stem), 0};
    const auto [end, error] = std::from_chars(name.data() + stem, name.data() + name.size(), result.number);
    return error == std::errc() ? std::optional(result) : std::nullopt;
}

/// The names of a tree that are letters and a number, of those letters that are commonest.
class Numbering
{
public:
    explicit Numbering(const osg::NodePtr& root)
    {
        std::map<std::string_view, std::size_t> uses;
        for (const osg::NodePtr& node : osg::parentsFirst(root)) {
            const std::string_view name = node == root ? std::string_view() : nameOf(node);
            m_named += name.empty() ? 0 : 1;
            if (const auto numbered = numberedName(name)) {
                m_numbers.emplace(node.get(), *numbered);
                ++uses[numbered->stem];
            }
        }
        std::string_view commonest;
        for (const auto& [stem, count] : uses)
            if (commonest.empty() || count > uses[commonest])
                commonest = stem;
        std::erase_if(m_numbers, [commonest](const auto& entry) { return entry.second.stem != commonest; });
    }

    /// Whether a program counted the nodes as it wrote them.
    bool isWriters() const
    {
        std::size_t below = 0;
        for (const auto& [node, numbered] : m_numbers) {
            const auto above = m_numbers.find(node->getParent().get());
            if (above == m_numbers.end())
                continue;
            if (above->second.number >= numbered.number)
                return false;
            ++below;
        }
        return m_numbers.size() * 10 >= m_named * 9 && below * 2 > m_numbers.size();
    }

    std::unordered_set<const osg::Node*> nodes() const
    {
        std::unordered_set<const osg::Node*> result;
        for (const auto& [node, numbered] : m_numbers)
            result.insert(node);
        return result;
    }

private:
    std::unordered_map<const osg::Node*, Numbered> m_numbers;
    std::size_t m_named = 0;
};

} // namespace

std::unordered_set<const osg::Node*> numberedNodes(const osg::NodePtr& root)
{
    const Numbering numbering(root);
    return numbering.isWriters() ? numbering.nodes() : std::unordered_set<const osg::Node*>();
}

} // namespace importer
