#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znOpenSGUtils/znNodePtr.h"

#include <string>
#include <vector>

namespace zn::nodes
{

/// Whether one of the tags of `node` is this text, to the letter.
bool hasTag(const osg::NodePtr& node, const std::string& tag);

/// Takes every tag away whose text is among `unwanted`. A node without any of them is not touched.
void removeTags(const osg::NodePtr& node, const std::vector<std::string>& unwanted);

/// Appends the nodes with this tag at and below `root`, a parent before its children.
void appendNodesWithTag(const osg::NodePtr& root, const std::string& tag, std::vector<znNodePtr>& nodes);

} // namespace zn::nodes
