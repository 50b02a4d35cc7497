#pragma once

#include "host/OSGSystem/Material.h"

/// When two materials count as one.
class ZN_HOST_EXPORT znMaterialComparison
{
public:
    /// What is compared; the values add up. Without any, all materials of a class are one.
    enum MaterialCompareSettings : unsigned {
        CompareNames = 4,  ///< the names, to the letter
        CompareFields = 8, ///< all other fields, attachments among them
    };

    /// True when both are of one class and agree in what `settings` names, and when they are the same object. A null
    /// material is equal to nothing.
    static bool areEqual(const osg::MaterialPtr& a, const osg::MaterialPtr& b, MaterialCompareSettings settings);
};
