#include "tools/ptxconvert/readers/jt/Shape.h"

#include "tools/ptxconvert/readers/jt/Hash.h"
#include "tools/ptxconvert/readers/jt/Predictors.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace ptx::jt
{

namespace
{

constexpr const char* StripSet = "10dd10ab-2ac8-11d1-9b6b-0080c7bb5997";
constexpr std::uint64_t HasCoordinates = 7;
constexpr std::uint64_t HasNormals = 8;

struct Quantiser {
    double least = 0;
    double most = 0;
    unsigned bits = 0;

    static Quantiser read(Cursor& in)
    {
        Quantiser quantiser;
        quantiser.least = in.f32();
        quantiser.most = in.f32();
        quantiser.bits = in.u8();
        if (quantiser.bits > 32)
            in.fail("a quantiser has too many bits");
        return quantiser;
    }

    float value(std::int32_t code) const
    {
        const double steps = std::ldexp(1.0, static_cast<int>(bits)) - 1;
        return static_cast<float>(steps > 0 ? least + static_cast<std::uint32_t>(code) * (most - least) / steps
                                            : least);
    }
};

class ShapeReader
{
public:
    ShapeReader(Cursor in, int major, Shape& shape)
        : m_in(in), m_packets(m_in, major, std::max<std::size_t>(1u << 20, 64 * in.left())), m_major(major),
          m_shape(shape)
    {
    }

    Damage read()
    {
        if (m_major < 9)
            readStrips();
        else
            readTopological();
        for (Triangle& triangle : m_shape.triangles)
            for (Corner& corner : triangle.corners)
                if (m_in.isOk() && !isThere(corner))
                    m_in.fail("a triangle names a point that is not there");
        return m_in.damage();
    }

private:
    // A mesh without normals has records all the same.
    bool isThere(Corner& corner) const
    {
        if (m_shape.normals.empty())
            corner.record = Corner::NoRecord;
        return corner.position < m_shape.positions.size() &&
               (corner.record == Corner::NoRecord || corner.record < m_shape.normals.size());
    }

    Values packet(Predictor predictor)
    {
        Values values = m_packets.read();
        predict(values, predictor);
        return values;
    }

    void version()
    {
        if (m_major >= 10)
            m_in.u8();
        else
            m_in.i16();
    }

    // Version 8: strips over vertices that lie there plainly or as quantised arrays.

    void readStrips()
    {
        m_in.take(2 + 4 + 4 + 2 + 2);
        const unsigned normals = m_in.u8();
        const unsigned texture = m_in.u8();
        const unsigned colours = m_in.u8();
        const unsigned bits = m_in.u8();
        m_in.take(3);
        const Values starts = packet(Predictor::Stride1);
        if (!m_in.isOk())
            return;
        if (bits == 0)
            readPlainVertices(normals, texture, colours);
        else
            readQuantisedVertices(normals, texture, colours);
        makeStrips(starts);
    }

    void readPlainVertices(unsigned normals, unsigned texture, unsigned colours)
    {
        const std::size_t size = plainSize();
        const std::int32_t packedSize = m_in.i32();
        Damage damage;
        std::vector<std::uint8_t> plain;
        if (packedSize > 0) {
            plain = inflateZlib(m_in.take(static_cast<std::size_t>(packedSize)), 0, damage);
        } else {
            const Bytes bytes = m_in.take(static_cast<std::size_t>(-static_cast<std::int64_t>(packedSize)));
            plain.assign(bytes.begin(), bytes.end());
        }
        const std::size_t before = (texture ? 2 : 0) + (colours ? 3 : 0);
        const std::size_t stride = 4 * (before + (normals ? 6 : 3));
        if (damage || plain.size() != size || size % stride != 0)
            return m_in.fail("the vertices do not unpack to their size");
        Cursor in(plain, m_in.isBigEndian());
        for (std::size_t i = 0; i < size / stride; ++i) {
            in.take(4 * before);
            if (normals)
                m_shape.normals.push_back({in.f32(), in.f32(), in.f32()});
            m_shape.positions.push_back({in.f32(), in.f32(), in.f32()});
            m_index.push_back(static_cast<std::int32_t>(i));
        }
    }

    std::size_t plainSize()
    {
        const std::int32_t size = m_in.i32();
        if (size < 0)
            m_in.fail("the vertices have a negative size");
        return size < 0 ? 0 : static_cast<std::size_t>(size);
    }

    void readQuantisedVertices(unsigned normals, unsigned texture, unsigned colours)
    {
        std::array<Quantiser, 3> axes;
        for (Quantiser& axis : axes)
            axis = Quantiser::read(m_in);
        m_in.i32();
        std::array<Values, 3> codes;
        for (Values& code : codes)
            code = packet(Predictor::Lag1);
        place(codes, axes);
        if (normals)
            readAngles(Predictor::Lag1, false);
        if (texture)
            skipTexture();
        if (colours)
            return m_in.fail("quantised vertex colours of version 8 are not read");
        m_index = packet(Predictor::StripIndex);
    }

    void skipTexture()
    {
        Quantiser::read(m_in);
        Quantiser::read(m_in);
        m_in.u8();
        m_packets.read();
        m_packets.read();
    }

    void makeStrips(const Values& starts)
    {
        const std::size_t n = m_index.size();
        for (std::size_t s = 0; s + 1 < starts.size() && m_in.isOk(); ++s) {
            const std::int64_t from = starts[s];
            const std::int64_t to = starts[s + 1];
            if (from < 0 || to < from || static_cast<std::uint64_t>(to) > n)
                return m_in.fail("a strip leaves the vertices");
            for (std::int64_t j = from; j + 2 < to; ++j)
                addStripTriangle(j, (j - from) % 2);
        }
    }

    void addStripTriangle(std::int64_t j, std::int64_t isOdd)
    {
        const auto corner = [&](std::int64_t i) {
            const auto at = static_cast<std::uint32_t>(m_index[static_cast<std::size_t>(i)]);
            return Corner{at, m_shape.normals.empty() ? Corner::NoRecord : at};
        };
        const Triangle triangle{{corner(j + isOdd), corner(j + 1 - isOdd), corner(j + 2)}};
        const auto place = [&](int i) { return triangle.corners[static_cast<std::size_t>(i)].position; };
        for (int i = 0; i < 3; ++i)
            if (place(i) >= m_shape.positions.size())
                return m_in.fail("a strip names a vertex that is not there");
        const auto& p = m_shape.positions;
        if (p[place(0)] != p[place(1)] && p[place(1)] != p[place(2)] && p[place(0)] != p[place(2)])
            m_shape.triangles.push_back(triangle);
    }

    // Versions 9 and 10: arrays from which the connectivity is rebuilt.

    void readTopological()
    {
        m_in.i32();
        version();
        version();
        m_in.number<std::uint64_t>();
        if (m_major >= 10)
            m_in.take(4 + 16 + 1 + 4);
        version();
        m_in.i32();
        version();
        const Topology topology = readTopology();
        if (!m_in.isOk())
            return;
        readRecords();
        Connectivity mesh = rebuild(topology);
        if (mesh.error)
            return m_in.fail(mesh.error);
        if (m_in.isOk() && mesh.positions != m_shape.positions.size())
            return m_in.fail("the mesh has another number of points than positions");
        m_shape.triangles = std::move(mesh.triangles);
    }

    Topology readTopology()
    {
        Topology topology;
        std::uint32_t hash = 0;
        const auto hashed = [&](Values values) {
            hash = hash32(values, hash);
            return values;
        };
        for (Values& degrees : topology.degrees)
            degrees = hashed(packet(Predictor::None));
        topology.valences = hashed(packet(Predictor::None));
        topology.groups = hashed(packet(Predictor::None));
        topology.flags = packet(Predictor::Lag1);
        hash = hash16(topology.flags, hash);
        readMasks(topology, hash);
        const std::size_t n = m_in.count(4);
        Values large(n);
        for (std::int32_t& word : large)
            topology.largeMasks.push_back(static_cast<std::uint32_t>(word = m_in.i32()));
        hash = hash32(large, hash);
        topology.splitSymbols = hashed(packet(Predictor::Lag1));
        topology.splitPositions = hashed(packet(Predictor::None));
        compare(hash, "the check sum of the connectivity is wrong");
        return topology;
    }

    void readMasks(Topology& topology, std::uint32_t& hash)
    {
        const unsigned lowBits = m_major >= 10 ? 32 : 30;
        std::vector<Values> parts;
        for (int i = 0; i < (m_major >= 10 ? 9 : 10); ++i)
            parts.push_back(packet(Predictor::None));
        const std::size_t n = parts[7].size();
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (i > 7)
                parts[i].resize(n);
            for (std::int32_t& word : parts[i])
                if (i < 7 && m_major < 10)
                    word &= 0x3fffffff;
            hash = hash32(parts[i], hash);
            std::vector<std::uint64_t>& masks = topology.masks[std::min<std::size_t>(i, 7)];
            masks.resize(parts[i].size());
            for (std::size_t k = 0; k < parts[i].size(); ++k)
                masks[k] |= std::uint64_t(static_cast<std::uint32_t>(parts[i][k])) << (i > 7 ? lowBits * (i - 7) : 0);
        }
    }

    void compare(std::uint32_t hash, const char* what)
    {
        const std::uint32_t stored = m_in.u32();
        ++m_shape.hashes;
        if (m_in.isOk() && stored != hash)
            m_in.fail(what);
    }

    void readRecords()
    {
        const auto bindings = m_in.number<std::uint64_t>();
        m_in.take(4);
        if (m_in.i32() <= 0)
            return;
        m_in.i32();
        if (bindings & HasCoordinates)
            readCoordinates();
        if (m_in.isOk() && (bindings & HasNormals))
            readAngles(Predictor::None, true);
    }

    // The floats of one component, and their part of the check sum.
    Values readFloats(Predictor predictor, std::uint32_t& hash)
    {
        Values words = packet(predictor);
        if (m_major < 10) {
            const Values mantissae = packet(predictor);
            if (mantissae.size() != words.size())
                m_in.fail("exponents and mantissae differ in number");
            for (std::size_t i = 0; m_in.isOk() && i < words.size(); ++i) {
                words[i] = static_cast<std::int32_t>(static_cast<std::uint32_t>(words[i]) << 23 |
                                                     static_cast<std::uint32_t>(mantissae[i]));
                hash = hash32({&words[i], 1}, hash);
            }
        } else {
            hash = hash32(words, hash);
        }
        return words;
    }

    void readCoordinates()
    {
        m_in.i32();
        if (m_in.u8() != 3)
            return m_in.fail("positions have another number of components than three");
        std::array<Quantiser, 3> axes;
        for (Quantiser& axis : axes)
            axis = Quantiser::read(m_in);
        std::uint32_t hash = 0;
        std::array<Values, 3> codes;
        for (Values& code : codes)
            if (axes[0].bits == 0) {
                code = readFloats(Predictor::Lag1, hash);
            } else {
                code = packet(Predictor::Lag1);
                hash = hash32(code, hash);
            }
        place(codes, axes);
        compare(hash, "the check sum of the positions is wrong");
    }

    void place(const std::array<Values, 3>& codes, const std::array<Quantiser, 3>& axes)
    {
        m_shape.positions = vectors(codes, [&](std::size_t axis, std::int32_t code) {
            return axes[0].bits == 0 ? std::bit_cast<float>(code) : axes[axis].value(code);
        });
    }

    template <class Value>
    std::vector<Vector> vectors(const std::array<Values, 3>& codes, Value value)
    {
        if (codes[1].size() != codes[0].size() || codes[2].size() != codes[0].size()) {
            m_in.fail("the components of an array differ in number");
            return {};
        }
        std::vector<Vector> result(codes[0].size());
        for (std::size_t axis = 0; axis < 3; ++axis)
            for (std::size_t i = 0; i < result.size(); ++i)
                result[i][axis] = value(axis, codes[axis][i]);
        return result;
    }

    // The later versions may hold plain floats instead, and end with a check sum.
    void readAngles(Predictor predictor, bool isLater)
    {
        if (isLater) {
            m_in.i32();
            if (m_in.u8() != 3)
                return m_in.fail("normals have another number of components than three");
        }
        const unsigned bits = m_in.u8();
        if (!isLater)
            m_in.i32();
        std::uint32_t hash = 0;
        if (bits == 0 && isLater) {
            std::array<Values, 3> words;
            for (Values& word : words)
                word = readFloats(Predictor::None, hash);
            m_shape.normals = vectors(words, [](std::size_t, std::int32_t word) { return std::bit_cast<float>(word); });
        } else if (bits < 1 || bits > 13) {
            return m_in.fail("normals have an impossible number of bits");
        } else {
            readCodes(predictor, bits, isLater && m_major >= 10, hash);
        }
        if (isLater)
            compare(hash, "the check sum of the normals is wrong");
    }

    void readCodes(Predictor predictor, unsigned bits, bool isPacked, std::uint32_t& hash)
    {
        std::array<Values, 4> parts;
        for (std::size_t i = 0; i < (isPacked ? 1u : 4u); ++i) {
            parts[i] = packet(predictor);
            hash = hash32(parts[i], hash);
            if (parts[i].size() != parts[0].size())
                return m_in.fail("the components of an array differ in number");
        }
        const std::uint32_t mask = (1u << bits) - 1;
        for (std::size_t i = 0; i < parts[0].size(); ++i) {
            std::array<std::uint32_t, 4> code{};
            for (std::size_t k = 0; k < (isPacked ? 1u : 4u); ++k)
                code[k] = static_cast<std::uint32_t>(parts[k][i]);
            if (isPacked)
                code = {code[0] >> (2 * bits + 3), code[0] >> 2 * bits & 7, code[0] >> bits & mask, code[0] & mask};
            if (code[0] > 5)
                return m_in.fail("a normal lies in no sextant");
            m_shape.normals.push_back(directionOf(code[0], code[1], code[2], code[3], bits));
        }
    }

    Cursor m_in;
    PacketReader m_packets;
    int m_major;
    Shape& m_shape;
    Values m_index;
};

} // namespace

