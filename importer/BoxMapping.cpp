#include "importer/BoxMapping.h"

#include "geometry/BoxCoordinates.h"
#include "scene/CoreMaterial.h"
#include "scene/GeometryWalk.h"
#include "scene/MaterialLook.h"
#include "scene/SceneEdits.h"
#include "scene/SubMaterials.h"

#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace importer
{

namespace
{

using Uv = zn::MeshSettings::Uv;

/// What of texture coordinates something asks for.
struct Need {
    bool any = false;
    bool second = false; ///< set; only with `any`

    void add(const Need& other)
    {
        any = any || other.any;
        second = second || other.second;
    }
};

bool lacksCoordinates(const osg::Mesh& mesh)
{
    return !mesh.triangles.empty() && mesh.texCoords.empty() && mesh.texCoords1.empty();
}

class Mapper
{
public:
    explicit Mapper(Uv wish) : m_wish(wish) {}

    void collect(const osg::NodePtr& root)
    {
        std::vector<std::pair<osg::NodePtr, osg::MaterialPtr>> steps = {{root, {}}};
        while (!steps.empty()) {
            const auto [node, above] = steps.back();
            steps.pop_back();
            const osg::MaterialPtr material = osg::materialBelow(node, above);
            if (const osg::GeometryPtr geometry = osg::geometryOf(node);
                geometry && lacksCoordinates(osg::GeometryAccess::mesh(*geometry)))
                m_needs[geometry->getContainerId()].add(needOf(material ? material : geometry->getMaterial()));
            for (unsigned i = 0; i < node->getNChildren(); ++i)
                steps.emplace_back(node->getChild(i), material);
        }
    }

    void map(const osg::GeometryPtr& geometry)
    {
        const auto found = m_needs.find(geometry->getContainerId());
        if (found == m_needs.end() || !(found->second.any || m_wish == Uv::Box))
            return;
        osg::exchangeMesh(geometry, mapped(osg::GeometryAccess::mesh(*geometry), found->second.second));
    }

private:
    const Need& needOf(const osg::MaterialPtr& material)
    {
        const auto [entry, isNew] = m_materials.try_emplace(material.get());
        if (isNew)
            for (const osg::MaterialPtr& each : osg::subMaterialsFirst(material))
                for (const auto& [slot, texture] : osg::surfaceOf(each).textures)
                    entry->second.add({true, texture.set == 1});
        return entry->second;
    }

    std::shared_ptr<const osg::Mesh> mapped(const osg::Mesh& mesh, bool isSecondNeeded)
    {
        std::shared_ptr<const osg::Mesh>& known = m_made[{&mesh, isSecondNeeded}];
        if (!known) {
            osg::Mesh made = geometry::withBoxCoordinates(mesh);
            if (isSecondNeeded)
                made.texCoords1 = made.texCoords;
            known = std::make_shared<const osg::Mesh>(std::move(made));
        }
        return known;
    }

    Uv m_wish;
    std::unordered_map<const osg::Material*, Need> m_materials;
    std::unordered_map<std::uint32_t, Need> m_needs; ///< of geometries without texture coordinates, by container id
    std::map<std::pair<const osg::Mesh*, bool>, std::shared_ptr<const osg::Mesh>> m_made;
};

} // namespace

void mapBoxes(const osg::NodePtr& root, Uv wish)
{
    if (!root || wish == Uv::None)
        return;
    Mapper mapper(wish);
    mapper.collect(root);
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root))
        mapper.map(geometry);
}

} // namespace importer
