#include "tools/ptxconvert/readers/jt/ProductTree.h"

#include "standalone/scenefile/ConvertedTree.h"
#include "tools/ptxconvert/readers/jt/BodyMaker.h"
#include "tools/ptxconvert/readers/jt/graph/NodeFacts.h"

#include <filesystem>
#include <thread>
#include <unordered_set>

namespace ptx::jt
{

namespace
{

constexpr int LongestChain = 256;

osg::Matrix matrixOf(const Placement& placement, double unit)
{
    osg::Matrix matrix;
    for (unsigned i = 0; i < 16; ++i)
        matrix[i] = static_cast<float>(placement[i] * (i >= 12 && i < 15 ? unit : 1));
    return matrix;
}

bool isStructure(ElementKind kind)
{
    return kind == ElementKind::Instance || kind == ElementKind::Part || kind == ElementKind::MetaData ||
           kind == ElementKind::Partition;
}

bool isAlternative(ElementKind kind)
{
    return kind == ElementKind::Lod || kind == ElementKind::Switch;
}

unsigned threadsOf(const Job& job)
{
    const auto wanted = static_cast<unsigned>(job.settings.number(Setting::Threads));
    return wanted > 0 ? wanted : std::max(1u, std::thread::hardware_concurrency());
}

class StructureBuilder
{
public:
    StructureBuilder(const JtFile& file, double unit, const Job& job)
        : m_file(file), m_graph(file.graph), m_unit(unit), m_job(job),
          m_mostOccurrences(job.settings.number(Setting::NodeLimit)),
          m_bodies({file, unit, static_cast<int>(job.settings.number(Setting::MeshLevel)), threadsOf(job),
                    m_model.appearances, job.progress, job.log})
    {
        findStructure();
        findNames();
    }

    Model build()
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
        Id id;
        std::size_t product;
    };

    /// A body that is still to be made, for products that are one node in several colours.
    struct Planned {
        Id top;
        std::vector<Id> starts;
        std::vector<std::size_t> products;
    };

    /// What lies on the way from a node to the product that stands for its child.
    struct Chain {
        const SceneNode* target = nullptr;
        Id id = 0;
        Placement placement = NoMove;
        Finish finish;
        bool isVisible = true;
        std::string name;
        std::vector<std::string> tags;
    };

    // What holds no part of a structure at any depth is geometry.
    void findStructure()
    {
        std::unordered_map<Id, std::vector<Id>> parents;
        std::vector<Id> open;
        for (const auto& [id, node] : m_graph.nodes) {
            for (const Id child : node.children)
                parents[child].push_back(id);
            if (isStructure(node.kind) && m_structure.insert(id).second)
                open.push_back(id);
        }
        while (!open.empty()) {
            const Id id = open.back();
            open.pop_back();
            for (const Id parent : parents[id])
                if (m_structure.insert(parent).second)
                    open.push_back(parent);
        }
    }

    // A node without a name is called as the first that uses it.
    void findNames()
    {
        for (const Id id : nodesFromRootDown(m_graph)) {
            const SceneNode& node = m_graph.nodes.at(id);
            std::string& name = m_names[id];
            if (std::string own = nameOf(node); !own.empty())
                name = std::move(own);
            if (node.kind == ElementKind::Instance || node.kind == ElementKind::Group)
                for (const Id child : node.children)
                    m_names.try_emplace(child, name);
        }
    }

    bool hasStructure(Id id) const { return m_structure.contains(id); }

    void addRoots()
    {
        const SceneNode* root = m_graph.find(m_graph.root);
        if (!root)
            return;
        bool isShell = root->kind == ElementKind::Partition && !root->children.empty();
        for (const Id child : root->children)
            isShell = isShell && hasStructure(child);
        m_model.tags = tagsOf(*root);
        if (!isShell)
            return addOccurrence(m_model.roots, m_graph.root, {});
        Chain around;
        around.placement = placementOf(m_graph, *root);
        around.finish = finishOf(m_graph, *root, {}, m_model.appearances);
        for (const Id child : root->children)
            addOccurrence(m_model.roots, child, around);
    }

    // Every occurrence becomes a node at least; the scene refuses what is beyond its limit.
    bool isFull() const { return m_mostOccurrences > 0 && static_cast<double>(m_occurrences) > m_mostOccurrences; }

