#pragma once

#include "files/glb/GlbJson.h"
#include "files/glb/GlbNames.h"
#include "files/glb/GlbTextures.h"
#include "host/OSGSystem/Material.h"

#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace files::glb
{

/// The materials of a file, each written once.
///
/// A material is its physically based surface (`osg::surfaceOf`), with the diffuse colour as base colour and its
/// emission. What has no more than a look is no metal, its roughness is (2 / (s + 2))^(1/4) of the shininess s, both
/// sides are seen, because the surfaces of CAD data are often turned inside out. A switch material is what it shows.
/// What has no look is a light grey. A material without a name, or with the code of its colour for one, is named by a
/// word for its colour and the code; the second of a name gets " 2" behind it.
class GlbMaterials
{
public:
    /// The arguments are those of the file.
    GlbMaterials(const WriteOptions& options, const QString& path) : m_textures(options, path) {}

    /// The number of `material`, which may be null, as a mesh shows it that has these sets of texture coordinates (bit
    /// 0 for the first one, bit 1 for the second): a mesh without them is seen without the textures that follow them.
    std::size_t number(const osg::MaterialPtr& material, unsigned sets);
    /// The number of the dark material without light that edges have.
    std::size_t edges();
    /// The set of texture coordinates that a normal map of `material` follows, none without one.
    std::optional<unsigned> normalMapSet(const osg::MaterialPtr& material);
    /// The name in the file of the material of this number.
    const std::string& name(std::size_t number) const { return m_names[number]; }
    const JsonList& list() const { return m_list; }
    const GlbTextures& textures() const { return m_textures; }
    /// The extensions that the materials use.
    const std::set<std::string>& extensions() const { return m_extensions; }
    /// How many materials stand on meshes without the texture coordinates that their textures follow.
    std::size_t withoutCoordinates() const { return m_withoutCoordinates; }

private:
    /// What a material asks of meshes.
    struct Needs {
        unsigned sets = 0; ///< of texture coordinates, one bit each
        std::optional<unsigned> normalMapSet;
    };
    const Needs& needsOf(const osg::MaterialPtr& shown);

    std::map<osg::MaterialPtr, Needs> m_needs;
    std::map<std::pair<osg::MaterialPtr, unsigned>, std::size_t> m_numbers;
    std::vector<std::string> m_names;
    UniqueNames m_uniqueNames;
    JsonList m_list;
    GlbTextures m_textures;
    std::set<std::string> m_extensions;
    std::size_t m_withoutCoordinates = 0;
    std::optional<std::size_t> m_edges;
};

} // namespace files::glb
