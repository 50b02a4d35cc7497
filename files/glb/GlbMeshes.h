#pragma once

#include "files/glb/GlbArrays.h"
#include "files/glb/GlbMaterials.h"
#include "files/glb/GlbVariants.h"
#include "files/glb/GlbWriter.h"
#include "host/OSGSystem/Geometry.h"

#include <QStringList>

#include <utility>

namespace files::glb
{

/// The meshes of a file: one for each geometry core and the material that it is seen with.
class GlbMeshes
{
public:
    /// `variants` must outlive this object.
    GlbMeshes(const GlbVariants& variants, const WriteOptions& options) : m_variants(variants), m_options(options) {}

    /// The number of the mesh of `geometry`, none if it draws nothing. `material` is seen instead of the own one unless
    /// it is null. Throws `files::Failure` when the mesh breaks the promises of `osg::Mesh`.
    std::optional<std::size_t> number(const osg::GeometryPtr& geometry, const osg::MaterialPtr& material);

    const JsonList& list() const { return m_list; }
    const GlbArrays& arrays() const { return m_arrays; }
    const GlbMaterials& materials() const { return m_materials; }
    const QStringList& warnings() const { return m_warnings; }
    /// Some mesh is seen with other materials in other variants.
    bool hasVariants() const { return m_hasVariants; }

private:
    std::optional<std::size_t> add(const osg::GeometryPtr& geometry, const osg::MaterialPtr& material);
    Json variantMappings(const osg::MaterialPtr& material);
    Json attributes(const osg::Mesh& mesh);
    osg::Buffer<std::uint32_t> drawable(const osg::Buffer<std::uint32_t>& indices, std::size_t corners,
                                        const osg::Mesh& mesh);

    const GlbVariants& m_variants;
    WriteOptions m_options;
    bool m_hasVariants = false;
    std::map<std::pair<osg::GeometryPtr, osg::MaterialPtr>, std::optional<std::size_t>> m_numbers;
    GlbArrays m_arrays;
    GlbMaterials m_materials;
    JsonList m_list;
    QStringList m_warnings;
};

} // namespace files::glb
