#pragma once

#include "host/OSGSystem/Material.h"

#include <QHash>
#include <QString>

#include <map>

namespace zn
{

/// What a session notes about materials.
struct MaterialBook {
    struct Use {
        osg::RefPtr<osg::MaterialPtr> material;
        unsigned count = 0;
    };

    /// The marks of `znMaterials::addRef` by container id.
    std::map<unsigned, Use> uses;
    /// From a name to the id of the first material of the pool that bore it when the finds were prepared.
    QHash<QString, unsigned> idsByName;
    /// Null until it is asked for.
    osg::RefPtr<osg::MaterialPtr> defaultEnvironment;
};

} // namespace zn
