#include "importer/plmxml/Overrides.h"

#include "importer/plmxml/OwnShapes.h"
#include "importer/plmxml/ShapeChoice.h"
#include "importer/plmxml/UserTexts.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

/// Deeper assemblies count as endless.
constexpr std::size_t MaxDepth = 1000;
/// What the paths of all occurrences may come to.
constexpr std::size_t MaxSteps = 20'000'000;

} // namespace

Overrides::Overrides(const Reading& reading, GraphTree& graph, Structure& structure)
    : m_reading(reading), m_graph(graph), m_structure(structure)
{
    for (const std::vector<std::uint32_t>& roots : structure.graphs)
        m_roots.insert(roots.begin(), roots.end());
}

void Overrides::add(const Occurrences& occurrences)
{
    for (const pugi::xml_node& occurrence : occurrences.all()) {
        const Path* const path = pathOf(occurrences, occurrence);
        if (path)
            addOverride(occurrence, *path);
        else
            noteUnplaced(m_reading, occurrence);
    }
}

/// From the topmost occurrence without a path of its own down, so that nothing recurses.
const Overrides::Path* Overrides::pathOf(const Occurrences& occurrences, const pugi::xml_node& occurrence)
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
        std::optional<Path> path = ownPathOf(open[i]);
        if (path && !beginsAtRoot(*path)) {
            const auto above = m_paths.find(occurrences.above(open[i]).hash_value());
            const bool isKnown = above != m_paths.end() && above->second && path->size() == 1;
            if (isKnown)
                path->insert(path->begin(), above->second->begin(), above->second->end());
            else
                path.reset();
            m_outcome.hasCompletedPaths = m_outcome.hasCompletedPaths || isKnown;
        }
        m_steps += path ? path->size() : 0;
        if (path && (path->size() > MaxDepth || m_steps > MaxSteps || !isWithin(*path)))
            path.reset();
        m_paths[open[i].hash_value()] = std::move(path);
    }
    const auto found = m_paths.find(occurrence.hash_value());
    return found != m_paths.end() && found->second ? &*found->second : nullptr;
}

/// What `instanceRefs` says; nothing where it is empty or leads to what stands nowhere.
std::optional<Overrides::Path> Overrides::ownPathOf(const pugi::xml_node& occurrence) const
{
    Path path;
    for (const std::string_view word : wordsOf(occurrence.attribute("instanceRefs").value())) {
        const pugi::xml_node instance = m_reading.index.find(ElementKind::Instance, ownIdOf(word));
        const std::uint32_t placement = instance ? m_graph.placementOf(instance) : Nothing;
        if (placement == Nothing)
            return std::nullopt;
        path.push_back(placement);
    }
    return path.empty() ? std::nullopt : std::optional(std::move(path));
}

bool Overrides::beginsAtRoot(const Path& path) const
{
    return m_roots.contains(path.front());
}

/// Whether each placement stands in the part of the one before it.
bool Overrides::isWithin(const Path& path)
{
    for (std::size_t i = 1; i < path.size(); ++i) {
        const std::uint32_t part = m_structure.placements[path[i - 1]].part;
        if (part == Nothing)
            return false;
        const auto [entry, isNew] = m_within.try_emplace(part);
        const std::vector<std::uint32_t>& placements = m_structure.parts[part].placements;
        if (isNew)
            entry->second.insert(placements.begin(), placements.end());
        if (!entry->second.contains(path[i]))
            return false;
    }
    return true;
}

void Overrides::addOverride(const pugi::xml_node& occurrence, const Path& path)
{
    if (!m_byPath.emplace(path, m_structure.overrides.size()).second)
        return;
    StructureOverride made;
    made.path = path;
    const std::string name = nameOf(m_reading, occurrence);
    made.name = name == m_structure.placements[path.back()].name ? std::string() : name;
    const std::optional<Matrix4> placed = transformOf(m_reading, occurrence);
    made.isMoved = placed.has_value();
    made.placed = placed.value_or(Identity4);
    made.material = m_graph.materials().of(occurrence);
    made.visibility = visibilityOf(m_reading, occurrence);
    made.pieces = chooseShape(m_reading, {occurrence, {}, {}, {}, partNameOf(path.back())});
    made.tags = UserTexts(m_reading).userData(occurrence).attribute(occurrence, "quantity").take();
    m_structure.overrides.push_back(std::move(made));
}

std::string Overrides::partNameOf(std::uint32_t placement) const
{
    const std::uint32_t part = m_structure.placements[placement].part;
    return part == Nothing ? m_structure.placements[placement].name : m_structure.parts[part].name;
}

Overrides::Outcome Overrides::finish()
{
    m_outcome.areAccumulated = areAccumulated();
    if (m_outcome.areAccumulated)
        makeLocal();
    if (!separateOwnShapes(m_structure))
        m_reading.facts.isCut = true;
    return m_outcome;
}

/// The product of what the placements say by themselves.
Matrix4 Overrides::worldOf(const Path& path) const
{
    Matrix4 world = Identity4;
    for (const std::uint32_t placement : path)
        world = m_structure.placements[placement].placed * world;
    return world;
}

/// Proved by those that repeat what the graph says: if they agree with the whole path, and none with its last step.
bool Overrides::areAccumulated() const
{
    std::size_t whole = 0;
    std::size_t last = 0;
    for (const StructureOverride& each : m_structure.overrides) {
        if (!each.isMoved || each.path.size() < 2)
            continue;
        const bool agreesWithLast = isNear(each.placed, m_structure.placements[each.path.back()].placed);
        const bool agreesWithWhole = isNear(each.placed, worldOf(each.path));
        last += agreesWithLast && !agreesWithWhole ? 1 : 0;
        whole += agreesWithWhole && !agreesWithLast ? 1 : 0;
    }
    return whole > 0 && last == 0;
}

/// Shorter paths first, whose places those below them stand in.
void Overrides::makeLocal()
{
    std::map<Path, Matrix4> worlds;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < m_structure.overrides.size(); ++i)
        if (m_structure.overrides[i].isMoved)
            order.push_back(i);
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return m_structure.overrides[a].path.size() < m_structure.overrides[b].path.size();
    });
    for (const std::size_t i : order) {
        StructureOverride& each = m_structure.overrides[i];
        Path above(each.path.begin(), each.path.end() - 1);
        Matrix4 outer = Identity4;
        for (std::size_t step = 1; step <= above.size(); ++step) {
            const auto known = worlds.find(Path(above.begin(), above.begin() + static_cast<std::ptrdiff_t>(step)));
            outer = known != worlds.end() ? known->second : m_structure.placements[above[step - 1]].placed * outer;
        }
        worlds.emplace(each.path, each.placed);
        const std::optional<Matrix4> inverse = inverseOf(outer);
        const Matrix4& own = m_structure.placements[each.path.back()].placed;
        each.placed = inverse ? each.placed * *inverse : own;
        each.isMoved = !isNear(each.placed, own);
    }
}

} // namespace importer::plmxml
