#include "host/OSGSystem/MaterialPool.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Attachments.h"
#include "scene/CoreMaterial.h"
#include "scene/NameRevisions.h"

#include <algorithm>
#include <unordered_set>

namespace osg
{

FieldContainerType MaterialPoolBase::_type("MaterialPool", &Group::_type);

MaterialPoolBase::~MaterialPoolBase()
{
    for (const MaterialPtr& material : m_materials)
        material.subRef();
}

MaterialPoolPtr MaterialPoolBase::create()
{
    return MaterialPoolPtr(new MaterialPool);
}

bool MaterialPoolBase::equalFields(const FieldContainer& other) const
{
    return m_materials == static_cast<const MaterialPoolBase&>(other).m_materials && Group::equalFields(other);
}

FieldContainerPtr MaterialPoolBase::copy() const
{
    const MaterialPoolPtr result = create();
    AttachmentAccess::copyAll(*this, *result);
    for (const MaterialPtr& material : m_materials)
        material.addRef();
    static_cast<MaterialPoolBase&>(*result).m_materials = m_materials;
    return result;
}

void MaterialPool::add(const NodePtr& node)
{
    if (!node)
        return;
    std::unordered_set<const Material*> known;
    for (const MaterialPtr& material : m_materials)
        known.insert(material.get());
    const std::size_t before = m_materials.size();
    traverse(node, [&](const NodePtr& step) {
        const MaterialPtr material = materialOf(step->getCore());
        if (material && known.insert(material.get()).second) {
            material.addRef();
            m_materials.push_back(material);
        }
        return Action::Continue;
    });
    if (m_materials.size() == before)
        return;
    fieldChanged(MaterialsFieldMask);
    poolChanged();
}

void MaterialPool::add(const MaterialPtr& material)
{
    if (!material || std::find(m_materials.begin(), m_materials.end(), material) != m_materials.end())
        return;
    material.addRef();
    m_materials.push_back(material);
    fieldChanged(MaterialsFieldMask);
    poolChanged();
}

void MaterialPool::sub(const MaterialPtr& material)
{
    const auto found = std::find(m_materials.begin(), m_materials.end(), material);
    if (found == m_materials.end())
        return;
    const MaterialPtr held = *found;
    m_materials.erase(found);
    held.subRef();
    fieldChanged(MaterialsFieldMask);
    poolChanged();
}

} // namespace osg
