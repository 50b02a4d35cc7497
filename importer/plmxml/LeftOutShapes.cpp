#include "importer/plmxml/LeftOutShapes.h"

#include "importer/plmxml/ShapeChoice.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace importer::plmxml
{

namespace
{

QString text(const pugi::xml_node& element, const char* attribute)
{
    return QString::fromUtf8(element.attribute(attribute).value());
}

class LeftOut
{
public:
    LeftOut(const Reading& reading, const Structure& structure, bool isRewritten)
        : m_reading(reading), m_isRewritten(isRewritten)
    {
        for (const StructurePart& part : structure.parts) {
            if (part.view != 0)
                m_placed[part.view] |= part.pieces.empty() && !part.placements.empty();
            for (const ShapePiece& piece : part.pieces)
                m_taken.insert(piece.element);
        }
        for (const StructureOverride& each : structure.overrides)
            m_placed.emplace(each.element, false);
        // What is left as it is has a graph, whose places are no occurrences.
        for (std::size_t i = 0; isRewritten && i < structure.placements.size(); ++i)
            m_placed.emplace(structure.placements[i].element, false);
    }

    void note()
    {
        for (const ElementKind kind : {ElementKind::Part, ElementKind::Occurrence})
            for (const pugi::xml_node& owner : m_reading.index.all(kind))
                if (m_placed.contains(owner.hash_value()))
                    for (const pugi::xml_node& representation : representationsOf(m_reading, owner))
                        noteIn(representation, owner);
    }

private:
    /// A representation of others has no file of its own.
    void noteIn(const pugi::xml_node& representation, const pugi::xml_node& part)
    {
        std::vector<pugi::xml_node> todo = {representation};
        while (!todo.empty()) {
            const pugi::xml_node shape = todo.back();
            todo.pop_back();
            const std::size_t before = todo.size();
            eachChild(m_reading.document, shape, "CompoundRep",
                      [&todo](const pugi::xml_node& piece) { todo.push_back(piece); });
            std::reverse(todo.begin() + static_cast<std::ptrdiff_t>(before), todo.end());
            if (todo.size() == before)
                noteShape(shape, part);
        }
    }

    void noteShape(const pugi::xml_node& shape, const pugi::xml_node& part)
    {
        const QString why = m_isRewritten ? whyNotPiece(shape, part) : whyNotTaken(shape, part);
        if (why.isEmpty() || !m_noted.insert(shape.hash_value()).second)
            return;
        zn::DocumentStructure& facts = m_reading.facts;
        ++facts.leftOutCounts[why];
        if (facts.leftOut.size() >= zn::LeftOutShape::maxKept)
            return;
        const std::string_view name = m_reading.document.nameOf(shape);
        facts.leftOut.push_back({QString::fromUtf8(name.data(), static_cast<int>(name.size())), text(shape, "id"),
                                 text(part, "id"), text(shape, "location"), text(shape, "format"), why,
                                 m_reading.document.lineOf(shape)});
    }

    QString whyNotPiece(const pugi::xml_node& shape, const pugi::xml_node& part) const
    {
        if (m_taken.contains(shape.hash_value()))
            return {};
        const char* location = shape.attribute("location").value();
        if (*location == '\0')
            return QStringLiteral("no file");
        const std::uint32_t index = m_reading.files.add(shape, location, shape.attribute("format").value());
        if (index == FileTable::None)
            return QStringLiteral("unknown format");
        const ShapeFile& file = m_reading.files[index];
        if (file.rank >= FileFormats::OtherConverter)
            return QStringLiteral("no reader");
        if (!file.isThere())
            return QStringLiteral("missing");
        return m_placed.at(part.hash_value()) ? QStringLiteral("its part consists of others")
                                              : QStringLiteral("another file was taken");
    }

    static QString whyNotTaken(const pugi::xml_node& shape, const pugi::xml_node& part)
    {
        if (shape.attribute("location").value()[0] == '\0')
            return QStringLiteral("no file");
        return isOfEmptyType(part) ? QStringLiteral("type without geometry") : QString();
    }

    const Reading& m_reading;
    bool m_isRewritten;
    /// Views and occurrences, and whether others stand in their shape's place.
    std::unordered_map<std::size_t, bool> m_placed;
    std::unordered_set<std::size_t> m_taken;
    std::unordered_set<std::size_t> m_noted;
};

} // namespace

bool isOfEmptyType(const pugi::xml_node& part)
{
    const std::string_view type = part.attribute("type").value();
    return type == "minimal" || type == "wire" || type == "sheet" || type == "general";
}

bool hasEmptyTypes(const Reading& reading)
{
    const std::vector<pugi::xml_node>& parts = reading.index.all(ElementKind::Part);
    return std::any_of(parts.begin(), parts.end(), [&reading](const pugi::xml_node& part) {
        return isOfEmptyType(part) && !representationsOf(reading, part).empty();
    });
}

void dropEmptyTypes(const Reading& reading, Structure& structure)
{
    std::unordered_set<std::size_t> empty;
    for (const pugi::xml_node& part : reading.index.all(ElementKind::Part))
        if (isOfEmptyType(part))
            empty.insert(part.hash_value());
    for (StructurePart& part : structure.parts) {
        if (!empty.contains(part.view))
            continue;
        for (const ShapePiece& piece : part.pieces)
            reading.files[piece.file].isOfEmptyType = true;
        part.pieces.clear();
    }
}

void noteLeftOutShapes(const Reading& reading, const Structure& structure, bool isRewritten)
{
    LeftOut(reading, structure, isRewritten).note();
}

} // namespace importer::plmxml
