#include "importer/plmxml/Normaliser.h"

#include "importer/plmxml/ElementTree.h"
#include "importer/plmxml/GraphTree.h"
#include "importer/plmxml/LeftOutShapes.h"
#include "importer/plmxml/OccurrenceTree.h"
#include "importer/plmxml/Overrides.h"
#include "importer/plmxml/Reading.h"
#include "importer/plmxml/StructureFault.h"
#include "importer/plmxml/SubsetFit.h"
#include "importer/plmxml/SubsetWriter.h"
#include "importer/plmxml/Survey.h"
#include "importer/plmxml/UserTexts.h"
#include "importer/plmxml/Views.h"

#include <algorithm>
#include <memory>
#include <new>
#include <optional>

namespace importer::plmxml
{

namespace
{

QStringList searchPathsOf(const SourceDocument& document)
{
    QStringList paths;
    for (const std::string_view word : wordsOf(document.root().attribute("referenceSearchPaths").value()))
        paths.append(QString::fromUtf8(word.data(), static_cast<int>(word.size())));
    return paths;
}

bool isTrue(std::string_view value)
{
    return value == "true" || value == "1";
}

/// One run over one document.
class Normaliser
{
public:
    Normaliser(const SourceDocument& document, const QString& file, const NormaliserOptions& options,
               NormalisedDocument& result)
        : m_file(file), m_index(document), m_references(m_index), m_languages(document, m_references),
          m_formats(options.preferredFormats), m_finder(file, searchPathsOf(document), options.rules),
          m_files(document, m_finder, m_formats), m_options(options),
          m_result(result), m_reading{document, m_index, m_references, m_languages, m_files, result.facts}
    {
    }

    void run()
    {
        const std::string root = m_options.root.toStdString();
        const pugi::xml_node view = m_index.find(ElementKind::ProductView, root);
        m_view = view ? view : chooseView(m_reading);
        if (root.empty() && !m_options.wantsFacts && isPlain())
            return;
        noteElements();
        const bool isWhole = root.empty() || view || m_index.find(ElementKind::ProductDef, root);
        const Occurrences occurrences(m_reading, occurrencesOf(m_reading, m_view));
        const bool fits = isWhole && build(occurrences) && root.empty();
        if (!isWhole)
            addStructureBelow(m_reading, root, m_result.structure);
        if (fits)
            dropEmptyTypes(m_reading, m_result.structure);
        noteLeftOutShapes(m_reading, m_result.structure, !fits);
        const std::optional<StructureFault> fault =
            surveyPlaces(m_result.structure, m_files, m_result.facts, m_options.mostPlaces);
        m_result.isRead = true;
        m_result.hasAllFacts = m_options.wantsFacts || !fits || m_result.facts.shapePlaces == 0 || fault;
        if (m_result.hasAllFacts)
            noteTheRest();
        if (m_result.facts.roots == 0)
            refuse(isWhole ? Refusal{} : Refusal{Refusal::Why::NoElement, {}, m_options.root});
        else if (fault)
            refuse(refusalOf(*fault, m_index, m_result.structure));
        else if (!fits)
            write();
        tellFindings();
    }

private:
    /// Whether the document is in the loader's form and says no more than that, which is seen without its structure.
    bool isPlain()
    {
        const auto& graphs = m_index.all(ElementKind::InstanceGraph);
        if (m_index.userValues() > 0 || m_index.internalShapes() > 0 || m_index.conditions() > 0 ||
            !m_index.all(ElementKind::Occurrence).empty() || graphs.size() != 1 || hasEmptyTypes(m_reading))
            return false;
        const std::vector<std::string_view> roots = rootWordsOf(graphs.front());
        const bool hasRoot = !roots.empty() && (m_index.has(ElementKind::Instance, ownIdOf(roots.front())) ||
                                                m_index.has(ElementKind::Part, ownIdOf(roots.front())));
        const auto& shapes = m_index.all(ElementKind::Representation);
        const bool hasFile = std::any_of(shapes.begin(), shapes.end(), [](const pugi::xml_node& shape) {
            return shape.attribute("location").value()[0] != 0;
        });
        Structure none;
        return hasRoot && hasFile && fitsLoader(m_reading, m_file, m_view, {}, none) && isBounded(roots);
    }

    /// Whether the loader comes to an end, seen from the lists of instances alone.
    bool isBounded(const std::vector<std::string_view>& roots)
    {
        const std::vector<pugi::xml_node>& instances = m_index.all(ElementKind::Instance);
        const std::vector<pugi::xml_node>& parts = m_index.all(ElementKind::Part);
        static_assert(IdTable::None == Nothing);
        const auto place = [&](std::vector<std::uint32_t>& placements, std::string_view word) {
            if (const std::uint32_t instance = m_index.numberOf(ElementKind::Instance, ownIdOf(word));
                instance != Nothing)
                placements.push_back(instance);
            return true;
        };
        Structure lists;
        lists.placements.resize(instances.size());
        lists.parts.resize(parts.size());
        lists.graphs.resize(1);
        for (const std::string_view root : roots)
            place(lists.graphs.front(), root);
        for (std::size_t i = 0; i < instances.size(); ++i)
            lists.placements[i].part =
                m_index.numberOf(ElementKind::Part, ownIdOf(instances[i].attribute("partRef").value()));
        for (std::size_t i = 0; i < parts.size(); ++i)
            eachWord(parts[i].attribute("instanceRefs").value(),
                     [&](std::string_view word) { return place(lists.parts[i].placements, word); });
        FileTable none(m_index.document(), m_finder, m_formats);
        zn::DocumentStructure counts;
        return !surveyPlaces(lists, none, counts, m_options.mostPlaces);
    }

