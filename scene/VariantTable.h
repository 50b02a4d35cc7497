#pragma once

#include "host/OSGSystem/Attachment.h"
#include "host/OSGSystem/Node.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace osg
{

/// The place of a node below a root: the index of the child at each level. Empty for the root itself.
using NodePath = std::vector<std::uint32_t>;

/// Nothing when `node` is null or not below `root`.
std::optional<NodePath> pathTo(const NodePtr& node, const NodePtr& root);
/// Null when the path leads nowhere.
NodePtr nodeAt(const NodePath& path, const NodePtr& root);

/// The variants of a tree as plain values: what files store of them. Materials are told by their names.
struct VariantTable {
    struct MaterialState {
        std::string material;
        std::string state;
        friend bool operator==(const MaterialState&, const MaterialState&) = default;
    };
    struct NodeState {
        NodePath node;
        std::string state;
        friend bool operator==(const NodeState&, const NodeState&) = default;
    };
    struct Set {
        std::string name;
        std::string group; ///< empty: none
        std::string viewpoint;
        std::vector<std::string> viewpoints;
        std::vector<MaterialState> materials;
        std::vector<NodeState> nodes;
        friend bool operator==(const Set&, const Set&) = default;
    };

    std::vector<std::string> groups;
    std::vector<Set> sets;

    bool empty() const { return groups.empty() && sets.empty(); }
    friend bool operator==(const VariantTable&, const VariantTable&) = default;
};

/// The attachment that carries the variants of a tree at its root, on the way into a file and out of it.
class VariantAttachment final : public Attachment
{
public:
    using Ptr = FCPtr<AttachmentPtr, VariantAttachment>;
    static FieldContainerType _type;

    static Ptr create(VariantTable table);
    const FieldContainerType& getType() const override { return _type; }

    const VariantTable& table() const { return m_table; }
    /// The attachment of `root`; null when it has none.
    static Ptr of(const NodePtr& root);

private:
    explicit VariantAttachment(VariantTable table) : m_table(std::move(table)) {}
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    VariantTable m_table;
};

} // namespace osg
