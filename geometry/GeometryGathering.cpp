#include "geometry/GeometryGathering.h"

#include "geometry/BakedGeometry.h"
#include "geometry/GeometryMerging.h"
#include "geometry/MeshJoining.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "scene/Attachments.h"
#include "scene/EditScope.h"
#include "scene/GeometryWalk.h"
#include "scene/MatrixMath.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>

namespace geometry
{

namespace
{

/// Where what hangs below a node stands: its matrix up to the next node that says something.
struct Frame {
    osg::NodePtr holder;
    osg::Matrix matrix;
};

/// A geometry that is to hang right below the holder of its frame.
struct Move {
    osg::RefPtr<osg::NodePtr> node;
    Frame frame;
    std::shared_ptr<const osg::Mesh> mesh; ///< as it is there; null where its place moves nothing
};

bool canBeUndone(const osg::Matrix& m)
{
    const double turn = double(m[0]) * (double(m[5]) * double(m[10]) - double(m[6]) * double(m[9])) -
                        double(m[4]) * (double(m[1]) * double(m[10]) - double(m[2]) * double(m[9])) +
                        double(m[8]) * (double(m[1]) * double(m[6]) - double(m[2]) * double(m[5]));
    return turn != 0 && std::all_of(m.values.begin(), m.values.end(), [](float value) { return std::isfinite(value); });
}

/// The matrix of a plain transform, the identity for a plain group; nothing for any other core.
std::optional<osg::Matrix> matrixOf(const osg::NodeCorePtr& core)
{
    if (!core || core->getType().getId() == osg::Group::_type.getId())
        return osg::Matrix();
    const std::uint32_t type = core->getType().getId();
    if (type != osg::TransformBase::_type.getId() && type != osg::Transform3DBase::_type.getId())
        return std::nullopt;
    const osg::Matrix matrix = osg::fcCast<osg::Transform>(core)->getMatrix();
    return canBeUndone(matrix) ? std::optional(matrix) : std::nullopt;
}

class Gathering
{
public:
    Gathering(const osg::NodePtr& root, const GatheringChoice& choice)
        : m_root(root), m_nodes(osg::parentsFirst(root)), m_merging{choice.kept, choice.mostVertices},
          m_nameless(choice.nameless)
    {
        for (const osg::NodePtr& node : m_nodes)
            if (node->getRefCount() > 1)
                m_merging.kept.insert(node.get());
        keepSharedArrays();
    }

    void run()
    {
        findFrames();
        std::vector<Move> moves = plannedMoves();
        takeOut(moves);
        for (const Move& move : moves)
            hang(move);
        mergeGeometry(m_root, m_merging);
        dropEmptyPlaces();
    }

private:
    /// Put together, each would need arrays of its own.
    void keepSharedArrays()
    {
        std::unordered_map<const void*, std::size_t> uses;
        for (const osg::GeometryPtr& geometry : osg::geometriesBelow(m_root))
            ++uses[osg::GeometryAccess::mesh(*geometry).positions.data()];
        for (const osg::NodePtr& node : m_nodes)
            if (const osg::GeometryPtr geometry = osg::geometryOf(node))
                if (uses[osg::GeometryAccess::mesh(*geometry).positions.data()] > 1)
                    m_merging.kept.insert(node.get());
    }

    /// The matrix of `node` when it says nothing but where things stand.
    std::optional<osg::Matrix> placeOnly(const osg::NodePtr& node) const
    {
        if (node == m_root || !node->isActive() || m_merging.kept.contains(node.get()) || !hasNothingButAName(*node))
            return std::nullopt;
        const char* name = osg::getName(node);
        const osg::NodeCorePtr core = node->getCore();
        if ((name && *name && !m_nameless.contains(node.get())) || (core && !hasNothingButAName(*core)))
            return std::nullopt;
        return matrixOf(core);
    }

    void findFrames()
    {
        for (const osg::NodePtr& node : m_nodes) {
            const std::optional<osg::Matrix> place = placeOnly(node);
            if (!place) {
                m_frames[node.get()] = {node, {}};
                continue;
            }
            m_places.push_back(node);
            const Frame& above = m_frames.at(node->getParent().get());
            m_frames[node.get()] = {above.holder, above.matrix * *place};
        }
    }

