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

/// Appends the triangles that `face` bears, as one face, with normals of the exact surface: in the space of the shape
/// that the face belongs to, front side out. @return false when the face bears no mesh
bool appendFaceMesh(const TopoDS_Face& face, model::MeshBuilder& builder);

inline osg::Vec3f toVec3f(const gp_XYZ& value)
{
    return {static_cast<float>(value.X()), static_cast<float>(value.Y()), static_cast<float>(value.Z())};
}

} // namespace ptx::occt::meshing
