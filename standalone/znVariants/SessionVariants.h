#pragma once

#include "host/znVariants/znVariantSet.h"
#include "standalone/session/Session.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

namespace zn::cameras
{
class CameraTree;
} // namespace zn::cameras

namespace zn::variants
{

/// The variants of one session, in the order in which they were made.
class SessionVariants
{
public:
    template <class T>
    using Owned = std::vector<std::unique_ptr<T>>;

    const Owned<znVariantGroup>& groups() const { return m_groups; }
    const Owned<znVariantSet>& sets() const { return m_sets; }
    const Owned<znMaterialVariant>& materialVariants() const { return m_materialVariants; }
    const Owned<znNodeVariant>& nodeVariants() const { return m_nodeVariants; }

    /// Null when there is none; so are all finds.
    znVariantGroup* findGroup(const QString& name) const;
    znVariantSet* findSet(const QString& name) const;
    znMaterialVariant* findMaterialVariant(const QString& name) const;

    /// Null when the name is empty or taken.
    znVariantGroup* addGroup(const QString& name);
    znVariantSet* addSet(const QString& name, znVariantGroup* group);
    /// A new variant, or the one that the material or node has.
    znMaterialVariant& materialVariant(const osg::MaterialPtr& material);
    znNodeVariant& nodeVariant(const osg::NodePtr& node);

    /// Brings materials, nodes and view to what `set` wants of them. Gives a sentence for each wish that could not be
    /// met; the others are.
    static QStringList apply(const znVariantSet& set, zn::cameras::CameraTree& cameras);

private:
    Owned<znVariantGroup> m_groups;
    Owned<znVariantSet> m_sets;
    Owned<znMaterialVariant> m_materialVariants;
    Owned<znNodeVariant> m_nodeVariants;
    QHash<QString, znVariantGroup*> m_groupsByName;
    QHash<QString, znVariantSet*> m_setsByName;
    QHash<QString, znMaterialVariant*> m_materialVariantsByName;
    QHash<unsigned, znMaterialVariant*> m_materialVariantsById;
    QHash<unsigned, znNodeVariant*> m_nodeVariantsById;
};

/// The variants of a session.
SessionVariants& sessionVariants(Session& session = Session::require());

} // namespace zn::variants
