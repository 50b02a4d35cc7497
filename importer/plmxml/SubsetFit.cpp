#include "importer/plmxml/SubsetFit.h"

#include "cad/xml/CADGrammar.h"
#include "importer/plmxml/LeftOutShapes.h"
#include "importer/plmxml/ShapeChoice.h"

#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace importer::plmxml
{

namespace
{

using HB::XML::CAD::takesChild;

constexpr std::array StructureKinds = {ElementKind::InstanceGraph,  ElementKind::Instance,    ElementKind::Part,
                                       ElementKind::Representation, ElementKind::CompoundRep, ElementKind::Transform,
                                       ElementKind::Material,       ElementKind::ProductView, ElementKind::Occurrence};

class Fit
{
public:
    Fit(const Reading& reading, const QString& file, Structure& structure)
        : m_reading(reading), m_file(file), m_structure(structure)
    {
    }

    bool holds(const pugi::xml_node& view, const Overrides::Outcome& overrides)
    {
        return !m_reading.index.hasPrefixes() && !m_reading.facts.hasNoUnits && !overrides.hasCompletedPaths &&
               !overrides.areAccumulated && standWhereTheyAreTaken() && namesAreTaken() && viewsAreTaken(view) &&
               occurrencesAreTaken() && transformsAreTaken() && partsAreTaken();
    }

private:
    /// All in the first product definition.
    bool standWhereTheyAreTaken() const
    {
        const std::vector<pugi::xml_node>& definitions = m_reading.index.all(ElementKind::ProductDef);
        std::string_view lastAbove, lastName;
        const auto stands = [&](const pugi::xml_node& element) {
            const pugi::xml_node parent = element.parent();
            const std::string_view above = m_reading.document.nameOf(parent);
            const std::string_view name = m_reading.document.nameOf(element);
            // Mostly the same as before.
            if ((above != lastAbove || name != lastName) && !takesChild(above, name))
                return false;
            lastAbove = above;
            lastName = name;
            return above != "ProductDef" || parent == definitions.front();
        };
        return !definitions.empty() && definitions.front().parent() == m_reading.document.root() &&
               std::all_of(StructureKinds.begin(), StructureKinds.end(), [&](ElementKind kind) {
                   const std::vector<pugi::xml_node>& all = m_reading.index.all(kind);
                   return std::all_of(all.begin(), all.end(), stands);
               });
    }

    /// It knows names of one language.
    bool namesAreTaken() const
    {
        const auto isTaken = [this](const pugi::xml_node& element) {
            return !element.attribute("nameRef") || nameOf(m_reading, element) == element.attribute("name").value();
        };
        return !hasLanguageTexts(m_reading.index) ||
               std::all_of(StructureKinds.begin(), StructureKinds.end(), [&](ElementKind kind) {
                   const std::vector<pugi::xml_node>& all = m_reading.index.all(kind);
                   return std::all_of(all.begin(), all.end(), isTaken);
               });
    }

    /// The loader takes the first active view, else the first of all.
    bool viewsAreTaken(const pugi::xml_node& chosen) const
    {
        const std::vector<pugi::xml_node>& views = m_reading.index.all(ElementKind::ProductView);
        const auto active = std::find_if(views.begin(), views.end(), [](const pugi::xml_node& view) {
            return view.attribute("state").value() == std::string_view("active");
        });
        const pugi::xml_node taken = active != views.end() ? *active : views.empty() ? pugi::xml_node() : views.front();
        return taken == chosen && !taken.attribute("primaryOccurrenceRef");
    }

    bool occurrencesAreTaken() const
    {
        const std::vector<pugi::xml_node>& all = m_reading.index.all(ElementKind::Occurrence);
        return std::none_of(all.begin(), all.end(),
                            [this](const pugi::xml_node& occurrence) {
                                for (const char* attribute : {"visible", "instancedRef", "partRef", "parentRef",
                                                              "representationRefs", "pathRefs"})
                                    if (occurrence.attribute(attribute))
                                        return true;
                                return bool(childOf(m_reading, occurrence, "PropertyGroup"));
                            }) &&
               std::none_of(m_structure.overrides.begin(), m_structure.overrides.end(),
                            [](const StructureOverride& each) { return !each.name.empty(); });
    }

    /// It takes no other last number than 1.
    bool transformsAreTaken() const
    {
        const std::vector<pugi::xml_node>& all = m_reading.index.all(ElementKind::Transform);
        return std::all_of(all.begin(), all.end(), [](const pugi::xml_node& transform) {
            const std::string_view numbers = transform.child_value();
            return numbers.ends_with(" 1") || hasPlainEnd(transform);
        });
    }

    bool partsAreTaken()
    {
        for (const pugi::xml_node& part : m_reading.index.all(ElementKind::Part))
            if (part.attribute("revisionRef") || part.attribute("materialRef") ||
                childOf(m_reading, part, "Material") || !shapesAreTaken(part))
                return false;
        const std::vector<pugi::xml_node>& instances = m_reading.index.all(ElementKind::Instance);
        return std::all_of(instances.begin(), instances.end(), [](const pugi::xml_node& instance) {
            return referenceOf(instance.attribute("partRef").value()).file.empty();
        });
    }

    bool shapesAreTaken(const pugi::xml_node& part)
    {
        if (isOfEmptyType(part))
            return true;
        const bool isAssembly = part.attribute("type").value() != std::string_view("solid");
        const std::vector<pugi::xml_node> shapes = representationsOf(m_reading, part);
        // One that is a child and referred to comes twice.
        for (const std::string_view word : wordsOf(part.attribute("representationRefs").value()))
            if (const pugi::xml_node shape = m_reading.index.findShape(ownIdOf(word)); shape.parent() == part)
                return false;
        if (shapes.size() > 1 && (!isAssembly || std::any_of(shapes.begin(), shapes.end(), isNoDesign)))
            return false;
        return std::all_of(shapes.begin(), shapes.end(),
                           [&](const pugi::xml_node& shape) { return shapeIsTaken(shape, isAssembly); });
    }

    /// It would show such a shape beside the others.
    static bool isNoDesign(const pugi::xml_node& shape)
    {
        const std::string_view type = shape.attribute("type").value();
        return type == "simplified" || type == "flat" || shape.attribute("equivalentRef");
    }

    bool shapeIsTaken(const pugi::xml_node& shape, bool isAssembly)
    {
        const bool isMoved = shape.attribute("transformRef") || childOf(m_reading, shape, "Transform");
        std::size_t pieces = 0;
        bool areTaken = true;
        eachChild(m_reading.document, shape, "CompoundRep", [&](const pugi::xml_node& piece) {
            ++pieces;
            areTaken = areTaken && !piece.attribute("equivalentRef") && !childOf(m_reading, piece, "CompoundRep") &&
                       shapeIsTaken(piece, isAssembly);
        });
        if (pieces > 0)
            return areTaken && !isMoved && (isAssembly || pieces == 1);
        const std::string_view format = shape.attribute("format").value();
        const std::string_view location = shape.attribute("location").value();
        if (location.empty())
            return true;
        const bool isKnown = !isAssembly || format == "JT" || format == "WRL" || format == "OSB";
        return isKnown && (isAssembly || !isMoved) && leadsToTheSame(shape, location);
    }

    /// Whether the loader looks for the file where it is.
    bool leadsToTheSame(const pugi::xml_node& shape, std::string_view location)
    {
        const std::uint32_t file = m_reading.files.add(shape, location.data(), shape.attribute("format").value());
        const QString path = pathOfLoader(QString::fromUtf8(location.data(), static_cast<int>(location.size())));
        if (!path.isEmpty() && !m_reading.files.allows(path))
            return false;
        if (file != FileTable::None && m_reading.files[file].found.isClosed)
            return false; // the loader would tell another reason
        const QFileInfo info(path);
        if (file == FileTable::None || !m_reading.files[file].isThere())
            return path.isEmpty() || !info.exists() || info.isFile() || info.isDir();
        return QDir::cleanPath(path) == m_reading.files[file].found.path;
    }

    /// It drops the first two characters of a location that begins with a dot or a slash, whatever they are.
    QString pathOfLoader(const QString& location) const
    {
        if (QDir::isAbsolutePath(location))
            return QUrl::fromPercentEncoding(location.toUtf8());
        const bool hasMark = location.startsWith(QLatin1Char('.')) || location.startsWith(QLatin1Char('\\'));
        if (hasMark && location.size() < 2)
            return {};
        const QString rest = hasMark ? location.mid(2) : location;
        return QFileInfo(m_file).absolutePath() + QLatin1Char('/') + QUrl::fromPercentEncoding(rest.toUtf8());
    }

    const Reading& m_reading;
    const QString& m_file;
    Structure& m_structure;
};

/// Nodes that the loader makes for one representation of a part.
std::uint32_t nodesOf(const Reading& reading, const pugi::xml_node& shape, bool isAssembly)
{
    std::uint32_t pieces = 0;
    eachChild(reading.document, shape, "CompoundRep",
              [&](const pugi::xml_node& piece) { pieces += nodesOf(reading, piece, isAssembly); });
    const bool isCompound = bool(childOf(reading, shape, "CompoundRep"));
    const bool isMoved = shape.attribute("transformRef") || childOf(reading, shape, "Transform");
    return isCompound ? pieces : isMoved || isAssembly ? 1 : 0;
}

void countShapeNodes(const Reading& reading, Structure& structure)
{
    for (StructurePart& part : structure.parts) {
        const pugi::xml_node element = reading.index.find(ElementKind::Part, part.id);
        const bool isAssembly =
            !isOfEmptyType(element) && element.attribute("type").value() != std::string_view("solid");
        for (const pugi::xml_node& shape : representationsOf(reading, element))
            part.shapeNodes += nodesOf(reading, shape, isAssembly);
    }
}

} // namespace

bool fitsLoader(const Reading& reading, const QString& file, const pugi::xml_node& view,
                const Overrides::Outcome& overrides, Structure& structure)
{
    const bool fits = Fit(reading, file, structure).holds(view, overrides);
    if (fits)
        countShapeNodes(reading, structure);
    return fits;
}

} // namespace importer::plmxml
