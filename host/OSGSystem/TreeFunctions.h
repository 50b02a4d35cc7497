#pragma once

#include "host/OSGSystem/Action.h"
#include "host/OSGSystem/Node.h"

#include <functional>

namespace osg
{

/// A copy of the tree at `node`: new nodes that share the cores of the old ones. With `copyAttachments` each new node
/// gets copies of the attachments of its original, names among them. The result has no parent and the count 0.
ZN_HOST_EXPORT NodePtr cloneTree(const NodePtr& node, bool copyAttachments);

/// A new node with this core.
ZN_HOST_EXPORT NodePtr makeNodeFor(const NodeCorePtr& core);

/// Visits `node` and what hangs below it depth first, a parent before its children; the visitor's result steers the
/// walk. A visitor may exchange cores and change fields; it must not move or remove nodes.
/// @return `Action::Quit` when the visitor ended the walk, otherwise what it said of `node` itself
ZN_HOST_EXPORT Action::ResultE traverse(const NodePtr& node,
                                        const std::function<Action::ResultE(const NodePtr&)>& visitor);

} // namespace osg
