#pragma once

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Node.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <string>

/// Changes to trees that several jobs make. Each is one edit, within the bracket of the fields that it names.
namespace frame
{

/// Gives `node` another core.
void exchangeCore(const osg::NodePtr& node, const osg::NodeCorePtr& core);

/// Appends `child` to the children of `parent`.
/// @param mask of the bracket around it
void addChild(const osg::NodePtr& parent, const osg::NodePtr& child,
              osg::FieldMask mask = osg::Node::ChildrenFieldMask);

/// Appends the children of `from` to those of `to`, in their order. Only `to` gets a bracket.
void moveChildren(const osg::NodePtr& from, const osg::NodePtr& to);

/// Says of a reference that its content hangs below it; nothing happens to a node of another kind.
void markReferenceLoaded(const osg::NodePtr& node);

/// What a reference core names as its file.
osg::FileReferencePtr makeFileReference(const std::string& path);

/// A reference to `file`, in the state of one that nobody has loaded.
/// @param isSmart whether the host reads the file by itself and keeps it as what it is
osg::ExtReferencePtr makeReferenceCore(const osg::FileReferencePtr& file, bool isSmart);

/// The state of a reference whose content is loaded.
inline constexpr unsigned loadedReference = 2;

} // namespace frame
