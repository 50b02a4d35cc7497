#pragma once

#include "host/OSGSystem/Math.h"
#include "scene/Mesh.h"

#include <optional>
#include <vector>

namespace importer::inventory
{

/// A mesh at its place within a part.
struct PlacedMesh {
    const osg::Mesh* mesh = nullptr;
    osg::Matrix matrix;
};

/// What the triangles of a part measure.
struct MeshMeasures {
    double area = 0;              ///< in mm2
    std::optional<double> volume; ///< in mm3; none where the triangles, all meshes together, are not closed
};

/// Measures meshes that make up one part. They are closed when each edge is passed as often in one direction as in the
/// other, corners at the same place counting as one, as meshes with sharp edges have them.
MeshMeasures measure(const std::vector<PlacedMesh>& meshes);

} // namespace importer::inventory
