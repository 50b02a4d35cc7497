#include "ptx/readers/jt/shapes/VertexArrays.h"
#include "ptx/readers/jt/codec/Hash.h"
#include "ptx/readers/jt/codec/Quantiser.h"
#include "ptx/readers/jt/container/BlockVersion.h"
#include "ptx/readers/jt/shapes/Directions.h"

#include <bit>

namespace ptx::jt::shapes
{

namespace
{

constexpr std::uint64_t HasPositions = 0x7;
constexpr std::uint64_t HasNormals = 0x8;
constexpr std::uint64_t HasColours = 0x30;
constexpr unsigned Channels = 8;
constexpr unsigned FirstChannelBit = 8;
constexpr unsigned BitsOfChannel = 4;

float floatOf(std::int32_t word)
{
    return std::bit_cast<float>(word);
}

class VertexArrays
{
public:
    VertexArrays(ShapeInput& input, Shape& shape) : m_input(input), m_in(input.in), m_shape(shape) {}

    void read(std::uint64_t bindings)
    {
        if (bindings & HasPositions)
            readPositions();
        if (m_in.isOk() && (bindings & HasNormals))
            readNormals();
        if (m_in.isOk() && (bindings & HasColours))
            readColours();
        for (unsigned channel = 0; channel < Channels && m_in.isOk(); ++channel)
            if (bindings >> (FirstChannelBit + BitsOfChannel * channel) & 0xF)
                readTextureCoordinates(channel == 0);
    }

private:
    using Arrays = std::vector<codec::Values>;

    unsigned components(unsigned least, unsigned most, const char* what)
    {
        m_in.i32();
        const unsigned n = m_in.u8();
        if (n < least || n > most)
            m_in.fail(what);
        return m_in.isOk() ? n : 0;
    }

    // Version 9 keeps exponents apart, and sums up float by float.
    codec::Values floatsOfNine(codec::Predictor predictor, std::uint32_t& hash)
    {
        codec::Values words = m_input.array(predictor);
        const codec::Values mantissae = m_input.array(predictor);
        if (mantissae.size() != words.size())
            m_in.fail("exponents and mantissae differ in number");
        for (std::size_t i = 0; m_in.isOk() && i < words.size(); ++i) {
            words[i] = static_cast<std::int32_t>(static_cast<std::uint32_t>(words[i]) << 23 |
                                                 static_cast<std::uint32_t>(mantissae[i]));
            hash = codec::hash32({&words[i], 1}, hash);
        }
        return words;
    }

    Arrays arrays(std::size_t n, bool isFloat, codec::Predictor predictor, const char* whatIsWrong)
    {
        std::uint32_t hash = 0;
        Arrays result(n);
        for (codec::Values& values : result) {
            if (isFloat && m_input.major < 10) {
                values = floatsOfNine(predictor, hash);
            } else {
                values = m_input.array(predictor);
                hash = codec::hash32(values, hash);
            }
        }
        m_input.compare(hash, whatIsWrong);
        return sameSize(std::move(result));
    }

    // Version 10 may guess these arrays or not: the check sum tells which.
    Arrays arraysOfTen(std::size_t n, const char* whatIsWrong)
    {
        Arrays result(n);
        for (codec::Values& values : result)
            values = m_input.array(codec::Predictor::None);
        const auto hash = [&] {
            std::uint32_t sum = 0;
            for (const codec::Values& values : result)
                sum = codec::hash32(values, sum);
            return sum;
        };
        const std::uint32_t stored = m_in.u32();
        if (stored != hash())
            for (codec::Values& values : result)
                codec::predict(values, codec::Predictor::Lag1);
        m_input.compare(stored, hash(), whatIsWrong);
        return sameSize(std::move(result));
    }

    Arrays sameSize(Arrays result)
    {
        for (const codec::Values& values : result)
            if (values.size() != result[0].size())
                m_in.fail("the components of an array differ in number");
        return m_in.isOk() ? result : Arrays(result.size());
    }

    Arrays attributeArrays(std::size_t n, bool isFloat, const char* whatIsWrong)
    {
        return m_input.major >= 10 ? arraysOfTen(n, whatIsWrong)
                                   : arrays(n, isFloat, codec::Predictor::Lag1, whatIsWrong);
    }

