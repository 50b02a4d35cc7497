#pragma once

#include "files/glb/GlbArrays.h"
#include "files/glb/GlbMaterials.h"
#include "files/glb/GlbVariants.h"
#include "files/glb/GlbWriter.h"
#include "host/OSGSystem/Geometry.h"

#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

namespace files::glb
{

/// The meshes of a file: one for each list of geometry cores and the materials that these are seen with.
class GlbMeshes
{
public:
    /// `variants` must outlive this object; `path` is that of the file.
    GlbMeshes(const GlbVariants& variants, const WriteOptions& options, const QString& path)
        : m_variants(variants), m_options(options), m_materials(options, path)
    {
    }

    /// A geometry and the material that it is seen with.
    using Body = std::pair<osg::GeometryPtr, osg::MaterialPtr>;
    /// What one node draws.
    using Bodies = std::vector<Body>;
    /// `geometry` as it is seen: with `above` instead of the own material unless it is null.
    static Body body(const osg::GeometryPtr& geometry, const osg::MaterialPtr& above)
    {
        return {geometry, above ? above : geometry->getMaterial()};
    }

    /// The number of the mesh that is drawn by these, none if they draw nothing. Its vertices are `scale` times those
    /// of the geometries. A new one is named after the first geometry that has a name, else as `fallback()` says.
    /// Throws `files::Failure` when a mesh breaks the promises of `osg::Mesh`.
    std::optional<std::size_t> number(const Bodies& bodies, double scale, const std::function<std::string()>& fallback);

    /// The name in the file of the material of `body`.
    std::string materialName(const Body& body);

    const JsonList& list() const { return m_list; }
    const GlbArrays& arrays() const { return m_arrays; }
    const GlbMaterials& materials() const { return m_materials; }
    QStringList warnings() const;
    /// Some mesh is seen with other materials in other variants.
    bool hasVariants() const { return m_hasVariants; }

private:
    std::optional<std::size_t> add(const Bodies& bodies, double scale, const std::function<std::string()>& fallback);
    void addPrimitives(const Body& body, double scale, Json& primitives);
    /// The edges of `mesh`, of whose triangles `triangles` is the primitive; nothing where there are none.
    std::optional<Json> edges(const osg::Mesh& mesh, const Json& triangles);
    Json variantMappings(const osg::MaterialPtr& material, unsigned sets);
    Json attributes(const osg::Mesh& mesh, double scale);
    /// The accessor of the tangents of `mesh` where `material`, or what takes its place in a variant, has a normal map.
    std::optional<std::size_t> tangents(const osg::Mesh& mesh, const osg::MaterialPtr& material);
    osg::Buffer<std::uint32_t> drawable(const osg::Buffer<std::uint32_t>& indices, std::size_t corners,
                                        const osg::Mesh& mesh);

    const GlbVariants& m_variants;
    WriteOptions m_options;
    bool m_hasVariants = false;
    std::map<std::pair<Bodies, double>, std::optional<std::size_t>> m_numbers;
    GlbArrays m_arrays;
    std::map<std::pair<const osg::Mesh*, unsigned>, std::size_t> m_tangents; ///< by mesh and set of coordinates
    GlbMaterials m_materials;
    JsonList m_list;
    QStringList m_warnings;
};

} // namespace files::glb
