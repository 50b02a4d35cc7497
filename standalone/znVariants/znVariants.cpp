#include "host/znVariants/znVariants.h"

#include "host/OSGSystem/Names.h"
#include "standalone/znUtils/CallTrace.h"
#include "standalone/znVariants/SessionVariants.h"

znVariantGroup* znVariants::createVariantGroup(const QString& name, bool tell, bool open)
{
    const zn::TracedCall call("znVariants::createVariantGroup", name, tell, open);
    return zn::variants::sessionVariants().addGroup(name);
}

znVariantGroup* znVariants::findVariantGroup(const QString& name)
{
    const zn::TracedCall call("znVariants::findVariantGroup", name);
    return zn::variants::sessionVariants().findGroup(name);
}

znVariantSet* znVariants::createVariantSet(const QString& name, bool tell, znVariantGroup* group)
{
    const zn::TracedCall call("znVariants::createVariantSet", name, tell, group ? group->getName() : QString());
    return zn::variants::sessionVariants().addSet(name, group);
}

znVariantSet* znVariants::findVariantSet(const QString& name)
{
    const zn::TracedCall call("znVariants::findVariantSet", name);
    return zn::variants::sessionVariants().findSet(name);
}

znMaterialVariant* znVariants::createMaterialVariant(const osg::MaterialPtr& material, bool tell)
{
    const zn::TracedCall call("znVariants::createMaterialVariant", QString::fromUtf8(osg::getName(material)), tell);
    return material ? &zn::variants::sessionVariants().materialVariant(material) : nullptr;
}

znMaterialVariant* znVariants::findMaterialVariant(const QString& name)
{
    const zn::TracedCall call("znVariants::findMaterialVariant", name);
    return zn::variants::sessionVariants().findMaterialVariant(name);
}

znNodeVariant* znVariants::createNodeVariant(const osg::NodePtr& node, bool tell)
{
    const zn::TracedCall call("znVariants::createNodeVariant", node, tell);
    return node ? &zn::variants::sessionVariants().nodeVariant(node) : nullptr;
}
