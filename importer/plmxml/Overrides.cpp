#include "importer/plmxml/Overrides.h"

#include "importer/plmxml/OwnShapes.h"
#include "importer/plmxml/ShapeChoice.h"
#include "importer/plmxml/UserTexts.h"

#include <algorithm>

namespace importer::plmxml
{

void Overrides::add(const Occurrences& occurrences)
{
    addParts(occurrences);
    for (const pugi::xml_node& occurrence : occurrences.all()) {
        const Path* const path = m_paths.find(occurrences, occurrence);
        if (path)
            addOverride(occurrence, *path);
        else
            noteUnplaced(m_reading, occurrence);
    }
}

/// Before all else, since paths lead into the other parts.
void Overrides::addParts(const Occurrences& occurrences)
{
    bool hasOthers = false;
    for (const pugi::xml_node& occurrence : occurrences.all()) {
        if (!occurrence.attribute("partRef") && !occurrence.attribute("instancedRef"))
            continue;
        const Path* const path = m_paths.find(occurrences, occurrence);
        const std::uint32_t part = path ? otherPart(occurrence, path->back()) : Nothing;
        if (part == Nothing || !m_otherParts.emplace(*path, part).second)
            continue;
        m_paths.exchange(*path, part);
        hasOthers = true;
    }
    if (hasOthers)
        m_paths.forget();
}

std::uint32_t Overrides::otherPart(const pugi::xml_node& occurrence, std::uint32_t placement)
{
    const char* const attribute = occurrence.attribute("partRef") ? "partRef" : "instancedRef";
    return m_graph.otherPart(placement, occurrence, attribute);
}

void Overrides::addOverride(const pugi::xml_node& occurrence, const Path& path)
{
    if (!m_byPath.emplace(path, m_structure.overrides.size()).second)
        return noteRepeated(m_reading, occurrence);
    const auto other = m_otherParts.find(path);
    StructureOverride made;
    made.path = path;
    const std::string name = nameOf(m_reading, occurrence);
    made.name = name == m_structure.placements[path.back()].name ? std::string() : name;
    const std::optional<Matrix4> placed = transformOf(m_reading, occurrence);
    made.isMoved = placed.has_value();
    made.placed = placed.value_or(Identity4);
    made.material = m_graph.materials().of(occurrence);
    made.visibility = visibilityOf(m_reading, occurrence);
    made.element = occurrence.hash_value();
    made.part = other == m_otherParts.end() ? Nothing : other->second;
    made.pieces = ownShapeOf(occurrence, made.part, path.back());
    made.tags = UserTexts(m_reading).userData(occurrence).attribute(occurrence, "quantity").take();
    m_structure.overrides.push_back(std::move(made));
}

/// Empty where the part has a shape that is there, and the own one is not.
std::vector<ShapePiece> Overrides::ownShapeOf(const pugi::xml_node& occurrence, std::uint32_t part,
                                              std::uint32_t placement)
{
    const std::uint32_t shown = part == Nothing ? m_structure.placements[placement].part : part;
    const StructurePart* const of = shown == Nothing ? nullptr : &m_structure.parts[shown];
    const std::string& name = of ? of->name : m_structure.placements[placement].name;
    std::vector<ShapePiece> pieces = chooseShape(m_reading, {occurrence, {}, {}, {}, {}, name});
    if (of && !isReadable(m_reading, pieces) && isReadable(m_reading, of->pieces))
        pieces.clear();
    return pieces;
}

Overrides::Outcome Overrides::finish()
{
    readTransforms();
    m_outcome.hasCompletedPaths = m_paths.hasCompleted();
    m_outcome.areAccumulated = areAccumulated();
    if (m_outcome.areAccumulated)
        makeLocal();
    if (!separateOwnShapes(m_structure))
        m_reading.facts.isCut = true;
    return m_outcome;
}

/// Those that the others are compared with; all where places are copied.
void Overrides::readTransforms()
{
    for (const StructureOverride& each : m_structure.overrides)
        if (each.part != Nothing || !each.pieces.empty())
            return m_graph.readTransforms();
    for (const StructureOverride& each : m_structure.overrides)
        for (std::size_t i = 0; each.isMoved && i < each.path.size(); ++i)
            m_graph.readTransform(each.path[i]);
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
