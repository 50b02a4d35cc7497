#include "files/glb/GlbMeshes.h"

#include "files/Failure.h"
#include "files/Text.h"
#include "files/glb/GlbNames.h"
#include "host/OSGSystem/Names.h"
#include "scene/ColorSpace.h"
#include "scene/FeatureEdges.h"

#include <algorithm>
#include <cmath>

namespace files::glb
{

namespace
{

/// Elements of one kind: how many corners each has, and the mode of glTF.
struct Kind {
    osg::Buffer<std::uint32_t> osg::Mesh::*indices;
    std::size_t corners;
    int mode;
};

constexpr int linesMode = 1;
/// From which angle on triangles of a mesh without faces have an edge: 30 degrees, in radians.
constexpr double creaseAngle = 0.5235988;

constexpr Kind kinds[] = {{&osg::Mesh::triangles, 3, 4}, {&osg::Mesh::lines, 2, 1}, {&osg::Mesh::points, 1, 0}};

QString nameOf(const osg::GeometryPtr& geometry)
{
    const char* name = osg::getName(geometry);
    return name ? QString::fromUtf8(name) : QString();
}

std::string nameOf(const GlbMeshes::Bodies& bodies, const std::function<std::string()>& fallback)
{
    for (const auto& [geometry, material] : bodies)
        if (const char* name = osg::getName(geometry); name && *name)
            return decodedName(name);
    return fallback();
}

bool isFinite(const osg::Vec3f& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

template <class T>
bool fits(const osg::Buffer<T>& array, const osg::Mesh& mesh)
{
    return array.empty() || array.size() == mesh.positions.size();
}

bool isSound(const osg::Mesh& mesh)
{
    const auto isSoundKind = [&mesh](const Kind& kind) {
        const osg::Buffer<std::uint32_t>& indices = mesh.*kind.indices;
        return indices.size() % kind.corners == 0 &&
               std::all_of(indices.begin(), indices.end(),
                           [&](std::uint32_t index) { return index < mesh.positions.size(); });
    };
    return fits(mesh.normals, mesh) && fits(mesh.texCoords, mesh) && fits(mesh.texCoords1, mesh) &&
           fits(mesh.colors, mesh) && fits(mesh.occlusion, mesh) &&
           std::all_of(std::begin(kinds), std::end(kinds), isSoundKind);
}

/// The elements of which all corners are somewhere.
std::vector<std::uint32_t> placedElements(const osg::Buffer<std::uint32_t>& indices, std::size_t corners,
                                          const osg::Buffer<osg::Vec3f>& positions)
{
    std::vector<std::uint32_t> result;
    for (std::size_t i = 0; i + corners <= indices.size(); i += corners)
        if (std::all_of(&indices[i], &indices[i] + corners,
                        [&](std::uint32_t index) { return isFinite(positions[index]); }))
            result.insert(result.end(), &indices[i], &indices[i] + corners);
    return result;
}

/// The vertex colours of `mesh`, or white where it has none, less light where less of the sky is seen.
osg::Buffer<osg::Color4f> darkened(const osg::Mesh& mesh)
{
    std::vector<osg::Color4f> colors(mesh.colors.begin(), mesh.colors.end());
    colors.resize(mesh.occlusion.size(), {1, 1, 1, 1});
    const auto darken = [](float& color, float light) {
        color = osg::displayFromLinear(osg::linearFromDisplay(color) * light);
    };
    for (std::size_t i = 0; i < colors.size(); ++i) {
        darken(colors[i].red, mesh.occlusion[i]);
        darken(colors[i].green, mesh.occlusion[i]);
        darken(colors[i].blue, mesh.occlusion[i]);
    }
    return colors;
}

/// How many triangles each face has.
Json faceSizes(const osg::Mesh& mesh)
{
    Json sizes = Json::array();
    for (const osg::FaceRange& face : mesh.faces)
        sizes.push_back(face.count);
    return sizes;
}

/// The sets of texture coordinates that `mesh` has, one bit each.
unsigned setsOf(const osg::Mesh& mesh)
{
    return (mesh.texCoords.empty() ? 0u : 1u) | (mesh.texCoords1.empty() ? 0u : 2u);
}

} // namespace

std::optional<std::size_t> GlbMeshes::number(const Bodies& bodies, double scale,
                                             const std::function<std::string()>& fallback)
{
    const auto [entry, isNew] = m_numbers.try_emplace({bodies, scale});
    if (isNew)
        entry->second = add(bodies, scale, fallback);
    return entry->second;
}

std::optional<std::size_t> GlbMeshes::add(const Bodies& bodies, double scale,
                                          const std::function<std::string()>& fallback)
{
    Json primitives;
    for (const Body& body : bodies)
        addPrimitives(body, scale, primitives);
    if (primitives.empty())
        return std::nullopt;
    Json result;
    if (const std::string name = nameOf(bodies, fallback); !name.empty())
        result["name"] = name;
    result["primitives"] = std::move(primitives);
    return m_list.add(result);
}

void GlbMeshes::addPrimitives(const Body& body, double scale, Json& primitives)
{
    const auto& [geometry, material] = body;
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
    if (!isSound(mesh))
        throw files::Failure(
            {{files::tr("the arrays of the mesh '%1' do not fit together").arg(nameOf(geometry)), {}, {}},
             files::ErrorCode::InvalidMesh});
    const unsigned sets = setsOf(mesh);
    const Json mappings = variantMappings(material, sets);
    for (const Kind& kind : kinds) {
        const osg::Buffer<std::uint32_t> indices = drawable(mesh.*kind.indices, kind.corners, mesh);
        if (indices.empty())
            continue;
        Json primitive;
        primitive["attributes"] = attributes(mesh, scale);
        if (const auto accessor = kind.corners == 3 ? tangents(mesh, material) : std::nullopt)
            primitive["attributes"]["TANGENT"] = *accessor;
        primitive["indices"] = m_arrays.indices(indices, mesh.positions.size());
        primitive["mode"] = kind.mode;
        primitive["material"] = m_materials.number(material, sets);
        if (!mappings.empty())
            primitive["extensions"]["KHR_materials_variants"]["mappings"] = mappings;
        std::optional<Json> lines = m_options.edges && kind.corners == 3 ? edges(mesh, primitive) : std::nullopt;
        if (lines && !mesh.faces.empty() && !m_options.packing.reorder)
            primitive["extras"]["faces"] = faceSizes(mesh);
        primitives.push_back(std::move(primitive));
        if (lines)
            primitives.push_back(*std::move(lines));
    }
}

std::optional<Json> GlbMeshes::edges(const osg::Mesh& mesh, const Json& triangles)
{
    osg::FeatureEdges found = osg::featureEdges(mesh, creaseAngle);
    if (found.segments.empty())
        return std::nullopt;
    Json list = Json::array();
    const auto faceOf = [](std::uint32_t face) {
        return face == osg::FeatureEdge::noFace ? std::int64_t(-1) : std::int64_t(face);
    };
    for (const osg::FeatureEdge& edge : found.edges)
        list.push_back({edge.count, faceOf(edge.face), faceOf(edge.other)});
    Json primitive;
    primitive["attributes"] = triangles["attributes"];
    primitive["attributes"].erase("TANGENT");
    primitive["indices"] = m_arrays.indices(std::move(found.segments), mesh.positions.size());
    primitive["mode"] = linesMode;
    primitive["material"] = m_materials.edges();
    primitive["extras"]["edges"] = std::move(list);
    return primitive;
}

std::string GlbMeshes::materialName(const Body& body)
{
    const unsigned sets = setsOf(osg::GeometryAccess::mesh(*body.first));
    return m_materials.name(m_materials.number(body.second, sets));
}

QStringList GlbMeshes::warnings() const
{
    QStringList warnings = m_warnings + m_materials.textures().warnings();
    if (const std::size_t count = m_materials.withoutCoordinates(); count > 0)
        warnings << files::tr("the textures of %1 materials were left out on meshes without texture coordinates")
                        .arg(static_cast<qulonglong>(count));
    return warnings;
}

Json GlbMeshes::variantMappings(const osg::MaterialPtr& material, unsigned sets)
{
    Json result;
    for (const GlbVariants::Mapping& mapping : m_variants.mappings(material))
        result.push_back({{"material", m_materials.number(mapping.first, sets)}, {"variants", mapping.second}});
    m_hasVariants = m_hasVariants || !result.empty();
    return result;
}

Json GlbMeshes::attributes(const osg::Mesh& mesh, double scale)
{
    Json result;
    result["POSITION"] = m_arrays.positions(mesh.positions, scale);
    if (!mesh.normals.empty())
        result["NORMAL"] = m_arrays.normals(mesh.normals);
    // The sets of a primitive are numbered from 0 on without a gap.
    if (setsOf(mesh) != 0)
        result["TEXCOORD_0"] = m_arrays.texCoords(mesh.texCoords.empty() ? mesh.texCoords1 : mesh.texCoords);
    if (!mesh.texCoords1.empty())
        result["TEXCOORD_1"] = m_arrays.texCoords(mesh.texCoords1);
    if (m_options.occlusionAsColors && !mesh.occlusion.empty())
        result["COLOR_0"] = m_arrays.colors(darkened(mesh));
    else if (!mesh.colors.empty())
        result["COLOR_0"] = m_arrays.colors(mesh.colors);
    return result;
}

std::optional<std::size_t> GlbMeshes::tangents(const osg::Mesh& mesh, const osg::MaterialPtr& material)
{
    std::optional<unsigned> set = m_materials.normalMapSet(material);
    for (const GlbVariants::Mapping& mapping : m_variants.mappings(material))
        if (!set)
            set = m_materials.normalMapSet(mapping.first);
    if (!set || mesh.normals.empty() || !(setsOf(mesh) >> *set & 1))
        return std::nullopt;
    const auto [entry, isNew] = m_tangents.try_emplace({&mesh, *set});
    if (isNew)
        entry->second = m_arrays.tangents(osg::tangentsOf(mesh, *set == 0 ? mesh.texCoords : mesh.texCoords1));
    return entry->second;
}

/// `indices` without the elements that are nowhere, which a mesh may have but a file may not.
osg::Buffer<std::uint32_t> GlbMeshes::drawable(const osg::Buffer<std::uint32_t>& indices, std::size_t corners,
                                               const osg::Mesh& mesh)
{
    const bool isPlaced = std::all_of(indices.begin(), indices.end(),
                                      [&](std::uint32_t index) { return isFinite(mesh.positions[index]); });
    if (isPlaced)
        return indices;
    std::vector<std::uint32_t> placed = placedElements(indices, corners, mesh.positions);
    m_warnings << files::tr("%1 elements of a mesh without finite positions were left out")
                      .arg(static_cast<qulonglong>((indices.size() - placed.size()) / corners));
    return placed;
}

} // namespace files::glb
