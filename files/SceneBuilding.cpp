#include "files/SceneBuilding.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditScope.h"
#include "scene/MaterialLook.h"
#include "scene/SceneEdits.h"

#include <utility>

namespace files
{

FreshTree::~FreshTree()
{
    m_root.addRef();
    m_root.subRef();
}

osg::NodePtr FreshTree::take()
{
    return std::exchange(m_root, osg::NodePtr());
}

osg::NodePtr makeNode(const std::string& name, const osg::NodeCorePtr& core)
{
    const osg::NodePtr node = osg::makeNodeFor(core);
    osg::setName(node, name);
    return node;
}

osg::NodePtr makeGroup(const std::string& name)
{
    return makeNode(name, osg::Group::create());
}

osg::NodePtr makeTransform(const std::string& name, const osg::Matrix& matrix)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    osg::edit(core, osg::TransformBase::MatrixFieldMask, [&] { core->setMatrix(matrix); });
    return makeNode(name, core);
}

osg::GeometryPtr makeGeometry(const std::string& name, osg::Mesh mesh, const osg::MaterialPtr& material)
{
    const osg::GeometryPtr core = osg::GeometryBase::create();
    auto shared = std::make_shared<const osg::Mesh>(std::move(mesh));
    osg::setName(core, name);
    osg::exchangeMesh(core, std::move(shared));
    if (material)
        osg::edit(core, osg::MaterialDrawableBase::MaterialFieldMask, [&] { core->setMaterial(material); });
    return core;
}

osg::SimpleMaterialPtr makeMaterial(const std::string& name, const MaterialLook& look)
{
    using Base = osg::SimpleMaterialBase;
    const osg::SimpleMaterialPtr material = Base::create();
    osg::setName(material, name);
    osg::edit(material, Base::AmbientFieldMask, [&] { material->setAmbient(look.ambient); });
    osg::edit(material, Base::DiffuseFieldMask, [&] { material->setDiffuse(look.diffuse); });
    osg::edit(material, Base::EmissionFieldMask, [&] { material->setEmission(look.emission); });
    osg::edit(material, Base::SpecularFieldMask, [&] { material->setSpecular(look.specular); });
    osg::edit(material, Base::ShininessFieldMask, [&] { material->setShininess(look.shininess); });
    osg::edit(material, Base::TransparencyFieldMask, [&] { material->setTransparency(look.transparency); });
    if (look.surface)
        osg::setSurface(material, *look.surface);
    return material;
}

osg::Matrix toMillimetresZUp(double millimetresPerUnit, UpAxis upAxis)
{
    const auto unit = static_cast<float>(millimetresPerUnit);
    osg::Matrix matrix;
    matrix.values = {unit, 0, 0, 0, 0, unit, 0, 0, 0, 0, unit, 0, 0, 0, 0, 1};
    if (upAxis == UpAxis::Y)
        matrix.values = {unit, 0, 0, 0, 0, 0, unit, 0, 0, -unit, 0, 0, 0, 0, 0, 1};
    return matrix;
}

osg::NodePtr placeForContent(const osg::NodePtr& root, const ReadOptions& options)
{
    const osg::Matrix matrix = toMillimetresZUp(options.millimetresPerUnit, options.upAxis);
    if (matrix.isIdentity())
        return root;
    const osg::NodePtr place = makeTransform({}, matrix);
    osg::addChild(root, place);
    return place;
}

} // namespace files
