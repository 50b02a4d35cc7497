#include "geometry/GeometryMerging.h"

#include "geometry/IndexRepair.h"
#include "geometry/MeshJoining.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Material.h"
#include "scene/Attachments.h"
#include "scene/ContainerRegistry.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_set>

namespace geometry
{

namespace
{

/// Children of one node that may become one.
using Companions = std::vector<osg::NodePtr>;
/// The ids of the geometries of companions.
using Signature = std::vector<std::uint32_t>;

Signature signatureOf(const Companions& companions)
{
    Signature ids;
    for (const osg::NodePtr& node : companions)
        ids.push_back(node->getCore()->getContainerId());
    return ids;
}

/// Cuts `companions` where the next one would be too much, and appends the pieces that are several.
void appendPieces(const Companions& companions, std::size_t mostVertices, std::vector<Companions>& several)
{
    std::vector<Companions> pieces(1);
    std::size_t vertices = 0;
    for (const osg::NodePtr& node : companions) {
        const std::size_t more = osg::GeometryAccess::mesh(*geometryOf(node)).positions.size();
        if (more > mostVertices - std::min(vertices, mostVertices)) {
            pieces.emplace_back();
            vertices = 0;
        }
        pieces.back().push_back(node);
        vertices += more;
    }
    for (Companions& piece : pieces)
        if (piece.size() > 1)
            several.push_back(std::move(piece));
}

/// The children of `parent` of one material and one make, several each, in their order.
std::vector<Companions> companionsBelow(const osg::NodePtr& parent, const MergingChoice& choice)
{
    std::map<std::tuple<osg::Material*, MeshMake>, Companions> byLook;
    for (unsigned i = 0; i < parent->getNChildren(); ++i) {
        const osg::NodePtr child = parent->getChild(i);
        if (!isMergeable(child) || choice.kept.contains(child.get()))
            continue;
        const osg::GeometryPtr geometry = geometryOf(child);
        byLook[{geometry->getMaterial().get(), makeOf(osg::GeometryAccess::mesh(*geometry))}].push_back(child);
    }
    std::vector<Companions> several;
    for (const auto& [look, companions] : byLook)
        appendPieces(companions, choice.mostVertices, several);
    return several;
}

/// Companions by what they are made of, so that the places of one part lie together.
using Places = std::map<Signature, std::vector<Companions>>;

/// Takes out the nodes whose geometry is used anywhere but in `places`.
void dropUsedElsewhere(std::vector<Companions>& places)
{
    std::map<std::uint32_t, std::size_t> uses;
    for (const std::uint32_t id : signatureOf(places.front()))
        ++uses[id];
    for (Companions& companions : places)
        std::erase_if(companions, [&](const osg::NodePtr& node) {
            const std::size_t inEach = uses[node->getCore()->getContainerId()];
            return inEach > 1 || std::size_t(node->getCore()->getRefCount()) != places.size();
        });
}

osg::GeometryPtr mergedGeometry(const Companions& companions)
{
    std::vector<std::shared_ptr<const osg::Mesh>> meshes;
    for (const osg::NodePtr& node : companions)
        if (auto mesh = osg::GeometryAccess::sharedMesh(*geometryOf(node)))
            meshes.push_back(std::move(mesh));
    std::optional<osg::Mesh> mesh = joined(meshes);
    if (!mesh)
        return {};
    const osg::GeometryPtr first = geometryOf(companions.front());
    const osg::GeometryPtr result(static_cast<osg::Geometry*>(osg::ContainerAccess::copy(*first).get()));
    osg::exchangeMesh(result, std::make_shared<const osg::Mesh>(*std::move(mesh)));
    return result;
}

/// The nodes that are left over, and the parents that they are to be taken out of, each once.
class Leftovers
{
public:
    void add(const Companions& companions)
    {
        for (std::size_t i = 1; i < companions.size(); ++i)
            m_nodes.insert(companions[i].get());
        const osg::NodePtr parent = companions.front()->getParent();
        if (m_known.insert(parent.get()).second)
            m_parents.push_back(parent);
    }

    /// Goes through the children of each parent once, in their order: a search for each node would walk back and forth.
    void takeOut() const
    {
        for (const osg::NodePtr& parent : m_parents) {
            osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
            for (unsigned i = parent->getNChildren(); i-- > 0;)
                if (const osg::NodePtr child = parent->getChild(i); m_nodes.contains(child.get()))
                    parent->subChild(child);
            osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
        }
    }

private:
    std::unordered_set<const osg::Node*> m_nodes;
    std::unordered_set<const osg::Node*> m_known;
    std::vector<osg::NodePtr> m_parents;
};

} // namespace

bool hasNothingButAName(const osg::AttachmentContainer& container)
{
    const osg::AttachmentMap* map = osg::AttachmentAccess::map(container);
    return !map || std::all_of(map->entries().begin(), map->entries().end(), [](const auto& entry) {
        return entry.attachment->getType().getId() == osg::NameAttachment::_type.getId();
    });
}

bool isMergeable(const osg::NodePtr& node)
{
    const osg::GeometryPtr geometry = geometryOf(node);
    return geometry && geometry->getType().getId() == osg::Geometry::_type.getId() && node->isActive() &&
           node->getNChildren() == 0 && hasNothingButAName(*node) && hasNothingButAName(*geometry) &&
           osg::GeometryAccess::mesh(*geometry).primitives.empty() && isSound(osg::GeometryAccess::mesh(*geometry));
}

void mergeGeometry(const osg::NodePtr& root, const MergingChoice& choice)
{
    Places all;
    for (const osg::NodePtr& node : parentsFirst(root))
        for (Companions& companions : companionsBelow(node, choice))
            all[signatureOf(companions)].push_back(std::move(companions));
    Leftovers leftovers;
    for (auto& [signature, places] : all) {
        dropUsedElsewhere(places);
        if (places.front().size() < 2)
            continue;
        const osg::GeometryPtr merged = mergedGeometry(places.front());
        if (!merged)
            continue;
        for (const Companions& companions : places) {
            osg::exchangeCore(companions.front(), merged);
            leftovers.add(companions);
        }
    }
    leftovers.takeOut();
}

} // namespace geometry
