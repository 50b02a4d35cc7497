#pragma once

#include "files/glb/GlbJson.h"
#include "files/glb/GlbNames.h"
#include "host/OSGSystem/Material.h"

#include <map>
#include <vector>

namespace files::glb
{

/// The materials of a file, each written once.
///
/// The base colour is the diffuse colour with the opacity as alpha, the mode BLEND where that is below 1; no metal; the
/// roughness is (2 / (s + 2))^(1/4) of the shininess s; the emission stays. Both sides are seen, because the surfaces
/// of CAD data are often turned inside out. A switch material is what it shows. What has no look is a light grey. A
/// material without a name, or with the code of its colour for one, is named by a word for its colour and the code; the
/// second of a name gets " 2" behind it.
class GlbMaterials
{
public:
    /// The number of `material`, which may be null.
    std::size_t number(const osg::MaterialPtr& material);
    /// The name in the file of the material of this number.
    const std::string& name(std::size_t number) const { return m_names[number]; }
    const JsonList& list() const { return m_list; }

private:
    std::map<osg::MaterialPtr, std::size_t> m_numbers;
    std::vector<std::string> m_names;
    UniqueNames m_uniqueNames;
    JsonList m_list;
};

} // namespace files::glb
