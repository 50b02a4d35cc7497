#pragma once

#include "host/OSGSystem/Node.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace osg
{

/// The last steps of the ids of OccurrenceIds, made where a walk comes by.
class OccurrenceSteps
{
public:
    /// Those of the children of `parent`, in their order.
    std::vector<std::string> below(const NodePtr& parent);

private:
    std::string productOf(const NodePtr& node);

    std::unordered_map<const FieldContainer*, std::string> m_products; ///< by attachments that several nodes hold
};

/// Names for the nodes of a tree that stay when the file is written anew by another system.
///
/// The id of a node is the steps from below the root down to it, with "/" between them. A step is the reference
/// designator of the occurrence where the file gives one, otherwise the name of the node; then "@" and the name of its
/// product where that is another; then "#2", "#3" ... for the second, third ... sibling of which all that is the same.
/// Within the texts "%2F" stands for "/", "%40" for "@", "%23" for "#" and "%25" for "%". A node without a name has the
/// name of its product, or "-". So a step depends on no sibling of another name or product, and on none that comes
/// behind.
class OccurrenceIds
{
public:
    /// Takes the tree as it is now.
    explicit OccurrenceIds(const NodePtr& root);

    /// The last step of the id of `node`; empty for the root and for nodes that are not below it.
    const std::string& step(const NodePtr& node) const;
    /// The id of `node`; empty as above.
    std::string of(const NodePtr& node) const;

private:
    std::unordered_map<const Node*, std::string> m_steps;
};

} // namespace osg
