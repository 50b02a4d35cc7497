#include "files/vrml/VrmlPrototypes.h"

#include "files/vrml/VrmlParser.h"

#include <unordered_map>

namespace files::vrml
{

namespace
{

/// Copies the body of one prototype for one instance. `m_depth` counts the nodes around it.
class Expansion
{
public:
    Expansion(NodeStore& store, const Source& source, std::uint64_t depth)
        : m_store(store), m_source(source), m_depth(depth)
    {
    }

    Node* run(const Node& instance);

private:
    Node* copy(const Node& node);
    ValuePtr valueOf(const Field& field);
    ValuePtr copyNodes(const Nodes& nodes);

    NodeStore& m_store;
    const Source& m_source;
    std::uint64_t m_depth;
    std::vector<ValuePtr> m_values; ///< of the fields of the prototype
    std::unordered_map<const Node*, Node*> m_copies;
};

Node* Expansion::run(const Node& instance)
{
    const auto& prototype = static_cast<const Prototype&>(*instance.type);
    if (prototype.body.empty())
        return nullptr;
    m_values = prototype.defaults;
    for (const Field& field : instance.fields)
        if (field.value)
            m_values[field.slot] = field.value;
    Node* result = copy(*prototype.body.front());
    if (result && !instance.name.empty())
        result->name = instance.name;
    return result;
}

Node* Expansion::copy(const Node& node)
{
    const auto known = m_copies.find(&node);
    if (known != m_copies.end())
        return known->second;
    if (++m_depth > maxNesting)
        m_source.fail(ErrorCode::LimitExceeded, tr("nodes are nested deeper than %1").arg(maxNesting), node.offset);
    const bool isInstance = node.kind() == NodeKind::Prototype;
    const std::uint64_t defaults = isInstance ? node.type->fields().size() : 0;
    Node* result = &createNode(m_store, m_source, *node.type, node.offset, node.fields.size() + defaults);
    result->name = node.name;
    for (const Field& field : node.fields)
        if (ValuePtr value = valueOf(field))
            result->fields.push_back({field.slot, std::move(value), {}});
    if (isInstance)
        result = Expansion(m_store, m_source, m_depth).run(*result);
    --m_depth;
    m_copies[&node] = result;
    return result;
}

ValuePtr Expansion::valueOf(const Field& field)
{
    if (field.is)
        return m_values[*field.is];
    const auto* nodes = std::get_if<Nodes>(field.value.get());
    return nodes ? copyNodes(*nodes) : field.value;
}

ValuePtr Expansion::copyNodes(const Nodes& nodes)
{
    Nodes copies;
    for (const Node* node : nodes)
        if (Node* made = copy(*node))
            copies.push_back(made);
    return std::make_shared<const Value>(std::move(copies));
}

} // namespace

Node& createNode(NodeStore& store, const Source& source, const NodeType& type, std::size_t offset, std::uint64_t fields)
{
    constexpr std::uint64_t memoryOfNode = 160; // or of a field that its copies bring
    source.task().takeMemory((1 + fields) * memoryOfNode, source.place(offset));
    Node* node = store.create(type, offset, fields);
    if (!node)
        source.fail(ErrorCode::LimitExceeded, tr("more than %1 nodes").arg(source.task().options().limits.maxNodes),
                    offset);
    return *node;
}

Node* expandInstance(NodeStore& store, const Source& source, const Node& instance)
{
    return Expansion(store, source, 0).run(instance);
}

} // namespace files::vrml
