#pragma once

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "importer/materials/AssetTable.h"
#include "scene/Attributes.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace importer::materials
{

/// A geometry at one of its places.
struct DrawnPlace {
    osg::NodePtr node;              ///< that of the geometry
    osg::NodePtr group;             ///< the topmost with a material above it, whose material rules; null for none
    osg::MaterialPtr material;      ///< that it is drawn with; null for none
    std::optional<std::size_t> row; ///< of the table; nothing where none fits
};

/// Finds for each geometry of a tree the row of a table that holds for it: of rows that look at occurrences before
/// those that look at parts, materials, attributes and colours; the first in the file of those of one kind.
class TableChoices
{
public:
    /// `table` outlives this object.
    explicit TableChoices(const AssetTable& table);

    /// The places in the tree at `root`, parents first.
    std::vector<DrawnPlace> of(const osg::NodePtr& root);
    /// The row for a material by itself: by its name, its attributes or its colour.
    std::optional<std::size_t> rowFor(const osg::MaterialPtr& material);
    /// Whether something in the trees so far is what the row looks for.
    bool hasMatched(std::size_t row) const { return m_hasMatched[row]; }

private:
    using Row = std::optional<std::size_t>;
    /// What holds for a node and all below it.
    struct Inherited {
        Row occurrence, part, attribute;
        osg::NodePtr group;
    };

    Inherited inherited(const osg::NodePtr& node, const Inherited& above);
    Row firstOf(RowKind kind, const std::string& text);
    Row byAttributes(const osg::AttachmentContainerPtr& container, osg::AttributeOwner owner);
    Row byProduct(const osg::NodePtr& node);
    Row byColor(const osg::MaterialPtr& material);

    const AssetTable& m_table;
    std::vector<bool> m_hasMatched;
    std::vector<std::vector<std::size_t>> m_rowsOf;            ///< by kind
    std::vector<std::unordered_map<std::string, Row>> m_found; ///< by kind, for texts that were met
    std::unordered_map<const osg::FieldContainer*, Row> m_ofAttributes;
    std::unordered_map<const osg::FieldContainer*, Row> m_ofProduct;
};

} // namespace importer::materials
