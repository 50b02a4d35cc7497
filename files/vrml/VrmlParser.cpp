#include "files/vrml/VrmlParser.h"

#include "files/vrml/VrmlLexer.h"
#include "files/vrml/VrmlNodeTypes.h"
#include "files/vrml/VrmlPrototypes.h"
#include "files/vrml/VrmlValues.h"

#include <utility>

namespace files::vrml
{

namespace
{

/// The names that hold within a file or within the body of a prototype.
struct Scope {
    const Scope* outer = nullptr;
    const Prototype* prototype = nullptr; ///< whose body it is
    std::map<std::string, Node*, std::less<>> nodes;
    std::map<std::string, const Prototype*, std::less<>> prototypes;
};

class Parser
{
public:
    Parser(const Source& source, NodeStore& store) : m_source(source), m_lexer(source), m_store(store) {}

    Nodes file();

private:
    bool declaration();
    void prototype();
    void externalPrototype();
    void interfaceField(Prototype& prototype);
    void body(Prototype& prototype);
    Nodes statements(char closing);

    Node* nodeStatement();
    Node* used();
    Node* node(std::string name);
    Node* skipped(const QString& warning, std::size_t offset);
    void fields(Node& node);
    void field(Node& node);
    void connect(Node& node, std::uint32_t slot);
    ValuePtr value(const FieldSpec& spec);
    Nodes nodeValues(const FieldSpec& spec);
    const NodeType* typeOf(std::string_view name) const;

