#include "ptx/readers/jt/shapes/TopologicalShape.h"
#include "ptx/readers/jt/codec/Hash.h"
#include "ptx/readers/jt/container/BlockVersion.h"
#include "ptx/readers/jt/shapes/VertexArrays.h"

namespace ptx::jt::shapes
{

namespace
{

/// Reads arrays, and sums them up in their order.
class TopologyReader
{
public:
    explicit TopologyReader(ShapeInput& input) : m_input(input) {}

    Topology read()
    {
        for (codec::Values& degrees : m_topology.degrees)
            degrees = hashed(m_input.array(codec::Predictor::None));
        m_topology.valences = hashed(m_input.array(codec::Predictor::None));
        m_topology.groups = hashed(m_input.array(codec::Predictor::None));
        m_topology.flags = m_input.array(codec::Predictor::Lag1);
        m_hash = codec::hash16(m_topology.flags, m_hash);
        readMasks();
        readLargeMasks();
        m_topology.splitSymbols = hashed(m_input.array(codec::Predictor::Lag1));
        m_topology.splitPositions = hashed(m_input.array(codec::Predictor::None));
        m_input.compare(m_hash, "the check sum of the connectivity is wrong");
        return std::move(m_topology);
    }

private:
    codec::Values hashed(codec::Values values)
    {
        m_hash = codec::hash32(values, m_hash);
        return values;
    }

    void readMasks()
    {
        const unsigned lowBits = m_input.major >= 10 ? 32 : 30;
        std::vector<codec::Values> parts(m_input.major >= 10 ? 9 : 10);
        for (codec::Values& part : parts)
            part = m_input.array(codec::Predictor::None);
        const std::size_t n = parts[7].size();
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (i > 7)
                parts[i].resize(n);
            for (std::int32_t& word : parts[i])
                if (i < 7 && m_input.major < 10)
                    word &= 0x3fffffff;
            m_hash = codec::hash32(parts[i], m_hash);
            std::vector<std::uint64_t>& masks = m_topology.masks[std::min<std::size_t>(i, 7)];
            masks.resize(parts[i].size());
            for (std::size_t k = 0; k < parts[i].size(); ++k)
                masks[k] |= std::uint64_t(static_cast<std::uint32_t>(parts[i][k])) << (i > 7 ? lowBits * (i - 7) : 0);
        }
    }

    void readLargeMasks()
    {
        codec::Values words(m_input.in.count(4));
        for (std::int32_t& word : words)
            m_topology.largeMasks.push_back(static_cast<std::uint32_t>(word = m_input.in.i32()));
        m_hash = codec::hash32(words, m_hash);
    }

    ShapeInput& m_input;
    Topology m_topology;
    std::uint32_t m_hash = 0;
};

void readRecords(ShapeInput& input, Shape& shape)
{
    const auto bindings = input.in.number<std::uint64_t>();
    input.in.take(4);
    if (input.in.i32() <= 0)
        return;
    input.in.i32();
    readVertexArrays(input, bindings, shape);
}

} // namespace

void readTopologicalShape(ShapeInput& input, Shape& shape)
{
    skipShapeHead(input);
    const Topology topology = TopologyReader(input).read();
    if (!input.in.isOk())
        return;
    readRecords(input, shape);
    Connectivity mesh = rebuild(topology);
    if (mesh.error)
        return input.in.fail(mesh.error);
    if (input.in.isOk() && mesh.positions != shape.positions.size())
        return input.in.fail("the mesh has another number of points than positions");
    shape.triangles = std::move(mesh.triangles);
}

} // namespace ptx::jt::shapes
