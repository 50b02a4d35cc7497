#include "geometry/TransformFlushing.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/ContainerRegistry.h"
#include "scene/MatrixMath.h"
#include "scene/NodeAccess.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace geometry
{

namespace
{

/// A node and the matrix that what hangs there has still to take in.
struct Step {
    osg::NodePtr node;
    osg::Matrix matrix;
};

/// The transform of `node`, which no other node has.
osg::TransformPtr ownTransform(const osg::NodePtr& node)
{
    const osg::NodeCorePtr core = node->getCore();
    if (core->getRefCount() > 1) {
        osg::exchangeCore(node, osg::NodeCorePtr(static_cast<osg::NodeCore*>(osg::ContainerAccess::copy(*core).get())));
    }
    return osg::fcCast<osg::Transform>(node->getCore());
}

void setMatrix(const osg::TransformPtr& transform, const osg::Matrix& matrix)
{
    osg::beginEditCP(transform, osg::TransformBase::MatrixFieldMask, 1);
    transform->setMatrix(matrix);
    osg::endEditCP(transform, osg::TransformBase::MatrixFieldMask, 1);
}

void putTransformAbove(const Step& step)
{
    const osg::NodePtr parent = step.node->getParent();
    if (!parent)
        return;
    const osg::TransformPtr transform = osg::TransformBase::create();
    transform->setMatrix(step.matrix);
    const osg::NodePtr between = osg::makeNodeFor(transform);
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    parent->insertChild(static_cast<unsigned>(parent->findChild(step.node)), between);
    between->addChild(step.node);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
}

/// Takes matrices down into a tree: into the vertices, or into what stands in the way.
class Descent
{
public:
    Descent(BakedGeometry& baked, bool dissolveTransforms) : m_baked(baked), m_dissolve(dissolveTransforms) {}

    void run(const osg::NodePtr& start, const osg::Matrix& matrix)
    {
        m_steps.push_back({start, matrix});
        while (!m_steps.empty()) {
            const Step step = m_steps.back();
            m_steps.pop_back();
            fetchAhead();
            visit(step);
        }
        // Not before: the walk counts the children of its nodes.
        for (const Step& step : m_placeless)
            putTransformAbove(step);
        m_placeless.clear();
    }

private:
    void fetchAhead() const
    {
        using osg::NodeAccess;
        if (m_steps.size() >= NodeAccess::FarAhead)
            NodeAccess::fetch(*m_steps[m_steps.size() - NodeAccess::FarAhead].node);
        if (m_steps.size() >= NodeAccess::NearAhead)
            NodeAccess::fetchHeld(*m_steps[m_steps.size() - NodeAccess::NearAhead].node);
    }

    void visit(const Step& step)
    {
        const osg::NodeCorePtr core = step.node->getCore();
        if (core && osg::isKindOf(core->getType(), osg::ExtReference::_type))
            visitReference(step);
        else if (core && osg::isKindOf(core->getType(), osg::Transform::_type))
            visitTransform(step);
        else if (core && osg::isKindOf(core->getType(), osg::Geometry::_type))
            visitGeometry(step);
        else if (!core || osg::isKindOf(core->getType(), osg::Group::_type) || step.matrix.isIdentity())
            goOn(step.node, step.matrix);
        else
            m_placeless.push_back(step);
    }

    /// A reference places what its file holds: it keeps a transform.
    void visitReference(const Step& step)
    {
        absorb(step);
        if (m_dissolve)
            goOn(step.node, osg::Matrix());
    }

    void visitTransform(const Step& step)
    {
        if (!m_dissolve)
            return absorb(step);
        const osg::TransformPtr transform = ownTransform(step.node);
        const osg::Matrix matrix = step.matrix * transform->getMatrix();
        if (!transform->isIdentity())
            setMatrix(transform, osg::Matrix());
        goOn(step.node, matrix);
    }

    void visitGeometry(const Step& step)
    {
        if (!step.matrix.isIdentity())
            m_baked.bake(step.node, step.matrix);
        goOn(step.node, step.matrix);
    }

    static void absorb(const Step& step)
    {
        if (step.matrix.isIdentity())
            return;
        const osg::TransformPtr transform = ownTransform(step.node);
        setMatrix(transform, step.matrix * transform->getMatrix());
    }

    void goOn(const osg::NodePtr& node, const osg::Matrix& matrix)
    {
        for (unsigned i = node->getNChildren(); i-- > 0;)
            m_steps.push_back({node->getChild(i), matrix});
    }

    BakedGeometry& m_baked;
    bool m_dissolve;
    std::vector<Step> m_steps;
    std::vector<Step> m_placeless;
};

/// How far the axes may be from upright unit vectors and still count as such.
constexpr double rigidTolerance = 1e-5;

bool isRigid(const osg::Matrix& m)
{
    const auto dot = [&](unsigned a, unsigned b) {
        return double(m[a]) * double(m[b]) + double(m[a + 1]) * double(m[b + 1]) + double(m[a + 2]) * double(m[b + 2]);
    };
    const auto isNear = [](double value, double wanted) { return std::abs(value - wanted) <= rigidTolerance; };
    const double turn = (double(m[0]) * (double(m[5]) * double(m[10]) - double(m[6]) * double(m[9])) -
                         double(m[4]) * (double(m[1]) * double(m[10]) - double(m[2]) * double(m[9])) +
                         double(m[8]) * (double(m[1]) * double(m[6]) - double(m[2]) * double(m[5])));
    return isNear(dot(0, 0), 1) && isNear(dot(4, 4), 1) && isNear(dot(8, 8), 1) && isNear(dot(0, 4), 0) &&
           isNear(dot(0, 8), 0) && isNear(dot(4, 8), 0) && turn > 0;
}

bool isFinite(const osg::Matrix& m)
{
    return std::all_of(m.values.begin(), m.values.end(), [](float value) { return std::isfinite(value); });
}

/// Leaves rotation and translation in the transform of `node` and sends the rest down.
void sendStretchDown(const osg::NodePtr& node, BakedGeometry& baked)
{
    const osg::TransformPtr transform = ownTransform(node);
    osg::Components parts = osg::decomposed(transform->getMatrix());
    osg::Components stretch;
    std::swap(stretch.scale, parts.scale);
    std::swap(stretch.scaleOrientation, parts.scaleOrientation);
    setMatrix(transform, osg::composed(parts));
    const osg::Matrix matrix = osg::composed(stretch);
    Descent descent(baked, false);
    std::vector<osg::NodePtr> children;
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        children.push_back(node->getChild(i));
    for (const osg::NodePtr& child : children)
        descent.run(child, matrix);
}

} // namespace

void flushTransformations(const osg::NodePtr& root)
{
    BakedGeometry baked;
    if (root)
        Descent(baked, true).run(root, osg::Matrix());
}

void flushScalesAbove(const osg::NodePtr& geometryNode, BakedGeometry& baked)
{
    std::vector<osg::NodePtr> ancestors;
    for (osg::NodePtr step = geometryNode ? geometryNode->getParent() : osg::NodePtr(); step; step = step->getParent())
        ancestors.push_back(step);
    for (auto node = ancestors.rbegin(); node != ancestors.rend(); ++node) {
        const auto transform = osg::fcCast<osg::Transform>((*node)->getCore());
        if (!transform || osg::isKindOf(transform->getType(), osg::ExtReference::_type))
            continue;
        if (!isRigid(transform->getMatrix()) && isFinite(transform->getMatrix()))
            sendStretchDown(*node, baked);
    }
}

} // namespace geometry
