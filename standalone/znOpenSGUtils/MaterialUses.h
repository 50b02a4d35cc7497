#pragma once

#include "host/OSGSystem/Material.h"

#include <map>

namespace zn::nodes
{

/// A material that is marked as used, which keeps it alive.
struct MaterialUse {
    osg::RefPtr<osg::MaterialPtr> material;
    unsigned count = 0; ///< of the marks
};

/// Marks `material`, which is not null, as used by the living session, once more.
void markAsUsed(const osg::MaterialPtr& material);

/// What was marked in the living session, by container id.
const std::map<unsigned, MaterialUse>& materialUses();

} // namespace zn::nodes
