#include "files/gltf/packing/DracoMeshes.h"

#include "files/gltf/packing/DracoStream.h"

#include <draco/compression/decode.h>

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <map>

namespace files::gltf::packing
{

namespace
{

using Json = nlohmann::json;

constexpr const char* extension = "KHR_draco_mesh_compression";

/// What a triangle and a vertex take while they are unpacked, by and large.
constexpr std::uint64_t bytesOfTriangle = 64;
constexpr std::uint64_t bytesOfVertex = 128;

enum ComponentType { Byte = 5120, UnsignedByte, Short, UnsignedShort, UnsignedInt = 5125, Float };

std::size_t componentSize(std::uint64_t type)
{
    switch (type) {
    case Byte:
    case UnsignedByte:
        return 1;
    case Short:
    case UnsignedShort:
        return 2;
    case UnsignedInt:
    case Float:
        return 4;
    default:
        return 0;
    }
}

std::size_t componentCount(const Json& accessor)
{
    const auto type = accessor.find("type");
    const std::string name = type != accessor.end() && type->is_string() ? type->get<std::string>() : "";
    return name == "SCALAR" ? 1 : name == "VEC2" ? 2 : name == "VEC3" ? 3 : name == "VEC4" ? 4 : 0;
}

template <class T>
bool convert(const draco::PointAttribute& from, draco::AttributeValueIndex index, std::size_t components,
             std::byte* target)
{
    std::array<T, 4> values = {};
    const bool isConverted = from.ConvertValue<T>(index, static_cast<std::int8_t>(components), values.data());
    qToLittleEndian<T>(values.data(), static_cast<qsizetype>(components), target);
    return isConverted;
}

bool convert(const draco::PointAttribute& from, draco::AttributeValueIndex index, std::uint64_t type,
             std::size_t components, std::byte* target)
{
    switch (type) {
    case Byte:
        return convert<std::int8_t>(from, index, components, target);
    case UnsignedByte:
        return convert<std::uint8_t>(from, index, components, target);
    case Short:
        return convert<std::int16_t>(from, index, components, target);
    case UnsignedShort:
        return convert<std::uint16_t>(from, index, components, target);
    case UnsignedInt:
        return convert<std::uint32_t>(from, index, components, target);
    default:
        return convert<float>(from, index, components, target);
    }
}

/// Unpacks the primitives of a document, one after the other.
class Unpacker
{
public:
    explicit Unpacker(PackedDocument& document) : m_document(document) {}

    void check(const Json& primitive, const Json& packed, const QString& place);
    void unpack(Json& primitive, const Json& packed, const QString& place);

private:
    std::string_view bytes(const Json& packed, const QString& place) const;
    const Json& accessorOf(const Json& primitive, const std::string& attribute, const QString& place) const;
    std::unique_ptr<draco::Mesh> decoded(std::string_view bytes, const QString& place) const;
    /// The number of a new accessor like `like` for `size` bytes in the last buffer.
    std::size_t addAccessor(Json like, std::size_t size);
    std::size_t addAttribute(const draco::Mesh& mesh, std::uint64_t id, const Json& accessor, const QString& place);
    std::size_t addIndices(const draco::Mesh& mesh, const Json& accessor);

