#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeKind.h"

namespace ptx::jt::shapes
{

/// Makes what is drawn out of lists of vertices.
class PrimitiveMaker
{
public:
    /// `index` names the vertices of all primitives of `shape`, one after another. Both outlive the maker, and the
    /// shape has its positions.
    PrimitiveMaker(const codec::Values& index, Shape& shape) : m_index(index), m_shape(shape) {}

    /// Adds the vertices from `from` on as far as `to`.
    /// @return whether that can be done: polygons have to have their corners, and take time that has an end
    bool add(ShapeKind kind, std::size_t from, std::size_t to);

private:
    Corner corner(std::size_t i) const;
    void addTriangle(const Triangle& triangle);
    void addStrip(std::size_t from, std::size_t to);
    bool addPolygon(std::size_t from, std::size_t to);

    const codec::Values& m_index;
    Shape& m_shape;
    std::vector<osg::Vec3f> m_positions; ///< as the cutting of polygons wants them
    std::uint64_t m_work = 0;            ///< squares of the corners of large polygons
};

} // namespace ptx::jt::shapes
