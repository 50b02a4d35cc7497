#include "host/znOpenSGUberMaterial/znUberMaterialUtils.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "standalone/znUtils/CallTrace.h"

osg::MaterialPtr znUberMaterialUtils::getBRDFEnvironment(const osg::MaterialPtr& material)
{
    const zn::TracedCall call("znUberMaterialUtils::getBRDFEnvironment", material);
    const auto mirroring = osg::fcCast<osg::UBRDFMaterial>(material);
    return mirroring ? mirroring->getEnvironment() : osg::MaterialPtr();
}

void znUberMaterialUtils::setBRDFEnvironment(const osg::MaterialPtr& material, const osg::MaterialPtr& environment)
{
    const zn::TracedCall call("znUberMaterialUtils::setBRDFEnvironment", material, environment);
    const auto mirroring = osg::fcCast<osg::UBRDFMaterial>(material);
    if (!mirroring)
        return;
    osg::beginEditCP(mirroring, osg::UBRDFMaterialBase::EnvironmentFieldMask, 1);
    mirroring->setEnvironment(environment);
    osg::endEditCP(mirroring, osg::UBRDFMaterialBase::EnvironmentFieldMask, 1);
}
