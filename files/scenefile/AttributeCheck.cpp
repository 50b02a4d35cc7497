#include "files/scenefile/AttributeCheck.h"

#include "files/scenefile/SceneErrors.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace osg::scenefile
{

namespace
{

using Type = fb::AttributeType;
using Code = files::ErrorCode;

template <class T>
std::uint64_t sizeOf(const flatbuffers::Vector<T>* vector)
{
    return vector ? vector->size() : 0;
}

class Check
{
public:
    Check(const fb::AttributeTable& table, const AttributeLimits& limits)
        : m_table(table), m_limits(limits), m_ends(table.text_ends() ? table.text_ends()->data() : nullptr),
          m_textCount(sizeOf(table.text_ends())), m_values(table.values() ? table.values()->data() : nullptr)
    {
    }

    std::optional<AttributeDefect> run()
    {
        checkTexts();
        each(m_table.shapes(), [this](const fb::AttributeShape& shape) { checkShape(shape); });
        each(m_table.rows(), [this](const fb::AttributeRow& row) { checkRow(row); });
        each(m_table.uses(), [this](const fb::AttributeUse& use) { checkUse(use); });
        return m_defect;
    }

private:
    /// What the rows of a shape have in common.
    struct Shape {
        std::uint64_t columns = 0;
        std::uint64_t textBytes = 0;
        std::vector<std::uint32_t> texts; ///< columns whose values are texts
        std::vector<std::uint32_t> lists;
    };

    template <class T, class Visit>
    void each(const flatbuffers::Vector<T>* records, const Visit& visit)
    {
        for (std::uint64_t i = 0; i < sizeOf(records) && !m_defect; ++i)
            visit(*records->Get(static_cast<flatbuffers::uoffset_t>(i)));
    }

    template <class T>
    void fail(Code code, const QString& message, const T& place)
    {
        if (!m_defect)
            m_defect = {code, message, &place};
    }
    template <class T>
    void failAtReference(const T& place)
    {
        fail(Code::DamagedGraph, Text::tr("A reference has no target"), place);
    }

    void checkTexts()
    {
        if (m_textCount > 0 &&
            (!std::is_sorted(m_ends, m_ends + m_textCount) || m_ends[m_textCount - 1] > sizeOf(m_table.text_bytes())))
            failAtReference(*m_ends);
    }

    /// A text that is not there is told when its place is counted.
    std::uint64_t textBytes(std::uint64_t index)
    {
        if (index < m_textCount)
            return m_limits.perText + m_ends[index] - (index == 0 ? 0 : m_ends[index - 1]);
        m_isTargetMissing = true;
        return 0;
    }

    template <class T>
    void count(std::uint64_t bytes, const T& place)
    {
        m_bytes += bytes;
        if (m_isTargetMissing)
            failAtReference(place);
        else if (m_bytes > m_limits.textBytes)
            fail(Code::LimitExceeded, Text::tr("The texts of the scene exceed the limit"), place);
    }

    void checkShape(const fb::AttributeShape& record)
    {
        Shape shape;
        each(record.columns(), [&](const fb::AttributeColumn& column) {
            const std::uint64_t name = textBytes(column.name());
            shape.textBytes += name + (column.unit() == 0 ? 0 : textBytes(column.unit() - 1));
            count(0, column);
            if (column.type() > Type::MAX)
                fail(Code::DamagedGraph, Text::tr("An attribute is of no known type"), column);
            const auto index = static_cast<std::uint32_t>(shape.columns++);
            if (column.type() == Type::Text || column.type() == Type::Date)
                shape.texts.push_back(index);
            else if (column.type() == Type::List)
                shape.lists.push_back(index);
        });
        m_shapes.push_back(std::move(shape));
    }

    /// Names and units are counted before the columns are gone through: many rows may share the values of a few.
    void checkRow(const fb::AttributeRow& row)
    {
        const bool isWithin = row.shape() < m_shapes.size() && row.first() <= sizeOf(m_table.values()) &&
                              m_shapes[row.shape()].columns <= sizeOf(m_table.values()) - row.first();
        if (!isWithin)
            return failAtReference(row);
        const Shape& shape = m_shapes[row.shape()];
        count(shape.textBytes, row);
        if (m_defect)
            return;
        std::uint64_t bytes = 0;
        for (const std::uint32_t column : shape.texts)
            bytes += textBytes(m_values[row.first() + column]);
        count(bytes, row);
        for (const std::uint32_t column : shape.lists)
            checkList(m_values[row.first() + column], row);
    }

    void checkList(std::uint64_t bits, const fb::AttributeRow& row)
    {
        const std::uint64_t first = bits >> 32;
        const std::uint64_t size = bits & 0xFFFFFFFF;
        if (first + size > sizeOf(m_table.items()))
            return failAtReference(row);
        for (std::uint64_t i = first; i < first + size && !m_defect; ++i)
            count(textBytes(m_table.items()->Get(static_cast<std::uint32_t>(i))), row);
    }

    /// In order, and no owner twice, so that a reader finds a row by its number while its first holder has it.
    void checkUse(const fb::AttributeUse& use)
    {
        if (use.holder() >= m_limits.holders || use.row() > m_usedRows || use.row() >= sizeOf(m_table.rows()) ||
            use.binding() > 0xFFFF)
            failAtReference(use);
        m_usedRows += use.row() == m_usedRows ? 1 : 0;
        const auto place = std::pair(use.holder(), use.binding());
        if (m_lastUse && place <= *m_lastUse)
            fail(Code::DamagedGraph, Text::tr("The attachments do not match their holders"), use);
        m_lastUse = place;
    }

    const fb::AttributeTable& m_table;
    const AttributeLimits& m_limits;
    const std::uint32_t* m_ends;
    std::uint64_t m_textCount;
    const std::uint64_t* m_values;
    std::vector<Shape> m_shapes;
    std::uint64_t m_bytes = 0;
    std::uint32_t m_usedRows = 0;
    std::optional<std::pair<std::uint32_t, std::uint32_t>> m_lastUse; ///< holder and binding
    bool m_isTargetMissing = false;
    std::optional<AttributeDefect> m_defect;
};

} // namespace

std::optional<AttributeDefect> defectOf(const fb::AttributeTable& table, const AttributeLimits& limits)
{
    return Check(table, limits).run();
}

} // namespace osg::scenefile
