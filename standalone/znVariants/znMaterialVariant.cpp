#include "host/znVariants/znMaterialVariant.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"

namespace
{

QString nameOf(const osg::MaterialPtr& material)
{
    return QString::fromUtf8(osg::getName(material));
}

bool choose(const osg::SwitchMaterialPtr& choices, const QString& name)
{
    for (unsigned i = 0; i < choices->getMaterials().size(); ++i) {
        if (nameOf(choices->getMaterial(i)) != name)
            continue;
        osg::beginEditCP(choices, osg::SwitchMaterialBase::ChoiceFieldMask, 1);
        choices->setChoice(i);
        osg::endEditCP(choices, osg::SwitchMaterialBase::ChoiceFieldMask, 1);
        return true;
    }
    return false;
}

} // namespace

znMaterialVariant::znMaterialVariant(const osg::MaterialPtr& material)
    : znVariant(nameOf(material), material->getContainerId())
{
}

osg::MaterialPtr znMaterialVariant::getMaterial() const
{
    return osg::fcCast<osg::Material>(osg::FieldContainerFactory::the()->getContainer(getTargetId()));
}

bool znMaterialVariant::apply(const QString& stateName)
{
    const osg::MaterialPtr material = getMaterial();
    if (const auto choices = osg::fcCast<osg::SwitchMaterial>(material))
        return choose(choices, stateName);
    return material && nameOf(material) == stateName;
}
