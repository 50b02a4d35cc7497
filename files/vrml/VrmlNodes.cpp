#include "files/vrml/VrmlNodes.h"

#include <utility>

namespace files::vrml
{

namespace
{

template <class T>
std::span<const T> list(const Node& node, std::string_view field)
{
    const Value* value = node.find(field);
    const auto* values = value ? std::get_if<std::vector<T>>(value) : nullptr;
    return values ? std::span<const T>(*values) : std::span<const T>();
}

} // namespace

std::optional<FieldSpec> fieldSpecOf(std::string_view typeWord, std::string name)
{
    struct Row {
        std::string_view word;
        FieldType type;
        unsigned floats;
        bool isList;
    };
    static constexpr Row rows[] = {
        {"SFBool", FieldType::Bool, 0, false},       {"SFColor", FieldType::Floats, 3, false},
        {"SFFloat", FieldType::Floats, 1, false},    {"SFImage", FieldType::Ints, 0, false},
        {"SFInt32", FieldType::Int, 0, false},       {"SFNode", FieldType::Node, 0, false},
        {"SFRotation", FieldType::Floats, 4, false}, {"SFString", FieldType::String, 0, false},
        {"SFTime", FieldType::Floats, 1, false},     {"SFVec2f", FieldType::Floats, 2, false},
        {"SFVec3f", FieldType::Floats, 3, false},    {"MFColor", FieldType::Floats, 3, true},
        {"MFFloat", FieldType::Floats, 1, true},     {"MFInt32", FieldType::Ints, 0, true},
        {"MFNode", FieldType::Nodes, 0, true},       {"MFRotation", FieldType::Floats, 4, true},
        {"MFString", FieldType::Strings, 0, true},   {"MFTime", FieldType::Floats, 1, true},
        {"MFVec2f", FieldType::Floats, 2, true},     {"MFVec3f", FieldType::Floats, 3, true},
    };
    for (const Row& row : rows)
        if (row.word == typeWord)
            return FieldSpec{std::move(name), row.type, row.floats, row.isList};
    return std::nullopt;
}

NodeType::NodeType(NodeKind kind, std::string name, std::vector<FieldSpec> fields)
    : m_kind(kind), m_name(std::move(name))
{
    for (FieldSpec& field : fields)
        addField(std::move(field));
}

bool NodeType::addField(FieldSpec field)
{
    const bool isNew = m_slots.try_emplace(field.name, static_cast<std::uint32_t>(m_fields.size())).second;
    if (isNew)
        m_fields.push_back(std::move(field));
    return isNew;
}

std::optional<std::uint32_t> NodeType::slotOf(std::string_view field) const
{
    const auto slot = m_slots.find(field);
    return slot == m_slots.end() ? std::nullopt : std::optional(slot->second);
}

void Prototype::addField(FieldSpec field, ValuePtr otherwise)
{
    if (NodeType::addField(std::move(field)))
        defaults.push_back(std::move(otherwise));
}

/// The last one wins where a field is given twice.
const Value* Node::find(std::string_view field) const
{
    const std::optional<std::uint32_t> slot = type->slotOf(field);
    for (auto known = fields.rbegin(); slot && known != fields.rend(); ++known)
        if (known->slot == *slot)
            return known->value.get();
    return nullptr;
}

std::span<const float> Node::floats(std::string_view field) const
{
    return list<float>(*this, field);
}

std::span<const std::int32_t> Node::ints(std::string_view field) const
{
    return list<std::int32_t>(*this, field);
}

std::span<const std::string> Node::strings(std::string_view field) const
{
    return list<std::string>(*this, field);
}

std::span<Node* const> Node::nodes(std::string_view field) const
{
    return list<Node*>(*this, field);
}

float Node::number(std::string_view field, float otherwise) const
{
    const std::span<const float> values = floats(field);
    return values.empty() ? otherwise : values.front();
}

std::int32_t Node::integer(std::string_view field, std::int32_t otherwise) const
{
    const std::span<const std::int32_t> values = ints(field);
    return values.empty() ? otherwise : values.front();
}

bool Node::flag(std::string_view field, bool otherwise) const
{
    return integer(field, otherwise ? 1 : 0) != 0;
}

const Node* Node::node(std::string_view field) const
{
    const std::span<Node* const> all = nodes(field);
    return all.empty() ? nullptr : all.front();
}

Node* NodeStore::create(const NodeType& type, std::size_t offset, std::uint64_t fields)
{
    if (fields >= m_maxNodes || m_count >= m_maxNodes - fields)
        return nullptr;
    m_count += 1 + fields;
    Node& node = m_nodes.emplace_back();
    node.type = &type;
    node.offset = offset;
    return &node;
}

} // namespace files::vrml
