#include "host/OSGSystem/Geometry.h"

#include "host/OSGSystem/Material.h"
#include "scene/Attachments.h"
#include "scene/Mesh.h"

namespace osg
{

FieldContainerType GeometryBase::_type("Geometry", &MaterialDrawableBase::_type);

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

} // namespace osg
