#include "standalone/znVariants/StoredVariants.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Drawable.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/CoreMaterial.h"
#include "scene/SubMaterials.h"

#include <QCoreApplication>

namespace zn::variants
{

namespace
{

using MaterialsByName = QHash<QString, osg::MaterialPtr>;

QString tr(const char* text)
{
    return QCoreApplication::translate("StoredVariants", text);
}

std::string nameOf(const osg::MaterialPtr& material)
{
    const char* name = osg::getName(material);
    return name ? name : "";
}

/// Of materials of one name the first one in the tree.
MaterialsByName materialsBelow(const osg::NodePtr& root)
{
    MaterialsByName materials;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (!node)
            return osg::Action::Skip;
        for (const osg::MaterialPtr& material : osg::subMaterialsFirst(osg::materialOf(node->getCore()))) {
            const QString name = QString::fromStdString(nameOf(material));
            if (!materials.contains(name))
                materials[name] = material;
        }
        return osg::Action::Continue;
    });
    return materials;
}

void storeStates(const znVariantSet& set, const osg::NodePtr& root, osg::VariantTable::Set& stored)
{
    for (const auto& state : set.getMaterialStates()) {
        const osg::MaterialPtr material = static_cast<znMaterialVariant*>(state->getVariant())->getMaterial();
        if (material)
            stored.materials.push_back({nameOf(material), state->m_stateName.toStdString()});
    }
    for (const auto& state : set.getNodeStates()) {
        const osg::NodePtr node = static_cast<znNodeVariant*>(state->getVariant())->getNode();
        if (const auto path = osg::pathTo(node, root))
            stored.nodes.push_back({*path, state->m_stateName.toStdString()});
    }
}

osg::VariantTable::Set storedSet(const znVariantSet& set, const osg::NodePtr& root)
{
    osg::VariantTable::Set stored;
    stored.name = set.getName().toStdString();
    if (set.getGroup())
        stored.group = set.getGroup()->getName().toStdString();
    stored.viewpoint = set.m_viewpointName.toStdString();
    for (const QString& viewpoint : set.getViewpoints())
        stored.viewpoints.push_back(viewpoint.toStdString());
    storeStates(set, root, stored);
    return stored;
}

/// Adds the entries of one stored set.
class SetAdoption
{
public:
    SetAdoption(SessionVariants& variants, znVariantSet& set, QStringList& complaints)
        : m_variants(variants), m_set(set), m_complaints(complaints)
    {
    }

    void viewpoints(const osg::VariantTable::Set& stored)
    {
        for (const std::string& viewpoint : stored.viewpoints)
            m_set.addViewpoint(QString::fromStdString(viewpoint));
        if (!stored.viewpoint.empty())
            m_set.m_viewpointName = QString::fromStdString(stored.viewpoint);
    }

    void materials(const osg::VariantTable::Set& stored, const MaterialsByName& materials)
    {
        for (const osg::VariantTable::MaterialState& entry : stored.materials) {
            const QString name = QString::fromStdString(entry.material);
            if (const osg::MaterialPtr material = materials.value(name))
                m_set.add(&m_variants.materialVariant(material), QString::fromStdString(entry.state));
            else
                m_complaints
                    << tr("the variant set '%1' names a material '%2' that is not there").arg(m_set.getName(), name);
        }
    }

    void nodes(const osg::VariantTable::Set& stored, const osg::NodePtr& root)
    {
        for (const osg::VariantTable::NodeState& entry : stored.nodes) {
            if (const osg::NodePtr node = osg::nodeAt(entry.node, root))
                m_set.add(&m_variants.nodeVariant(node), QString::fromStdString(entry.state));
            else
                m_complaints << tr("the variant set '%1' names a node that is not there").arg(m_set.getName());
        }
    }

private:
    SessionVariants& m_variants;
    znVariantSet& m_set;
    QStringList& m_complaints;
};

} // namespace

osg::VariantTable storedVariants(const SessionVariants& variants, const osg::NodePtr& root)
{
    osg::VariantTable result;
    for (const auto& group : variants.groups())
        result.groups.push_back(group->getName().toStdString());
    for (const auto& set : variants.sets())
        result.sets.push_back(storedSet(*set, root));
    return result;
}

QStringList addStoredVariants(SessionVariants& variants, const osg::VariantTable& table, const osg::NodePtr& root)
{
    QStringList complaints;
    for (const std::string& group : table.groups)
        variants.addGroup(QString::fromStdString(group));
    const MaterialsByName materials = materialsBelow(root);
    for (const osg::VariantTable::Set& stored : table.sets) {
        const QString name = QString::fromStdString(stored.name);
        variants.addSet(name, variants.findGroup(QString::fromStdString(stored.group)));
        znVariantSet* set = variants.findSet(name);
        if (!set)
            continue;
        SetAdoption adoption(variants, *set, complaints);
        adoption.viewpoints(stored);
        adoption.materials(stored, materials);
        adoption.nodes(stored, root);
    }
    return complaints;
}

} // namespace zn::variants
