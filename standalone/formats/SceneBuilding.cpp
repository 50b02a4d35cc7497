#include "standalone/formats/SceneBuilding.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"

#include <utility>

namespace formats
{

namespace
{

/// Runs `change` within the bracket of one field.
template <class Ptr, class Change>
void edit(const Ptr& container, osg::FieldMask mask, Change change)
{
    osg::beginEditCP(container, mask, 1);
    change();
    osg::endEditCP(container, mask, 1);
}

} // namespace

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
    edit(core, osg::TransformBase::MatrixFieldMask, [&] { core->setMatrix(matrix); });
    return makeNode(name, core);
}

void addChild(const osg::NodePtr& parent, const osg::NodePtr& child)
{
    edit(parent, osg::Node::ChildrenFieldMask, [&] { parent->addChild(child); });
}

osg::GeometryPtr makeGeometry(const std::string& name, osg::Mesh mesh, const osg::MaterialPtr& material)
{
    const osg::GeometryPtr core = osg::GeometryBase::create();
    auto shared = std::make_shared<const osg::Mesh>(std::move(mesh));
    osg::setName(core, name);
    edit(core, osg::GeometryBase::MeshFieldMask, [&] { osg::GeometryAccess::setMesh(*core, std::move(shared)); });
    if (material)
        edit(core, osg::MaterialDrawableBase::MaterialFieldMask, [&] { core->setMaterial(material); });
    return core;
}

osg::SimpleMaterialPtr makeMaterial(const std::string& name, const MaterialLook& look)
{
    using Base = osg::SimpleMaterialBase;
    const osg::SimpleMaterialPtr material = Base::create();
    osg::setName(material, name);
    edit(material, Base::AmbientFieldMask, [&] { material->setAmbient(look.ambient); });
    edit(material, Base::DiffuseFieldMask, [&] { material->setDiffuse(look.diffuse); });
    edit(material, Base::EmissionFieldMask, [&] { material->setEmission(look.emission); });
    edit(material, Base::SpecularFieldMask, [&] { material->setSpecular(look.specular); });
    edit(material, Base::ShininessFieldMask, [&] { material->setShininess(look.shininess); });
    edit(material, Base::TransparencyFieldMask, [&] { material->setTransparency(look.transparency); });
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
    addChild(root, place);
    return place;
}

} // namespace formats
