#include "scene/VariantTable.h"

#include "host/OSGSystem/Cast.h"

#include <algorithm>
#include <utility>

namespace osg
{

FieldContainerType VariantAttachment::_type("Variants", &Attachment::_type, "Variants");

std::optional<NodePath> pathTo(const NodePtr& node, const NodePtr& root)
{
    NodePath path;
    NodePtr step = node;
    while (step && !(step == root)) {
        const NodePtr parent = step->getParent();
        if (parent)
            path.push_back(static_cast<std::uint32_t>(parent->findChild(step)));
        step = parent;
    }
    if (!step)
        return std::nullopt;
    std::reverse(path.begin(), path.end());
    return path;
}

NodePtr nodeAt(const NodePath& path, const NodePtr& root)
{
    NodePtr node = root;
    for (const std::uint32_t index : path)
        node = node ? node->getChild(index) : NodePtr();
    return node;
}

VariantAttachment::Ptr VariantAttachment::create(VariantTable table)
{
    return Ptr(new VariantAttachment(std::move(table)));
}

VariantAttachment::Ptr VariantAttachment::of(const NodePtr& root)
{
    return root ? fcCast<VariantAttachment>(root->findAttachment(_type.getGroupId())) : Ptr();
}

bool VariantAttachment::equalFields(const FieldContainer& other) const
{
    return m_table == static_cast<const VariantAttachment&>(other).m_table;
}

FieldContainerPtr VariantAttachment::copy() const
{
    return create(m_table);
}

} // namespace osg
