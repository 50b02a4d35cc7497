#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

/// Names of nodes, as the extensions of the scene graph write them.
class ZN_HOST_EXPORT NodeUtils
{
public:
    /// Names `node` with a UTF-8 text; null or an empty one takes the name away. Without `replace` a name that is there
    /// stays. A null node is ignored. The attachments field is edited within its bracket.
    static void setName(const osg::NodePtr& node, const char* name, bool replace);
};
