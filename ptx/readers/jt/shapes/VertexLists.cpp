#include "ptx/readers/jt/shapes/VertexLists.h"

#include "ptx/readers/jt/codec/Quantiser.h"
#include "ptx/readers/jt/container/Compression.h"
#include "ptx/readers/jt/shapes/Directions.h"
#include "ptx/readers/jt/shapes/PrimitiveMaker.h"

#include <bit>

namespace ptx::jt::shapes
{

namespace
{

class VertexLists
{
public:
    VertexLists(ShapeInput& input, Shape& shape) : m_input(input), m_in(input.in), m_shape(shape) {}

    /// The starts of the primitives, and one beyond the last.
    codec::Values read()
    {
        m_in.take(2 + 4 + 4 + 2 + 2);
        m_hasNormals = m_in.u8() != 0;
        m_hasTexture = m_in.u8() != 0;
        m_hasColours = m_in.u8() != 0;
        const unsigned bits = m_in.u8();
        m_in.take(3);
        codec::Values starts = m_input.array(codec::Predictor::Stride1);
        if (m_in.isOk())
            bits == 0 ? readPlain() : readQuantised();
        return starts;
    }

    /// The vertices of the primitives, one after another.
    const codec::Values& index() const { return m_index; }

private:
    void readPlain()
    {
        const std::vector<std::uint8_t> plain = unpackPlain();
        const std::size_t stride =
            std::size_t{4} * ((m_hasTexture ? 2u : 0u) + (m_hasColours ? 3u : 0u) + (m_hasNormals ? 3u : 0u) + 3u);
        if (!m_in.isOk() || plain.size() % stride != 0)
            return m_in.fail("the vertices do not unpack to their size");
        container::Cursor in(plain, m_in.isBigEndian());
        for (std::size_t i = 0; i < plain.size() / stride; ++i) {
            if (m_hasTexture)
                m_shape.textureCoordinates.push_back(codec::bounded(codec::TextureCoordinate{in.f32(), in.f32()}));
            if (m_hasColours)
                m_shape.colours.push_back(codec::bounded(codec::Colour{in.f32(), in.f32(), in.f32(), 1}));
            if (m_hasNormals)
                m_shape.normals.push_back({in.f32(), in.f32(), in.f32()});
            m_shape.positions.push_back({in.f32(), in.f32(), in.f32()});
            m_index.push_back(static_cast<std::int32_t>(i));
        }
    }

    std::vector<std::uint8_t> unpackPlain()
    {
        const std::int32_t size = m_in.i32();
        const std::int32_t packedSize = m_in.i32();
        if (size < 0)
            m_in.fail("the vertices have a negative size");
        const container::Bytes bytes =
            m_in.take(static_cast<std::size_t>(std::abs(static_cast<std::int64_t>(packedSize))));
        container::Damage damage;
        std::vector<std::uint8_t> plain = packedSize > 0 ? container::inflateZlib(bytes, 0, damage)
                                                         : std::vector<std::uint8_t>(bytes.begin(), bytes.end());
        if (damage || static_cast<std::int64_t>(plain.size()) != size)
            m_in.fail("the vertices do not unpack to their size");
        return plain;
    }

    void readQuantised()
    {
        std::array<codec::Quantiser, 3> axes;
        for (codec::Quantiser& axis : axes)
            axis = codec::Quantiser::read(m_in);
        m_in.i32();
        const std::array<codec::Values, 3> codes = arrays<3>();
        m_shape.positions.resize(codes[0].size());
        for (std::size_t axis = 0; axis < 3; ++axis)
            for (std::size_t i = 0; i < codes[axis].size(); ++i)
                m_shape.positions[i][axis] =
                    axes[0].bits == 0 ? std::bit_cast<float>(codes[axis][i]) : axes[axis].value(codes[axis][i]);
        if (m_hasNormals)
            readNormals();
        if (m_hasTexture)
            readTexture();
        if (m_hasColours)
            readColours();
        m_index = m_input.array(codec::Predictor::StripIndex);
    }

    template <std::size_t N>
    std::array<codec::Values, N> arrays()
    {
        std::array<codec::Values, N> result;
        for (codec::Values& values : result)
            values = m_input.array(codec::Predictor::Lag1);
        for (const codec::Values& values : result)
            if (values.size() != result[0].size())
                m_in.fail("the components of an array differ in number");
        return m_in.isOk() ? result : std::array<codec::Values, N>();
    }

    void readNormals()
    {
        const unsigned bits = m_in.u8();
        m_in.i32();
        std::uint32_t unused = 0;
        m_shape.normals = readDirections(m_input, codec::Predictor::Lag1, bits, unused);
    }

    void readTexture()
    {
        const codec::Quantiser u = codec::Quantiser::read(m_in);
        const codec::Quantiser v = codec::Quantiser::read(m_in);
        m_in.u8();
        const std::array<codec::Values, 2> codes = arrays<2>();
        for (std::size_t i = 0; i < codes[0].size(); ++i)
            m_shape.textureCoordinates.push_back(
                codec::bounded(codec::TextureCoordinate{u.value(codes[0][i]), v.value(codes[1][i])}));
    }

    void readColours()
    {
        const codec::ColourQuantiser quantiser = codec::ColourQuantiser::read(m_in);
        m_in.u8();
        const unsigned channels = m_in.u8();
        const bool isSplit = m_in.u8() != 0;
        if (!isSplit) {
            m_input.array(codec::Predictor::None);
            m_shape.leftOut = PackedColours;
            return;
        }
        const std::array<codec::Values, 4> codes = arrays<4>();
        m_shape.colours = codec::coloursOf(quantiser, codes, channels == 4);
    }

    ShapeInput& m_input;
    container::Cursor& m_in;
    Shape& m_shape;
    bool m_hasNormals = false;
    bool m_hasTexture = false;
    bool m_hasColours = false;
    codec::Values m_index;
};

} // namespace

void readVertexLists(ShapeInput& input, ShapeKind kind, Shape& shape)
{
    VertexLists lists(input, shape);
    const codec::Values starts = lists.read();
    PrimitiveMaker primitives(lists.index(), shape);
    for (std::size_t i = 0; i + 1 < starts.size() && input.in.isOk(); ++i) {
        const std::int64_t from = starts[i];
        const std::int64_t to = starts[i + 1];
        if (from < 0 || to < from || static_cast<std::uint64_t>(to) > lists.index().size())
            return input.in.fail("a primitive leaves the vertices");
        if (!primitives.add(kind, static_cast<std::size_t>(from), static_cast<std::size_t>(to)))
            return input.in.fail("a polygon cannot be cut into triangles");
    }
}

} // namespace ptx::jt::shapes