    const Source& m_source;
    Lexer m_lexer;
    NodeStore& m_store;
    Scope m_fileScope;
    Scope* m_scope = &m_fileScope;
    std::uint64_t m_depth = 0;
};

/// Counts how deep the parser is while it lives.
class Deeper
{
public:
    Deeper(std::uint64_t& depth, Lexer& lexer) : m_depth(depth)
    {
        if (++m_depth > maxNesting)
            lexer.source().fail(ErrorCode::LimitExceeded, tr("nodes are nested deeper than %1").arg(maxNesting),
                                lexer.offset());
    }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;
    ~Deeper() { --m_depth; }

private:
    std::uint64_t& m_depth;
};

Nodes Parser::file()
{
    return statements('\0');
}

/// Up to the bracket `closing`, or to the end of the file.
Nodes Parser::statements(char closing)
{
    Nodes nodes;
    while (closing == '\0' ? !m_lexer.atEnd() : !m_lexer.accept(closing)) {
        if (declaration())
            continue;
        if (Node* made = nodeStatement())
            nodes.push_back(made);
    }
    return nodes;
}

/// Takes what declares something instead of making a node.
bool Parser::declaration()
{
    if (m_lexer.acceptWord("ROUTE")) {
        for (int i = 0; i < 3; ++i)
            m_lexer.takeWord();
        return true;
    }
    if (m_lexer.acceptWord("PROTO")) {
        prototype();
        return true;
    }
    if (m_lexer.acceptWord("EXTERNPROTO")) {
        externalPrototype();
        return true;
    }
    return false;
}

void Parser::prototype()
{
    const Deeper deeper(m_depth, m_lexer);
    Prototype& made = m_store.createPrototype(toUtf8(m_lexer.takeWord()));
    m_lexer.expect('[');
    while (!m_lexer.accept(']'))
        interfaceField(made);
    body(made);
    m_scope->prototypes[made.name()] = &made;
}

void Parser::externalPrototype()
{
    const std::size_t offset = m_lexer.offset();
    Prototype& made = m_store.createPrototype(toUtf8(m_lexer.takeWord()));
    made.isExternal = true;
    m_lexer.expect('[');
    m_lexer.skipToClosing();
    m_lexer.skipValue();
    m_scope->prototypes[made.name()] = &made;
    m_source.warn(
        tr("the prototype '%1' lies in another file; what is made of it is left out").arg(quoted(made.name())), offset);
}

/// Events have no value, and nothing happens in a tree: they are fields that nobody sets.
void Parser::interfaceField(Prototype& prototype)
{
    const std::size_t offset = m_lexer.offset();
    const std::string_view access = m_lexer.takeWord();
    const bool isField = access == "field" || access == "exposedField";
    if (!isField && access != "eventIn" && access != "eventOut")
        m_source.fail(ErrorCode::Damaged, tr("'%1' is no kind of field").arg(quoted(access)), offset);
    const std::string_view type = m_lexer.takeWord();
    std::optional<FieldSpec> spec = fieldSpecOf(type, toUtf8(m_lexer.takeWord()));
    if (!spec)
        m_source.fail(ErrorCode::Damaged, tr("'%1' is no type of a field").arg(quoted(type)), offset);
    ValuePtr otherwise = isField ? value(*spec) : ValuePtr();
    prototype.addField(std::move(*spec), std::move(otherwise));
}

void Parser::body(Prototype& prototype)
{
    Scope scope;
    scope.outer = m_scope;
    scope.prototype = &prototype;
    Scope* const outer = std::exchange(m_scope, &scope);
    m_lexer.expect('{');
    prototype.body = statements('}');
    m_scope = outer;
}

/// Null when nothing is to be made of it.
Node* Parser::nodeStatement()
{
    if (m_lexer.acceptWord("USE"))
        return used();
    if (m_lexer.acceptWord("NULL"))
        return nullptr;
    if (!m_lexer.acceptWord("DEF"))
        return node({});
    const std::string name = toUtf8(m_lexer.takeWord());
    Node* made = node(name);
    m_scope->nodes[name] = made;
    return made;
}

/// A name holds from the end of its node on: no node can be inside itself.
Node* Parser::used()
{
    const std::size_t offset = m_lexer.offset();
    const std::string name = toUtf8(m_lexer.takeWord());
    const auto known = m_scope->nodes.find(name);
    if (known == m_scope->nodes.end()) {
        m_source.warn(tr("there is no node '%1' before this use of it").arg(quoted(name)), offset);
        return nullptr;
    }
    return known->second;
}

const NodeType* Parser::typeOf(std::string_view name) const
{
    for (const Scope* scope = m_scope; scope; scope = scope->outer) {
        const auto known = scope->prototypes.find(name);
        if (known != scope->prototypes.end())
            return known->second;
    }
    return builtInType(name);
}

Node* Parser::node(std::string name)
{
    const Deeper deeper(m_depth, m_lexer);
    const std::size_t offset = m_lexer.offset();
    const std::string_view word = m_lexer.takeWord();
    const NodeType* type = typeOf(toUtf8(word));
    m_lexer.expect('{');
    if (!type)
        return skipped(tr("nodes of the type '%1' are not known").arg(quoted(word)), offset);
    if (type->kind() == NodeKind::LeftOut)
        return skipped(tr("nodes of the type '%1' are not read").arg(quoted(word)), offset);
    const bool isInstance = type->kind() == NodeKind::Prototype;
    if (type->kind() == NodeKind::Ignored || (isInstance && static_cast<const Prototype*>(type)->isExternal))
        return skipped({}, offset);
    Node& made = createNode(m_store, m_source, *type, offset, isInstance ? type->fields().size() : 0);
    made.name = std::move(name);
    fields(made);
    return isInstance && !m_scope->prototype ? expandInstance(m_store, m_source, made) : &made;
}

Node* Parser::skipped(const QString& warning, std::size_t offset)
{
    m_lexer.skipToClosing();
    if (!warning.isEmpty())
        m_source.warn(warning, offset);
    return nullptr;
}

void Parser::fields(Node& node)
{
    while (!m_lexer.accept('}'))
        if (!declaration())
            field(node);
}

void Parser::field(Node& node)
{
    const std::size_t offset = m_lexer.offset();
    const std::string_view name = m_lexer.takeWord();
    const std::optional<std::uint32_t> slot = node.type->slotOf(name);
    if (slot && m_lexer.acceptWord("IS"))
        return connect(node, *slot);
    if (slot) {
        node.fields.push_back({*slot, value(node.type->fields()[*slot]), {}});
        return;
    }
    // Nodes of prototypes in bodies may be connected to events by names that are no fields.
    const bool isConnected = m_lexer.acceptWord("IS");
    if (isConnected) {
        m_lexer.takeWord();
        return;
    }
    m_lexer.skipValue();
    m_source.warn(tr("nodes of the type '%1' have no field '%2'").arg(quoted(node.type->name()), quoted(name)), offset);
}

void Parser::connect(Node& node, std::uint32_t slot)
{
    const std::size_t offset = m_lexer.offset();
    const std::string_view name = m_lexer.takeWord();
    const std::optional<std::uint32_t> is = m_scope->prototype ? m_scope->prototype->slotOf(name) : std::nullopt;
    if (!is)
        return m_source.warn(tr("there is no field '%1' of a prototype around it").arg(quoted(name)), offset);
    node.fields.push_back({slot, {}, is});
}

ValuePtr Parser::value(const FieldSpec& spec)
{
    if (spec.type == FieldType::Node || spec.type == FieldType::Nodes)
        return std::make_shared<const Value>(nodeValues(spec));
    return std::make_shared<const Value>(takeValue(m_lexer, spec));
}

Nodes Parser::nodeValues(const FieldSpec& spec)
{
    if (spec.isList && m_lexer.accept('['))
        return statements(']');
    Node* made = nodeStatement();
    return made ? Nodes{made} : Nodes();
}

} // namespace

Nodes parse(const Source& source, NodeStore& store)
{
    return Parser(source, store).file();
}

} // namespace files::vrml
