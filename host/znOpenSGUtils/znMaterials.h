#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGUtils/znMaterialPtr.h"

#include <QString>

#include <set>
#include <vector>

/// What the host does with materials.
class ZN_HOST_EXPORT znMaterials
{
public:
    /// How a pool is looked for.
    enum PoolSearch {
        AnyPool = 0, ///< the first one
    };

    /// The node whose core is the pool of materials of the tree at `root`. The scene has one of its own, beside its
    /// tree.
    /// @param below whether a pool that hangs in the tree at `root` will do; it comes first
    /// @param create whether the scene's pool is made if there is none yet
    /// @return null when there is none
    static osg::NodePtr findMaterialPool(const osg::NodePtr& root, bool below, bool create, PoolSearch search);

    /// The name as a UTF-8 text, empty for a material without one and for null. Valid until the name changes.
    static const char* getName(const osg::MaterialPtr& material);
    /// Names `material` with a UTF-8 text; null or an empty one takes the name away. With `keep` a name that is there
    /// stays. A null material is ignored.
    static void setName(const osg::MaterialPtr& material, const char* name, bool keep);

    /// The first material of the scene's pool that bears this name; null when there is none.
    static znMaterialPtr findMaterial(const QString& name);
    /// Notes the names of the materials in the scene's pool, so that the finds that follow are fast.
    static void initFindCache();
    /// The container ids of the materials in the scene's pool.
    static std::set<unsigned> getMaterialPoolMaterialIds();

    /// The field of `material` that holds its sub-materials, to be changed between `osg::beginEditCP` and
    /// `osg::endEditCP` with `mask`. Null for a material that holds none, and then `mask` stays as it was. An
    /// environment is no sub-material.
    static osg::MaterialField* getSubMaterials(const osg::MaterialPtr& material, osg::FieldMask& mask);
    /// Appends `material` and all that it holds at any depth, environments among it, each once, from the outside in.
    /// @param shownOnly of switch materials only what is chosen
    static void getRecursiveMaterials(const osg::MaterialPtr& material, std::vector<osg::MaterialPtr>& materials,
                                      bool shownOnly);
    /// Marks `material` as used, so that the host keeps it until the session ends; each call counts. Null is ignored.
    /// @param user the node that uses it; null when it is not used by a single one
    /// @param purpose reserved for hosts that tell uses apart; the open host does not
    static void addRef(const osg::MaterialPtr& material, const osg::NodePtr& user, int purpose);
};
