#include "standalone/znVariants/SessionVariants.h"

#include "standalone/znOpenSGUberCamera/CameraTree.h"

#include <QCoreApplication>

namespace zn::variants
{

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("SessionVariants", text);
}

void applyStates(const std::vector<std::unique_ptr<znVariantState>>& states, QStringList& complaints)
{
    for (const auto& state : states)
        if (!state->m_stateName.isEmpty() && !state->getVariant()->apply(state->m_stateName))
            complaints << tr("'%1' has no state '%2'").arg(state->getVariant()->getName(), state->m_stateName);
}

void applyViewpoint(const QString& name, zn::cameras::CameraTree& cameras, QStringList& complaints)
{
    if (name.isEmpty())
        return;
    if (const unsigned id = cameras.findViewpoint(name).cameraId)
        cameras.look(id);
    else
        complaints << tr("there is no viewpoint '%1'").arg(name);
}

} // namespace

znVariantGroup* SessionVariants::findGroup(const QString& name) const
{
    return m_groupsByName.value(name);
}

znVariantSet* SessionVariants::findSet(const QString& name) const
{
    return m_setsByName.value(name);
}

znMaterialVariant* SessionVariants::findMaterialVariant(const QString& name) const
{
    return m_materialVariantsByName.value(name);
}

znVariantGroup* SessionVariants::addGroup(const QString& name)
{
    if (name.isEmpty() || findGroup(name))
        return nullptr;
    return m_groupsByName[name] = m_groups.emplace_back(std::make_unique<znVariantGroup>(name)).get();
}

znVariantSet* SessionVariants::addSet(const QString& name, znVariantGroup* group)
{
    if (name.isEmpty() || findSet(name))
        return nullptr;
    return m_setsByName[name] = m_sets.emplace_back(std::make_unique<znVariantSet>(name, group)).get();
}

/// Of materials of one name the first one is found.
znMaterialVariant& SessionVariants::materialVariant(const osg::MaterialPtr& material)
{
    znMaterialVariant*& variant = m_materialVariantsById[material->getContainerId()];
    if (variant)
        return *variant;
    variant = m_materialVariants.emplace_back(std::make_unique<znMaterialVariant>(material)).get();
    if (!m_materialVariantsByName.contains(variant->getName()))
        m_materialVariantsByName[variant->getName()] = variant;
    return *variant;
}

znNodeVariant& SessionVariants::nodeVariant(const osg::NodePtr& node)
{
    znNodeVariant*& variant = m_nodeVariantsById[node->getContainerId()];
    if (!variant)
        variant = m_nodeVariants.emplace_back(std::make_unique<znNodeVariant>(node)).get();
    return *variant;
}

QStringList SessionVariants::apply(const znVariantSet& set, zn::cameras::CameraTree& cameras)
{
    QStringList complaints;
    applyStates(set.getMaterialStates(), complaints);
    applyStates(set.getNodeStates(), complaints);
    applyViewpoint(set.m_viewpointName, cameras, complaints);
    return complaints;
}

SessionVariants& sessionVariants(Session& session)
{
    return session.state<SessionVariants>();
}

} // namespace zn::variants
