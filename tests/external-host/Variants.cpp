// This host has no variants: it makes none, and finds none.
#include "host/znVariants/znVariantSet.h"
#include "host/znVariants/znVariants.h"

znVariantGroup* znVariants::createVariantGroup(const QString&, bool, bool)
{
    return nullptr;
}
znVariantGroup* znVariants::findVariantGroup(const QString&)
{
    return nullptr;
}
znVariantSet* znVariants::createVariantSet(const QString&, bool, znVariantGroup*)
{
    return nullptr;
}
znVariantSet* znVariants::findVariantSet(const QString&)
{
    return nullptr;
}
znMaterialVariant* znVariants::createMaterialVariant(const osg::MaterialPtr&, bool)
{
    return nullptr;
}
znMaterialVariant* znVariants::findMaterialVariant(const QString&)
{
    return nullptr;
}
znNodeVariant* znVariants::createNodeVariant(const osg::NodePtr&, bool)
{
    return nullptr;
}

// Sets are none's to fill.
void znVariantSet::add(znMaterialVariant*, const QString&) {}
void znVariantSet::add(znNodeVariant*, const QString&) {}
void znVariantSet::addViewpoint(const QString&) {}
znVariantState* znVariantSet::findMaterialVariant(const QString&) const
{
    return nullptr;
}
