#include "files/gltf/GltfMeshes.h"

#include "files/gltf/GltfMaterials.h"
#include "files/gltf/GltfModes.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace files::gltf
{

namespace
{

/// The accessor of an attribute, -1 if there is none.
int attribute(const tinygltf::Primitive& primitive, const char* name)
{
    const auto found = primitive.attributes.find(name);
    return found == primitive.attributes.end() ? -1 : found->second;
}

/// Whether `ranges` are of `parts` parts and have `elements` elements together.
bool fit(const std::vector<GltfPartRange>& ranges, std::size_t parts, std::size_t elements)
{
    for (const GltfPartRange& range : ranges) {
        if (range.part >= parts || range.elements > elements)
            return false;
        elements -= range.elements;
    }
    return elements == 0;
}

} // namespace

GltfMeshes::GltfMeshes(const GltfDocument& document, GltfVariants& variants, ReadTask& task)
    : m_document(document), m_variants(variants), m_task(task), m_accessors(document, task)
{
}

const GltfMeshes::Geometries& GltfMeshes::geometries(int mesh, const QString& place)
{
    const auto [entry, isNew] = m_geometries.try_emplace(mesh);
    if (!isNew)
        return entry->second;
    if (mesh < 0 || static_cast<std::size_t>(mesh) >= m_document.model.meshes.size())
        m_task.fail(ErrorCode::Damaged, tr("the mesh %1 does not exist").arg(mesh), place);
    const tinygltf::Mesh& from = m_document.model.meshes[static_cast<std::size_t>(mesh)];
    for (std::size_t i = 0; i < from.primitives.size(); ++i) {
        const QString own = QStringLiteral("/meshes/%1/primitives/%2").arg(QString::number(mesh), QString::number(i));
        osg::Mesh content = meshOf(from.primitives[i], own);
        if (content.positions.empty())
            continue;
        const osg::MaterialPtr look = m_variants.choices(
            from.primitives[i], material(from.primitives[i].material, own),
            [&](int number) { return material(number, own); }, own);
        entry->second.emplace_back(makeGeometry(from.name, std::move(content), look));
    }
    return entry->second;
}

std::optional<std::vector<GltfMeshes::Geometries>> GltfMeshes::parts(int mesh, std::size_t count, const QString& place)
{
    std::vector<Geometries> parts(count);
    const Geometries& wholes = geometries(mesh, place);
    const tinygltf::Mesh& from = m_document.model.meshes[static_cast<std::size_t>(mesh)];
    if (wholes.size() != from.primitives.size())
        return std::nullopt;
    for (std::size_t i = 0; i < wholes.size(); ++i) {
        const std::vector<GltfPartRange>* ranges = m_document.extras.rangesOfPrimitive(mesh, i);
        const osg::Mesh& whole = osg::GeometryAccess::mesh(*wholes[i].get());
        const std::size_t corners = gltfCorners(from.primitives[i].mode);
        const std::size_t indices = whole.triangles.size() + whole.lines.size() + whole.points.size();
        if (!ranges || !fit(*ranges, count, indices / corners))
            return std::nullopt;
        m_task.takeMemory(indices * (sizeof(std::uint32_t) + sizeof(osg::Vec3f) * 2), place);
        std::size_t first = 0;
        for (const GltfPartRange& range : *ranges) {
            osg::Mesh content = meshOfPart(whole, first, range.elements * corners);
            first += range.elements * corners;
            const osg::MaterialPtr look =
                materialInstead(range.material, content, wholes[i].get()->getMaterial(), place);
            parts[range.part].emplace_back(makeGeometry(from.name, std::move(content), look));
        }
    }
    return parts;
}

osg::MaterialPtr GltfMeshes::materialInstead(const std::string& name, osg::Mesh& mesh,
                                             const osg::MaterialPtr& otherwise, const QString& place)
{
    if (name.empty())
        return otherwise;
    if (m_materialNames.empty())
        for (std::size_t i = 0; i < m_document.model.materials.size(); ++i)
            m_materialNames.try_emplace(m_document.model.materials[i].name, static_cast<int>(i));
    const auto found = m_materialNames.find(name);
    const bool isOneColor = std::all_of(mesh.colors.begin(), mesh.colors.end(),
                                        [&](const osg::Color4f& color) { return color == mesh.colors[0]; });
    if (found == m_materialNames.end() || !isOneColor)
        return otherwise;
    mesh.colors = {};
    return material(found->second, place);
}

osg::Mesh GltfMeshes::meshOf(const tinygltf::Primitive& primitive, const QString& place)
{
    osg::Mesh mesh;
    const int positions = attribute(primitive, "POSITION");
    if (positions < 0 || m_accessors.count(positions) == 0) {
        m_task.warn(tr("a primitive without positions was left out"), place);
        return mesh;
    }
    if (m_accessors.count(positions) > std::numeric_limits<std::uint32_t>::max())
        m_task.fail(ErrorCode::LimitExceeded, tr("a primitive has too many vertices"), place);
    mesh.positions = m_accessors.vectors(positions);
    addVertexData(primitive, place, mesh);
    addElements(primitive, place, mesh);
    return mesh;
}

void GltfMeshes::addVertexData(const tinygltf::Primitive& primitive, const QString& place, osg::Mesh& mesh)
{
    const auto accessorOf = [&](const char* name) {
        const int accessor = attribute(primitive, name);
        if (accessor >= 0 && m_accessors.count(accessor) != mesh.positions.size())
            m_task.fail(ErrorCode::Damaged, tr("the attributes have different lengths"),
                        place + QStringLiteral("/attributes/") + QLatin1String(name));
        return accessor;
    };
    if (const int normals = accessorOf("NORMAL"); normals >= 0)
        mesh.normals = m_accessors.vectors(normals);
    if (const int texCoords = accessorOf("TEXCOORD_0"); texCoords >= 0)
        mesh.texCoords = m_accessors.texCoords(texCoords);
    if (const int texCoords = accessorOf("TEXCOORD_1"); texCoords >= 0)
        mesh.texCoords1 = m_accessors.texCoords(texCoords);
    if (const int colors = accessorOf("COLOR_0"); colors >= 0)
        mesh.colors = m_accessors.colors(colors);
}

void GltfMeshes::addElements(const tinygltf::Primitive& primitive, const QString& place, osg::Mesh& mesh)
{
    const std::size_t corners = gltfCorners(primitive.mode);
    if (corners == 0)
        m_task.fail(ErrorCode::Damaged, tr("the mode %1 does not exist").arg(primitive.mode), place);
    const auto vertices = static_cast<std::uint32_t>(mesh.positions.size());
    const osg::Buffer<std::uint32_t> indices = elements(primitive, vertices, place);
    if (!indices.empty() && *std::max_element(indices.begin(), indices.end()) >= vertices)
        m_task.fail(ErrorCode::Damaged, tr("an index reaches beyond the %1 vertices").arg(vertices),
                    place + QStringLiteral("/indices"));
    (corners == 3 ? mesh.triangles : corners == 2 ? mesh.lines : mesh.points) = indices;
}

osg::Buffer<std::uint32_t> GltfMeshes::elements(const tinygltf::Primitive& primitive, std::uint32_t vertices,
                                                const QString& place)
{
    const bool isIndexed = primitive.indices >= 0;
    const ElementKey key(primitive.indices, isIndexed ? 0 : vertices, primitive.mode);
    const auto [entry, isNew] = m_elements.try_emplace(key);
    if (!isNew)
        return entry->second;
    // Strips and fans become three indices for each one.
    const std::uint64_t count = isIndexed ? m_accessors.count(primitive.indices) : vertices;
    m_task.takeMemory(count * sizeof(std::uint32_t) * 4, place);
    if (isIndexed)
        return entry->second = gltfElements(primitive.mode, m_accessors.indices(primitive.indices));
    std::vector<std::uint32_t> all(vertices);
    std::iota(all.begin(), all.end(), 0u);
    return entry->second = gltfElements(primitive.mode, std::move(all));
}

osg::MaterialPtr GltfMeshes::material(int index, const QString& place)
{
    if (index < 0)
        return {};
    if (static_cast<std::size_t>(index) >= m_document.model.materials.size())
        m_task.fail(ErrorCode::Damaged, tr("the material %1 does not exist").arg(index), place);
    const auto [entry, isNew] = m_materials.try_emplace(index);
    if (isNew) {
        const tinygltf::Material& from = m_document.model.materials[static_cast<std::size_t>(index)];
        entry->second = makeMaterial(from.name, lookOfMaterial(m_document, static_cast<std::size_t>(index)));
        m_document.extras.addToMaterial(index, entry->second.get());
    }
    return entry->second.get();
}

} // namespace files::gltf
