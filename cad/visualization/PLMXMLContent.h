#pragma once

#include "host/OSGSystem/Node.h"

namespace HB::Visualization
{

class CADNodeRecord;

/// Hangs `content`, the node of the record's file, in front of the other children of the record's node, below the
/// record's material group if it has one, and registers its materials. Without group and content the record stays as it
/// is.
void insertContent(CADNodeRecord& record, const osg::NodePtr& content);

} // namespace HB::Visualization
