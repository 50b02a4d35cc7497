#include "geometry/GeometryMerging.h"

#include "geometry/IndexRepair.h"
#include "geometry/MeshJoining.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Material.h"
#include "scene/Attachments.h"
#include "scene/ContainerRegistry.h"
#include "scene/GeometryWalk.h"
#include "scene/IdSet.h"
#include "scene/NodeAccess.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <span>
#include <tuple>
#include <utility>

namespace geometry
{

namespace
{

/// Children of one node that may become one.
using Companions = std::span<const osg::NodePtr>;
/// The ids of the geometries of companions, in their order.
using Signature = std::span<const std::uint32_t>;

/// All companions of a tree, those of one signature together. They lie in few arrays, since there are many of them.
class Places
{
public:
    explicit Places(const MergingChoice& choice) : m_choice(&choice) {}

    /// Adds the companions among the children of `parent`: of one material and one make, several each, in their order.
    void addBelow(const osg::NodePtr& parent)
    {
        findCandidates(parent);
        for (auto first = m_candidates.begin(); first != m_candidates.end();) {
            const auto last = std::find_if(first, m_candidates.end(),
                                           [&](const Candidate& other) { return other.look != first->look; });
            addAlike({first, last});
            first = last;
        }
    }

    /// Calls `visit` with each signature and its companions in the order in which they came, by growing signature.
    template <class Visit>
    void forEachSignature(const Visit& visit)
    {
        const auto byIds = [this](const Piece& a, const Piece& b) {
            return std::ranges::lexicographical_compare(signatureOf(a), signatureOf(b));
        };
        std::stable_sort(m_pieces.begin(), m_pieces.end(), byIds);
        std::vector<Companions> places;
        for (auto first = m_pieces.begin(); first != m_pieces.end();) {
            places.clear();
            auto step = first;
            for (; step != m_pieces.end() && std::ranges::equal(signatureOf(*step), signatureOf(*first)); ++step)
                places.emplace_back(m_nodes.data() + step->first, step->count);
            visit(signatureOf(*first), places);
            first = step;
        }
    }

private:
    /// What geometries have in common that may become one.
    using Look = std::pair<osg::Material*, MeshMake>;

    struct Candidate {
        Look look;
        unsigned child; ///< its index in the parent
        std::size_t vertices;
        osg::NodePtr node;
    };

    /// Of `m_nodes` and `m_ids`.
    struct Piece {
        std::size_t first;
        std::size_t count;
    };

    Signature signatureOf(const Piece& piece) const { return {m_ids.data() + piece.first, piece.count}; }

    void findCandidates(const osg::NodePtr& parent)
    {
        m_candidates.clear();
        for (unsigned i = 0; i < parent->getNChildren(); ++i) {
            osg::NodeAccess::fetchChildrenAfter(*parent, i);
            const osg::NodePtr child = parent->getChild(i);
            if (!isMergeable(child) || m_choice->kept.contains(child.get()))
                continue;
            const osg::GeometryPtr geometry = geometryOf(child);
            const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
            m_candidates.push_back({{geometry->getMaterial().get(), makeOf(mesh)}, i, mesh.positions.size(), child});
        }
        std::sort(m_candidates.begin(), m_candidates.end(), [](const Candidate& a, const Candidate& b) {
            return std::tie(a.look, a.child) < std::tie(b.look, b.child);
        });
    }

    /// Cuts them where the next one would be too much, and keeps the pieces that are several.
    void addAlike(std::span<const Candidate> alike)
    {
        std::size_t begin = 0, vertices = 0;
        for (std::size_t i = 0; i < alike.size(); ++i) {
            if (alike[i].vertices > m_choice->mostVertices - std::min(vertices, m_choice->mostVertices)) {
                addPiece(alike.subspan(begin, i - begin));
                begin = i;
                vertices = 0;
            }
            vertices += alike[i].vertices;
        }
        addPiece(alike.subspan(begin));
    }

    void addPiece(std::span<const Candidate> several)
    {
        if (several.size() < 2)
            return;
        m_pieces.push_back({m_nodes.size(), several.size()});
        for (const Candidate& candidate : several) {
            m_nodes.push_back(candidate.node);
            m_ids.push_back(candidate.node->getCore()->getContainerId());
        }
    }

    const MergingChoice* m_choice;
    std::vector<Candidate> m_candidates; ///< of one parent
    std::vector<osg::NodePtr> m_nodes;
    std::vector<std::uint32_t> m_ids; ///< of their geometries
    std::vector<Piece> m_pieces;
};

/// The indices of those companions whose geometry is used nowhere but in `places`, once in each.
std::vector<std::size_t> usedHereAlone(Signature signature, const std::vector<Companions>& places)
{
    std::vector<std::uint32_t> sorted(signature.begin(), signature.end());
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < signature.size(); ++i) {
        const auto [first, last] = std::equal_range(sorted.begin(), sorted.end(), signature[i]);
        if (last - first == 1 && places.front()[i]->getCore()->getRefCount() == places.size())
            result.push_back(i);
    }
    return result;
}

std::vector<osg::NodePtr> chosen(Companions companions, const std::vector<std::size_t>& indices)
{
    std::vector<osg::NodePtr> result;
    result.reserve(indices.size());
    for (const std::size_t index : indices)
        result.push_back(companions[index]);
    return result;
}

osg::GeometryPtr mergedGeometry(Companions companions)
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
    void add(Companions companions)
    {
        for (const osg::NodePtr& node : companions.subspan(1))
            m_nodes.insert(node->getContainerId());
        const osg::NodePtr parent = companions.front()->getParent();
        if (m_known.insert(parent->getContainerId()))
            m_parents.push_back(parent);
    }

    /// Goes through the children of each parent once, in their order: a search for each node would walk back and forth.
    void takeOut() const
    {
        for (const osg::NodePtr& parent : m_parents) {
            osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
            for (unsigned i = parent->getNChildren(); i-- > 0;)
                if (const osg::NodePtr child = parent->getChild(i); m_nodes.contains(child->getContainerId()))
                    parent->subChild(child);
            osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
        }
    }

private:
    osg::IdSet m_nodes;
    osg::IdSet m_known;
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
    Places all(choice);
    for (const osg::NodePtr& node : parentsFirst(root))
        all.addBelow(node);
    Leftovers leftovers;
    all.forEachSignature([&leftovers](Signature signature, const std::vector<Companions>& places) {
        const std::vector<std::size_t> joining = usedHereAlone(signature, places);
        if (joining.size() < 2)
            return;
        const osg::GeometryPtr merged = mergedGeometry(chosen(places.front(), joining));
        if (!merged)
            return;
        for (const Companions& companions : places) {
            const std::vector<osg::NodePtr> nodes = chosen(companions, joining);
            osg::exchangeCore(nodes.front(), merged);
            leftovers.add(nodes);
        }
    });
    leftovers.takeOut();
}

} // namespace geometry
