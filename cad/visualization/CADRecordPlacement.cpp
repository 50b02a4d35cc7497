#include "cad/visualization/CADRecordPlacement.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/ComponentTransform.h"
#include "host/OSGSystem/Edit.h"

#include <algorithm>
#include <cmath>

namespace HB::Visualization::CADRecordPlacement
{

namespace
{

/// An axis shorter than this has no direction.
constexpr float shortestAxis = 1e-6F;

osg::ComponentTransformPtr placementOf(const osg::NodePtr& node)
{
    return osg::fcCast<osg::ComponentTransform>(node ? node->getCore() : osg::NodeCorePtr());
}

template <class Change>
void edit(const osg::NodePtr& node, const Change& change)
{
    const osg::ComponentTransformPtr placement = placementOf(node);
    if (!placement)
        return;
    osg::beginEditCP(placement, osg::AllFieldsMask, 1);
    change(*placement);
    osg::endEditCP(placement, osg::AllFieldsMask, 1);
}

std::vector<float> values(const osg::Vec3f& vector)
{
    return {vector.x, vector.y, vector.z};
}

float lengthOf(float x, float y, float z)
{
    return std::sqrt(x * x + y * y + z * z);
}

osg::Quaternion quaternion(float x, float y, float z, float angle)
{
    const float length = lengthOf(x, y, z);
    if (!(length > shortestAxis))
        return {0, 0, 0, 1};
    const float s = std::sin(angle * 0.5F) / length;
    return {x * s, y * s, z * s, std::cos(angle * 0.5F)};
}

/// The angle of a rotation, by way of degrees in single precision.
float angleOf(float w)
{
    const float degrees = 2.0F * std::acos(std::clamp(w, -1.0F, 1.0F)) / 6.2831855F * 360.0F;
    return 2.0F * degrees * 3.1415927F / 360.0F;
}

} // namespace

void setTranslation(const osg::NodePtr& node, float x, float y, float z)
{
    edit(node, [&](osg::ComponentTransform& placement) { placement.setTranslation({x, y, z}); });
}

std::vector<float> getTranslation(const osg::NodePtr& node)
{
    const osg::ComponentTransformPtr placement = placementOf(node);
    return placement ? values(placement->getTranslation()) : std::vector<float>();
}

void setScale(const osg::NodePtr& node, float x, float y, float z)
{
    edit(node, [&](osg::ComponentTransform& placement) { placement.setScale({x, y, z}); });
}

std::vector<float> getScale(const osg::NodePtr& node)
{
    const osg::ComponentTransformPtr placement = placementOf(node);
    return placement ? values(placement->getScale()) : std::vector<float>();
}

void setRotation(const osg::NodePtr& node, float x, float y, float z, float angle)
{
    edit(node, [&](osg::ComponentTransform& placement) { placement.setRotation(quaternion(x, y, z, angle)); });
}

std::vector<float> getRotation(const osg::NodePtr& node)
{
    const osg::ComponentTransformPtr placement = placementOf(node);
    if (!placement)
        return {};
    const auto [a, b, c, w] = placement->getRotation();
    const float length = lengthOf(a, b, c);
    if (!(length > shortestAxis))
        return {0, 0, 1, 0};
    return {a / length, b / length, c / length, angleOf(w)};
}

} // namespace HB::Visualization::CADRecordPlacement
