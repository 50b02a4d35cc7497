#include "ptx/scene/SceneBuilder.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "ptx/scene/NodeNames.h"
#include "ptx/scene/OverrideTracker.h"
#include "ptx/scene/PartCores.h"
#include "ptx/scene/ReferenceCore.h"
#include "ptx/scene/RootNode.h"
#include "ptx/scene/ViewNodes.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"

#include <unordered_map>

namespace ptx::scene
{

namespace
{

class SceneBuilder
{
public:
    SceneBuilder(const model::Model& model, double mostNodes)
        : m_model(model), m_mostNodes(mostNodes), m_cores(model), m_overrides(model.overrides)
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
                stack.pop_back();
                m_overrides.leave();
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
        return std::nullopt;
    }

    std::size_t numberOf(const model::Product& product) const
    {
        return static_cast<std::size_t>(&product - m_model.products.data());
    }

    Frame enter(const model::Occurrence& occurrence, const osg::NodePtr& parent, const Look& around)
    {
        const model::Product& product = m_model.products[occurrence.product];
        const osg::NodePtr node = osg::makeNodeFor(coreOf(occurrence));
        append(parent, node);
        osg::setName(node, nodeName(occurrence, product));
        if (std::vector<std::string> tags = nodeTags(occurrence, product); !tags.empty())
            osg::setTags(node, std::move(tags));
        if (!occurrence.isVisible) {
            const osg::EditScope edit(node, osg::Node::ActiveFieldMask);
            node->setActive(false);
        }
        const Look look = around.overriddenBy(occurrence.appearance).below(product.appearance);
        if (product.body != model::NoBody)
            addBody(node, product, look);
        return {&product, node, look};
    }

    osg::Transform3DPtr coreOf(const model::Occurrence& occurrence) const
    {
        const auto reference = m_references.find(occurrence.product);
        const osg::Transform3DPtr transform = reference == m_references.end()
                                                  ? osg::Transform3D::create()
                                                  : osg::Transform3DPtr(makeReferenceCore(*reference->second));
        const osg::EditScope edit(transform, osg::Transform3D::MatrixFieldMask);
        transform->setMatrix(occurrence.placement);
        return transform;
    }

    void addBody(const osg::NodePtr& node, const model::Product& product, const Look& look)
    {
        const std::vector<osg::RefPtr<osg::GeometryPtr>>& cores = m_cores.of(product.body, look);
        for (const osg::GeometryPtr& core : cores) {
            const osg::NodePtr geometry = osg::makeNodeFor(core);
            append(node, geometry);
            osg::setName(geometry, product.name);
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
    OverrideTracker m_overrides;
    std::unordered_map<std::size_t, const model::Reference*> m_references; ///< by product
    Scene m_scene;
};

} // namespace

core::Outcome<Scene> buildScene(const model::Model& model, const std::string& input, double mostNodes)
{
    return SceneBuilder(model, mostNodes).build(input);
}

} // namespace ptx::scene
