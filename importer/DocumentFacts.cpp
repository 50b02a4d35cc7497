#include "importer/DocumentFacts.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADGrammar.h"
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

/// An element that an import takes.
struct ElementKind {
    std::string_view name;
    std::size_t DocumentFacts::*count; ///< null for those that are not counted
};

constexpr std::array<ElementKind, 10> elementKinds = {{
    {"InstanceGraph", nullptr},
    {"Instance", &DocumentFacts::instances},
    {"ProductInstance", &DocumentFacts::instances},
    {"Part", &DocumentFacts::parts},
    {"ProductRevisionView", &DocumentFacts::parts},
    {"Representation", nullptr},
    {"CompoundRep", nullptr},
    {"Material", &DocumentFacts::materials},
    {"ProductView", nullptr},
    {"Occurrence", &DocumentFacts::occurrences},
}};

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

/// How references of a kind are looked up; null for values that are none.
auto lookUpFor(CADValue value) -> bool (*)(const CADDocument& document, std::string_view reference)
{
    switch (value) {
    case CADValue::Instances:
        return leadsToInstance;
    case CADValue::Roots:
        return leadsToRoot;
    case CADValue::Part:
        return leadsToPart;
    case CADValue::Representations:
        return leadsToRepresentation;
    case CADValue::Transform:
        return leadsToTransform;
    case CADValue::Material:
        return leadsToMaterial;
    case CADValue::Occurrences:
        return leadsToOccurrence;
    case CADValue::Plain:
    case CADValue::Unused:
        break;
    }
    return nullptr;
}

/// Null for an element that an import skips together with what is in it, or that says nothing of parts and places.
const ElementKind* kindOf(const TiXmlElement& element)
{
    const TiXmlElement* const parent = element.Parent()->ToElement();
    const auto kind = std::find_if(elementKinds.begin(), elementKinds.end(),
                                   [&element](const ElementKind& each) { return each.name == element.ValueTStr(); });
    return kind != elementKinds.end() && parent && takesChild(parent->ValueTStr(), kind->name) ? &*kind : nullptr;
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
        const ElementKind* const kind = kindOf(element);
        if (!kind)
            return false;
        if (kind->count)
            ++(m_facts.*kind->count);
        noteFile(text(element, "location"));
        for (const CADAttributeRule& attribute : findElementRule(kind->name)->attributes)
            follow(element, attribute);
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

    void follow(const TiXmlElement& element, const CADAttributeRule& attribute)
    {
        const auto leads = lookUpFor(attribute.value);
        if (!leads)
            return;
        const char* const value = element.Attribute(std::string(attribute.name).c_str());
        std::vector<std::string> targets;
        splitRefList(value ? value : "", targets);
        for (const std::string& target : targets)
            if (!leads(m_document, target))
                noteDangling(element, attribute.name, target);
    }

    void noteDangling(const TiXmlElement& element, std::string_view attribute, const std::string& target)
    {
        ++m_facts.danglingCount;
        if (m_facts.dangling.size() >= DocumentFacts::maxDangling)
            return;
        m_facts.dangling.push_back({QString::fromUtf8(element.Value()), text(element, "id"),
                                    QString::fromStdString(std::string(attribute)), QString::fromStdString(target),
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
