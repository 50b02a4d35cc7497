#pragma once

#include "host/OSGSystem/Material.h"

/// Helpers for uber materials.
class ZN_HOST_EXPORT znUberMaterialUtils
{
public:
    /// The environment that was set on a BRDF material; null for a null material and for other classes.
    static osg::MaterialPtr getBRDFEnvironment(const osg::MaterialPtr& material);
    /// Sets it, within the bracket of its field. Ignored for a null material and for other classes.
    static void setBRDFEnvironment(const osg::MaterialPtr& material, const osg::MaterialPtr& environment);
};
