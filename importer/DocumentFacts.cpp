#include "importer/DocumentFacts.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADReference.h"
#include "importer/ElementWalk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUrl>

#include <algorithm>
#include <array>
#include <exception>
#include <string>
#include <string_view>

#include <tinyxml.h>

using namespace HB::XML::CAD;

namespace importer
{

namespace
{

using Names = std::vector<std::string_view>;

/// An element that an import takes, and where it may stand.
struct ElementRow {
    std::string_view name;
    Names parents;
    std::size_t DocumentFacts::*count; ///< null for those that are not counted
};

const std::vector<ElementRow>& elementRows()
{
    static const Names owners{"ProductDef", "InstanceGraph"};
    static const Names shapes{"ProductDef", "Part", "ProductRevisionView"};
    static const std::vector<ElementRow> rows = {
        {"InstanceGraph", {"ProductDef"}, nullptr},
        {"Instance", {"InstanceGraph"}, &DocumentFacts::instances},
        {"ProductInstance", {"InstanceGraph"}, &DocumentFacts::instances},
        {"Part", owners, &DocumentFacts::parts},
        {"ProductRevisionView", owners, &DocumentFacts::parts},
        {"Representation", shapes, nullptr},
        {"CompoundRep", {"Representation", "CompoundRep"}, nullptr},
        {"Material",
         {"ProductDef", "Part", "ProductRevisionView", "Representation", "CompoundRep", "Occurrence"},
         &DocumentFacts::materials},
        {"ProductView", {"ProductDef"}, nullptr},
        {"Occurrence",
         {"ProductDef", "Part", "ProductRevisionView", "ProductView", "Occurrence"},
         &DocumentFacts::occurrences},
    };
    return rows;
}

/// An attribute of references, and how they are looked up.
struct ReferenceRow {
    std::string_view attribute;
    Names elements;
    bool (*leads)(const CADDocument& document, std::string_view reference);
};

bool leadsToInstance(const CADDocument& document, std::string_view reference)
{
    return document.findInstance(reference);
}
bool leadsToRoot(const CADDocument& document, std::string_view reference)
{
    return document.findInstance(reference) || document.findPart(reference);
}
bool leadsToPart(const CADDocument& document, std::string_view reference)
{
    return document.findPart(reference);
}
bool leadsToTransform(const CADDocument& document, std::string_view reference)
{
    return document.findTransform(reference);
}
bool leadsToMaterial(const CADDocument& document, std::string_view reference)
{
    return document.findMaterial(reference);
}
bool leadsToRepresentation(const CADDocument& document, std::string_view reference)
{
    return document.findRepresentation(reference);
}
bool leadsToOccurrence(const CADDocument& document, std::string_view reference)
{
    return document.findOccurrence(reference);
}

const std::vector<ReferenceRow>& referenceRows()
{
    static const Names instances{"Instance", "ProductInstance"};
    static const Names parts{"Part", "ProductRevisionView"};
    static const std::vector<ReferenceRow> rows = {
        {"rootRefs", {"InstanceGraph"}, leadsToRoot},
        {"rootInstanceRef", {"InstanceGraph"}, leadsToRoot},
        {"partRef", instances, leadsToPart},
        {"materialRef", {"Instance", "ProductInstance", "Occurrence"}, leadsToMaterial},
        {"transformRef",
         {"Instance", "ProductInstance", "Representation", "CompoundRep", "Occurrence"},
         leadsToTransform},
        {"instanceRefs", {"Part", "ProductRevisionView", "Occurrence"}, leadsToInstance},
        {"representationRefs", parts, leadsToRepresentation},
        {"rootRefs", {"ProductView"}, leadsToOccurrence},
        {"primaryOccurrenceView", {"ProductView"}, leadsToOccurrence},
        {"occurrenceRefs", {"Occurrence"}, leadsToOccurrence},
    };
    return rows;
}

bool has(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Null for an element that an import skips together with what is in it.
const ElementRow* rowOf(const TiXmlElement& element)
{
    const TiXmlElement* const parent = element.Parent()->ToElement();
    for (const ElementRow& row : elementRows())
        if (row.name == element.ValueTStr() && parent && has(row.parents, parent->ValueTStr()))
            return &row;
    return nullptr;
}

QString text(const TiXmlElement& element, const char* attribute)
{
    const char* const value = element.Attribute(attribute);
    return QString::fromUtf8(value ? value : "");
}

/// Counts the elements of one document.
class Survey
{
public:
    Survey(const CADDocument& document, const QString& file)
        : m_document(document), m_folder(QFileInfo(file).absoluteDir())
    {
    }

    /// False for an element that is skipped.
    bool take(const TiXmlElement& element)
    {
        if (element.ValueTStr() == "ProductDef")
            return true;
        const ElementRow* const row = rowOf(element);
        if (!row)
            return false;
        if (row->count)
            ++(m_facts.*row->count);
        noteFile(text(element, "location"));
        for (const ReferenceRow& reference : referenceRows())
            if (has(reference.elements, element.ValueTStr()))
                follow(element, reference);
        return true;
    }

    DocumentFacts facts() const
    {
        DocumentFacts facts = m_facts;
        facts.files = static_cast<std::size_t>(m_files.size());
        return facts;
    }

private:
    void noteFile(const QString& location)
    {
        if (location.isEmpty())
            return;
        const QString name = QUrl::fromPercentEncoding(location.toUtf8());
        m_files.insert(QDir::cleanPath(m_folder.absoluteFilePath(name)));
    }

    void follow(const TiXmlElement& element, const ReferenceRow& row)
    {
        const char* const value = element.Attribute(std::string(row.attribute).c_str());
        std::vector<std::string> targets;
        splitRefList(value ? value : "", targets);
        for (const std::string& target : targets)
            if (!row.leads(m_document, target))
                noteDangling(element, row, target);
    }

    void noteDangling(const TiXmlElement& element, const ReferenceRow& row, const std::string& target)
    {
        ++m_facts.danglingCount;
        if (m_facts.dangling.size() >= DocumentFacts::maxDangling)
            return;
        m_facts.dangling.push_back({QString::fromUtf8(element.Value()), text(element, "id"),
                                    QString::fromStdString(std::string(row.attribute)), QString::fromStdString(target),
                                    element.Row()});
    }

    const CADDocument& m_document;
    QDir m_folder;
    DocumentFacts m_facts;
    QSet<QString> m_files;
};

bool load(CADDocument& document, const QString& file)
{
    try {
        document.load(file.toStdString());
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

} // namespace

std::optional<DocumentFacts> readDocumentFacts(const QString& file)
{
    CADDocument document;
    QFile source(file);
    if (!load(document, file) || !source.open(QIODevice::ReadOnly))
        return std::nullopt;
    // The model has let the text pass, so the parser takes it.
    TiXmlDocument xml;
    xml.Parse(source.readAll().constData(), nullptr, TIXML_DEFAULT_ENCODING);
    const TiXmlElement* const root = xml.RootElement();
    Survey survey(document, file);
    if (const TiXmlElement* product = root ? root->FirstChildElement("ProductDef") : nullptr)
        walkElements(*product, [&survey](const TiXmlElement& element) { return survey.take(element); });
    return survey.facts();
}

} // namespace importer
