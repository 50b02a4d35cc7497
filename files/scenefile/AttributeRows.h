#pragma once

#include "files/TextNumbers.h"
#include "scene/Attributes.h"

#include <scene_generated.h>

#include <memory>
#include <unordered_map>
#include <vector>

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

/// Puts the table of attributes of a file together.
class AttributeRows
{
public:
    /// Notes that the holder with this number has `attributes`, which must live until the table is stored. Holders come
    /// in their order, and those of a holder in the order of their bindings.
    void use(std::uint32_t holder, const AttributeAttachment& attributes, std::uint16_t binding);
    /// No less than the table takes in the file.
    std::uint64_t bytes() const;
    /// The offset is 0 when there are none.
    flatbuffers::Offset<fb::AttributeTable> store(flatbuffers::FlatBufferBuilder& builder) const;

private:
    std::uint32_t rowOf(const AttributeAttachment& attributes);
    std::uint32_t addRow(const AttributeList& attributes);
    std::uint32_t shapeOf(const AttributeList& attributes);
    bool hasShape(const AttributeList& attributes, std::uint32_t shape) const;
    std::uint64_t bitsOf(const AttributeValue& value);

    files::TextPool m_texts;
    files::TextPool m_shapes;                                ///< the bytes of their columns
    std::vector<std::vector<fb::AttributeColumn>> m_columns; ///< of each shape
    std::uint32_t m_lastShape = 0;
    std::unordered_map<const Attachment*, std::uint32_t> m_numbers; ///< of rows that several holders may have
    std::vector<fb::AttributeRow> m_rows;
    std::vector<std::uint64_t> m_values;
    std::vector<std::uint32_t> m_items;
    std::vector<fb::AttributeUse> m_uses;
};

/// Reads attributes from the rows of a checked table each time when they are asked for; the place is the
/// `fb::AttributeRow`. It shares `owner`, which keeps the bytes of `table` alive.
std::unique_ptr<AttributeSource> makeAttributeSource(const fb::AttributeTable& table,
                                                     std::shared_ptr<const void> owner);

} // namespace osg::scenefile
