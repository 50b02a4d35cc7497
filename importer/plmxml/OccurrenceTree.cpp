#include "importer/plmxml/OccurrenceTree.h"

#include "importer/plmxml/GraphTree.h"
#include "importer/plmxml/ShapeChoice.h"
#include "importer/plmxml/UserTexts.h"
#include "importer/plmxml/Views.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

/// What the paths of all overrides may come to.
constexpr std::size_t MaxSteps = 20'000'000;

std::uint32_t sizeOf(std::size_t size)
{
    return static_cast<std::uint32_t>(size);
}

std::string referenceSetOf(const Reading& reading, const pugi::xml_node& occurrence, const pugi::xml_node& instance)
{
    return firstText({userValueOf(reading, occurrence, "UG REF SET"), userValueOf(reading, instance, "UG REF SET")});
}

} // namespace

void OccurrenceTree::add(const pugi::xml_node& view)
{
    std::vector<std::uint32_t> roots;
    for (const pugi::xml_node& root : rootsOf(view))
        if (const std::uint32_t placement = place(root, Nothing, Identity4); placement != Nothing)
            roots.push_back(placement);
    grow(std::move(roots));
    noteUnplacedAmong(m_occurrences.all());
    if (view)
        noteUnplacedAmong(occurrencesOf(m_reading, {}));
}

void OccurrenceTree::addBelow(const pugi::xml_node& occurrence)
{
    grow({place(occurrence, Nothing, transformOf(m_reading, occurrence).value_or(Identity4))});
}

void OccurrenceTree::grow(std::vector<std::uint32_t> roots)
{
    m_structure.graphs.push_back(std::move(roots));
    for (std::size_t i = 0; i < m_open.size(); ++i)
        expand(Open(m_open[i]));
    dropShapesOfAssemblies();
    m_reading.facts.parts = m_origins.size();
}

void OccurrenceTree::noteUnplacedAmong(const std::vector<pugi::xml_node>& occurrences) const
{
    for (const pugi::xml_node& occurrence : occurrences)
        if (!m_placed.contains(occurrence.hash_value()))
            noteUnplaced(m_reading, occurrence);
}

std::vector<pugi::xml_node> OccurrenceTree::rootsOf(const pugi::xml_node& view) const
{
    for (const char* attribute : {"rootRefs", "primaryOccurrenceRef", "primaryOccurrenceView"})
        if (const std::vector<pugi::xml_node> roots =
                m_reading.references.followList(view, attribute, ElementKind::Occurrence);
            !roots.empty())
            return roots;
    std::vector<pugi::xml_node> roots;
    for (const pugi::xml_node& occurrence : m_occurrences.all())
        if (!m_occurrences.above(occurrence))
            roots.push_back(occurrence);
    return roots;
}

/// The own transform of the instance is exact, where that of the occurrence went through a product.
std::uint32_t OccurrenceTree::place(const pugi::xml_node& occurrence, std::uint32_t above, const Matrix4& outer)
{
    if (!m_placed.insert(occurrence.hash_value()).second) {
        ++m_reading.facts.placedTwice;
        return Nothing;
    }
    const Origin origin = originOf(occurrence);
    const std::optional<Matrix4> world = transformOf(m_reading, occurrence);
    const std::optional<Matrix4> own = origin.instance ? transformOf(m_reading, origin.instance) : std::nullopt;
    const std::optional<Matrix4> inverse = world ? inverseOf(outer) : std::nullopt;
    StructurePlacement placement;
    placement.element = occurrence.hash_value();
    placement.placed = inverse ? *world * *inverse : own.value_or(Identity4);
    if (own && isNear(*own, placement.placed))
        placement.placed = *own;
    fillNames(placement, occurrence, origin);
    m_structure.placements.push_back(std::move(placement));
    const std::uint32_t index = sizeOf(m_structure.placements.size() - 1);
    m_above.push_back(above);
    addMaterials(index, occurrence, origin);
    m_open.push_back({occurrence, index, world ? *world : m_structure.placements.back().placed * outer});
    return index;
}

