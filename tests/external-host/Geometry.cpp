// This host shows names and places. It has no meshes, so that what works on meshes finds nothing to do.
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/OSGSystem/Material.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "host/znTessellation/znRetessellation.h"

namespace osg
{

FieldContainerType DrawableBase::_type("Drawable", &NodeCore::_type);
FieldContainerType MaterialDrawableBase::_type("MaterialDrawable", &DrawableBase::_type);
FieldContainerType GeometryBase::_type("Geometry", &MaterialDrawableBase::_type);
FieldContainerType ImageAttachmentBase::_type("ImageAttachment", &Attachment::_type);

MaterialPtr MaterialDrawableBase::getMaterial() const
{
    return MaterialPtr(m_material);
}
void MaterialDrawableBase::setMaterial(const MaterialPtr& material)
{
    material.addRef();
    getMaterial().subRef();
    m_material = material.get();
}

} // namespace osg

void znOptimize::cleanupGroupNodes(const osg::NodePtr&) {}
void znOptimize::triangulate(const osg::NodePtr&, bool) {}
void znOptimize::mergeGeometry(const osg::NodePtr&) {}
void znOptimize::removeNURBS(const osg::NodePtr&) {}
void znOptimize::removeEmptyGroups(const osg::NodePtr&, bool) {}
void znOptimize::flushTransformationsKeepFaceNormals(const osg::NodePtr&) {}
void znOptimize::flushSelectedTransformationScales(const osg::NodePtr&) {}
void znNodeUtils::removeVertexColors(const osg::NodePtr&) {}
void znNodeUtils::verifyIndexMap(const osg::NodePtr&) {}
void znNodeUtils::addAmbientOcclusionData(const osg::NodePtr&) {}

struct znRetessellation::State {
};
znRetessellation::znRetessellation() = default;
znRetessellation::~znRetessellation() = default;
void znRetessellation::copySettings() {}
void znRetessellation::addNodes(const std::vector<osg::NodePtr>&) {}
void znRetessellation::setupTessellation(double, double, double, bool, double) {}
void znRetessellation::applyTessellation() {}
void znRetessellation::rebuildSurfaces() {}
void znRetessellation::finalize() {}
