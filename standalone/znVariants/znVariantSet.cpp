#include "host/znVariants/znVariantSet.h"

#include "standalone/znUtils/CallTrace.h"

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
