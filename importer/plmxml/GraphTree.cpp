#include "importer/plmxml/GraphTree.h"

#include "importer/plmxml/ShapeChoice.h"
#include "importer/plmxml/UserTexts.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace importer::plmxml
{

namespace
{

std::uint32_t sizeOf(std::size_t size)
{
    return static_cast<std::uint32_t>(size);
}

/// The elements that an attribute of all elements of a kind leads to.
std::unordered_set<std::size_t> targetsOf(const Reading& reading, ElementKind from, const char* attribute,
                                          ElementKind to)
{
    std::unordered_set<std::size_t> targets;
    for (const pugi::xml_node& element : reading.index.all(from))
        for (const std::string_view word : wordsOf(element.attribute(attribute).value()))
            if (const pugi::xml_node target = reading.index.find(to, ownIdOf(word)))
                targets.insert(target.hash_value());
    return targets;
}

} // namespace

std::vector<std::string_view> rootWordsOf(const pugi::xml_node& graph)
{
    std::vector<std::string_view> words;
    for (const pugi::xml_attribute& attribute : graph.attributes()) {
        const std::string_view name = attribute.name();
        if (name == "rootInstanceRef")
            words.clear();
        if (name == "rootInstanceRef" || name == "rootRefs")
            for (const std::string_view word : wordsOf(attribute.value()))
                words.push_back(word);
    }
    return words;
}

std::string firstText(std::initializer_list<std::string> texts)
{
    for (const std::string& text : texts)
        if (!text.empty())
            return text;
    return {};
}

std::string nameOfRevision(const Reading& reading, const pugi::xml_node& revision)
{
    const std::string own = nameOf(reading, revision);
    if (!own.empty() || !revision)
        return own;
    const pugi::xml_node item = otherOf(reading, revision, "masterRef");
    return firstText(
        {nameOf(reading, item), textOf(item, "productId"), textOf(item, "catalogueId"), textOf(revision, "id")});
}

void GraphTree::addGraphs(const std::vector<pugi::xml_node>& graphs)
{
    const std::size_t most = m_reading.index.all(ElementKind::Instance).size();
    m_structure.placements.reserve(most);
    m_unread.reserve(most);
    for (const pugi::xml_node& graph : graphs)
        addRoots(graph);
    finish();
}

void GraphTree::addRoots(const pugi::xml_node& graph)
{
    std::vector<std::uint32_t> roots;
    for (const std::string_view word : rootWordsOf(graph)) {
        const Reference reference = referenceOf(word);
        const bool isOurs = reference.file.empty();
        const std::uint32_t instance = m_reading.index.numberOf(ElementKind::Instance, reference.id);
        const pugi::xml_node part = m_reading.index.find(ElementKind::Part, reference.id);
        if (isOurs && instance != IdTable::None)
            roots.push_back(addPlacement(instance));
        else if (isOurs && part)
            roots.push_back(placePart(part));
        else
            m_reading.references.note(graph, "rootRefs", word);
    }
    m_structure.graphs.push_back(std::move(roots));
}

void GraphTree::addElement(const pugi::xml_node& element)
{
    switch (kindOfName(m_reading.document.nameOf(element))) {
    case ElementKind::InstanceGraph:
        addRoots(element);
        break;
    case ElementKind::Part:
        m_structure.graphs.push_back({placePart(element)});
        break;
    default: {
        const std::vector<pugi::xml_node>& instances = m_reading.index.all(ElementKind::Instance);
        const auto found = std::find(instances.begin(), instances.end(), element);
        m_structure.graphs.push_back({addPlacement(sizeOf(static_cast<std::size_t>(found - instances.begin())))});
        break;
    }
    }
    finish();
    readTransforms();
}

void GraphTree::addFlat()
{
    const auto listed = targetsOf(m_reading, ElementKind::Part, "instanceRefs", ElementKind::Instance);
    const auto placed = targetsOf(m_reading, ElementKind::Instance, "partRef", ElementKind::Part);
    std::vector<std::uint32_t> roots;
    const std::vector<pugi::xml_node>& instances = m_reading.index.all(ElementKind::Instance);
    for (std::size_t i = 0; i < instances.size(); ++i)
        if (!listed.contains(instances[i].hash_value()))
            roots.push_back(addPlacement(sizeOf(i)));
    for (const pugi::xml_node& part : m_reading.index.all(ElementKind::Part))
        if (!placed.contains(part.hash_value()))
            roots.push_back(placePart(part));
    m_structure.graphs.push_back(std::move(roots));
    finish();
    readTransforms();
}

std::uint32_t GraphTree::addPlacement(std::uint32_t number)
{
    if (m_placements[number] != Nothing)
        return m_placements[number];
    const std::uint32_t index = m_placements[number] = sizeOf(m_structure.placements.size());
    const pugi::xml_node& instance = m_reading.index.all(ElementKind::Instance)[number];
    // There may be very many.
    StructurePlacement& placement = m_structure.placements.emplace_back();
    placement.id = textOf(instance, "id");
    placement.element = instance.hash_value();
    placement.part = partAt(instance);
    placement.name = nameOf(m_reading, instance);
    if (placement.name.empty() && placement.part != Nothing)
        placement.name = m_structure.parts[placement.part].name;
    if (placement.name.empty())
        placement.name = placement.id;
    placement.hasNode = instance.attribute("transformRef").value()[0] || childOf(m_reading, instance, "Transform");
    placement.material = materialAt(placement, instance);
    placement.tags = UserTexts(m_reading).userData(instance).attribute(instance, "quantity").take();
    m_unread.push_back(instance);
    return index;
}

void GraphTree::readTransform(std::uint32_t placement)
{
    if (const pugi::xml_node instance = std::exchange(m_unread[placement], {}))
        m_structure.placements[placement].placed = transformOf(m_reading, instance).value_or(Identity4);
}

void GraphTree::readTransforms()
{
    for (std::size_t i = 0; i < m_unread.size(); ++i)
        readTransform(sizeOf(i));
}

/// That of the part is nearer to what is drawn than that of the instance.
std::uint32_t GraphTree::materialAt(const StructurePlacement& placement, const pugi::xml_node& instance)
{
    const std::uint32_t own = placement.part == Nothing ? Nothing : m_materials.of(m_elements[placement.part]);
    return own == Nothing ? m_materials.of(instance) : own;
}

/// For a part at the top, which no instance places.
std::uint32_t GraphTree::placePart(const pugi::xml_node& part)
{
    StructurePlacement placement;
    placement.element = part.hash_value();
    placement.part = addPart(part);
    placement.name = firstText({m_structure.parts[placement.part].name, textOf(part, "id")});
    placement.material = m_materials.of(part);
    placement.hasNode = false;
    m_structure.placements.push_back(std::move(placement));
    m_unread.emplace_back();
    return sizeOf(m_structure.placements.size() - 1);
}

std::uint32_t GraphTree::partAt(const pugi::xml_node& instance)
{
    const Reference reference = referenceOf(instance.attribute("partRef").value());
    if (!reference.file.empty())
        return documentAt(instance, reference);
    const pugi::xml_node part = m_reading.references.follow(instance, "partRef", ElementKind::Part);
    return part ? addPart(part) : Nothing;
}

/// A part of another document is read from there.
std::uint32_t GraphTree::documentAt(const pugi::xml_node& element, const Reference& reference)
{
    const std::uint32_t file = m_reading.files.addElement(element, reference);
    StructurePart part;
    part.name = nameOf(m_reading, element);
    if (file != FileTable::None)
        part.pieces.push_back({part.name, Identity4, false, file, element.hash_value()});
    m_structure.parts.push_back(std::move(part));
    m_elements.emplace_back();
    return sizeOf(m_structure.parts.size() - 1);
}

std::uint32_t GraphTree::otherPart(std::uint32_t placement, const pugi::xml_node& occurrence, const char* attribute)
{
    const Reference reference = referenceOf(occurrence.attribute(attribute).value());
    if (!reference.file.empty())
        return documentAt(occurrence, reference);
    if (reference.id.empty())
        return Nothing;
    pugi::xml_node target = m_reading.index.find(ElementKind::Part, reference.id);
    if (!target)
        target = otherOf(m_reading, occurrence, attribute);
    const std::uint32_t part = m_structure.placements[placement].part;
    if (!target || (part != Nothing && isOf(m_elements[part], target)))
        return Nothing;
    const pugi::xml_node view = viewOf(target);
    const std::uint32_t other = addPart(view ? view : target);
    finish();
    return other;
}

/// Revisions are shown by a view of theirs.
pugi::xml_node GraphTree::viewOf(const pugi::xml_node& revision)
{
    if (m_views.empty())
        for (const pugi::xml_node& part : m_reading.index.all(ElementKind::Part))
            if (const pugi::xml_node shown = otherOf(m_reading, part, "revisionRef"))
                m_views.emplace(shown.hash_value(), part);
    const auto found = m_views.find(revision.hash_value());
    return found == m_views.end() ? pugi::xml_node() : found->second;
}

/// Whether a part is an element itself, or its revision or item.
bool GraphTree::isOf(const pugi::xml_node& part, const pugi::xml_node& element) const
{
    const pugi::xml_node revision = otherOf(m_reading, part, "revisionRef");
    return part == element || revision == element || otherOf(m_reading, revision, "masterRef") == element;
}

std::uint32_t GraphTree::addPart(const pugi::xml_node& part)
{
    const auto [entry, isNew] = m_parts.emplace(part.hash_value(), sizeOf(m_structure.parts.size()));
    if (!isNew)
        return entry->second;
    StructurePart made;
    made.id = textOf(part, "id");
    made.view = part.hash_value();
    made.name =
        firstText({nameOf(m_reading, part), nameOfRevision(m_reading, otherOf(m_reading, part, "revisionRef"))});
    m_structure.parts.push_back(std::move(made));
    m_elements.push_back(part);
    return entry->second;
}

/// Parts lead to instances, and these to further parts.
void GraphTree::finish()
{
    for (; m_filled < m_elements.size(); ++m_filled)
        if (const pugi::xml_node element = m_elements[m_filled])
            fill(sizeOf(m_filled), element);
}

void GraphTree::fill(std::uint32_t part, const pugi::xml_node& element)
{
    std::vector<std::uint32_t> placements;
    eachWord(element.attribute("instanceRefs").value(), [&](std::string_view word) {
        const std::uint32_t instance = m_reading.index.numberOf(ElementKind::Instance, ownIdOf(word));
        if (instance == IdTable::None)
            m_reading.references.note(element, "instanceRefs", word);
        else
            placements.push_back(addPlacement(instance));
        return true;
    });
    const bool isView = kindOfName(m_reading.document.nameOf(element)) == ElementKind::Part;
    const pugi::xml_node view = isView ? element : pugi::xml_node();
    const pugi::xml_node revision = isView ? otherOf(m_reading, element, "revisionRef") : element;
    std::vector<ShapePiece> pieces = chooseShape(m_reading, {{}, view, revision, {}, {}, m_structure.parts[part].name});
    StructurePart& made = m_structure.parts[part];
    // What cannot be read is named where it is the only thing that there is.
    const bool isNative = !pieces.empty() && m_reading.files[pieces.front().file].rank >= FileFormats::OtherConverter;
    if (placements.empty() || !isNative)
        made.pieces = std::move(pieces);
    made.placements = std::move(placements);
    made.tags = UserTexts(m_reading).userData(view).revision(revision).take();
}

} // namespace importer::plmxml