Vector directionOf(std::uint32_t sextant, std::uint32_t octant, std::uint32_t theta, std::uint32_t psi, unsigned bits)
{
    constexpr double Widest = 0.615479709;
    const double range = std::ldexp(1.0, static_cast<int>(bits));
    const double up = std::tan(Widest * (range - theta - (sextant & 1)) / range);
    const double t = std::asin(std::clamp(up, -1.0, 1.0));
    const double p = Widest * psi / range;
    const auto x = static_cast<float>(std::cos(t) * std::cos(p));
    const auto y = static_cast<float>(std::sin(p));
    const auto z = static_cast<float>(std::sin(t) * std::cos(p));
    const std::array<Vector, 6> orders = {{{x, y, z}, {z, y, x}, {y, z, x}, {y, x, z}, {z, x, y}, {x, z, y}}};
    Vector direction = orders[sextant % 6];
    for (unsigned axis = 0; axis < 3; ++axis)
        if (!(octant & (4u >> axis)))
            direction[axis] = -direction[axis];
    return direction;
}

Shape readShape(const Segment& segment, int major, bool isBigEndian)
{
    Shape shape;
    Cursor list(segment.data, isBigEndian, segment.offset);
    Element element{{}, 0, list};
    if (!nextElement(list, element))
        shape.damage = {"a shape segment holds no element", segment.offset};
    else if (element.type != StripSet)
        shape.damage = {"a shape segment holds another kind of shape than triangle strips", segment.offset};
    else
        shape.damage = ShapeReader(element.data, major, shape).read();
    if (shape.damage)
        shape.triangles.clear();
    return shape;
}

} // namespace ptx::jt
