#include "files/glb/GlbArrays.h"

#include "files/glb/GlbNumbers.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace files::glb
{

namespace
{

enum ComponentType { UnsignedShort = 5123, UnsignedInt = 5125, Float = 5126 };
enum Target { VertexData = 34962, IndexData = 34963 };

constexpr std::size_t blockSize = 1u << 16;

template <std::size_t N>
using Floats = std::array<float, N>;

float finite(float value)
{
    return std::isfinite(value) ? value : 0.0f;
}

Floats<3> finiteVector(const osg::Vec3f& v, double scale)
{
    const auto scaled = [scale](float value) { return finite(static_cast<float>(value * scale)); };
    return {scaled(v.x), scaled(v.y), scaled(v.z)};
}

/// What has no direction points up. What is a unit vector up to rounding stays as it is: rounded anew, it would be
/// another each time that a file is read and written.
Floats<3> unitVector(const osg::Vec3f& v)
{
    constexpr double rounding = 2e-7;
    const double length = std::sqrt(double(v.x) * v.x + double(v.y) * v.y + double(v.z) * v.z);
    if (!(length > 0) || !std::isfinite(length))
        return {0, 0, 1};
    if (std::abs(length - 1) <= rounding)
        return {v.x, v.y, v.z};
    return {float(v.x / length), float(v.y / length), float(v.z / length)};
}

/// glTF counts from the upper left corner of the picture.
Floats<2> gltfTexCoord(const osg::Vec2f& v)
{
    return {finite(v.x), finite(1 - v.y)};
}

Floats<4> linearColor(const osg::Color4f& c)
{
    return {linearShare(c.red), linearShare(c.green), linearShare(c.blue), share(c.alpha)};
}

Json accessorOf(const char* type, ComponentType componentType)
{
    Json result;
    result["type"] = type;
    result["componentType"] = int(componentType);
    return result;
}

void addBounds(Json& accessor, const osg::Buffer<osg::Vec3f>& positions, double scale)
{
    Floats<3> least = finiteVector(positions[0], scale);
    Floats<3> most = least;
    for (const osg::Vec3f& position : positions) {
        const Floats<3> here = finiteVector(position, scale);
        for (std::size_t i = 0; i < 3; ++i) {
            least[i] = std::min(least[i], here[i]);
            most[i] = std::max(most[i], here[i]);
        }
    }
    accessor["min"] = least;
    accessor["max"] = most;
}

template <std::size_t N>
Floats<N> littleEndian(Floats<N> values)
{
    if constexpr (std::endian::native != std::endian::little)
        for (float& value : values)
            value = std::bit_cast<float>(qToLittleEndian(std::bit_cast<std::uint32_t>(value)));
    return values;
}

template <class T>
T littleEndian(T value)
{
    return qToLittleEndian(value);
}

} // namespace

template <class T>
std::optional<std::size_t> GlbArrays::known(const osg::Buffer<T>& array, Use use, double scale) const
{
    const auto found = m_known.find({array.data(), array.size(), use, scale});
    return found == m_known.end() ? std::nullopt : std::optional(found->second);
}

template <class T, class Element, class Convert>
std::size_t GlbArrays::plan(const osg::Buffer<T>& array, Use use, Json accessor, const Convert& convert, double scale)
{
    const bool isIndex = use == Use::ShortIndices || use == Use::Indices;
    const std::uint64_t length = std::uint64_t(array.size()) * sizeof(Element);
    Json view;
    view["buffer"] = 0;
    view["byteOffset"] = m_size;
    view["byteLength"] = length;
    view["target"] = int(isIndex ? IndexData : VertexData);
    accessor["bufferView"] = m_views.add(view);
    accessor["count"] = array.size();
    m_size += (length + 3) / 4 * 4;
    m_parts.push_back(
        {array.size(), sizeof(Element), [array, convert](std::size_t first, std::size_t count, std::byte* target) {
             for (std::size_t i = 0; i < count; ++i) {
                 const Element element = littleEndian(convert(array[first + i]));
                 std::memcpy(target + i * sizeof(Element), &element, sizeof(Element));
             }
         }});
    const std::size_t result = m_accessors.add(accessor);
    m_known[{array.data(), array.size(), use, scale}] = result;
    return result;
}

std::size_t GlbArrays::positions(const osg::Buffer<osg::Vec3f>& array, double scale)
{
    if (const auto accessor = known(array, Use::Positions, scale))
        return *accessor;
    Json accessor = accessorOf("VEC3", Float);
    addBounds(accessor, array, scale);
    const auto convert = [scale](const osg::Vec3f& position) { return finiteVector(position, scale); };
    return plan<osg::Vec3f, Floats<3>>(array, Use::Positions, std::move(accessor), convert, scale);
}

std::size_t GlbArrays::normals(const osg::Buffer<osg::Vec3f>& array)
{
    if (const auto accessor = known(array, Use::Normals))
        return *accessor;
    return plan<osg::Vec3f, Floats<3>>(array, Use::Normals, accessorOf("VEC3", Float), unitVector);
}

std::size_t GlbArrays::tangents(const osg::Buffer<osg::Tangent>& array)
{
    const auto convert = [](const osg::Tangent& tangent) {
        return Floats<4>{tangent.direction.x, tangent.direction.y, tangent.direction.z, tangent.side};
    };
    return plan<osg::Tangent, Floats<4>>(array, Use::Tangents, accessorOf("VEC4", Float), convert);
}

std::size_t GlbArrays::texCoords(const osg::Buffer<osg::Vec2f>& array)
{
    if (const auto accessor = known(array, Use::TexCoords))
        return *accessor;
    return plan<osg::Vec2f, Floats<2>>(array, Use::TexCoords, accessorOf("VEC2", Float), gltfTexCoord);
}

std::size_t GlbArrays::colors(const osg::Buffer<osg::Color4f>& array)
{
    if (const auto accessor = known(array, Use::Colors))
        return *accessor;
    return plan<osg::Color4f, Floats<4>>(array, Use::Colors, accessorOf("VEC4", Float), linearColor);
}

/// The largest number of a type is no index in glTF.
std::size_t GlbArrays::indices(const osg::Buffer<std::uint32_t>& array, std::size_t vertices)
{
    const bool isShort = vertices <= std::numeric_limits<std::uint16_t>::max();
    const Use use = isShort ? Use::ShortIndices : Use::Indices;
    if (const auto accessor = known(array, use))
        return *accessor;
    Json accessor = accessorOf("SCALAR", isShort ? UnsignedShort : UnsignedInt);
    if (isShort)
        return plan<std::uint32_t, std::uint16_t>(
            array, use, std::move(accessor), [](std::uint32_t index) { return static_cast<std::uint16_t>(index); });
    return plan<std::uint32_t, std::uint32_t>(array, use, std::move(accessor),
                                              [](std::uint32_t index) { return index; });
}

void GlbArrays::write(files::OutputFile& output) const
{
    std::vector<std::byte> block(blockSize);
    for (const Part& part : m_parts) {
        const std::size_t perBlock = blockSize / part.elementSize;
        for (std::size_t first = 0; first < part.count && output.isSound(); first += perBlock) {
            const std::size_t count = std::min(perBlock, part.count - first);
            part.fill(first, count, block.data());
            output.write(block.data(), count * part.elementSize);
        }
        output.pad(4);
    }
}

std::vector<std::byte> GlbArrays::bytes() const
{
    std::vector<std::byte> result(static_cast<std::size_t>(m_size));
    std::size_t at = 0;
    for (const Part& part : m_parts) {
        part.fill(0, part.count, result.data() + at);
        at += (part.count * part.elementSize + 3) / 4 * 4;
    }
    return result;
}

} // namespace files::glb
