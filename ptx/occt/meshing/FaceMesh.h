#pragma once

#include "host/OSGSystem/Math.h"

#include <gp_XYZ.hxx>

class TopoDS_Face;

namespace ptx::model
{
class MeshBuilder;
} // namespace ptx::model

namespace ptx::occt::meshing
{

/// Which texture coordinates a face gets.
enum class Coordinates {
    None,
    Surface, ///< those of `NodeCoordinates`, where it bears parameters of its surface
};

/// Appends the triangles that `face` bears, as one face, with normals of the exact surface: in the space of the shape
/// that the face belongs to, front side out. @return false when the face bears no mesh
bool appendFaceMesh(const TopoDS_Face& face, model::MeshBuilder& builder, Coordinates coordinates = Coordinates::None);

/// Whether `face` bears a mesh with the parameters of its surface.
bool hasParameters(const TopoDS_Face& face);

inline osg::Vec3f toVec3f(const gp_XYZ& value)
{
    return {static_cast<float>(value.X()), static_cast<float>(value.Y()), static_cast<float>(value.Z())};
}

} // namespace ptx::occt::meshing