/// That of the part is nearer to what is drawn than that of the instance; that of the occurrence overrides both.
void OccurrenceTree::addMaterials(std::uint32_t index, const pugi::xml_node& occurrence, const Origin& origin)
{
    const std::uint32_t own = m_materials.of(origin.view);
    m_structure.placements[index].material = own == Nothing ? m_materials.of(origin.instance) : own;
    StructureOverride made;
    made.material = m_materials.of(occurrence);
    if (made.material == Nothing)
        return;
    for (std::uint32_t at = index; at != Nothing && m_steps < MaxSteps; at = m_above[at], ++m_steps)
        made.path.push_back(at);
    std::reverse(made.path.begin(), made.path.end());
    if (m_steps < MaxSteps)
        m_structure.overrides.push_back(std::move(made));
    else
        m_structure.placements[index].material = made.material;
}

void OccurrenceTree::fillNames(StructurePlacement& placement, const pugi::xml_node& occurrence,
                               const Origin& origin) const
{
    placement.id = textOf(occurrence, "id");
    const std::string own =
        firstText({nameOf(m_reading, occurrence), userValueOf(m_reading, occurrence, "OccurrenceName"),
                   nameOf(m_reading, origin.instance)});
    placement.name = own.empty() ? partNameOf(origin, placement.id) : own;
    placement.visibility = visibilityOf(m_reading, occurrence);
    placement.tags = UserTexts(m_reading)
                         .userData(occurrence)
                         .attribute(occurrence, "quantity")
                         .userData(origin.instance)
                         .attribute(origin.instance, "quantity")
                         .attachedForms(occurrence)
                         .take();
}

/// Views are called by the number of what they show, where a revision has a name for people.
std::string OccurrenceTree::partNameOf(const Origin& origin, const std::string& otherwise) const
{
    const std::string revision = nameOfRevision(m_reading, origin.revision);
    return firstText({revision, nameOf(m_reading, origin.view), otherwise});
}

/// `instancedRef` leads to a revision or to a part view.
OccurrenceTree::Origin OccurrenceTree::originOf(const pugi::xml_node& occurrence) const
{
    Origin origin;
    origin.instance = lastInstanceOf(m_reading, occurrence);
    for (const char* attribute : {"instancedRef", "partRef"})
        if (!origin.view && !origin.revision && origin.document == FileTable::None)
            find(occurrence, attribute, origin);
    if (!origin.view && origin.document == FileTable::None)
        origin.document = elementOfOther(origin.instance, "partRef");
    if (!origin.view && origin.document == FileTable::None)
        origin.view = m_reading.references.follow(origin.instance, "partRef", ElementKind::Part);
    if (!origin.revision)
        origin.revision = otherOf(m_reading, origin.view, "revisionRef");
    return origin;
}

void OccurrenceTree::find(const pugi::xml_node& occurrence, const char* attribute, Origin& origin) const
{
    const std::string_view id = ownIdOf(occurrence.attribute(attribute).value());
    origin.document = elementOfOther(occurrence, attribute);
    origin.view = m_reading.index.find(ElementKind::Part, id);
    origin.revision = m_reading.index.find(ElementKind::Other, id);
    if (!id.empty() && !origin.view && !origin.revision)
        m_reading.references.note(occurrence, attribute, id);
}

std::uint32_t OccurrenceTree::elementOfOther(const pugi::xml_node& element, const char* attribute) const
{
    return m_reading.files.addElement(element, referenceOf(element.attribute(attribute).value()));
}

void OccurrenceTree::expand(const Open& open)
{
    std::vector<std::uint32_t> children;
    for (const pugi::xml_node& child : m_occurrences.below(open.occurrence))
        if (const std::uint32_t placement = place(child, open.placement, open.world); placement != Nothing)
            children.push_back(placement);
    if (children.empty())
        addLeaf(open.placement, open.occurrence);
    else
        addAssembly(open.placement, open.occurrence, std::move(children));
}

std::uint32_t OccurrenceTree::makePart(const Origin& origin, const std::string& name)
{
    StructurePart part;
    part.id = textOf(origin.view ? origin.view : origin.revision, "id");
    part.view = origin.view.hash_value();
    part.name = partNameOf(origin, name);
    part.tags = UserTexts(m_reading).userData(origin.view).revision(origin.revision).take();
    m_structure.parts.push_back(std::move(part));
    return sizeOf(m_structure.parts.size() - 1);
}

