#pragma once

#include "files/SceneBuilding.h"
#include "files/gltf/GltfAccessors.h"
#include "files/gltf/GltfVariants.h"

#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace files::gltf
{

/// Makes geometries of the meshes of a document, each once however many nodes use it.
class GltfMeshes
{
public:
    using Geometries = std::vector<osg::RefPtr<osg::GeometryPtr>>;

    /// The arguments outlive this object.
    GltfMeshes(const GltfDocument& document, GltfVariants& variants, ReadTask& task);

    /// One geometry for each primitive with something to draw. `place` is that of the node that asks.
    const Geometries& geometries(int mesh, const QString& place);
    /// What each of `count` parts draws, by its number, where all primitives of a mesh tell which elements are of which
    /// part; nothing where one does not, or not rightly.
    std::optional<std::vector<Geometries>> parts(int mesh, std::size_t count, const QString& place);
    GltfAccessors& accessors() { return m_accessors; }

private:
    osg::Mesh meshOf(const tinygltf::Primitive& primitive, const QString& place);
    void addVertexData(const tinygltf::Primitive& primitive, const QString& place, osg::Mesh& mesh);
    void addElements(const tinygltf::Primitive& primitive, const QString& place, osg::Mesh& mesh);
    osg::Buffer<std::uint32_t> elements(const tinygltf::Primitive& primitive, std::uint32_t vertices,
                                        const QString& place);
    osg::MaterialPtr material(int index, const QString& place);
    /// The material that stands for the vertex colours of `mesh`, which go then; else `otherwise`.
    osg::MaterialPtr materialInstead(const std::string& name, osg::Mesh& mesh, const osg::MaterialPtr& otherwise,
                                     const QString& place);

    /// Accessor of the indices, number of vertices if there is none, and mode.
    using ElementKey = std::tuple<int, std::uint32_t, int>;

    const GltfDocument& m_document;
    GltfVariants& m_variants;
    ReadTask& m_task;
    GltfAccessors m_accessors;
    std::map<int, Geometries> m_geometries;
    std::map<int, osg::RefPtr<osg::SimpleMaterialPtr>> m_materials;
    std::map<std::string, int> m_materialNames; ///< filled when parts ask first
    std::map<ElementKey, osg::Buffer<std::uint32_t>> m_elements;
};

} // namespace files::gltf
