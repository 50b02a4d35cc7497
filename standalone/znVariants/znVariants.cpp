#include "host/znVariants/znVariants.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

zn::VariantStore& store()
{
    return znStandaloneSession::require().kernel().variants;
}

QString nameOf(const osg::AttachmentContainerPtr& container)
{
    return QString::fromUtf8(osg::getName(container));
}

template <class T>
typename T::Ptr living(std::uint32_t id)
{
    return osg::fcCast<T>(osg::FieldContainerFactory::the()->getContainer(id));
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
    return living<osg::Material>(getTargetId());
}

bool znMaterialVariant::apply(const QString& stateName)
{
    const osg::MaterialPtr material = getMaterial();
    if (const auto choices = osg::fcCast<osg::SwitchMaterial>(material))
        return choose(choices, stateName);
    return material && nameOf(material) == stateName;
}

znNodeVariant::znNodeVariant(const osg::NodePtr& node) : znVariant(nameOf(node), node->getContainerId()) {}

osg::NodePtr znNodeVariant::getNode() const
{
    return living<osg::Node>(getTargetId());
}

bool znNodeVariant::apply(const QString& stateName)
{
    const osg::NodePtr node = getNode();
    const bool isEnabled = stateName == QLatin1String("!Enable");
    if (!node || (!isEnabled && stateName != QLatin1String("!Disable")))
        return false;
    osg::beginEditCP(node, osg::Node::ActiveFieldMask, 1);
    node->setActive(isEnabled);
    osg::endEditCP(node, osg::Node::ActiveFieldMask, 1);
    return true;
}

void znVariantSet::add(znMaterialVariant* variant, const QString& stateName)
{
    const zn::TracedCall call("znVariantSet::add", m_name, variant ? variant->getName() : QString(), stateName);
    put(m_materialStates, variant, stateName);
    if (variant && !m_materialStatesByName.contains(variant->getName()))
        m_materialStatesByName[variant->getName()] = m_statesByVariant.value(variant);
}

void znVariantSet::add(znNodeVariant* variant, const QString& stateName)
{
    const zn::TracedCall call("znVariantSet::add", m_name, variant ? variant->getName() : QString(), stateName);
    put(m_nodeStates, variant, stateName);
}

void znVariantSet::put(States& states, znVariant* variant, const QString& stateName)
{
    if (!variant)
        return;
    znVariantState*& state = m_statesByVariant[variant];
    if (state)
        state->m_stateName = stateName;
    else
        state = states.emplace_back(std::make_unique<znVariantState>(variant, stateName)).get();
}

void znVariantSet::addViewpoint(const QString& name)
{
    const zn::TracedCall call("znVariantSet::addViewpoint", m_name, name);
    if (!m_viewpoints.contains(name))
        m_viewpoints.append(name);
}

znVariantState* znVariantSet::findMaterialVariant(const QString& name) const
{
    const zn::TracedCall call("znVariantSet::findMaterialVariant", m_name, name);
    return m_materialStatesByName.value(name);
}

znVariantGroup* znVariants::createVariantGroup(const QString& name, bool tell, bool open)
{
    const zn::TracedCall call("znVariants::createVariantGroup", name, tell, open);
    return store().addGroup(name);
}

znVariantGroup* znVariants::findVariantGroup(const QString& name)
{
    const zn::TracedCall call("znVariants::findVariantGroup", name);
    return store().findGroup(name);
}

znVariantSet* znVariants::createVariantSet(const QString& name, bool tell, znVariantGroup* group)
{
    const zn::TracedCall call("znVariants::createVariantSet", name, tell, group ? group->getName() : QString());
    return store().addSet(name, group);
}

znVariantSet* znVariants::findVariantSet(const QString& name)
{
    const zn::TracedCall call("znVariants::findVariantSet", name);
    return store().findSet(name);
}

znMaterialVariant* znVariants::createMaterialVariant(const osg::MaterialPtr& material, bool tell)
{
    const zn::TracedCall call("znVariants::createMaterialVariant", nameOf(material), tell);
    return material ? &store().materialVariant(material) : nullptr;
}

znMaterialVariant* znVariants::findMaterialVariant(const QString& name)
{
    const zn::TracedCall call("znVariants::findMaterialVariant", name);
    return store().findMaterialVariant(name);
}

znNodeVariant* znVariants::createNodeVariant(const osg::NodePtr& node, bool tell)
{
    const zn::TracedCall call("znVariants::createNodeVariant", node, tell);
    return node ? &store().nodeVariant(node) : nullptr;
}
