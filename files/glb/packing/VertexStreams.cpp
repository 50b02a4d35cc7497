#include "files/glb/packing/VertexStreams.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>

namespace files::glb::packing
{

namespace
{

enum Type { SignedByte = 5120, UnsignedByte, SignedShort, UnsignedShort, Float = 5126 };

using Floats = std::vector<float>;

/// Elements of `components` integers of type T, each filled up to `width` bytes. `convert` has the number and its axis.
template <class T, class Convert>
std::vector<std::byte> converted(std::span<const float> values, std::size_t components, std::size_t width,
                                 const Convert& convert)
{
    std::vector<std::byte> result(values.size() / components * width);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto value = static_cast<T>(convert(values[i], i % components));
        std::memcpy(&result[i / components * width + i % components * sizeof(T)], &value, sizeof(T));
    }
    return result;
}

/// Of a share from 0 or -1 to 1.
template <class T>
auto normalized()
{
    return [](float value, std::size_t) { return std::round(value * float(std::numeric_limits<T>::max())); };
}

template <class T>
void addBounds(VertexStream& stream)
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        T least = std::numeric_limits<T>::max();
        T most = std::numeric_limits<T>::lowest();
        for (std::size_t at = axis * sizeof(T); at < stream.bytes.size(); at += stream.width) {
            T value;
            std::memcpy(&value, &stream.bytes[at], sizeof(T));
            least = std::min(least, value);
            most = std::max(most, value);
        }
        stream.accessor["min"].push_back(least);
        stream.accessor["max"].push_back(most);
    }
}

void addPositions(VertexStream& stream, std::span<const float> values, const PositionGrid& grid)
{
    const auto onGrid = [&grid](float value, std::size_t axis) {
        return std::llround(value / grid.step) - grid.origin[axis];
    };
    stream.width = 8;
    stream.accessor["componentType"] = int(grid.isSigned ? SignedShort : UnsignedShort);
    stream.bytes =
        grid.isSigned ? converted<std::int16_t>(values, 3, 8, onGrid) : converted<std::uint16_t>(values, 3, 8, onGrid);
}

void addNormals(VertexStream& stream, std::span<const float> values, const PackOptions& options)
{
    const bool isShort = options.normalBits > 8;
    stream.width = isShort ? 8 : 4;
    stream.accessor["componentType"] = int(isShort ? SignedShort : SignedByte);
    stream.accessor["normalized"] = true;
    if (!options.compress) {
        stream.bytes = isShort ? converted<std::int16_t>(values, 3, 8, normalized<std::int16_t>())
                               : converted<std::int8_t>(values, 3, 4, normalized<std::int8_t>());
        return;
    }
    Floats wide(values.size() / 3 * 4);
    for (std::size_t i = 0; i < values.size(); ++i)
        wide[i / 3 * 4 + i % 3] = values[i];
    stream.filter = PackedStreams::Filter::Octahedral;
    stream.bytes.resize(values.size() / 3 * stream.width);
    meshopt_encodeFilterOct(stream.bytes.data(), values.size() / 3, stream.width, options.normalBits, wide.data());
}

bool areShares(std::span<const float> values)
{
    return std::all_of(values.begin(), values.end(), [](float value) { return value >= 0 && value <= 1; });
}

void addFloats(VertexStream& stream, std::span<const float> values, std::size_t components)
{
    stream.width = components * sizeof(float);
    stream.accessor["componentType"] = int(Float);
    stream.bytes.resize(values.size_bytes());
    std::memcpy(stream.bytes.data(), values.data(), values.size_bytes());
}

template <class T>
void addShares(VertexStream& stream, std::span<const float> values, std::size_t components, Type type)
{
    stream.width = (components * sizeof(T) + 3) / 4 * 4;
    stream.accessor["componentType"] = int(type);
    stream.accessor["normalized"] = true;
    stream.bytes = converted<T>(values, components, stream.width, normalized<T>());
}

} // namespace

VertexStream streamOf(const std::string& name, const PackedFile& file, const Json& accessor, const PositionGrid& grid,
                      const PackOptions& options)
{
    const std::size_t components = componentsOf(accessor);
    const Floats values = floatsOf(file, accessor);
    VertexStream stream;
    stream.name = name;
    stream.accessor = {{"type", accessor.at("type")}};
    if (name == "POSITION" && grid.isOn())
        addPositions(stream, values, grid);
    else if (name == "NORMAL" && options.normalBits > 0)
        addNormals(stream, values, options);
    else if (name.starts_with("TEXCOORD_") && options.quantize && areShares(values))
        addShares<std::uint16_t>(stream, values, components, UnsignedShort);
    else if (name.starts_with("COLOR_") && options.quantize && areShares(values))
        accessor.contains(isFine) ? addShares<std::uint16_t>(stream, values, components, UnsignedShort)
                                  : addShares<std::uint8_t>(stream, values, components, UnsignedByte);
    else
        addFloats(stream, values, components);
    return stream;
}

void tellBounds(VertexStream& positions)
{
    const int type = positions.accessor.at("componentType").get<int>();
    if (type == Float)
        addBounds<float>(positions);
    else
        type == SignedShort ? addBounds<std::int16_t>(positions) : addBounds<std::uint16_t>(positions);
}

} // namespace files::glb::packing
