#include "ptx/readers/jt/ProductTree.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/readers/jt/BodyMaker.h"
#include "ptx/readers/jt/graph/NodeFacts.h"

#include <filesystem>
#include <unordered_set>

namespace ptx::jt
{

namespace
{

constexpr int LongestChain = 256;

osg::Matrix matrixOf(const graph::Placement& placement, double unit)
{
    osg::Matrix matrix;
    for (unsigned i = 0; i < 16; ++i)
        matrix[i] = static_cast<float>(placement[i] * (i >= 12 && i < 15 ? unit : 1));
    return matrix;
}

bool isStructure(graph::ElementKind kind)
{
    return kind == graph::ElementKind::Instance || kind == graph::ElementKind::Part ||
           kind == graph::ElementKind::MetaData || kind == graph::ElementKind::Partition;
}

bool isAlternative(graph::ElementKind kind)
{
    return kind == graph::ElementKind::Lod || kind == graph::ElementKind::Switch;
}

class StructureBuilder
{
public:
    StructureBuilder(const JtFile& file, double unit, const model::Job& job)
        : m_file(file), m_graph(file.graph), m_unit(unit), m_job(job),
          m_mostOccurrences(job.settings.number(core::Setting::NodeLimit)),
          m_bodies({file, unit, static_cast<int>(job.settings.number(core::Setting::MeshLevel)),
                    core::threadCount(job.settings), m_model.appearances, job.progress, job.log})
    {
        findStructure();
        findNames();
    }

    model::Model build()
    {
        addRoots();
        for (std::size_t next = 0; next < m_open.size(); ++next) {
            if (!isFull() || m_lookedAtInTheEnd.insert(m_open[next].id).second)
                fill(m_open[next]);
        }
        makeBodies();
        m_job.log.info(std::to_string(m_model.bodies.size()) + " distinct parts, " +
                       std::to_string(m_bodies.triangles()) + " triangles");
        return std::move(m_model);
    }

private:
    /// A product whose contents are still to be made.
    struct Open {
        graph::Id id;
        std::size_t product;
    };

    /// A body that is still to be made, for products that are one node in several colours.
    struct Planned {
        graph::Id top;
        std::vector<graph::Id> starts;
        std::vector<std::size_t> products;
    };

    /// What lies on the way from a node to the product that stands for its child.
    struct Chain {
        const graph::SceneNode* target = nullptr;
        graph::Id id = 0;
        graph::Placement placement = graph::NoMove;
        graph::InheritedMaterial inherited;
        bool isVisible = true;
        std::string name;
        std::vector<std::string> tags;
    };

    // What holds no part of a structure at any depth is geometry.
    void findStructure()
    {
        std::unordered_map<graph::Id, std::vector<graph::Id>> parents;
        std::vector<graph::Id> open;
        for (const auto& [id, node] : m_graph.nodes) {
            for (const graph::Id child : node.children)
                parents[child].push_back(id);
            if (isStructure(node.kind) && m_structure.insert(id).second)
                open.push_back(id);
        }
        while (!open.empty()) {
            const graph::Id id = open.back();
            open.pop_back();
            for (const graph::Id parent : parents[id])
                if (m_structure.insert(parent).second)
                    open.push_back(parent);
        }
    }

    // A node without a name is called as the first that uses it.
    void findNames()
    {
        for (const graph::Id id : graph::nodesFromRootDown(m_graph)) {
            const graph::SceneNode& node = m_graph.nodes.at(id);
            std::string& name = m_names[id];
            if (std::string own = graph::nameOf(node); !own.empty())
                name = std::move(own);
            if (node.kind == graph::ElementKind::Instance || node.kind == graph::ElementKind::Group)
                for (const graph::Id child : node.children)
                    m_names.try_emplace(child, name);
        }
    }

    bool hasStructure(graph::Id id) const { return m_structure.contains(id); }

    void addRoots()
    {
        const graph::SceneNode* root = m_graph.find(m_graph.root);
        if (!root)
            return;
        bool isShell = root->kind == graph::ElementKind::Partition && !root->children.empty();
        for (const graph::Id child : root->children)
            isShell = isShell && hasStructure(child);
        m_model.tags = graph::tagsOf(*root);
        if (!isShell)
            return addOccurrence(m_model.roots, m_graph.root, {});
        Chain around;
        around.placement = placementOf(m_graph, *root);
        around.inherited = graph::inheritedMaterial(m_graph, *root, {}, m_model.appearances);
        for (const graph::Id child : root->children)
            addOccurrence(m_model.roots, child, around);
    }

    // Every occurrence becomes a node at least; the scene refuses what is beyond its limit.
    bool isFull() const { return m_mostOccurrences > 0 && static_cast<double>(m_occurrences) > m_mostOccurrences; }

    void addOccurrence(std::vector<model::Occurrence>& to, graph::Id id, Chain chain)
    {
        if (isFull() || !follow(id, chain))
            return;
        ++m_occurrences;
        model::Occurrence occurrence;
        occurrence.product = productOf(chain.id, *chain.target, chain.inherited.appearance);
        if (chain.inherited.final & graph::ColourField)
            occurrence.appearance = chain.inherited.appearance;
        occurrence.name = std::move(chain.name);
        occurrence.placement = matrixOf(chain.placement, m_unit);
        occurrence.isVisible = chain.isVisible;
        occurrence.tags = std::move(chain.tags);
        to.push_back(std::move(occurrence));
    }

