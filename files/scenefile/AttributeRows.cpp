#include "files/scenefile/AttributeRows.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace osg::scenefile
{

namespace
{

using Type = fb::AttributeType;

template <class T>
using Vector = flatbuffers::Vector<T>;

/// In the order of the alternatives of AttributeValue.
constexpr Type types[] = {Type::Text, Type::Integer, Type::Real, Type::Boolean, Type::Date, Type::List};
static_assert(std::size(types) == std::variant_size_v<AttributeValue>);

Type typeOf(const Attribute& attribute)
{
    return types[attribute.value.index()];
}

/// What a list takes beside its columns and values, and more.
constexpr std::uint64_t overheadBytes = 64;

template <class T>
auto vectorOf(flatbuffers::FlatBufferBuilder& builder, const std::vector<T>& values)
{
    return values.empty() ? 0 : builder.CreateVector(values);
}

template <class T>
auto structsOf(flatbuffers::FlatBufferBuilder& builder, const std::vector<T>& values)
{
    return values.empty() ? 0 : builder.CreateVectorOfStructs(values);
}

class MappedAttributes final : public AttributeSource
{
public:
    MappedAttributes(const fb::AttributeTable& table, std::shared_ptr<const void> owner)
        : m_table(table), m_owner(std::move(owner))
    {
    }

    AttributeList list(const void* place) const override
    {
        const auto& row = *static_cast<const fb::AttributeRow*>(place);
        const Vector<const fb::AttributeColumn*>& columns = columnsOf(row);
        AttributeList attributes;
        attributes.reserve(columns.size());
        for (std::uint32_t i = 0; i < columns.size(); ++i) {
            const fb::AttributeColumn& column = *columns.Get(i);
            attributes.push_back({std::string(textAt(column.name())), valueOf(row, i, column.type()),
                                  column.unit() == 0 ? std::string() : std::string(textAt(column.unit() - 1))});
        }
        return attributes;
    }

    /// Looks at names only, so that a search through a file makes no lists.
    std::string text(const void* place, std::string_view name) const override
    {
        const auto& row = *static_cast<const fb::AttributeRow*>(place);
        const Vector<const fb::AttributeColumn*>& columns = columnsOf(row);
        for (std::uint32_t i = 0; i < columns.size(); ++i)
            if (textAt(columns.Get(i)->name()) == name)
                return textOf(valueOf(row, i, columns.Get(i)->type()));
        return {};
    }

private:
    const Vector<const fb::AttributeColumn*>& columnsOf(const fb::AttributeRow& row) const
    {
        return *m_table.shapes()->Get(row.shape())->columns();
    }

    std::string_view textAt(std::uint64_t index) const
    {
        const Vector<std::uint32_t>& ends = *m_table.text_ends();
        const auto place = static_cast<std::uint32_t>(index);
        const std::uint32_t start = place == 0 ? 0 : ends.Get(place - 1);
        const std::uint32_t size = ends.Get(place) - start;
        return size == 0 ? std::string_view()
                         : std::string_view(reinterpret_cast<const char*>(m_table.text_bytes()->data()) + start, size);
    }

    AttributeValue valueOf(const fb::AttributeRow& row, std::uint32_t column, Type type) const
    {
        const std::uint64_t bits = m_table.values()->Get(row.first() + column);
        switch (type) {
        case Type::Integer:
            return std::bit_cast<std::int64_t>(bits);
        case Type::Real:
            return std::bit_cast<double>(bits);
        case Type::Boolean:
            return bits != 0;
        case Type::Date:
            return AttributeDate{std::string(textAt(bits))};
        case Type::List:
            return itemsOf(bits);
        case Type::Text:
            break;
        }
        return std::string(textAt(bits));
    }

    std::vector<std::string> itemsOf(std::uint64_t bits) const
    {
        std::vector<std::string> items;
        auto next = static_cast<std::uint32_t>(bits >> 32);
        for (auto count = static_cast<std::uint32_t>(bits); count > 0; --count)
            items.emplace_back(textAt(m_table.items()->Get(next++)));
        return items;
    }

    const fb::AttributeTable& m_table;
    std::shared_ptr<const void> m_owner;
};

} // namespace

void AttributeRows::use(std::uint32_t holder, const AttributeAttachment& attributes, std::uint16_t binding)
{
    m_uses.emplace_back(holder, rowOf(attributes), binding);
}

std::uint32_t AttributeRows::rowOf(const AttributeAttachment& attributes)
{
    const auto add = [this, &attributes] {
        return attributes.visit([this](const AttributeList& list) { return addRow(list); });
    };
    // Who holds the only reference is the only one to meet it.
    if (attributes.getRefCount() == 1)
        return add();
    const auto known = m_numbers.find(&attributes);
    return known == m_numbers.end() ? m_numbers.emplace(&attributes, add()).first->second : known->second;
}

std::uint32_t AttributeRows::addRow(const AttributeList& attributes)
{
    m_rows.emplace_back(shapeOf(attributes), static_cast<std::uint32_t>(m_values.size()));
    for (const Attribute& attribute : attributes)
        m_values.push_back(bitsOf(attribute.value));
    return static_cast<std::uint32_t>(m_rows.size() - 1);
}

/// Most lists are like the one before.
std::uint32_t AttributeRows::shapeOf(const AttributeList& attributes)
{
    if (hasShape(attributes, m_lastShape))
        return m_lastShape;
    std::vector<fb::AttributeColumn> columns;
    columns.reserve(attributes.size());
    for (const Attribute& attribute : attributes)
        columns.emplace_back(m_texts.add(attribute.name), attribute.unit.empty() ? 0 : m_texts.add(attribute.unit) + 1,
                             typeOf(attribute));
    m_lastShape = m_shapes.add({reinterpret_cast<const char*>(columns.data()), columns.size() * sizeof(columns[0])});
    if (m_lastShape == m_columns.size())
        m_columns.push_back(std::move(columns));
    return m_lastShape;
}

bool AttributeRows::hasShape(const AttributeList& attributes, std::uint32_t shape) const
{
    if (shape >= m_columns.size())
        return false;
    const auto isAlike = [&texts = m_texts.texts()](const Attribute& attribute, const fb::AttributeColumn& column) {
        return typeOf(attribute) == column.type() && attribute.name == texts[column.name()] &&
               attribute.unit == (column.unit() == 0 ? std::string_view() : texts[column.unit() - 1]);
    };
    const std::vector<fb::AttributeColumn>& columns = m_columns[shape];
    return std::equal(attributes.begin(), attributes.end(), columns.begin(), columns.end(), isAlike);
}

std::uint64_t AttributeRows::bitsOf(const AttributeValue& value)
{
    if (const auto* text = std::get_if<std::string>(&value))
        return m_texts.add(*text);
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return std::bit_cast<std::uint64_t>(*number);
    if (const auto* number = std::get_if<double>(&value))
        return std::bit_cast<std::uint64_t>(*number);
    if (const auto* isTrue = std::get_if<bool>(&value))
        return *isTrue ? 1 : 0;
    if (const auto* date = std::get_if<AttributeDate>(&value))
        return m_texts.add(date->text);
    const auto& items = std::get<std::vector<std::string>>(value);
    const std::uint64_t first = m_items.size();
    for (const std::string& item : items)
        m_items.push_back(m_texts.add(item));
    return first << 32 | items.size();
}

std::uint64_t AttributeRows::bytes() const
{
    return m_texts.bytes() + m_texts.texts().size() * sizeof(std::uint32_t) + m_shapes.bytes() +
           m_columns.size() * overheadBytes + m_rows.size() * sizeof(fb::AttributeRow) +
           m_values.size() * sizeof(std::uint64_t) + m_items.size() * sizeof(std::uint32_t) +
           m_uses.size() * sizeof(fb::AttributeUse) + overheadBytes;
}

flatbuffers::Offset<fb::AttributeTable> AttributeRows::store(flatbuffers::FlatBufferBuilder& builder) const
{
    if (m_uses.empty())
        return 0;
    std::uint8_t* place = nullptr;
    const auto bytes = builder.CreateUninitializedVector(static_cast<std::size_t>(m_texts.bytes()), &place);
    std::vector<std::uint32_t> ends;
    ends.reserve(m_texts.texts().size());
    for (const std::string_view piece : m_texts.pieces())
        place = std::copy(piece.begin(), piece.end(), place);
    for (const std::string_view text : m_texts.texts())
        ends.push_back((ends.empty() ? 0 : ends.back()) + static_cast<std::uint32_t>(text.size()));
    std::vector<flatbuffers::Offset<fb::AttributeShape>> shapes;
    for (const std::vector<fb::AttributeColumn>& columns : m_columns)
        shapes.push_back(fb::CreateAttributeShape(builder, builder.CreateVectorOfStructs(columns)));
    const auto endVector = vectorOf(builder, ends);
    const auto shapeVector = builder.CreateVector(shapes);
    const auto rows = structsOf(builder, m_rows);
    const auto values = vectorOf(builder, m_values);
    const auto items = vectorOf(builder, m_items);
    const auto uses = structsOf(builder, m_uses);
    return fb::CreateAttributeTable(builder, bytes, endVector, shapeVector, rows, values, items, uses);
}

std::unique_ptr<AttributeSource> makeAttributeSource(const fb::AttributeTable& table, std::shared_ptr<const void> owner)
{
    return std::make_unique<MappedAttributes>(table, std::move(owner));
}

} // namespace osg::scenefile
