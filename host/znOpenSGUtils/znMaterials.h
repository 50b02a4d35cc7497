#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"

/// What the host does with materials.
class ZN_HOST_EXPORT znMaterials
{
public:
    /// How a pool is looked for.
    enum PoolSearch {
        AnyPool = 0, ///< the first one
    };

    /// The node whose core is the pool of materials of the tree at `root`. The scene has one of its own, beside its tree.
    /// @param below whether a pool that hangs in the tree at `root` will do; it comes first
    /// @param create whether the scene's pool is made if there is none yet
    /// @return null when there is none
    static osg::NodePtr findMaterialPool(const osg::NodePtr& root, bool below, bool create, PoolSearch search);

    /// Names `material` with a UTF-8 text; null or an empty one takes the name away. With `keep` a name that is there
    /// stays. A null material is ignored.
    static void setName(const osg::MaterialPtr& material, const char* name, bool keep);
};
