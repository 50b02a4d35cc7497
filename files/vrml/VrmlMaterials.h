#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlTextures.h"
#include "host/OSGSystem/SimpleMaterial.h"

#include <map>
#include <tuple>

namespace files::vrml
{

/// What the look of a shape depends on beside its appearance.
enum class Painted {
    ByMaterial,
    ByColors, ///< the colours of the mesh stand instead of the diffuse colour
    AsLines,  ///< lines and points have the emissive colour
};

/// The materials of a read; those of one appearance are one.
class Materials
{
public:
    /// Named after the Material node, or after the Appearance. The path of a texture becomes the tag "texture=PATH".
    /// Null where there is no material and no texture.
    /// @param texture what is seen of the appearance's texture; null for nothing
    osg::MaterialPtr get(const Node* appearance, const AppearanceTexture* texture, Painted painted);

private:
    using Key = std::tuple<const Node*, const Node*, const AppearanceTexture*, Painted>;
    std::map<Key, osg::RefPtr<osg::SimpleMaterialPtr>> m_made;
};

} // namespace files::vrml
