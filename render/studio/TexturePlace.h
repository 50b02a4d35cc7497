#pragma once

#include "geometry/rays/RayScene.h"
#include "render/studio/SurfaceTexture.h"

#include <optional>

namespace render::studio
{

/// What textures need to know of the triangle that a ray met.
class TexturePlace
{
public:
    /// @param toStage how the mesh is placed
    /// @param pointSize how large a point of the picture is on the stage, on the surface
    TexturePlace(const osg::Mesh& mesh, const geometry::rays::Hit& hit, const Eigen::Affine3d& toStage,
                 float pointSize);

    /// What `texture` has here; nothing where the mesh has no coordinates for it.
    std::optional<Eigen::Vector4f> read(const SurfaceTexture& texture) const;

    /// The columns x (towards the right of the picture) and y (towards its upper border) on the stage of what `texture`
    /// shows, at right angles to `normal` and of length 1; nothing where coordinates give no directions.
    std::optional<Eigen::Matrix<float, 3, 2>> axes(const SurfaceTexture& texture, const Eigen::Vector3f& normal) const;

private:
    struct Coordinates {
        Eigen::Vector2f place, along1, along2; ///< of the hit; from the first corner to the other two
        float size;                            ///< of a point of the picture
    };
    std::optional<Coordinates> coordinates(unsigned set) const;

    const osg::Mesh& m_mesh;
    const geometry::rays::Hit& m_hit;
    const std::uint32_t* m_corners;
    Eigen::Vector3d m_edge1, m_edge2; ///< on the stage
    float m_pointSize;
};

} // namespace render::studio
