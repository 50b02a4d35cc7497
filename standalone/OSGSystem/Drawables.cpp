#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Material.h"
#include "standalone/OSGSystem/Attachments.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/OSGSystem/Mesh.h"

#include <utility>

namespace osg
{

FieldContainerType DrawableBase::_type("Drawable", &NodeCore::_type);
FieldContainerType MaterialDrawableBase::_type("MaterialDrawable", &DrawableBase::_type);
FieldContainerType GeometryBase::_type("Geometry", &MaterialDrawableBase::_type);

MaterialDrawableBase::~MaterialDrawableBase()
{
    MaterialPtr(m_material).subRef();
}

MaterialPtr MaterialDrawableBase::getMaterial() const
{
    return MaterialPtr(m_material);
}

void MaterialDrawableBase::setMaterial(const MaterialPtr& material)
{
    material.addRef();
    MaterialPtr(std::exchange(m_material, material.get())).subRef();
    fieldChanged(MaterialFieldMask);
}

bool MaterialDrawableBase::equalFields(const FieldContainer& other) const
{
    const auto& drawable = static_cast<const MaterialDrawableBase&>(other);
    return m_material == drawable.m_material && equalAttachments(drawable);
}

GeometryPtr GeometryBase::create()
{
    return GeometryPtr(new Geometry);
}

bool GeometryBase::equalFields(const FieldContainer& other) const
{
    return GeometryAccess::mesh(*this) == GeometryAccess::mesh(static_cast<const GeometryBase&>(other)) &&
           MaterialDrawableBase::equalFields(other);
}

FieldContainerPtr GeometryBase::copy() const
{
    const GeometryPtr result = create();
    AttachmentAccess::copyAll(*this, *result);
    GeometryBase& fields = *result;
    getMaterial().addRef();
    fields.m_material = m_material;
    fields.m_mesh = m_mesh;
    return result;
}

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
