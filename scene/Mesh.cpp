#include "scene/Mesh.h"

#include "scene/ContainerRegistry.h"

#include <utility>

namespace osg
{

const Mesh& GeometryAccess::mesh(const GeometryBase& geometry)
{
    static const Mesh none;
    return geometry.m_mesh ? *geometry.m_mesh : none;
}

std::shared_ptr<const Mesh> GeometryAccess::sharedMesh(const GeometryBase& geometry)
{
    return geometry.m_mesh;
}

void GeometryAccess::setMesh(GeometryBase& geometry, std::shared_ptr<const Mesh> mesh)
{
    geometry.m_mesh = std::move(mesh);
    ContainerAccess::changed(geometry, GeometryBase::MeshFieldMask);
}

} // namespace osg
