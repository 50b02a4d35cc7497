#include "cad/visualization/PLMXMLMaterials.h"

#include "cad/xml/CADMaterial.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodeUtils.h"

namespace HB::Visualization
{

using namespace XML::CAD;

namespace
{

/// Makes `color` what a list of three numbers says; one of another length says nothing.
const osg::Color3f& take(const std::vector<float>& values, osg::Color3f& color)
{
    if (values.size() == 3)
        color = {values[0], values[1], values[2]};
    return color;
}

osg::MaterialGroupPtr groupOf(const osg::MaterialPtr& material)
{
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    osg::beginEditCP(group, osg::MaterialGroup::MaterialFieldMask, 1);
    group->setMaterial(material);
    osg::endEditCP(group, osg::MaterialGroup::MaterialFieldMask, 1);
    return group;
}

/// A list that does not give a colour repeats that of the step before; only the first one falls back to black. So the
/// order of the steps matters.
void applyMaterial(const CADMaterial& source, const osg::SimpleMaterialPtr& material)
{
    osg::Color3f color;
    osg::beginEditCP(material, osg::AllFieldsMask, 1);
    material->setAmbient(take(source.getAmbient(), color));
    material->setDiffuse(take(source.getDiffuse(), color));
    material->setEmission(take(source.getEmissive(), color));
    material->setSpecular(take(source.getSpecular(), color));
    material->setTransparency(1 - source.getAlpha());
    material->setShininess(source.getShininess());
    osg::endEditCP(material, osg::AllFieldsMask, 1);
}

} // namespace

osg::NodePtr makeMaterialNode(const CADMaterial& source)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    const osg::NodePtr node = osg::makeNodeFor(groupOf(material));
    const std::string name = source.getMaterialName();
    znNodeUtils::setName(node, name.c_str(), false, nullptr);
    znMaterials::setName(material, name.c_str(), false);
    applyMaterial(source, material);
    return node;
}

} // namespace HB::Visualization
