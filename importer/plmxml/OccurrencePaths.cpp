#include "importer/plmxml/OccurrencePaths.h"

#include <utility>

namespace importer::plmxml
{

namespace
{

/// Deeper assemblies count as endless.
constexpr std::size_t MaxDepth = 1000;
/// What the paths of all occurrences may come to.
constexpr std::size_t MaxSteps = 20'000'000;
/// Occurrences in the paths of one another.
constexpr int MaxNested = 16;

} // namespace

OccurrencePaths::OccurrencePaths(const Reading& reading, const GraphTree& graph, const Structure& structure)
    : m_reading(reading), m_graph(graph), m_structure(structure), m_otherParts{Nothing}
{
    for (const std::vector<std::uint32_t>& roots : structure.graphs)
        m_roots.insert(roots.begin(), roots.end());
}

/// From the topmost occurrence without a path of its own down, so that nothing recurses.
const OccurrencePaths::Path* OccurrencePaths::find(const Occurrences& occurrences, const pugi::xml_node& occurrence)
{
    std::vector<pugi::xml_node> open;
    for (pugi::xml_node at = occurrence; at && open.size() < MaxDepth; at = occurrences.above(at)) {
        if (m_paths.contains(at.hash_value()))
            break;
        open.push_back(at);
        const std::optional<Path> own = ownPathOf(at);
        if (!own || beginsAtRoot(*own))
            break;
    }
    for (std::size_t i = open.size(); i-- > 0;) {
        std::optional<Path> path = wholePathOf(open[i], occurrences.above(open[i]));
        m_steps += path ? path->size() : 0;
        if (path && (path->size() > MaxDepth || m_steps > MaxSteps || !isWithin(*path)))
            path.reset();
        m_paths[open[i].hash_value()] = std::move(path);
    }
    const auto found = m_paths.find(occurrence.hash_value());
    return found != m_paths.end() && found->second ? &*found->second : nullptr;
}

std::optional<OccurrencePaths::Path> OccurrencePaths::wholePathOf(const pugi::xml_node& occurrence,
                                                                  const pugi::xml_node& above)
{
    std::optional<Path> path = ownPathOf(occurrence);
    if (!path || beginsAtRoot(*path))
        return path;
    const auto outer = m_paths.find(above.hash_value());
    const bool mayBeCompleted = path->size() == 1 || beginOfPath(m_reading, occurrence);
    if (!mayBeCompleted || outer == m_paths.end() || !outer->second)
        return std::nullopt;
    path->insert(path->begin(), outer->second->begin(), outer->second->end());
    m_hasCompleted = true;
    return path;
}

void OccurrencePaths::exchange(const Path& path, std::uint32_t part)
{
    const std::uint32_t step = m_exchanges.add(path);
    m_otherParts.resize(m_exchanges.size(), Nothing);
    m_otherParts[step] = part;
}

void OccurrencePaths::forget()
{
    m_paths.clear();
    m_steps = 0;
}

/// What `instanceRefs` says, or `pathRefs` behind the occurrence that it may begin with; nothing where they are empty
/// or lead to what stands nowhere.
std::optional<OccurrencePaths::Path> OccurrencePaths::ownPathOf(const pugi::xml_node& occurrence) const
{
    Path path;
    if (!append(occurrence, false, 0, path))
        return std::nullopt;
    return path.empty() && !beginOfPath(m_reading, occurrence) ? std::nullopt : std::optional(std::move(path));
}

bool OccurrencePaths::append(const pugi::xml_node& occurrence, bool isWhole, int depth, Path& path) const
{
    const bool hasInstances = occurrence.attribute("instanceRefs").value()[0] != 0;
    bool isSkipped = !isWhole && beginOfPath(m_reading, occurrence);
    for (const std::string_view word :
         wordsOf(occurrence.attribute(hasInstances ? "instanceRefs" : "pathRefs").value())) {
        const std::string_view id = ownIdOf(word);
        const std::uint32_t instance = m_reading.index.numberOf(ElementKind::Instance, id);
        const pugi::xml_node other =
            hasInstances ? pugi::xml_node() : m_reading.index.find(ElementKind::Occurrence, id);
        if (std::exchange(isSkipped, false))
            continue;
        if (instance == IdTable::None && other) {
            if (depth == MaxNested || !append(other, true, depth + 1, path))
                return false;
            continue;
        }
        const std::uint32_t placement = instance == IdTable::None ? Nothing : m_graph.placementOf(instance);
        if (placement == Nothing || path.size() > MaxDepth)
            return false;
        path.push_back(placement);
    }
    return true;
}

bool OccurrencePaths::beginsAtRoot(const Path& path) const
{
    return !path.empty() && m_roots.contains(path.front());
}

/// Whether each placement stands in the part of the one before it.
bool OccurrencePaths::isWithin(const Path& path)
{
    std::uint32_t step = PathTree::Top;
    for (std::size_t i = 1; i < path.size(); ++i) {
        step = m_exchanges.below(step, path[i - 1]);
        const std::uint32_t part = partAt(step, path[i - 1]);
        if (part == Nothing)
            return false;
        const auto [entry, isNew] = m_within.try_emplace(part);
        const std::vector<std::uint32_t>& placements = m_structure.parts[part].placements;
        if (isNew)
            entry->second.insert(placements.begin(), placements.end());
        if (!entry->second.contains(path[i]))
            return false;
    }
    return !path.empty();
}

std::uint32_t OccurrencePaths::partAt(std::uint32_t step, std::uint32_t placement) const
{
    const std::uint32_t other = step == PathTree::NoStep ? Nothing : m_otherParts[step];
    return other == Nothing ? m_structure.placements[placement].part : other;
}

} // namespace importer::plmxml
