#include "ptx/readers/jt/shapes/IndexLists.h"
#include "ptx/readers/jt/codec/Hash.h"
#include "ptx/readers/jt/shapes/VertexArrays.h"

namespace ptx::jt::shapes
{

namespace
{

class IndexLists
{
public:
    IndexLists(ShapeInput& input, ShapeKind kind, Shape& shape)
        : m_input(input), m_in(input.in), m_kind(kind), m_shape(shape)
    {
    }

    void read()
    {
        readLists();
        const auto bindings = m_in.number<std::uint64_t>();
        m_in.take(4);
        const std::int32_t records = m_in.i32();
        if (!m_in.isOk() || records == 0)
            return;
        readRepeatCounts(records);
        readVertexArrays(m_input, bindings, m_shape);
        if (m_in.isOk() && m_shape.positions.size() != m_ends.size())
            m_in.fail("a shape has another number of positions than it says");
        for (std::size_t i = 0; i + 1 < m_starts.size() && m_in.isOk(); ++i)
            addPrimitive(m_starts[i], m_starts[i + 1]);
    }

private:
    // Points of version 9 are not grouped.
    void readLists()
    {
        const bool hasGroups = m_input.major >= 10 || m_kind == ShapeKind::Polylines;
        const std::int64_t groups = hasGroups ? m_in.i32() : -1;
        const std::int64_t primitives = m_in.i32();
        const std::int64_t indices = m_in.i32();
        std::uint32_t hash = 0;
        if (hasGroups)
            list(groups + 1, hash);
        m_starts = list(primitives + 1, hash);
        m_index = list(indices, hash);
        m_input.compare(hash, "the check sum of the indices is wrong");
    }

    codec::Values list(std::int64_t size, std::uint32_t& hash)
    {
        codec::Values values = m_input.array(m_input.major >= 10 ? codec::Predictor::Lag1 : codec::Predictor::None);
        hash = codec::hash32(values, hash);
        if (static_cast<std::int64_t>(values.size()) != size)
            m_in.fail("a list of indices has another size than it says");
        return values;
    }

    // A position counts for as many records as its repeat count says.
    void readRepeatCounts(std::int32_t records)
    {
        const std::int32_t positions = m_input.major >= 10 ? -1 : m_in.i32();
        const codec::Values counts = m_input.array(codec::Predictor::None);
        m_input.compare(codec::hash32(counts, 0), "the check sum of the repeated positions is wrong");
        std::int64_t end = 0;
        for (const std::int32_t count : counts) {
            end += count;
            if (count < 0 || end > records)
                return m_in.fail("positions are repeated more often than there are records");
            m_ends.push_back(end);
        }
        if (end != records || (positions >= 0 && static_cast<std::size_t>(positions) != counts.size()))
            m_in.fail("positions are repeated less often than there are records");
    }

    void addPrimitive(std::int64_t from, std::int64_t to)
    {
        if (from < 0 || to < from || to > static_cast<std::int64_t>(m_index.size()))
            return m_in.fail("a list of indices is shorter than a primitive needs");
        for (std::int64_t i = from; i < to; ++i)
            if (m_kind == ShapeKind::Points)
                m_shape.points.push_back(corner(i));
            else if (i > from)
                m_shape.lines.push_back({corner(i - 1), corner(i)});
    }

    // An index that is out of range gives a position that is out of range.
    Corner corner(std::int64_t i) const
    {
        const std::int32_t record = m_index[static_cast<std::size_t>(i)];
        const auto run = record < 0 ? m_ends.end() : std::upper_bound(m_ends.begin(), m_ends.end(), record);
        return {static_cast<std::uint32_t>(run - m_ends.begin()), static_cast<std::uint32_t>(record)};
    }

    ShapeInput& m_input;
    container::Cursor& m_in;
    ShapeKind m_kind;
    Shape& m_shape;
    codec::Values m_starts;
    codec::Values m_index;
    std::vector<std::int64_t> m_ends; ///< by position: the record behind its last one
};

} // namespace

void readIndexLists(ShapeInput& input, ShapeKind kind, Shape& shape)
{
    skipShapeHead(input);
    IndexLists(input, kind, shape).read();
}

} // namespace ptx::jt::shapes
