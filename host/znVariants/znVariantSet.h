#pragma once

#include "host/znVariants/znMaterialVariant.h"
#include "host/znVariants/znNodeVariant.h"
#include "host/znVariants/znVariantGroup.h"
#include "host/znVariants/znVariantState.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

/// One look of the scene: the states of variants, and viewpoints to see it from. Belongs to the session.
class ZN_HOST_EXPORT znVariantSet
{
public:
    /// `group` may be null.
    znVariantSet(const QString& name, znVariantGroup* group) : m_name(name), m_group(group) {}

    /// The name that it was made with.
    const QString& getName() const { return m_name; }
    /// The heading that it stands under, null for none. It belongs to the session.
    znVariantGroup* getGroup() const { return m_group; }

    /// Puts `variant` into the set. One that is in it already takes the new state; null is ignored.
    void add(znMaterialVariant* variant, const QString& stateName);
    /// The same for a variant of a node.
    void add(znNodeVariant* variant, const QString& stateName);
    /// Lists the name of a viewpoint; a name is listed once.
    void addViewpoint(const QString& name);

    /// The entry of the material variant of this name, null if there is none. Belongs to the set.
    znVariantState* findMaterialVariant(const QString& name) const;

    ///@{
    /// The entries for materials, those for nodes, and the names of viewpoints, in the order in which they were added.
    const std::vector<std::unique_ptr<znVariantState>>& getMaterialStates() const { return m_materialStates; }
    const std::vector<std::unique_ptr<znVariantState>>& getNodeStates() const { return m_nodeStates; }
    const QStringList& getViewpoints() const { return m_viewpoints; }
    ///@}

    /// The viewpoint that applying the set goes to; empty: the view stays.
    QString m_viewpointName;

private:
    QString m_name;
    znVariantGroup* m_group;
    using States = std::vector<std::unique_ptr<znVariantState>>;

    /// The entry of `variant` in `states`, which is made when it is new.
    void put(States& states, znVariant* variant, const QString& stateName);

    States m_materialStates;
    States m_nodeStates;
    QHash<const znVariant*, znVariantState*> m_statesByVariant;
    QHash<QString, znVariantState*> m_materialStatesByName;
    QStringList m_viewpoints;
};