    void addOccurrence(std::vector<Occurrence>& to, Id id, Chain chain)
    {
        if (isFull() || !follow(id, chain))
            return;
        ++m_occurrences;
        Occurrence occurrence;
        occurrence.product = productOf(chain.id, *chain.target, chain.finish.appearance);
        if (chain.finish.final & ColourField)
            occurrence.appearance = chain.finish.appearance;
        occurrence.name = std::move(chain.name);
        occurrence.placement = matrixOf(chain.placement, m_unit);
        occurrence.isVisible = chain.isVisible;
        occurrence.tags = std::move(chain.tags);
        to.push_back(std::move(occurrence));
    }

    // Instances add to what they lead to; they are no node of their own. A reference may lead nowhere.
    bool follow(Id id, Chain& chain)
    {
        for (int depth = 0; depth < LongestChain; ++depth) {
            const SceneNode* node = m_graph.find(id);
            if (!node)
                return false;
            chain.placement = combined(placementOf(m_graph, *node), chain.placement);
            chain.finish = finishOf(m_graph, *node, chain.finish, m_model.appearances);
            chain.isVisible = chain.isVisible && !node->isIgnored;
            if (node->kind != ElementKind::Instance) {
                chain.target = node;
                chain.id = id;
                return true;
            }
            if (chain.name.empty())
                chain.name = nameOf(*node);
            for (std::string& tag : tagsOf(*node))
                chain.tags.push_back(std::move(tag));
            if (node->children.empty())
                return false;
            id = node->children.front();
        }
        m_job.log.warning("instances lead to each other without end; they are left out");
        return false;
    }

    std::size_t productOf(Id id, const SceneNode& node, int appearance)
    {
        const auto [entry, isNew] = m_products.try_emplace({id, appearance}, m_model.products.size());
        if (isNew) {
            Product product;
            product.name = m_names[id];
            product.appearance = appearance;
            product.tags = tagsOf(node);
            if (isExternal(m_graph, id, node))
                product.externalNames = {node.file};
            m_model.products.push_back(std::move(product));
            m_open.push_back({id, entry->second});
        }
        return entry->second;
    }

    void fill(Open open)
    {
        const SceneNode& node = *m_graph.find(open.id);
        std::vector<Occurrence> children;
        std::vector<Id> shapes;
        for (const Id child : shownChildren(node)) {
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
        else if (node.kind == ElementKind::Part && node.children.empty())
            m_job.log.info("part \"" + m_model.products[open.product].name + "\" has no mesh");
    }

    std::vector<Id> shownChildren(const SceneNode& node) const
    {
        if (!isAlternative(node.kind) || node.children.empty())
            return node.children;
        const std::int32_t last = static_cast<std::int32_t>(node.children.size()) - 1;
        const std::int32_t chosen = node.kind == ElementKind::Switch
                                        ? node.selected
                                        : std::min(last, static_cast<std::int32_t>(m_bodies.level()));
        return chosen < 0 || chosen > last ? std::vector<Id>()
                                           : std::vector<Id>{node.children[static_cast<std::size_t>(chosen)]};
    }

    void giveBody(Open open, const std::vector<Id>& starts)
    {
        const auto [entry, isNew] = m_planOf.try_emplace(open.id, m_planned.size());
        if (isNew)
            m_planned.push_back({open.id, starts, {}});
        m_planned[entry->second].products.push_back(open.product);
    }

    void makeBodies()
    {
        std::vector<std::vector<Id>> starts;
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
        Product& product = m_model.products[plan.products.front()];
        for (const std::string& loss : result.losses) {
            product.tags.push_back(osg::converted::missingTag({m_file.path, loss}));
            m_job.log.warning("a shape of \"" + product.name + "\" is left out: " + loss);
        }
        if (result.body.pieces.empty())
            return NoBody;
        m_model.bodies.push_back(std::move(result.body));
        return m_model.bodies.size() - 1;
    }

    const JtFile& m_file;
    const SceneGraph& m_graph;
    double m_unit;
    const Job& m_job;
    double m_mostOccurrences;
    std::size_t m_occurrences = 0;
    std::unordered_set<Id> m_lookedAtInTheEnd; ///< beyond the limit each node is filled once at most, for its body
    Model m_model;
    BodyMaker m_bodies;
    std::unordered_set<Id> m_structure;
    std::unordered_map<Id, std::string> m_names;
    std::map<std::pair<Id, int>, std::size_t> m_products;
    std::unordered_map<Id, std::size_t> m_planOf;
    std::vector<Planned> m_planned;
    std::vector<Open> m_open;
};

} // namespace

Model buildStructure(const JtFile& file, double unit, const Job& job)
{
    return StructureBuilder(file, unit, job).build();
}

} // namespace ptx::jt