/// What is below it may differ from place to place, so that no two share a part.
void OccurrenceTree::addAssembly(std::uint32_t placement, const pugi::xml_node& occurrence,
                                 std::vector<std::uint32_t> children)
{
    const Origin origin = originOf(occurrence);
    if (const pugi::xml_node what = origin.revision ? origin.revision : origin.view)
        m_origins.insert(what.hash_value());
    const std::uint32_t part = makePart(origin, m_structure.placements[placement].name);
    const std::string set = referenceSetOf(m_reading, occurrence, origin.instance);
    const std::string& name = m_structure.parts[part].name;
    std::vector<ShapePiece> pieces =
        chooseShape(m_reading, {occurrence, origin.view, origin.revision, occurrence, set, name});
    m_structure.parts[part].placements = std::move(children);
    m_structure.parts[part].pieces = std::move(pieces);
    m_structure.placements[placement].part = part;
}

void OccurrenceTree::addLeaf(std::uint32_t placement, const pugi::xml_node& occurrence)
{
    const Origin origin = originOf(occurrence);
    if (origin.document != FileTable::None)
        return addDocument(placement, origin.document);
    const pugi::xml_node what = origin.revision ? origin.revision : origin.view;
    if (what)
        m_origins.insert(what.hash_value());
    const std::string set = referenceSetOf(m_reading, occurrence, origin.instance);
    const auto number = [](const pugi::xml_node& node) { return std::to_string(node.hash_value()); };
    const bool viewSaysSomething = origin.view.attribute("representationRefs") ||
                                   childOf(m_reading, origin.view, "Representation") ||
                                   childOf(m_reading, origin.view, "UserData");
    std::string key = number(what) + " " + (viewSaysSomething ? number(origin.view) : std::string()) + " " + set;
    for (const pugi::xml_node& representation : representationsOf(m_reading, occurrence))
        key += " =" + number(representation);
    const bool hasAttachments = occurrence.attribute("associatedAttachmentRefs");
    const auto known = what ? m_leaves.find(key) : m_leaves.end();
    if (known != m_leaves.end() &&
        (!hasAttachments || isReadable(m_reading, m_structure.parts[known->second].pieces))) {
        m_structure.placements[placement].part = known->second;
        return;
    }
    const std::string name = partNameOf(origin, m_structure.placements[placement].name);
    std::vector<ShapePiece> pieces = chooseShape(m_reading, {occurrence, origin.view, origin.revision, {}, set, name});
    // What is attached to an occurrence is its own.
    if (hasAttachments && !isReadable(m_reading, pieces)) {
        pieces = chooseShape(m_reading, {occurrence, origin.view, origin.revision, occurrence, set, name});
        for (const ShapePiece& piece : pieces)
            key += " " + std::to_string(piece.file);
    }
    const auto same = what ? m_leaves.find(key) : m_leaves.end();
    const std::uint32_t part = same != m_leaves.end() ? same->second : makePart(origin, name);
    m_structure.parts[part].pieces = std::move(pieces);
    m_structure.placements[placement].part = part;
    if (what)
        m_leaves[key] = part;
}

void OccurrenceTree::addDocument(std::uint32_t placement, std::uint32_t document)
{
    StructurePart part;
    part.name = m_structure.placements[placement].name;
    part.pieces.push_back({part.name, Identity4, false, document});
    m_structure.parts.push_back(std::move(part));
    m_structure.placements[placement].part = sizeOf(m_structure.parts.size() - 1);
}

/// A parent is placed before its children. An assembly's own file shows the same as its parts.
void OccurrenceTree::dropShapesOfAssemblies()
{
    std::vector<bool> hasShape(m_structure.placements.size());
    for (std::size_t i = m_structure.placements.size(); i-- > 0;) {
        if (m_structure.placements[i].part == Nothing)
            continue;
        StructurePart& part = m_structure.parts[m_structure.placements[i].part];
        bool isAbove = false;
        for (const std::uint32_t child : part.placements)
            isAbove = isAbove || hasShape[child];
        if (isAbove) {
            for (const ShapePiece& piece : part.pieces)
                m_reading.files[piece.file].isOfAssembly = true;
            part.pieces.clear();
        }
        hasShape[i] = isAbove || !part.pieces.empty();
    }
}

} // namespace importer::plmxml
