#include "importer/materials/TableChoices.h"

#include "files/scenefile/AttributeTags.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/CoreMaterial.h"
#include "scene/GeometryWalk.h"
#include "scene/MaterialLook.h"
#include "scene/NamePattern.h"

#include <algorithm>
#include <cmath>

namespace importer::materials
{

namespace
{

using Row = std::optional<std::size_t>;

std::string nameOf(const osg::AttachmentContainerPtr& container)
{
    const char* name = container ? osg::getName(container) : nullptr;
    return name ? name : "";
}

/// The one that stands first in the file.
Row firstOf(const Row& a, const Row& b)
{
    return a && b ? std::min(a, b) : a ? a : b;
}

std::string codeOf(const osg::Color3f& color)
{
    const auto byte = [](float channel) { return std::lround(std::clamp(channel, 0.0f, 1.0f) * 255); };
    return QStringLiteral("#%1%2%3")
        .arg(byte(color.red), 2, 16, QLatin1Char('0'))
        .arg(byte(color.green), 2, 16, QLatin1Char('0'))
        .arg(byte(color.blue), 2, 16, QLatin1Char('0'))
        .toStdString();
}

bool hasMaterial(const osg::NodePtr& node)
{
    const auto group = osg::fcCast<osg::MaterialGroup>(node->getCore());
    return group && group->getMaterial();
}

} // namespace

TableChoices::TableChoices(const AssetTable& table)
    : m_table(table), m_hasMatched(table.rows.size()), m_rowsOf(rowKinds), m_found(rowKinds)
{
    for (std::size_t i = 0; i < table.rows.size(); ++i)
        m_rowsOf[static_cast<std::size_t>(table.rows[i].kind)].push_back(i);
}

/// All rows are held against a text that is met for the first time, to know which of them match at all.
TableChoices::Row TableChoices::firstOf(RowKind kind, const std::string& text)
{
    const auto number = static_cast<std::size_t>(kind);
    if (text.empty() || m_rowsOf[number].empty())
        return std::nullopt;
    const auto [entry, isNew] = m_found[number].try_emplace(text);
    for (const std::size_t row : isNew ? m_rowsOf[number] : std::vector<std::size_t>()) {
        if (!osg::matchesPattern(m_table.rows[row].pattern, text))
            continue;
        m_hasMatched[row] = true;
        entry->second = materials::firstOf(entry->second, row);
    }
    return entry->second;
}

TableChoices::Row TableChoices::byAttributes(const osg::AttachmentContainerPtr& container, osg::AttributeOwner owner)
{
    const auto attachment = osg::attributeAttachment(container, owner);
    if (!attachment || m_rowsOf[static_cast<std::size_t>(RowKind::Attribute)].empty())
        return std::nullopt;
    const auto [entry, isNew] = m_ofAttributes.try_emplace(attachment.get());
    if (isNew)
        for (const osg::Attribute& attribute : attachment->attributes())
            entry->second = materials::firstOf(
                entry->second, firstOf(RowKind::Attribute, attribute.name + '=' + osg::textOf(attribute)));
    return entry->second;
}

TableChoices::Row TableChoices::byProduct(const osg::NodePtr& node)
{
    const auto attachment = osg::attributeAttachment(node, osg::AttributeOwner::Product);
    if (!attachment || m_rowsOf[static_cast<std::size_t>(RowKind::Part)].empty())
        return std::nullopt;
    const auto [entry, isNew] = m_ofProduct.try_emplace(attachment.get());
    if (isNew)
        entry->second = firstOf(RowKind::Part, attachment->text(osg::scenefile::converted::ProductName));
    return entry->second;
}

TableChoices::Row TableChoices::byColor(const osg::MaterialPtr& material)
{
    const std::optional<osg::SurfaceLook> look = osg::lookOf(material);
    return look ? firstOf(RowKind::Color, codeOf(look->diffuse)) : std::nullopt;
}

TableChoices::Inherited TableChoices::inherited(const osg::NodePtr& node, const Inherited& above)
{
    Inherited result;
    result.occurrence = materials::firstOf(above.occurrence, firstOf(RowKind::Occurrence, nameOf(node)));
    result.part = materials::firstOf(above.part, byProduct(node));
    result.attribute = materials::firstOf(above.attribute, byAttributes(node, osg::AttributeOwner::Product));
    result.attribute = materials::firstOf(result.attribute, byAttributes(node, osg::AttributeOwner::Occurrence));
    result.group = above.group || !hasMaterial(node) ? above.group : node;
    return result;
}

std::optional<std::size_t> TableChoices::rowFor(const osg::MaterialPtr& material)
{
    if (const Row byName = firstOf(RowKind::Material, nameOf(material)))
        return byName;
    if (const Row byAttribute = byAttributes(material, osg::AttributeOwner::Product))
        return byAttribute;
    return byColor(material);
}

std::vector<DrawnPlace> TableChoices::of(const osg::NodePtr& root)
{
    std::vector<DrawnPlace> places;
    std::unordered_map<const osg::Node*, Inherited> known;
    for (const osg::NodePtr& node : osg::parentsFirst(root)) {
        const auto above = known.find(node->getParent().get());
        const Inherited here = inherited(node, node == root || above == known.end() ? Inherited() : above->second);
        if (const osg::GeometryPtr geometry = osg::geometryOf(node)) {
            DrawnPlace place{node, here.group, osg::materialOf((here.group ? here.group : node)->getCore()), {}};
            const Row byPart = materials::firstOf(here.part, firstOf(RowKind::Part, nameOf(geometry)));
            const Row byName = firstOf(RowKind::Material, nameOf(place.material));
            const Row byAttribute =
                materials::firstOf(here.attribute, byAttributes(place.material, osg::AttributeOwner::Product));
            const Row byLook = byColor(place.material);
            for (const Row& row : {here.occurrence, byPart, byName, byAttribute, byLook})
                place.row = place.row ? place.row : row;
            places.push_back(place);
        }
        if (node->getNChildren() > 0)
            known.emplace(node.get(), here);
    }
    return places;
}

} // namespace importer::materials
