#include "importer/DocumentFacts.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductView.h"
#include "cad/xml/CADRepresentation.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QUrl>

#include <exception>
#include <string>

using namespace HB::XML::CAD;

namespace importer
{

namespace
{

/// Counts what the model has of one document, and follows its references as an import does.
class Survey
{
public:
    Survey(const CADDocument& document, const QString& file)
        : m_document(document), m_folder(QFileInfo(file).absoluteDir())
    {
    }

    DocumentFacts take()
    {
        for (const CADOrigin& origin : m_document.getOrigins()) {
            m_origin = &origin;
            count(*origin.element);
        }
        m_facts.files = static_cast<std::size_t>(m_files.size());
        return m_facts;
    }

private:
    void count(const CADBase& element)
    {
        if (const auto* graph = dynamic_cast<const CADInstanceGraph*>(&element))
            follow(*graph);
        else if (const auto* instance = dynamic_cast<const CADInstance*>(&element))
            follow(*instance);
        else if (const auto* part = dynamic_cast<const CADPart*>(&element))
            follow(*part);
        else if (const auto* representation = dynamic_cast<const CADRepresentation*>(&element))
            follow(*representation);
        else if (const auto* view = dynamic_cast<const CADProductView*>(&element))
            followAll("rootRefs", view->getRootRefs(), &CADDocument::findOccurrence);
        else if (const auto* occurrence = dynamic_cast<const CADOccurrence*>(&element))
            follow(*occurrence);
        else if (dynamic_cast<const CADMaterial*>(&element))
            ++m_facts.materials;
    }

    void follow(const CADInstanceGraph& graph)
    {
        for (const std::string& root : graph.getRootRefs())
            if (!m_document.findInstance(root) && !m_document.findPart(root))
                noteDangling("rootRefs", root);
    }

    void follow(const CADInstance& instance)
    {
        ++m_facts.instances;
        follow("partRef", instance.getPartRef(), &CADDocument::findPart);
        follow("materialRef", instance.getMaterialRef(), &CADDocument::findMaterial);
        follow("transformRef", instance.getTransformRef(), &CADDocument::findTransform);
    }

    void follow(const CADPart& part)
    {
        ++m_facts.parts;
        followAll("instanceRefs", part.getInstanceRefs(), &CADDocument::findInstance);
        followAll("representationRefs", part.getRepresentationRefs(), &CADDocument::findRepresentation);
    }

    void follow(const CADRepresentation& representation)
    {
        noteFile(QString::fromStdString(representation.getLocation()));
        follow("transformRef", representation.getTransformRef(), &CADDocument::findTransform);
    }

    void follow(const CADOccurrence& occurrence)
    {
        ++m_facts.occurrences;
        follow("materialRef", occurrence.getMaterialRef(), &CADDocument::findMaterial);
        follow("transformRef", occurrence.getTransformRef(), &CADDocument::findTransform);
        followAll("instanceRefs", occurrence.getInstanceRefs(), &CADDocument::findInstance);
        followAll("occurrenceRefs", occurrence.getOccurrenceRefs(), &CADDocument::findOccurrence);
    }

    template <class Find>
    void follow(const char* attribute, const std::string& reference, Find find)
    {
        if (!reference.empty() && !(m_document.*find)(reference))
            noteDangling(attribute, reference);
    }

    template <class Find>
    void followAll(const char* attribute, const std::vector<std::string>& references, Find find)
    {
        for (const std::string& reference : references)
            follow(attribute, reference, find);
    }

    void noteFile(const QString& location)
    {
        if (location.isEmpty())
            return;
        const QString name = QUrl::fromPercentEncoding(location.toUtf8());
        m_files.insert(QDir::cleanPath(m_folder.absoluteFilePath(name)));
    }

    /// A generated id is none of the document's.
    void noteDangling(const char* attribute, const std::string& target)
    {
        ++m_facts.danglingCount;
        if (m_facts.dangling.size() >= DocumentFacts::maxDangling)
            return;
        const QString id = m_origin->hasId ? QString::fromStdString(m_origin->element->getId()) : QString();
        m_facts.dangling.push_back({QString::fromStdString(m_origin->name), id, QString::fromLatin1(attribute),
                                    QString::fromStdString(target), m_origin->place.line});
    }

    const CADDocument& m_document;
    QDir m_folder;
    const CADOrigin* m_origin = nullptr; ///< of the element that is being counted
    DocumentFacts m_facts;
    QSet<QString> m_files;
};

} // namespace

std::optional<DocumentFacts> readDocumentFacts(const QString& file)
{
    CADDocument document;
    document.setKeepsPlaces(true);
    try {
        document.load(file.toStdString());
    } catch (const std::exception&) {
        return std::nullopt;
    }
    return Survey(document, file).take();
}

} // namespace importer
