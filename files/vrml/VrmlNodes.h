#pragma once

#include "files/ReadTask.h"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace files::vrml
{

enum class FieldType { Bool, Int, Ints, Floats, String, Strings, Node, Nodes };

/// What a field of a type is written as: how many floats make one value, and whether there may be several of them.
struct FieldSpec {
    std::string name;
    FieldType type = FieldType::Floats;
    unsigned floats = 0; ///< in one value, for `Floats`
    bool isList = false;
};

/// How values of a field are read, by the word for their type, such as "MFVec3f"; none for other words.
std::optional<FieldSpec> fieldSpecOf(std::string_view typeWord, std::string name);

enum class NodeKind {
    Ignored, ///< has no place in a tree, such as a sensor
    LeftOut, ///< would be seen, but is not read
    Group,
    Transform,
    Switch,
    LOD,
    Inline,
    Shape,
    Appearance,
    Material,
    ImageTexture,
    PixelTexture,
    TextureTransform,
    IndexedFaceSet,
    IndexedLineSet,
    PointSet,
    ElevationGrid,
    Extrusion,
    Box,
    Cone,
    Cylinder,
    Sphere,
    Coordinate,
    Normal,
    Color,
    TextureCoordinate,
    Viewpoint,
    Prototype, ///< an instance of a prototype
};

struct Node;

using Floats = std::vector<float>;
using Ints = std::vector<std::int32_t>; ///< also for switches, 0 or 1
using Strings = std::vector<std::string>;
using Nodes = std::vector<Node*>;
using Value = std::variant<Floats, Ints, Strings, Nodes>;
using ValuePtr = std::shared_ptr<const Value>; ///< values do not change; instances of a prototype share them

/// What nodes of a type have.
class NodeType
{
public:
    NodeType() = default;
    NodeType(NodeKind kind, std::string name, std::vector<FieldSpec> fields = {});

    NodeKind kind() const { return m_kind; }
    const std::string& name() const { return m_name; }
    const std::vector<FieldSpec>& fields() const { return m_fields; }
    std::optional<std::uint32_t> slotOf(std::string_view field) const;

protected:
    /// False, and nothing is added, when there is a field of this name.
    bool addField(FieldSpec field);

private:
    NodeKind m_kind = NodeKind::Ignored;
    std::string m_name;
    std::vector<FieldSpec> m_fields;
    std::map<std::string, std::uint32_t, std::less<>> m_slots;
};

/// A type that a file declares: its fields with their defaults, and the nodes that stand for an instance.
class Prototype : public NodeType
{
public:
    explicit Prototype(std::string name) : NodeType(NodeKind::Prototype, std::move(name)) {}

    /// A second field of a name is ignored.
    void addField(FieldSpec field, ValuePtr otherwise);

    std::vector<ValuePtr> defaults; ///< one a field; null where there is none
    Nodes body;
    bool isExternal = false; ///< declared in another file, which is not read
};

struct Field {
    std::uint32_t slot = 0; ///< in the type
    ValuePtr value;
    std::optional<std::uint32_t> is; ///< the field of the prototype around it that gives the value
};

struct Node {
    const NodeType* type = nullptr;
    std::size_t offset = 0; ///< where it begins in its file
    std::string name;       ///< by DEF, UTF-8
    std::vector<Field> fields;

    NodeKind kind() const { return type->kind(); }
    const Value* find(std::string_view field) const;
    float number(std::string_view field, float otherwise) const;
    bool flag(std::string_view field, bool otherwise) const;
    std::int32_t integer(std::string_view field, std::int32_t otherwise) const;
    std::span<const float> floats(std::string_view field) const;
    std::span<const std::int32_t> ints(std::string_view field) const;
    std::span<const std::string> strings(std::string_view field) const;
    std::span<Node* const> nodes(std::string_view field) const;
    /// The first node of the field; null for none.
    const Node* node(std::string_view field) const;
};

/// Where the nodes of all files of one read live.
class NodeStore
{
public:
    explicit NodeStore(std::uint64_t maxNodes) : m_maxNodes(maxNodes) {}

    /// Null when there would be too many. A node counts one more for each of `fields`.
    Node* create(const NodeType& type, std::size_t offset, std::uint64_t fields = 0);
    Prototype& createPrototype(std::string name) { return m_prototypes.emplace_back(std::move(name)); }

private:
    std::uint64_t m_maxNodes;
    std::uint64_t m_count = 0;
    std::deque<Node> m_nodes;
    std::deque<Prototype> m_prototypes;
};

} // namespace files::vrml
