#include "geometry/rays/Parts.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Transform.h"
#include "scene/CoreMaterial.h"
#include "scene/SubMaterials.h"
#include "scene/Tags.h"

#include <algorithm>
#include <unordered_map>

namespace geometry::rays
{

namespace
{

/// Coordinates of the world beyond this are taken for damage.
constexpr double worldLimit = 1e18;
constexpr std::uint32_t noShape = 0xFFFFFFFF;

/// What a node has from the nodes above it.
struct Inherited {
    Eigen::Affine3d placement = Eigen::Affine3d::Identity();
    osg::MaterialPtr material; ///< of the topmost material group; null when there is none
    bool isForward = false;    ///< below a node of what is seen first
};

struct Step {
    osg::NodePtr node;
    Inherited inherited;
};

Eigen::Affine3d toAffine(const osg::Matrix& matrix)
{
    Eigen::Affine3d result;
    result.matrix() = osg::toEigen(matrix);
    result.makeAffine();
    return result;
}

Eigen::AlignedBox3f boundsOf(const osg::Mesh& mesh)
{
    Eigen::AlignedBox3f box;
    forEachUsedPosition(mesh, [&box](const Eigen::Vector3f& position) { box.extend(position); });
    return box;
}

Eigen::AlignedBox3d placedBox(const Eigen::AlignedBox3f& box, const Eigen::Affine3d& placement)
{
    const Eigen::AlignedBox3d local = box.cast<double>();
    const Eigen::Vector3d center = placement * local.center();
    const Eigen::Vector3d half = placement.linear().cwiseAbs() * (local.sizes() / 2);
    return {center - half, center + half};
}

/// Children go on the stack from the last to the first, so that they come off in their order.
void pushChildren(const osg::Node& node, const Inherited& inherited, std::vector<Step>& pending)
{
    for (unsigned i = node.getNChildren(); i-- > 0;)
        pending.push_back({node.getChild(i), inherited});
}

bool hasTag(const osg::NodePtr& node, std::string_view tag)
{
    const std::vector<std::string>& tags = osg::tagsOf(node);
    return !tag.empty() && std::find(tags.begin(), tags.end(), tag) != tags.end();
}

void inheritFrom(const osg::NodePtr& node, Inherited& inherited)
{
    if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
        inherited.placement = inherited.placement * toAffine(transform->getMatrix());
    inherited.material = osg::materialBelow(node, inherited.material);
}

class Collector
{
public:
    void add(const osg::GeometryPtr& geometry, const Inherited& inherited)
    {
        const std::uint32_t shape = shapeOf(osg::GeometryAccess::sharedMesh(*geometry));
        if (shape == noShape)
            return;
        const Eigen::AlignedBox3d box = placedBox(m_list.shapes[shape].bounds, inherited.placement);
        const bool isPlaced = box.min().allFinite() && box.min().minCoeff() > -worldLimit && box.max().allFinite() &&
                              box.max().maxCoeff() < worldLimit;
        if (!isPlaced) {
            ++m_list.leftOut;
            return;
        }
        m_list.bounds.extend(box);
        const osg::MaterialPtr material =
            osg::shownMaterial(inherited.material ? inherited.material : geometry->getMaterial());
        m_list.parts.push_back({shape, lookOf(material), material, inherited.placement, inherited.isForward});
    }

    PartList& list() { return m_list; }

private:
    std::uint32_t shapeOf(std::shared_ptr<const osg::Mesh> mesh)
    {
        if (!mesh)
            return noShape;
        const auto [entry, isNew] = m_known.try_emplace(mesh.get(), noShape);
        if (!isNew)
            return entry->second;
        const Eigen::AlignedBox3f bounds = boundsOf(*mesh);
        if (!bounds.isEmpty()) {
            entry->second = static_cast<std::uint32_t>(m_list.shapes.size());
            m_list.shapes.push_back({std::move(mesh), bounds});
        }
        return entry->second;
    }

    PartList m_list;
    std::unordered_map<const osg::Mesh*, std::uint32_t> m_known;
};

} // namespace

PartList collectParts(const osg::NodePtr& root, std::size_t maxParts, const Watch& watch, std::string_view forward)
{
    Collector collector;
    PartList& list = collector.list();
    std::vector<Step> pending;
    if (root)
        pending.push_back({root, {}});
    while (!pending.empty() && !list.tooMany && !watch.cancelled()) {
        Step step = pending.back();
        pending.pop_back();
        if (!step.node->isActive())
            continue;
        inheritFrom(step.node, step.inherited);
        step.inherited.isForward = step.inherited.isForward || hasTag(step.node, forward);
        if (const auto geometry = osg::fcCast<osg::Geometry>(step.node->getCore()))
            collector.add(geometry, step.inherited);
        list.tooMany = list.parts.size() > maxParts;
        pushChildren(*step.node, step.inherited, pending);
    }
    return std::move(list);
}

double moveToStage(PartList& list)
{
    const double radius = list.bounds.diagonal().norm() / 2;
    const double scale = radius > 0 ? 1 / radius : 1;
    const Eigen::Affine3d toStage = Eigen::Scaling(scale) * Eigen::Translation3d(-list.bounds.center());
    for (Part& part : list.parts)
        part.placement = toStage * part.placement;
    list.bounds = Eigen::AlignedBox3d(toStage * list.bounds.min(), toStage * list.bounds.max());
    return scale;
}

} // namespace geometry::rays
