#pragma once

#include "host/OSGSystem/MaterialDrawable.h"

namespace osg
{

struct Mesh;

/// Fields of `Geometry`.
class ZN_HOST_EXPORT GeometryBase : public MaterialDrawable
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = GeometryPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around a change of the vertices, indices or the exact surface.
    static constexpr FieldMask MeshFieldMask = 1u << 2;

    /// A geometry without vertices.
    static GeometryPtr create();
    const FieldContainerType& getType() const override { return _type; }

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    friend struct GeometryAccess;

    std::shared_ptr<const Mesh> m_mesh; ///< immutable and shared by copies; null stands for no vertices
};

/// Triangles, lines and points with a material.
class ZN_HOST_EXPORT Geometry : public GeometryBase
{
};

} // namespace osg
