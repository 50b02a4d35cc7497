#include "ptx/readers/jt/PartFileReader.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/model/FileTags.h"
#include "ptx/model/ModelMerge.h"
#include "ptx/readers/FileContent.h"
#include "ptx/readers/PartFiles.h"
#include "ptx/readers/ReferenceGraph.h"
#include "ptx/readers/jt/ProductTree.h"
#include "ptx/readers/jt/graph/NodeFacts.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

namespace ptx::jt
{

namespace
{

namespace fs = std::filesystem;

constexpr std::size_t Deepest = 64;

struct SkippedType {
    int type;
    const char* content;
};
constexpr SkippedType Skipped[] = {{2, "B-rep"},        {3, "PMI"},          {17, "B-rep"}, {18, "wireframe"},
                                   {20, "light B-rep"}, {24, "light B-rep"}, {30, "B-rep"}, {32, "B-rep"}};

/// Tells how many segments of what is not read. @return those of PMI
std::size_t tellSkipped(const container::Framing& framing, core::Log& log)
{
    std::map<std::string, std::size_t> counts;
    for (const auto& [id, segment] : framing.segments)
        for (const SkippedType& skipped : Skipped)
            if (skipped.type == segment.type)
                ++counts[skipped.content];
    for (const auto& [content, count] : counts)
        log.info(std::to_string(count) + " segments of " + content + " are not read");
    return counts["PMI"];
}

bool isFile(const std::string& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

class Assembly
{
public:
    explicit Assembly(const model::Job& job) : m_job(job), m_finder(job.references) {}

    core::Outcome<model::Model> read()
    {
        core::Outcome<model::Model> root = readFile(m_job.input);
        if (!root)
            return root.failure();
        m_model = std::move(root.value());
        if (m_unit)
            m_model.tags.insert(m_model.tags.begin(),
                                osg::scenefile::converted::tag(osg::scenefile::converted::UnitKey, m_unit->name));
        if (m_job.externalParts)
            keepReferences();
        else
            followReferences();
        return std::move(m_model);
    }

private:
    /// A file whose parts are being read.
    struct File {
        std::string path;
        std::string folder;
        std::size_t next;
        std::size_t end; ///< of its products
    };

    core::Outcome<model::Model> readFile(const std::string& path)
    {
        core::Outcome<std::string> content = readers::readContent(path);
        if (!content)
            return content.failure();
        const core::Outcome<JtFile> opened = openJtFile(path, std::move(content.value()));
        if (!opened)
            return opened.failure();
        const JtFile& file = opened.value();
        m_job.log.info("JT " + std::to_string(file.framing.major) + "." + std::to_string(file.framing.minor) + ", " +
                       std::to_string(file.framing.segments.size()) + " segments, " +
                       std::to_string(file.graph.nodes.size()) + " nodes");
        for (const std::string& warning : file.graph.warnings)
            m_job.log.warning(warning);
        const std::size_t skippedPmi = tellSkipped(file.framing, m_job.log);
        takeUnit(file.graph, path);
        model::Model model = buildStructure(file, millimetres(), m_job);
        for (model::Product& product : model.products)
            if (product.name.empty())
                product.name = fs::path(path).stem().string();
        if (skippedPmi > 0)
            model::tagFile(model, {osg::scenefile::converted::leftOutTag({path, "segments of PMI", skippedPmi})});
        if (const std::size_t textures = file.graph.textures; textures > 0) {
            m_job.log.warning(std::to_string(textures) + " pictures of materials are not read");
            model::tagFile(model, {osg::scenefile::converted::leftOutTag({path, "pictures of materials", textures})});
        }
        return model;
    }

    double millimetres() const { return m_unit ? m_unit->millimetres : m_job.settings.number(core::Setting::MeshUnit); }

    // The unit of the first file holds for all: transforms do the rest.
    void takeUnit(const graph::SceneGraph& graph, const std::string& path)
    {
        const std::optional<graph::Unit> unit = graph::unitOf(graph);
        if (m_isFirst) {
            m_unit = unit;
            if (!unit)
                m_job.log.warning("the file names no unit of length; one unit is taken for mesh.unit millimetres");
        } else if (unit && unit->millimetres != millimetres()) {
            m_job.log.warning(path + " is in " + unit->name + ", unlike the assembly; its placements have to make up");
        }
        m_isFirst = false;
    }

    std::string fileOf(const model::Product& product, const std::string& folder)
    {
        return m_finder.find(folder, product.externalNames.front());
    }

    void keepReferences()
    {
        const std::set<std::string> circle = readers::filesLeadingBackTo(m_job.input, partNamesIn, m_job.references);
        const std::string folder = fs::path(m_job.input).parent_path().string();
        for (std::size_t i = 0; i < m_model.products.size(); ++i) {
            model::Product& product = m_model.products[i];
            if (product.externalNames.empty())
                continue;
            std::string path = fileOf(product, folder);
            const std::optional<std::string> refusal = m_finder.refusal(path);
            if (refusal || circle.contains(readers::canonicalPath(path))) {
                leaveOut(i, path, refusal.value_or("it leads back to this file"));
                path.clear();
            } else if (!isFile(path)) {
                m_job.log.warning("part file " + path + " of \"" + product.name + "\": there is no such file");
            }
            m_model.references.push_back({i, path, product.externalNames.front()});
        }
        m_job.log.info(std::to_string(m_model.references.size()) + " products in other files");
    }

    void followReferences()
    {
        open(readers::canonicalPath(m_job.input), m_job.input, 0);
        while (!m_open.empty()) {
            File& file = m_open.back();
            if (file.next == file.end) {
                m_around.erase(file.path);
                m_open.pop_back();
                continue;
            }
            const std::size_t product = file.next++;
            if (!m_model.products[product].externalNames.empty())
                follow(product, fileOf(m_model.products[product], file.folder));
        }
    }

    void open(const std::string& path, const std::string& file, std::size_t firstProduct)
    {
        m_around.insert(path);
        m_open.push_back({path, fs::path(file).parent_path().string(), firstProduct, m_model.products.size()});
    }

    void follow(std::size_t product, const std::string& file)
    {
        if (const auto refusal = m_finder.refusal(file))
            return leaveOut(product, file, *refusal);
        const std::string path = readers::canonicalPath(file);
        if (m_around.contains(path))
            return leaveOut(product, file, "it leads round in a circle");
        if (m_open.size() >= Deepest)
            return leaveOut(product, file, "assemblies in files are nested too deeply");
        if (!isFile(path))
            return leaveOut(product, file, "there is no such file");
        auto entry = m_contents.find(path);
        if (entry == m_contents.end())
            entry = m_contents.emplace(path, readPart(path, file)).first;
        if (!entry->second)
            return leaveOut(product, file, entry->second.failure().message);
        std::vector<model::Occurrence>& children = m_model.products[product].children;
        children.insert(children.end(), entry->second.value().begin(), entry->second.value().end());
    }

    core::Outcome<std::vector<model::Occurrence>> readPart(const std::string& path, const std::string& file)
    {
        std::error_code error;
        const std::uint64_t bytes = fs::file_size(path, error);
        m_job.limits.addInput(error ? 0 : bytes);
        m_job.log.info("part file " + file);
        core::Outcome<model::Model> part = readFile(file);
        if (!part)
            return part.failure();
        const std::size_t firstProduct = m_model.products.size();
        std::vector<model::Body> bodies = std::move(part.value().bodies);
        const std::size_t firstBody = m_model.bodies.size();
        for (model::Body& body : bodies) {
            for (model::Piece& piece : body.pieces)
                if (piece.appearance != model::NoAppearance)
                    piece.appearance = m_model.appearances.indexOf(part.value().appearances[piece.appearance]);
            m_model.bodies.push_back(std::move(body));
        }
        std::vector<model::Occurrence> roots = model::mergeModel(m_model, std::move(part.value()), firstBody);
        open(path, file, firstProduct);
        return roots;
    }

    void leaveOut(std::size_t product, const std::string& file, const std::string& why)
    {
        model::Product& left = m_model.products[product];
        left.tags.push_back(osg::scenefile::converted::missingTag({file, why}));
        m_job.log.warning("part file " + file + " of \"" + left.name + "\" is left out: " + why);
    }

    const model::Job& m_job;
    model::Model m_model;
    std::optional<graph::Unit> m_unit;
    bool m_isFirst = true;
    readers::PartFileFinder m_finder;
    std::vector<File> m_open;
    std::set<std::string> m_around;
    std::map<std::string, core::Outcome<std::vector<model::Occurrence>>> m_contents;
};

} // namespace

core::Outcome<model::Model> readWithParts(const model::Job& job)
{
    return Assembly(job).read();
}

} // namespace ptx::jt