    PackedDocument& m_document;
    /// By what is packed and what it stands for: the attributes and the indices of the primitive.
    std::map<std::string, std::pair<Json, Json>> m_known;
};

std::string keyOf(const Json& primitive, const Json& packed)
{
    return packed.dump() + primitive.value("attributes", Json()).dump() + primitive.value("indices", Json()).dump();
}

std::string_view Unpacker::bytes(const Json& packed, const QString& place) const
{
    const Json& view = m_document.entry("bufferViews", m_document.number(packed, "bufferView", place), place);
    return m_document.bytes(view, place);
}

const Json& Unpacker::accessorOf(const Json& primitive, const std::string& attribute, const QString& place) const
{
    const Json& holder = attribute.empty() ? primitive : primitive.at("attributes");
    const char* member = attribute.empty() ? "indices" : attribute.c_str();
    return m_document.entry("accessors", m_document.number(holder, member, place), place);
}

void Unpacker::check(const Json& primitive, const Json& packed, const QString& place)
{
    if (!m_known.try_emplace(keyOf(primitive, packed)).second)
        return;
    const std::optional<DracoSize> size = sizeOfDraco(bytes(packed, place));
    if (!size)
        m_document.task.fail(ErrorCode::Unsupported, tr("the packed bytes are no mesh of the Draco bitstream 2.2"),
                             place);
    if (m_document.number(primitive, "mode", place, 4) != 4)
        m_document.task.fail(ErrorCode::Unsupported,
                             tr("only triangles are unpacked by %1").arg(QLatin1String(extension)), place);
    const auto attributes = packed.find("attributes");
    if (attributes == packed.end() || !attributes->is_object() || !attributes->contains("POSITION") ||
        !primitive.contains("attributes") || !primitive["attributes"].is_object())
        m_document.damaged(tr("the packed bytes have no positions"), place);
    const std::uint64_t indices = m_document.number(accessorOf(primitive, {}, place), "count", place);
    const std::uint64_t vertices = m_document.number(accessorOf(primitive, "POSITION", place), "count", place);
    if (indices % 3 != 0 || indices / 3 != size->triangles || vertices < size->vertices)
        m_document.damaged(
            tr("the packed bytes hold %1 triangles and %2 vertices or more, the accessors tell %3 and %4")
                .arg(size->triangles)
                .arg(size->vertices)
                .arg(static_cast<qulonglong>(indices / 3))
                .arg(static_cast<qulonglong>(vertices)),
            place);
    m_document.task.takeMemory(size->triangles * bytesOfTriangle, place);
    m_document.task.countVertices(vertices, place);
    m_document.task.takeMemory(vertices * bytesOfVertex, place);
}

std::unique_ptr<draco::Mesh> Unpacker::decoded(std::string_view bytes, const QString& place) const
{
    draco::DecoderBuffer buffer;
    buffer.Init(bytes.data(), bytes.size());
    draco::Decoder decoder;
    draco::StatusOr<std::unique_ptr<draco::Mesh>> mesh = decoder.DecodeMeshFromBuffer(&buffer);
    if (!mesh.ok())
        m_document.damaged(
            tr("the packed bytes are damaged: %1").arg(QString::fromStdString(mesh.status().error_msg_string())),
            place);
    return std::move(mesh).value();
}

std::size_t Unpacker::addAccessor(Json like, std::size_t size)
{
    Json& views = m_document.json["bufferViews"];
    views.push_back({{"buffer", m_document.buffers.size() - 1}, {"byteLength", size}});
    like["bufferView"] = views.size() - 1;
    like.erase("byteOffset");
    like.erase("sparse");
    m_document.json["accessors"].push_back(std::move(like));
    return m_document.json["accessors"].size() - 1;
}

std::size_t Unpacker::addAttribute(const draco::Mesh& mesh, std::uint64_t id, const Json& accessor,
                                   const QString& place)
{
    const draco::PointAttribute* attribute = id <= std::numeric_limits<std::uint32_t>::max()
                                                 ? mesh.GetAttributeByUniqueId(static_cast<std::uint32_t>(id))
                                                 : nullptr;
    const std::uint64_t type = m_document.number(accessor, "componentType", place);
    const std::size_t components = componentCount(accessor);
    if (!attribute || components == 0 || componentSize(type) == 0 ||
        m_document.number(accessor, "count", place) != mesh.num_points())
        m_document.damaged(
            tr("the attribute %1 of the packed bytes does not go with its accessor").arg(static_cast<qulonglong>(id)),
            place);
    const std::size_t width = componentSize(type) * components;
    const std::size_t size = width * mesh.num_points();
    m_document.task.takeMemory(size, place);
    std::byte* target = m_document.addBuffer(size);
    for (std::uint32_t i = 0; i < mesh.num_points(); ++i)
        if (!convert(*attribute, attribute->mapped_index(draco::PointIndex(i)), type, components, target + i * width))
            m_document.damaged(tr("the packed bytes hold a number that its accessor cannot"), place);
    return addAccessor(accessor, size);
}

std::size_t Unpacker::addIndices(const draco::Mesh& mesh, const Json& accessor)
{
    const std::size_t size = std::size_t(mesh.num_faces()) * 3 * sizeof(std::uint32_t);
    std::byte* target = m_document.addBuffer(size);
    for (std::uint32_t i = 0; i < mesh.num_faces(); ++i)
        for (const draco::PointIndex& corner : mesh.face(draco::FaceIndex(i))) {
            qToLittleEndian<std::uint32_t>(corner.value(), target);
            target += sizeof(std::uint32_t);
        }
    Json like = accessor;
    like["componentType"] = int(UnsignedInt);
    return addAccessor(std::move(like), size);
}

void Unpacker::unpack(Json& primitive, const Json& packed, const QString& place)
{
    auto& [attributes, indices] = m_known.at(keyOf(primitive, packed));
    if (attributes.is_null()) {
        const std::unique_ptr<draco::Mesh> mesh = decoded(bytes(packed, place), place);
        // A copy each, since the list of accessors grows.
        const Json indexAccessor = accessorOf(primitive, {}, place);
        if (m_document.number(indexAccessor, "count", place) != std::uint64_t(mesh->num_faces()) * 3)
            m_document.damaged(tr("the packed bytes hold other triangles than their beginning says"), place);
        attributes = primitive["attributes"];
        for (const auto& [name, id] : packed["attributes"].items()) {
            const Json accessor = accessorOf(primitive, name, place);
            attributes[name] =
                addAttribute(*mesh, m_document.number(packed["attributes"], name.c_str(), place), accessor, place);
        }
        indices = addIndices(*mesh, indexAccessor);
    }
    const Json newAttributes = attributes;
    const Json newIndices = indices;
    primitive["attributes"] = newAttributes;
    primitive["indices"] = newIndices;
}

/// Calls `visit` with each packed primitive, the object of the extension and its place.
template <class Visit>
void eachPacked(PackedDocument& document, const Visit& visit)
{
    const auto meshes = document.json.find("meshes");
    if (meshes == document.json.end() || !meshes->is_array())
        return;
    for (std::size_t i = 0; i < meshes->size(); ++i) {
        if (!(*meshes)[i].is_object() || !(*meshes)[i].contains("primitives"))
            continue;
        Json& primitives = (*meshes)[i]["primitives"];
        for (std::size_t j = 0; primitives.is_array() && j < primitives.size(); ++j) {
            const QString place =
                QStringLiteral("/meshes/%1/primitives/%2").arg(QString::number(i), QString::number(j));
            if (const Json* packed = extensionOf(document, primitives[j], extension, place))
                visit(primitives[j], *packed, place);
        }
    }
}

} // namespace

void unpackDraco(PackedDocument& document)
{
    Unpacker unpacker(document);
    eachPacked(document, [&](const Json& primitive, const Json& packed, const QString& place) {
        unpacker.check(primitive, packed, place);
    });
    eachPacked(document, [&](Json& primitive, const Json& packed, const QString& place) {
        unpacker.unpack(primitive, packed, place);
        primitive["extensions"].erase(extension);
    });
}

} // namespace files::gltf::packing
