#pragma once

#include "files/ImageFiles.h"
#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"
#include "host/OSGSystem/PhysicalSurface.h"

#include <map>
#include <optional>
#include <utility>

namespace files::vrml
{

/// The picture of an appearance.
struct AppearanceTexture {
    osg::Texture texture;
    unsigned channels = 3; ///< 1 grey, 2 grey and alpha, 3 colours, 4 colours and alpha

    bool hasColors() const { return channels > 2; }
    bool hasAlpha() const { return channels % 2 == 0; }
};

/// The pictures of a read, each taken once.
class Textures
{
public:
    /// That of an appearance in the file of `source`; null for none and, with a warning, for one that cannot be taken.
    /// It lives as long as this object.
    const AppearanceTexture* of(const Node* appearance, const Source& source);

private:
    std::optional<AppearanceTexture> made(const Node& texture, const Node* transform, const Source& source);
    osg::EncodedImagePtr imageOf(const Node& texture, const Source& source);

    std::map<QString, ImageFiles> m_files; ///< by the file that names pictures
    std::map<std::pair<const Node*, const Node*>, std::optional<AppearanceTexture>>
        m_made; ///< by texture and transform
};

} // namespace files::vrml