    bool standsOnce(const osg::NodePtr& node) const
    {
        return node != m_root && !m_merging.kept.contains(node.get()) && isMergeable(node) &&
               node->getCore()->getRefCount() == 1 && osg::GeometryAccess::mesh(*osg::geometryOf(node)).brep.empty();
    }

    /// What geometries have in common that may become one.
    using Look = std::tuple<std::uint32_t, osg::Material*, MeshMake>;

    Look lookOf(const osg::NodePtr& node) const
    {
        const osg::GeometryPtr geometry = osg::geometryOf(node);
        return {frameAbove(node).holder->getContainerId(), geometry->getMaterial().get(),
                makeOf(osg::GeometryAccess::mesh(*geometry))};
    }

    /// Of all that find company; nothing is changed yet.
    std::vector<Move> plannedMoves() const
    {
        std::vector<osg::NodePtr> nodes;
        std::copy_if(m_nodes.begin(), m_nodes.end(), std::back_inserter(nodes),
                     [this](const osg::NodePtr& node) { return standsOnce(node); });
        std::map<Look, std::size_t> alike;
        for (const osg::NodePtr& node : nodes)
            ++alike[lookOf(node)];
        std::vector<Move> moves;
        for (const osg::NodePtr& node : nodes)
            if (alike[lookOf(node)] > 1 && frameAbove(node).holder != node->getParent())
                moves.push_back(moveOf(node));
        return moves;
    }

    const Frame& frameAbove(const osg::NodePtr& node) const { return m_frames.at(node->getParent().get()); }

    Move moveOf(const osg::NodePtr& node) const
    {
        const Frame& frame = frameAbove(node);
        if (frame.matrix.isIdentity())
            return {osg::RefPtr<osg::NodePtr>(node), frame, nullptr};
        const osg::Mesh& mesh = osg::GeometryAccess::mesh(*osg::geometryOf(node));
        return {osg::RefPtr<osg::NodePtr>(node), frame,
                std::make_shared<const osg::Mesh>(transformed(mesh, frame.matrix))};
    }

    /// Goes through the children of each parent once, from the last on: a search for each would walk back and forth.
    static void takeOut(const std::vector<Move>& moves)
    {
        std::unordered_set<const osg::Node*> leaving;
        std::vector<osg::NodePtr> parents;
        std::unordered_set<const osg::Node*> known;
        for (const Move& move : moves) {
            leaving.insert(move.node.get().get());
            const osg::NodePtr parent = move.node.get()->getParent();
            if (known.insert(parent.get()).second)
                parents.push_back(parent);
        }
        for (const osg::NodePtr& parent : parents) {
            const osg::EditScope edit(parent, osg::Node::ChildrenFieldMask);
            for (unsigned i = parent->getNChildren(); i-- > 0;)
                if (const osg::NodePtr child = parent->getChild(i); leaving.contains(child.get()))
                    parent->subChild(child);
        }
    }

    static void hang(const Move& move)
    {
        if (move.mesh)
            osg::exchangeMesh(osg::geometryOf(move.node.get()), move.mesh);
        osg::addChild(move.frame.holder, move.node.get());
    }

    /// Those below come first, so that one which held only such places is empty in its turn.
    void dropEmptyPlaces() const
    {
        for (auto place = m_places.rbegin(); place != m_places.rend(); ++place)
            if ((*place)->getNChildren() == 0)
                osg::subChild((*place)->getParent(), *place);
    }

    osg::NodePtr m_root;
    std::vector<osg::NodePtr> m_nodes;
    MergingChoice m_merging;
    const std::unordered_set<const osg::Node*>& m_nameless;
    std::unordered_map<const osg::Node*, Frame> m_frames;
    std::vector<osg::NodePtr> m_places; ///< each before those below it
};

} // namespace

void gatherGeometry(const osg::NodePtr& root, const GatheringChoice& choice)
{
    if (root)
        Gathering(root, choice).run();
}

} // namespace geometry
