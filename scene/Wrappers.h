#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/IdSet.h"

#include <vector>

namespace osg
{

/// The nodes below a root that wrap others and say nothing themselves.
///
/// A node says nothing when it is active, has children, no attachments but a name, and no core, or that of a group or
/// of a transform that is the identity, without attachments. Such a node is a wrapper when
/// - it has no name,
/// - it has the name of its only child, or
/// - it is the only child of a node with its name that is no wrapper.
/// Children are meant as they are when those that are wrappers have given their places to their own. So the tree that
/// is left without the wrappers has none.
class Wrappers
{
public:
    /// Takes the tree as it is now. The root is none. Linear in the nodes of the tree.
    explicit Wrappers(const NodePtr& root);

    bool contains(const NodePtr& node) const { return node && m_known.contains(node->getContainerId()); }
    /// Each before those below it; valid while none of them is destroyed.
    const std::vector<NodePtr>& nodes() const { return m_nodes; }

private:
    std::vector<NodePtr> m_nodes;
    IdSet m_known;
};

} // namespace osg