    // Instances add to what they lead to; they are no node of their own. A reference may lead nowhere.
    bool follow(graph::Id id, Chain& chain)
    {
        for (int depth = 0; depth < LongestChain; ++depth) {
            const graph::SceneNode* node = m_graph.find(id);
            if (!node)
                return false;
            chain.placement = graph::combined(placementOf(m_graph, *node), chain.placement);
            chain.inherited = graph::inheritedMaterial(m_graph, *node, chain.inherited, m_model.appearances);
            chain.isVisible = chain.isVisible && !node->isIgnored;
            if (node->kind != graph::ElementKind::Instance) {
                chain.target = node;
                chain.id = id;
                return true;
            }
            if (chain.name.empty())
                chain.name = graph::nameOf(*node);
            for (std::string& tag : graph::tagsOf(*node))
                chain.tags.push_back(std::move(tag));
            if (node->children.empty())
                return false;
            id = node->children.front();
        }
        m_job.log.warning("instances lead to each other without end; they are left out");
        return false;
    }

    std::size_t productOf(graph::Id id, const graph::SceneNode& node, int appearance)
    {
        const auto [entry, isNew] = m_products.try_emplace({id, appearance}, m_model.products.size());
        if (isNew) {
            model::Product product;
            product.name = m_names[id];
            product.appearance = appearance;
            product.tags = graph::tagsOf(node);
            if (isExternal(m_graph, id, node))
                product.externalNames = {node.file};
            m_model.products.push_back(std::move(product));
            m_open.push_back({id, entry->second});
        }
        return entry->second;
    }

    void fill(Open open)
    {
        const graph::SceneNode& node = *m_graph.find(open.id);
        std::vector<model::Occurrence> children;
        std::vector<graph::Id> shapes;
        for (const graph::Id child : shownChildren(node)) {
            if (hasStructure(child))
                addOccurrence(children, child, {});
            else
                shapes.push_back(child);
        }
        m_model.products[open.product].children = std::move(children);
        if (!hasStructure(open.id))
            giveBody(open, {open.id});
        else if (!shapes.empty())
            giveBody(open, shapes);
        else if (node.kind == graph::ElementKind::Part && node.children.empty())
            m_job.log.info("part \"" + m_model.products[open.product].name + "\" has no mesh");
    }

    std::vector<graph::Id> shownChildren(const graph::SceneNode& node) const
    {
        if (!isAlternative(node.kind) || node.children.empty())
            return node.children;
        const std::int32_t last = static_cast<std::int32_t>(node.children.size()) - 1;
        const std::int32_t chosen = node.kind == graph::ElementKind::Switch
                                        ? node.selected
                                        : std::min(last, static_cast<std::int32_t>(m_bodies.level()));
        return chosen < 0 || chosen > last ? std::vector<graph::Id>()
                                           : std::vector<graph::Id>{node.children[static_cast<std::size_t>(chosen)]};
    }

    void giveBody(Open open, const std::vector<graph::Id>& starts)
    {
        const auto [entry, isNew] = m_planOf.try_emplace(open.id, m_planned.size());
        if (isNew)
            m_planned.push_back({open.id, starts, {}});
        m_planned[entry->second].products.push_back(open.product);
    }

    void makeBodies()
    {
        std::vector<std::vector<graph::Id>> starts;
        for (const Planned& plan : m_planned)
            starts.push_back(plan.starts);
        m_bodies.expect(starts);
        for (std::size_t i = 0; i < m_planned.size(); ++i) {
            m_job.progress.report(static_cast<double>(i) / static_cast<double>(m_planned.size()));
            const std::size_t body = newBody(m_planned[i]);
            for (const std::size_t product : m_planned[i].products)
                m_model.products[product].body = body;
        }
    }

    std::size_t newBody(const Planned& plan)
    {
        BodyResult result = m_bodies.make(plan.top, plan.starts);
        model::Product& product = m_model.products[plan.products.front()];
        for (const std::string& loss : result.losses) {
            product.tags.push_back(osg::scenefile::converted::missingTag({m_file.path, loss}));
            m_job.log.warning("a shape of \"" + product.name + "\" is left out: " + loss);
        }
        if (result.body.pieces.empty())
            return model::NoBody;
        m_model.bodies.push_back(std::move(result.body));
        return m_model.bodies.size() - 1;
    }

    const JtFile& m_file;
    const graph::SceneGraph& m_graph;
    double m_unit;
    const model::Job& m_job;
    double m_mostOccurrences;
    std::size_t m_occurrences = 0;
    /// Beyond the limit each node is filled once at most, for its body.
    std::unordered_set<graph::Id> m_lookedAtInTheEnd;
    model::Model m_model;
    BodyMaker m_bodies;
    std::unordered_set<graph::Id> m_structure;
    std::unordered_map<graph::Id, std::string> m_names;
    std::map<std::pair<graph::Id, int>, std::size_t> m_products;
    std::unordered_map<graph::Id, std::size_t> m_planOf;
    std::vector<Planned> m_planned;
    std::vector<Open> m_open;
};

} // namespace

model::Model buildStructure(const JtFile& file, double unit, const model::Job& job)
{
    return StructureBuilder(file, unit, job).build();
}

} // namespace ptx::jt
