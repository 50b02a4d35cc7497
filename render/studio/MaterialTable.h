#pragma once

#include "geometry/rays/Parts.h"
#include "host/OSGSystem/PhysicalSurface.h"
#include "render/studio/SurfaceTexture.h"

#include <QStringList>

#include <array>
#include <map>
#include <memory>
#include <optional>

namespace render::studio
{

/// A material with all that it takes to draw it; colours are amounts of light.
struct StudioMaterial {
    Eigen::Vector3f baseColor = geometry::rays::Look().diffuse;
    Eigen::Vector3f emission = {0, 0, 0};
    osg::PhysicalSurface surface; ///< its textures are in `textures`; numbers within their ranges
    std::array<std::optional<SurfaceTexture>, osg::textureSlots> textures;
    bool isGiven = false; ///< there is a material; vertex colours stand alone otherwise

    const std::optional<SurfaceTexture>& texture(osg::TextureSlot slot) const { return textures[std::size_t(slot)]; }
};

/// The materials of all parts, each once, with their textures decoded. Belongs to one thread while it is made; may be
/// read by all afterwards.
class MaterialTable
{
public:
    /// @param mostTexturePixels of all textures together; what is beyond is left out and told
    MaterialTable(const geometry::rays::PartList& list, std::size_t mostTexturePixels);

    const StudioMaterial& of(std::uint32_t part) const { return *m_ofParts[part]; }
    /// What is not drawn, for people.
    const QStringList& warnings() const { return m_warnings; }

private:
    std::map<const void*, StudioMaterial> m_materials;
    std::vector<const StudioMaterial*> m_ofParts;
    QStringList m_warnings;
};

} // namespace render::studio
