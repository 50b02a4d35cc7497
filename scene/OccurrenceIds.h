#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/Wrappers.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace osg
{

/// The last steps of the ids of OccurrenceIds, made where a walk comes by.
class OccurrenceSteps
{
public:
    /// Of the tree at `root` as it is now.
    explicit OccurrenceSteps(const NodePtr& root) : m_wrappers(root) {}

    /// Those of the children of `parent`, in their order; empty for a wrapper. A parent is asked for before its
    /// children.
    std::vector<std::string> below(const NodePtr& parent);

private:
    using Uses = std::unordered_map<std::string, unsigned>; ///< how many siblings have a step

    void numberBelow(const NodePtr& wrapper, Uses& uses);
    std::string numbered(const NodePtr& node, Uses& uses);
    std::string productOf(const NodePtr& node);

    Wrappers m_wrappers;
    std::unordered_map<const Node*, std::string> m_belowWrappers;
    std::unordered_map<const FieldContainer*, std::string> m_products; ///< by attachments that several nodes hold
};

/// Names for the nodes of a tree that stay when the file is written anew by another system.
///
/// The id of a node is the steps from below the root down to it, with "/" between them. A step is the reference
/// designator of the occurrence where the file gives one, otherwise the name of the node; then "@" and the name of its
/// product where that is another; then "#2", "#3" ... for the second, third ... sibling of which all that is the same.
/// Within the texts "%2F" stands for "/", "%40" for "@", "%23" for "#" and "%25" for "%". A node without a name has the
/// name of its product, or "-". So a step depends on no sibling of another name or product, and on none that comes
/// behind. Wrappers have no step, and what is below them is numbered as if it was in their places: an id is the same
/// before and after a fold.
class OccurrenceIds
{
public:
    /// Takes the tree as it is now.
    explicit OccurrenceIds(const NodePtr& root);

    /// The last step of the id of `node`; empty for the root, for wrappers and for nodes that are not below it.
    const std::string& step(const NodePtr& node) const;
    /// The id of `node`; empty as above.
    std::string of(const NodePtr& node) const;

private:
    std::unordered_map<const Node*, std::string> m_steps;
};

} // namespace osg
