#include "host/znOpenSGUberMaterial/znMaterialComparison.h"

#include "host/OSGSystem/Names.h"

#include <string>

namespace
{

std::string nameOf(const osg::MaterialPtr& material)
{
    const char* name = osg::getName(material);
    return name ? name : "";
}

} // namespace

bool znMaterialComparison::areEqual(const osg::MaterialPtr& a, const osg::MaterialPtr& b,
                                    MaterialCompareSettings settings)
{
    if (!a || !b || &a->getType() != &b->getType())
        return false;
    if (a == b)
        return true;
    return (!(settings & CompareNames) || nameOf(a) == nameOf(b)) &&
           (!(settings & CompareFields) || osg::FieldContainer::isEqual(a, b));
}
