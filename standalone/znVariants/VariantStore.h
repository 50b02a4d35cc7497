#pragma once

#include "host/znVariants/znVariantSet.h"
#include "standalone/znVariants/VariantTable.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

namespace zn
{

class CameraTree;

/// The variants of one session, in the order in which they were made.
class VariantStore
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
    static QStringList apply(const znVariantSet& set, CameraTree& cameras);

    /// What files store of the variants whose materials are alive and whose nodes are at or below `root`.
    osg::VariantTable table(const osg::NodePtr& root) const;
    /// Adds what a file stored: groups and sets of a known name take it up, as do variants. Gives a sentence for each
    /// entry whose material or node is not in the tree at `root`.
    QStringList adopt(const osg::VariantTable& table, const osg::NodePtr& root);

private:
    Owned<znVariantGroup> m_groups;
    Owned<znVariantSet> m_sets;
    Owned<znMaterialVariant> m_materialVariants;
    Owned<znNodeVariant> m_nodeVariants;
    QHash<QString, znVariantSet*> m_setsByName;
    QHash<QString, znMaterialVariant*> m_materialVariantsByName;
    QHash<unsigned, znMaterialVariant*> m_materialVariantsById;
    QHash<unsigned, znNodeVariant*> m_nodeVariantsById;
};

} // namespace zn