    void noteElements()
    {
        zn::DocumentStructure& facts = m_result.facts;
        facts.instances = m_index.all(ElementKind::Instance).size();
        facts.userValues = m_index.userValues();
        facts.materials = m_index.all(ElementKind::Material).size();
        facts.conditions = m_index.conditions();
        facts.internalShapes = m_index.internalShapes();
        for (const pugi::xml_node& definition : m_index.all(ElementKind::ProductDef))
            facts.hasNoUnits = facts.hasNoUnits || isTrue(userValueOf(m_reading, definition, "__TC-VIS_NO_UNITS"));
    }

    /// What takes time and changes nothing for a document that is left as it is.
    void noteTheRest()
    {
        m_result.facts.duplicateIds = m_index.duplicateIds();
        m_result.facts.languages = languagesOf(m_index);
        if (m_graph)
            m_graph->readTransforms();
    }

    /// Whether a root of a graph is there.
    bool hasGraph() const
    {
        const std::vector<pugi::xml_node>& graphs = m_index.all(ElementKind::InstanceGraph);
        return std::any_of(graphs.begin(), graphs.end(), [this](const pugi::xml_node& graph) {
            const std::vector<std::string_view> words = rootWordsOf(graph);
            return std::any_of(words.begin(), words.end(), [this](std::string_view word) {
                const std::string_view id = ownIdOf(word);
                return m_index.find(ElementKind::Instance, id) || m_index.find(ElementKind::Part, id);
            });
        });
    }

    bool partsListInstances() const
    {
        const std::vector<pugi::xml_node>& parts = m_index.all(ElementKind::Part);
        return std::any_of(parts.begin(), parts.end(), [](const pugi::xml_node& part) {
            return !wordsOf(part.attribute("instanceRefs").value()).empty();
        });
    }

    /// Whether the loader can take the document as it stands.
    bool build(const Occurrences& occurrences)
    {
        if (hasGraph() && (partsListInstances() || !occurrences.areATree()))
            return buildGraph(occurrences);
        if (!occurrences.all().empty() && (m_view || occurrences.areATree())) {
            m_result.facts.treeFrom = QStringLiteral("occurrence tree");
            OccurrenceTree(m_reading, occurrences, m_result.structure).add(m_view);
            return false;
        }
        m_result.facts.treeFrom = QStringLiteral("flat");
        for (const pugi::xml_node& occurrence : occurrences.all())
            noteUnplaced(m_reading, occurrence);
        GraphTree(m_reading, m_result.structure).addFlat();
        m_result.facts.parts = m_result.structure.parts.size();
        return false;
    }

    bool buildGraph(const Occurrences& occurrences)
    {
        m_result.facts.treeFrom = QStringLiteral("instance graph");
        m_result.facts.isSelection = m_view.attribute("definition").value() == std::string_view("select");
        m_graph.emplace(m_reading, m_result.structure);
        m_graph->addGraphs(m_index.all(ElementKind::InstanceGraph));
        m_result.facts.parts = m_result.structure.parts.size();
        Overrides overrides(m_reading, *m_graph, m_result.structure);
        overrides.add(occurrences);
        if (m_view)
            overrides.add(Occurrences(m_reading, occurrencesOf(m_reading, {})));
        return fitsLoader(m_reading, m_file, m_view, overrides.finish(), m_result.structure);
    }

    void refuse(const Refusal& refusal)
    {
        m_result.way = NormalisedDocument::Way::Refuse;
        m_result.refusal = refusal;
    }

    void write()
    {
        m_result.way = NormalisedDocument::Way::AsText;
        m_result.facts.isNormalised = true;
        if (!m_options.elementsFolder.isEmpty())
            m_result.elements = m_files.exchangeElements(m_options.elementsFolder);
        for (StructurePlacement& placement : m_result.structure.placements)
            placement.hasNode = true;
        // The loader takes parts that are at the top, too, but gives their places no node.
        m_result.text = writeSubset(m_result.structure, m_files, m_result.facts.hasNoUnits ? 0.001 : 1);
    }

    void tellFindings()
    {
        zn::DocumentStructure& facts = m_result.facts;
        facts.view = titleOf(m_reading, m_view);
        for (const pugi::xml_node& view : m_index.all(ElementKind::ProductView))
            if (view != m_view)
                facts.otherViews.append(titleOf(m_reading, view));
        facts.danglingCount = m_references.danglingCount();
        facts.dangling = m_references.dangling();
        for (const ShapeFile& file : m_files.files()) {
            facts.files.push_back(toldOf(file));
            if (!file.isThere())
                m_result.asked.insert(withoutClosedMark(file.found.path), askedOf(file));
        }
    }

    const QString& m_file;
    ElementIndex m_index;
    References m_references;
    LanguageTexts m_languages;
    FileFormats m_formats;
    FileFinder m_finder;
    FileTable m_files;
    const NormaliserOptions& m_options;
    NormalisedDocument& m_result;
    Reading m_reading;
    pugi::xml_node m_view;
    std::optional<GraphTree> m_graph; ///< where the structure is that of the graphs
};

} // namespace

NormalisedDocument normalise(const QString& file, const NormaliserOptions& options)
{
    try {
        NormalisedDocument result;
        if (const std::unique_ptr<SourceDocument> document = SourceDocument::read(file))
            Normaliser(*document, file, options, result).run();
        return result;
    } catch (const std::bad_alloc&) {
        NormalisedDocument refused;
        refused.way = NormalisedDocument::Way::Refuse;
        refused.refusal.why = Refusal::Why::NoMemory;
        return refused;
    }
}

} // namespace importer::plmxml
