#include "files/gltf/GltfAccessors.h"

#include "scene/ColorSpace.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace files::gltf
{

/// `data` is null for elements that are all 0.
struct GltfAccessors::Elements {
    const GltfBuffer* buffer = nullptr;
    const std::byte* data = nullptr;
    std::size_t count = 0;
    std::size_t stride = 0;
    int componentType = 0;
    int components = 0;
    bool normalized = false;
};

namespace
{

using Components = std::array<float, 4>;

std::size_t componentSize(int componentType)
{
    const int size = tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(componentType));
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

int componentCount(int type)
{
    return tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(type));
}

template <class T>
float decoded(const std::byte* bytes, bool normalized)
{
    const auto value = static_cast<float>(qFromLittleEndian<T>(bytes));
    return normalized ? std::max(value / static_cast<float>(std::numeric_limits<T>::max()), -1.0f) : value;
}

float component(const std::byte* bytes, int componentType, bool normalized)
{
    switch (componentType) {
    case TINYGLTF_COMPONENT_TYPE_BYTE:
        return decoded<std::int8_t>(bytes, normalized);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return decoded<std::uint8_t>(bytes, normalized);
    case TINYGLTF_COMPONENT_TYPE_SHORT:
        return decoded<std::int16_t>(bytes, normalized);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return decoded<std::uint16_t>(bytes, normalized);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
        return decoded<std::uint32_t>(bytes, normalized);
    default:
        return std::bit_cast<float>(qFromLittleEndian<std::uint32_t>(bytes));
    }
}

std::uint32_t indexAt(const std::byte* bytes, int componentType)
{
    switch (componentType) {
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return static_cast<std::uint32_t>(*bytes);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return qFromLittleEndian<std::uint16_t>(bytes);
    default:
        return qFromLittleEndian<std::uint32_t>(bytes);
    }
}

bool isIndexType(int componentType)
{
    return componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE ||
           componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT ||
           componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT;
}

bool isVertexType(int componentType)
{
    return componentType != TINYGLTF_COMPONENT_TYPE_INT && componentType != TINYGLTF_COMPONENT_TYPE_DOUBLE;
}

/// The buffers of which at least a half is data of accessors, and not pictures.
std::vector<bool> worthKeeping(const GltfDocument& document)
{
    std::vector<std::uint64_t> used(document.buffers.size());
    std::vector<bool> seen(document.model.bufferViews.size());
    for (const tinygltf::Accessor& accessor : document.model.accessors) {
        const auto view = static_cast<std::size_t>(accessor.bufferView);
        if (view >= seen.size() || seen[view])
            continue;
        seen[view] = true;
        const auto buffer = static_cast<std::size_t>(document.model.bufferViews[view].buffer);
        if (buffer < used.size())
            used[buffer] += std::min(document.model.bufferViews[view].byteLength, document.buffers[buffer].size);
    }
    std::vector<bool> result;
    for (std::size_t i = 0; i < used.size(); ++i)
        result.push_back(used[i] >= document.buffers[i].size / 2);
    return result;
}

/// The value of `read` for `accessor`, asked once.
template <class T, class Read>
osg::Buffer<T> once(std::map<int, osg::Buffer<T>>& known, int accessor, Read read)
{
    auto place = known.find(accessor);
    if (place == known.end())
        place = known.emplace(accessor, read()).first;
    return place->second;
}

} // namespace

GltfAccessors::GltfAccessors(const GltfDocument& document, ReadTask& task)
    : m_document(document), m_task(task), m_keepBuffer(worthKeeping(document))
{
}

std::size_t GltfAccessors::count(int accessor) const
{
    return checked(accessor).count;
}

QString GltfAccessors::place(int accessor)
{
    return QStringLiteral("/accessors/%1").arg(accessor);
}

const tinygltf::Accessor& GltfAccessors::checked(int accessor) const
{
    const std::vector<tinygltf::Accessor>& all = m_document.model.accessors;
    if (accessor < 0 || static_cast<std::size_t>(accessor) >= all.size())
        m_task.fail(ErrorCode::Damaged, tr("this accessor does not exist"), place(accessor));
    return all[static_cast<std::size_t>(accessor)];
}

const tinygltf::Accessor& GltfAccessors::checked(int accessor, std::initializer_list<int> types) const
{
    const tinygltf::Accessor& result = checked(accessor);
    if (std::find(types.begin(), types.end(), result.type) == types.end())
        m_task.fail(ErrorCode::Damaged, tr("this accessor has the wrong type for its use"), place(accessor));
    return result;
}

