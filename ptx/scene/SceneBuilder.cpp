#include "ptx/scene/SceneBuilder.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "ptx/scene/CalloutNodes.h"
#include "ptx/scene/NodeFacts.h"
#include "ptx/scene/NodeNames.h"
#include "ptx/scene/OverrideTracker.h"
#include "ptx/scene/PartCores.h"
#include "ptx/scene/PlacementCores.h"
#include "ptx/scene/ReferenceCore.h"
#include "ptx/scene/RootNode.h"
#include "ptx/scene/ViewNodes.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"

#include <unordered_map>

namespace ptx::scene
{

namespace
{

/// As many tags by which views show and hide it need the memory of a node.
constexpr double TagsOfNode = 4;

class SceneBuilder
{
public:
    SceneBuilder(const model::Model& model, double mostNodes)
        : m_model(model), m_mostNodes(mostNodes), m_cores(model), m_facts(model), m_overrides(model.overrides),
          m_visibility(model.views)
    {
        for (const model::Reference& reference : model.references)
            m_references.emplace(reference.product, &reference);
    }

    core::Outcome<Scene> build(const std::string& input)
    {
        m_scene.root = makeRootNode(input, m_model);
        for (std::size_t i = 0; i < m_model.roots.size(); ++i)
            if (core::Trouble trouble = expand(m_model.roots[i]))
                return *trouble;
        for (const model::View& view : m_model.views)
            append(m_scene.root, makeViewNode(view));
        return std::move(m_scene);
    }

private:
    /// An occurrence whose children are being made.
    struct Frame {
        const model::Product* product;
        osg::NodePtr node;
        Look look;
        const model::Reference* pending = nullptr; ///< whose node is still to come, as the last child
        std::size_t next = 0;
    };

    // Assemblies of a hostile file may be nested deeper than the call stack.
    core::Trouble expand(const model::Occurrence& root)
    {
        std::vector<Frame> stack;
        stack.push_back(enter(root, m_scene.root, Look()));
        while (!stack.empty()) {
            if (core::Trouble trouble = checkSize(stack.size()))
                return trouble;
            Frame& top = stack.back();
            if (top.next == top.product->children.size()) {
                if (top.pending)
                    append(top.node, osg::makeNodeFor(makeReferenceCore(*top.pending)));
                stack.pop_back();
                m_overrides.leave();
                m_placements.leave();
                continue;
            }
            const std::size_t child = top.next++;
            const model::Occurrence& occurrence = top.product->children[child];
            const int override = m_overrides.enter(numberOf(*top.product), child);
            stack.push_back(enter(occurrence, top.node, top.look.overriddenBy(override)));
        }
        return std::nullopt;
    }

    core::Trouble checkSize(std::size_t depth) const
    {
        if (depth > m_model.products.size())
            return core::Failure{core::ExitCode::Damaged, "an assembly of the file contains itself"};
        if (m_mostNodes > 0 && static_cast<double>(m_scene.nodes) > m_mostNodes)
            return core::Failure{
                core::ExitCode::MemoryLimit,
                "the instances of the file multiply to more nodes than limit.nodes allows; raise it, or set "
                "limit.nodes=0"};
        if (m_mostNodes > 0 && static_cast<double>(m_visibility.tags()) > TagsOfNode * m_mostNodes)
            return core::Failure{
                core::ExitCode::MemoryLimit,
                "saved views and instances of the file multiply to more than limit.nodes allows; raise it, or set "
                "convert.pmi=0"};
        return std::nullopt;
    }

    std::size_t numberOf(const model::Product& product) const
    {
        return static_cast<std::size_t>(&product - m_model.products.data());
    }

    Frame enter(const model::Occurrence& occurrence, const osg::NodePtr& parent, const Look& around)
    {
        const model::Product& product = m_model.products[occurrence.product];
        const model::Reference* reference = referenceOf(occurrence.product);
        const osg::RefPtr<osg::Transform3DPtr> placement(m_placements.enter(occurrence));
        const bool isReference = reference && isFaithful(product, occurrence.placement);
        const osg::NodePtr node =
            osg::makeNodeFor(isReference ? placedReference(*reference, occurrence.placement) : placement.get());
        append(parent, node);
        osg::setName(node, nodeName(occurrence, product));
        m_facts.addTo(node, occurrence);
        if (!occurrence.isVisible) {
            const osg::EditScope edit(node, osg::Node::ActiveFieldMask);
            node->setActive(false);
        }
        const Look look = around.overriddenBy(occurrence.appearance).below(product.appearance);
        if (product.body != model::NoBody)
            addBody(node, product, look);
        if (!product.callouts.empty())
            osg::addChild(node, makeCalloutsNode(product.callouts, m_cores, m_visibility, m_scene.nodes));
        m_scene.callouts += product.callouts.size();
        return {&product, node, look, isReference ? nullptr : reference};
    }

    const model::Reference* referenceOf(std::size_t product) const
    {
        const auto found = m_references.find(product);
        return found == m_references.end() ? nullptr : found->second;
    }

    /// Whether a reference may be the node of its occurrence. Without a transform it is dissolved once it is loaded,
    /// and name, tags and activity would go with it; with children it would pass for loaded.
    static bool isFaithful(const model::Product& product, const osg::Matrix& placement)
    {
        return !placement.isIdentity() && product.body == model::NoBody && product.children.empty() &&
               product.callouts.empty();
    }

    static osg::Transform3DPtr placedReference(const model::Reference& reference, const osg::Matrix& placement)
    {
        const osg::ExtReferencePtr core = makeReferenceCore(reference);
        const osg::EditScope edit(core, osg::Transform3D::MatrixFieldMask);
        core->setMatrix(placement);
        return core;
    }

    void addBody(const osg::NodePtr& node, const model::Product& product, const Look& look)
    {
        const std::vector<osg::RefPtr<osg::GeometryPtr>>& cores = m_cores.of(product.body, look);
        for (std::size_t i = 0; i < cores.size(); ++i) {
            const osg::NodePtr geometry = osg::makeNodeFor(cores[i].get());
            append(node, geometry);
            osg::setName(geometry, product.name);
            const int views = m_model.bodies[product.body].pieces[i].views;
            if (views != model::AlwaysShown)
                m_visibility.addTo(geometry, m_model.viewSets[static_cast<std::size_t>(views)], true);
        }
        m_scene.occurrences += cores.empty() ? 0 : 1;
    }

    void append(const osg::NodePtr& parent, const osg::NodePtr& node)
    {
        osg::addChild(parent, node);
        ++m_scene.nodes;
    }

    const model::Model& m_model;
    double m_mostNodes;
    PartCores m_cores;
    NodeFacts m_facts;
    OverrideTracker m_overrides;
    ViewVisibility m_visibility;
    PlacementCores m_placements;
    std::unordered_map<std::size_t, const model::Reference*> m_references; ///< by product
    Scene m_scene;
};

} // namespace

core::Outcome<Scene> buildScene(const model::Model& model, const std::string& input, double mostNodes)
{
    return SceneBuilder(model, mostNodes).build(input);
}

} // namespace ptx::scene
