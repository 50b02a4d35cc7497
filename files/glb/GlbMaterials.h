#pragma once

#include "files/glb/GlbJson.h"
#include "host/OSGSystem/Material.h"

#include <map>

namespace files::glb
{

/// The materials of a file, each written once.
///
/// The base colour is the diffuse colour with the opacity as alpha, the mode BLEND where that is below 1; no metal; the
/// roughness is (2 / (s + 2))^(1/4) of the shininess s; the emission stays. Both sides are seen, because the surfaces
/// of CAD data are often turned inside out. A switch material is what it shows. What has no look is a light grey.
class GlbMaterials
{
public:
    /// The number of `material`, which may be null.
    std::size_t number(const osg::MaterialPtr& material);
    const JsonList& list() const { return m_list; }

private:
    std::map<osg::MaterialPtr, std::size_t> m_numbers;
    JsonList m_list;
};

} // namespace files::glb