GltfAccessors::Elements GltfAccessors::within(int view, std::size_t offset, std::size_t count, int componentType,
                                              int components, const QString& place) const
{
    const auto fail = [&](const QString& message) { m_task.fail(ErrorCode::Damaged, message, place); };
    const std::vector<tinygltf::BufferView>& views = m_document.model.bufferViews;
    if (view < 0 || static_cast<std::size_t>(view) >= views.size())
        fail(tr("the buffer view %1 does not exist").arg(view));
    const tinygltf::BufferView& bytes = views[static_cast<std::size_t>(view)];
    if (bytes.buffer < 0 || static_cast<std::size_t>(bytes.buffer) >= m_document.buffers.size())
        fail(tr("the buffer %1 does not exist").arg(bytes.buffer));
    const GltfBuffer& buffer = m_document.buffers[static_cast<std::size_t>(bytes.buffer)];
    if (bytes.byteOffset > buffer.size || bytes.byteLength > buffer.size - bytes.byteOffset)
        fail(tr("the buffer view %1 reaches outside its buffer").arg(view));
    const std::size_t size = componentSize(componentType) * static_cast<std::size_t>(components);
    const std::size_t stride = bytes.byteStride == 0 ? size : bytes.byteStride;
    const bool fits = size > 0 && stride >= size && offset <= bytes.byteLength && size <= bytes.byteLength - offset &&
                      count >= 1 && count - 1 <= (bytes.byteLength - offset - size) / stride;
    if (!fits)
        fail(tr("%1 elements do not fit into the buffer view %2").arg(static_cast<qulonglong>(count)).arg(view));
    return {&buffer, buffer.data + bytes.byteOffset + offset, count, stride, componentType, components, false};
}

GltfAccessors::Elements GltfAccessors::elements(int accessor) const
{
    const tinygltf::Accessor& from = m_document.model.accessors[static_cast<std::size_t>(accessor)];
    const int components = componentCount(from.type);
    if (from.bufferView < 0)
        return {nullptr, nullptr, from.count, 0, from.componentType, components, from.normalized};
    Elements result =
        within(from.bufferView, from.byteOffset, from.count, from.componentType, components, place(accessor));
    result.normalized = from.normalized;
    return result;
}

/// True when the elements lie in the file as an array of `T` in memory would.
template <class T>
bool GltfAccessors::isUsable(const Elements& elements) const
{
    if (std::endian::native != std::endian::little || !elements.data || elements.stride != sizeof(T))
        return false;
    const auto buffer = static_cast<std::size_t>(elements.buffer - m_document.buffers.data());
    return m_keepBuffer[buffer] && reinterpret_cast<std::uintptr_t>(elements.data) % alignof(T) == 0;
}

/// Calls `visit` with the index and the components of each element that is given apart from the others.
template <class Visitor>
void GltfAccessors::visitSparse(int accessor, int components, const Visitor& visit) const
{
    const tinygltf::Accessor& from = m_document.model.accessors[static_cast<std::size_t>(accessor)];
    if (!from.sparse.isSparse)
        return;
    const QString sparsePlace = place(accessor) + QStringLiteral("/sparse");
    const auto offset = [](int value) { return static_cast<std::size_t>(std::max(value, 0)); };
    const auto count = offset(from.sparse.count);
    if (!isIndexType(from.sparse.indices.componentType))
        m_task.fail(ErrorCode::Damaged, tr("the indices have the wrong type"), sparsePlace);
    const Elements indices = within(from.sparse.indices.bufferView, offset(from.sparse.indices.byteOffset), count,
                                    from.sparse.indices.componentType, 1, sparsePlace);
    const Elements values = within(from.sparse.values.bufferView, offset(from.sparse.values.byteOffset), count,
                                   from.componentType, components, sparsePlace);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t index = indexAt(indices.data + i * indices.stride, indices.componentType);
        if (index >= from.count)
            m_task.fail(ErrorCode::Damaged, tr("the index %1 is outside the accessor").arg(index), sparsePlace);
        visit(index, values.data + i * values.stride);
    }
}

/// Elements that no byte of the file stands for have a limit of their own, so that a few letters do not make gigabytes
/// of zeros.
void GltfAccessors::takeMemory(int accessor, const Elements& elements, std::size_t size) const
{
    constexpr std::size_t mostWithoutBytes = std::size_t(1) << 22;
    if (!elements.data) {
        if (elements.count > mostWithoutBytes - m_withoutBytes)
            m_task.fail(ErrorCode::LimitExceeded,
                        tr("more than %1 elements have no bytes in the file").arg(qulonglong(mostWithoutBytes)),
                        place(accessor));
        m_withoutBytes += elements.count;
    }
    m_task.takeMemory(std::uint64_t(elements.count) * size, place(accessor));
}