    void readPositions()
    {
        components(3, 3, "positions have another number of components than three");
        std::array<codec::Quantiser, 3> axes;
        for (codec::Quantiser& axis : axes)
            axis = codec::Quantiser::read(m_in);
        const bool isFloat = axes[0].bits == 0;
        const Arrays codes = arrays(3, isFloat, codec::Predictor::Lag1, "the check sum of the positions is wrong");
        m_shape.positions.resize(codes[0].size());
        for (std::size_t axis = 0; axis < 3; ++axis)
            for (std::size_t i = 0; i < codes[axis].size(); ++i)
                m_shape.positions[i][axis] = isFloat ? floatOf(codes[axis][i]) : axes[axis].value(codes[axis][i]);
    }

    void readNormals()
    {
        components(3, 3, "normals have another number of components than three");
        const unsigned bits = m_in.u8();
        constexpr const char* WhatIsWrong = "the check sum of the normals is wrong";
        if (bits > 0) {
            std::uint32_t hash = 0;
            m_shape.normals = readDirections(m_input, codec::Predictor::None, bits, hash);
            return m_input.compare(hash, WhatIsWrong);
        }
        const Arrays words = arrays(3, true, codec::Predictor::None, WhatIsWrong);
        for (std::size_t i = 0; i < words[0].size(); ++i)
            m_shape.normals.push_back({floatOf(words[0][i]), floatOf(words[1][i]), floatOf(words[2][i])});
    }

    void readColours()
    {
        const unsigned n = components(3, 4, "colours have another number of components than three or four");
        const unsigned bits = m_in.u8();
        constexpr const char* WhatIsWrong = "the check sum of the colours is wrong";
        if (bits == 0) {
            const Arrays words = attributeArrays(n, true, WhatIsWrong);
            for (std::size_t i = 0; n > 0 && i < words[0].size(); ++i)
                m_shape.colours.push_back(
                    codec::bounded(codec::Colour{floatOf(words[0][i]), floatOf(words[1][i]), floatOf(words[2][i]),
                                                 n == 4 ? floatOf(words[3][i]) : 1}));
            return;
        }
        const codec::ColourQuantiser quantiser = codec::ColourQuantiser::read(m_in);
        const Arrays codes = attributeArrays(m_input.major >= 10 ? 1 : 4, false, WhatIsWrong);
        if (m_input.major >= 10) {
            m_shape.leftOut = PackedColours;
            return;
        }
        m_shape.colours = codec::coloursOf(quantiser, codes, n == 4);
    }

    void readTextureCoordinates(bool isKept)
    {
        const unsigned n = components(1, 4, "texture coordinates have an impossible number of components");
        const unsigned bits = m_in.u8();
        std::vector<codec::Quantiser> axes(bits > 0 ? n : 0);
        for (codec::Quantiser& axis : axes)
            axis = codec::Quantiser::read(m_in);
        const Arrays codes = attributeArrays(n, bits == 0, "the check sum of the texture coordinates is wrong");
        if (!isKept || n == 0)
            return;
        const auto value = [&](std::size_t axis, std::size_t i) {
            return axis >= n ? 0 : bits == 0 ? floatOf(codes[axis][i]) : axes[axis].value(codes[axis][i]);
        };
        for (std::size_t i = 0; i < codes[0].size(); ++i)
            m_shape.textureCoordinates.push_back(codec::bounded(codec::TextureCoordinate{value(0, i), value(1, i)}));
    }

    ShapeInput& m_input;
    container::Cursor& m_in;
    Shape& m_shape;
};

} // namespace

void skipShapeHead(ShapeInput& input)
{
    constexpr std::size_t InnerElement = 4 + 16 + 1 + 4;
    container::Cursor& in = input.in;
    in.i32();
    container::skipBlockVersion(in, input.major);
    container::skipBlockVersion(in, input.major);
    in.number<std::uint64_t>();
    if (input.major >= 10)
        in.take(InnerElement);
    container::skipBlockVersion(in, input.major);
    in.i32();
    container::skipBlockVersion(in, input.major);
}

void readVertexArrays(ShapeInput& input, std::uint64_t bindings, Shape& shape)
{
    VertexArrays(input, shape).read(bindings);
}

} // namespace ptx::jt::shapes
