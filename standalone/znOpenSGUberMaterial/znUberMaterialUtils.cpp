#include "host/znOpenSGUberMaterial/znUberMaterialUtils.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "standalone/znUtils/CallTrace.h"

osg::MaterialPtr znUberMaterialUtils::getBRDFEnvironment(const osg::MaterialPtr& material)
{
    const zn::TracedCall call("znUberMaterialUtils::getBRDFEnvironment", material);
    const auto brdf = osg::fcCast<osg::UBRDFMaterial>(material);
    return brdf ? brdf->getEnvironment() : osg::MaterialPtr();
}

void znUberMaterialUtils::setBRDFEnvironment(const osg::MaterialPtr& material, const osg::MaterialPtr& environment)
{
    const zn::TracedCall call("znUberMaterialUtils::setBRDFEnvironment", material, environment);
    const auto brdf = osg::fcCast<osg::UBRDFMaterial>(material);
    if (!brdf)
        return;
    osg::beginEditCP(brdf, osg::UBRDFMaterialBase::EnvironmentFieldMask, 1);
    brdf->setEnvironment(environment);
    osg::endEditCP(brdf, osg::UBRDFMaterialBase::EnvironmentFieldMask, 1);
}