template <class T, class Convert>
osg::Buffer<T> GltfAccessors::read(int accessor, const Convert& convert) const
{
    const Elements from = elements(accessor);
    if (!isVertexType(from.componentType))
        m_task.fail(ErrorCode::Damaged, tr("the numbers have the wrong type"), place(accessor));
    const std::size_t size = componentSize(from.componentType);
    const auto converted = [&](const std::byte* bytes) {
        Components values = {0, 0, 0, 1};
        for (int i = 0; i < from.components; ++i)
            values[static_cast<std::size_t>(i)] =
                component(bytes + size * static_cast<std::size_t>(i), from.componentType, from.normalized);
        return convert(values);
    };
    takeMemory(accessor, from, sizeof(T));
    std::vector<T> result(from.count, convert(Components{0, 0, 0, 0}));
    for (std::size_t i = 0; i < from.count && from.data; ++i)
        result[i] = converted(from.data + i * from.stride);
    visitSparse(accessor, from.components,
                [&](std::uint32_t index, const std::byte* bytes) { result[index] = converted(bytes); });
    return result;
}

osg::Buffer<osg::Vec3f> GltfAccessors::vectors(int accessor)
{
    return once(m_vectors, accessor, [&]() -> osg::Buffer<osg::Vec3f> {
        const tinygltf::Accessor& from = checked(accessor, {TINYGLTF_TYPE_VEC3});
        m_task.countVertices(from.count, place(accessor));
        const Elements where = elements(accessor);
        const bool isPlain = from.componentType == TINYGLTF_COMPONENT_TYPE_FLOAT && !from.sparse.isSparse;
        if (isPlain && isUsable<osg::Vec3f>(where))
            return {where.buffer->owner, reinterpret_cast<const osg::Vec3f*>(where.data), where.count};
        return read<osg::Vec3f>(accessor, [](const Components& c) { return osg::Vec3f{c[0], c[1], c[2]}; });
    });
}

osg::Buffer<osg::Vec2f> GltfAccessors::texCoords(int accessor)
{
    return once(m_texCoords, accessor, [&] {
        m_task.countVertices(checked(accessor, {TINYGLTF_TYPE_VEC2}).count, place(accessor));
        return read<osg::Vec2f>(accessor, [](const Components& c) { return osg::Vec2f{c[0], 1 - c[1]}; });
    });
}

osg::Buffer<osg::Color4f> GltfAccessors::colors(int accessor)
{
    return once(m_colors, accessor, [&] {
        const int type = checked(accessor, {TINYGLTF_TYPE_VEC3, TINYGLTF_TYPE_VEC4}).type;
        m_task.countVertices(m_document.model.accessors[static_cast<std::size_t>(accessor)].count, place(accessor));
        return read<osg::Color4f>(accessor, [type](const Components& c) {
            const osg::Color3f color = osg::displayFromLinear(osg::Color3f{c[0], c[1], c[2]});
            return osg::Color4f{color.red, color.green, color.blue, type == TINYGLTF_TYPE_VEC4 ? c[3] : 1};
        });
    });
}

osg::Buffer<std::uint32_t> GltfAccessors::indices(int accessor)
{
    return once(m_indices, accessor, [&]() -> osg::Buffer<std::uint32_t> {
        const tinygltf::Accessor& accessed = checked(accessor, {TINYGLTF_TYPE_SCALAR});
        if (!isIndexType(accessed.componentType) || accessed.bufferView < 0 || accessed.sparse.isSparse)
            m_task.fail(ErrorCode::Damaged, tr("this accessor has the wrong type for indices"), place(accessor));
        const Elements from = elements(accessor);
        if (from.componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT && isUsable<std::uint32_t>(from))
            return {from.buffer->owner, reinterpret_cast<const std::uint32_t*>(from.data), from.count};
        takeMemory(accessor, from, sizeof(std::uint32_t));
        std::vector<std::uint32_t> result(from.count);
        for (std::size_t i = 0; i < from.count; ++i)
            result[i] = indexAt(from.data + i * from.stride, from.componentType);
        return result;
    });
}

std::vector<osg::Quaternion> GltfAccessors::rotations(int accessor)
{
    checked(accessor, {TINYGLTF_TYPE_VEC4});
    const auto unit = [](const Components& c) {
        const float length = std::hypot(std::hypot(c[0], c[1]), std::hypot(c[2], c[3]));
        return length > 0 ? osg::Quaternion{c[0] / length, c[1] / length, c[2] / length, c[3] / length}
                          : osg::Quaternion();
    };
    const osg::Buffer<osg::Quaternion> all = read<osg::Quaternion>(accessor, unit);
    return {all.begin(), all.end()};
}

} // namespace files::gltf
