#include "files/glb/packing/VertexStreams.h"

#include <gtest/gtest.h>
#include <meshoptimizer.h>

#include <cmath>
#include <cstring>
#include <numbers>

namespace
{

using namespace files::glb::packing;
using files::glb::PackOptions;

class VertexStreamsTest : public testing::Test
{
protected:
    VertexStream made(const std::string& name, const char* type, const std::vector<float>& values,
                      const PositionGrid& grid = {})
    {
        PackedFile file;
        file.binary.resize(8 + values.size() * sizeof(float));
        std::memcpy(file.binary.data() + 8, values.data(), values.size() * sizeof(float));
        file.bufferViews = {{{"byteOffset", 4}}};
        const std::size_t components = static_cast<std::size_t>(type[3] - '0');
        return streamOf(name, file,
                        {{"bufferView", 0}, {"byteOffset", 4}, {"count", values.size() / components}, {"type", type}},
                        grid, options);
    }

    template <class T>
    static std::vector<T> numbers(const VertexStream& stream)
    {
        std::vector<T> result(stream.bytes.size() / sizeof(T));
        std::memcpy(result.data(), stream.bytes.data(), stream.bytes.size());
        return result;
    }

    PackOptions options;
};

TEST_F(VertexStreamsTest, PositionsAreRoundedToTheGrid)
{
    const VertexStream stream = made("POSITION", "VEC3", {1, 2, 3, -4.2f, 5.2f, 6.26f}, {0.5, {}, true});
    EXPECT_EQ(numbers<std::int16_t>(stream), (std::vector<std::int16_t>{2, 4, 6, 0, -8, 10, 13, 0}));
    EXPECT_EQ(stream.accessor, Json::parse(R"({"type": "VEC3", "componentType": 5122})"));
}

TEST_F(VertexStreamsTest, PositionsCountFromTheOriginOfTheGrid)
{
    const VertexStream stream = made("POSITION", "VEC3", {20000, 2, 3}, {0.5, {39990, -6, 0}, false});
    EXPECT_EQ(numbers<std::uint16_t>(stream), (std::vector<std::uint16_t>{10, 10, 6, 0}));
    EXPECT_EQ(stream.accessor["componentType"], 5123);
}

TEST_F(VertexStreamsTest, PositionsWithoutGridStayFloats)
{
    const VertexStream stream = made("POSITION", "VEC3", {1.1f, 2, 3, -4, 5, 6.5f});
    EXPECT_EQ(numbers<float>(stream), (std::vector<float>{1.1f, 2, 3, -4, 5, 6.5f}));
}

TEST_F(VertexStreamsTest, BoundsOfPositionsAreThoseOfTheirNumbers)
{
    VertexStream onGrid = made("POSITION", "VEC3", {1, 2, 3, -4.2f, 5.2f, 6.26f}, {0.5, {}, true});
    tellBounds(onGrid);
    EXPECT_EQ(onGrid.accessor["min"], Json::parse("[-8, 4, 6]"));
    EXPECT_EQ(onGrid.accessor["max"], Json::parse("[2, 10, 13]"));
    VertexStream unsignedOnes = made("POSITION", "VEC3", {20000, 2, 3}, {0.5, {39990, -6, 0}, false});
    tellBounds(unsignedOnes);
    EXPECT_EQ(unsignedOnes.accessor["max"], Json::parse("[10, 10, 6]"));
    VertexStream plain = made("POSITION", "VEC3", {1.1f, 2, 3, -4, 5, 6.5f});
    tellBounds(plain);
    EXPECT_EQ(plain.accessor["max"], Json::parse("[1.100000023841858, 5.0, 6.5]"));
    plain.bytes.resize(12); // what is dropped later does not count
    plain.accessor.erase("min");
    plain.accessor.erase("max");
    tellBounds(plain);
    EXPECT_EQ(plain.accessor["max"], Json::parse("[1.100000023841858, 2.0, 3.0]"));
}

TEST_F(VertexStreamsTest, NormalsOfPlainFilesAreNormalizedIntegers)
{
    options.normalBits = 8;
    const VertexStream eight = made("NORMAL", "VEC3", {0, -1, 0, 0.6f, 0, 0.8f});
    EXPECT_EQ(numbers<std::int8_t>(eight), (std::vector<std::int8_t>{0, -127, 0, 0, 76, 0, 102, 0}));
    options.normalBits = 10;
    const VertexStream ten = made("NORMAL", "VEC3", {0.6f, 0, 0.8f});
    EXPECT_EQ(numbers<std::int16_t>(ten), (std::vector<std::int16_t>{19660, 0, 26214, 0}));
    EXPECT_EQ(ten.accessor["normalized"], true);
}

/// The largest angle between normals all around and what comes back, in degrees.
TEST_F(VertexStreamsTest, PackedNormalsAreOffByTheirStatedAngle)
{
    std::vector<float> normals;
    for (int i = 0; i < 5000; ++i) {
        const double z = -1 + 2 * (i + 0.5) / 5000;
        const double turn = i * 2.399963;
        const double radius = std::sqrt(1 - z * z);
        for (const double value : {radius * std::cos(turn), radius * std::sin(turn), z})
            normals.push_back(static_cast<float>(value));
    }
    const auto largest = [&](auto type, int bits) {
        using T = decltype(type);
        options.normalBits = bits;
        options.compress = true;
        VertexStream stream = made("NORMAL", "VEC3", normals);
        EXPECT_EQ(stream.filter, PackedStreams::Filter::Octahedral);
        meshopt_decodeFilterOct(stream.bytes.data(), stream.count(), stream.width);
        const std::vector<T> back = numbers<T>(stream);
        double most = 0;
        for (std::size_t i = 0; i < stream.count(); ++i) {
            const double x = back[i * 4], y = back[i * 4 + 1], z = back[i * 4 + 2];
            const double length = std::sqrt(x * x + y * y + z * z);
            const double dot = (x * normals[i * 3] + y * normals[i * 3 + 1] + z * normals[i * 3 + 2]) / length;
            most = std::max(most, std::acos(std::min(dot, 1.0)));
        }
        return most * 180 / std::numbers::pi;
    };
    EXPECT_LT(largest(std::int8_t(), 8), 1.1);
    EXPECT_LT(largest(std::int16_t(), 10), 0.25);
}

TEST_F(VertexStreamsTest, SharesBecomeIntegersAndOthersStay)
{
    options.quantize = true;
    EXPECT_EQ(numbers<std::uint16_t>(made("TEXCOORD_0", "VEC2", {0, 1, 0.25f, 0.5f})),
              (std::vector<std::uint16_t>{0, 65535, 16384, 32768}));
    EXPECT_EQ(made("TEXCOORD_0", "VEC2", {0, 1.5f, 0.25f, 0.5f}).accessor["componentType"], 5126);
    EXPECT_EQ(numbers<std::uint8_t>(made("COLOR_0", "VEC4", {1, 0.2f, 0, 0.5f})),
              (std::vector<std::uint8_t>{255, 51, 0, 128}));
    options.quantize = false;
    EXPECT_EQ(made("COLOR_0", "VEC4", {1, 0.2f, 0, 0.5f}).accessor["componentType"], 5126);
}

TEST_F(VertexStreamsTest, ColoursOfMaterialsHaveSixteenBits)
{
    options.quantize = true;
    PackedFile file;
    file.accessors = Json::array();
    file.bufferViews = Json::array();
    addFloats(file, std::vector<float>{0.0003f, 0, 1, 1}, "VEC4");
    file.accessors[0][isFine] = true;
    const VertexStream stream = streamOf("COLOR_0", file, file.accessors[0], {}, options);
    EXPECT_EQ(numbers<std::uint16_t>(stream), (std::vector<std::uint16_t>{20, 0, 65535, 65535}));
    EXPECT_FALSE(stream.accessor.contains(isFine));
}

} // namespace
