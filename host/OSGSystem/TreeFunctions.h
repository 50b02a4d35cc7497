#pragma once

#include "host/OSGSystem/Action.h"
#include "host/OSGSystem/Node.h"

#include <functional>
#include <string>

namespace osg
{

/// A copy of the tree at `node`: new nodes that share the cores of the old ones. With `copyAttachments` each new node
/// gets copies of the attachments of its original, names among them. The result has no parent and the count 0.
ZN_HOST_EXPORT NodePtr cloneTree(const NodePtr& node, bool copyAttachments);

/// A copy of the tree at `node` down to the cores: new nodes with copies of the cores and of all attachments. A core
/// that several nodes of the tree share is copied once, and its copy is shared by their copies; what a core points to
/// (a material, a file reference, a mesh) stays shared with the original. `nameSuffix` is appended to the name of each
/// copied node that has a name; cores keep theirs. The result has no parent and the count 0; null for a null `node`.
ZN_HOST_EXPORT NodePtr deepCloneTree(const NodePtr& node, const std::string& nameSuffix);

/// A new node with this core.
ZN_HOST_EXPORT NodePtr makeNodeFor(const NodeCorePtr& core);

/// Visits `node` and what hangs below it depth first, a parent before its children; the visitor's result steers the
/// walk. A visitor may exchange cores and change fields; it must not move or remove nodes.
/// @return `Action::Quit` when the visitor ended the walk, otherwise what it said of `node` itself
ZN_HOST_EXPORT Action::ResultE traverse(const NodePtr& node,
                                        const std::function<Action::ResultE(const NodePtr&)>& visitor);

} // namespace osg
