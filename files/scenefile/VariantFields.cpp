#include "files/scenefile/VariantFields.h"

namespace osg::scenefile
{

namespace
{

/// More than a table of a set or of a node's state takes by itself.
constexpr std::uint64_t bytesPerRecord = 64;

/// The number of a text that may be missing.
std::uint32_t numberOf(const std::string& text, ObjectNumbers& numbers)
{
    return text.empty() ? 0 : numbers.text(text) + 1;
}

std::string textOf(std::uint32_t number, const NumberedObjects& objects)
{
    return number == 0 ? std::string() : objects.text(number - 1);
}

std::vector<std::uint32_t> indicesOf(const std::vector<std::string>& texts, ObjectNumbers& numbers)
{
    std::vector<std::uint32_t> indices;
    indices.reserve(texts.size());
    for (const std::string& text : texts)
        indices.push_back(numbers.text(text));
    return indices;
}

std::vector<std::string> textsOf(const flatbuffers::Vector<std::uint32_t>* indices, const NumberedObjects& objects)
{
    std::vector<std::string> texts;
    if (indices)
        for (const std::uint32_t index : *indices)
            texts.push_back(objects.text(index));
    return texts;
}

VariantFields::Set setFields(const VariantTable::Set& set, ObjectNumbers& numbers)
{
    VariantFields::Set fields;
    fields.name = numbers.text(set.name);
    fields.group = numberOf(set.group, numbers);
    fields.viewpoint = numberOf(set.viewpoint, numbers);
    fields.viewpoints = indicesOf(set.viewpoints, numbers);
    for (const VariantTable::MaterialState& entry : set.materials) {
        const std::uint32_t material = numbers.text(entry.material);
        fields.materials.emplace_back(material, numbers.text(entry.state));
    }
    for (const VariantTable::NodeState& entry : set.nodes)
        fields.nodes.push_back({&entry.node, numbers.text(entry.state)});
    return fields;
}

flatbuffers::Offset<fb::VariantSet> storeSet(const VariantFields::Set& set, flatbuffers::FlatBufferBuilder& builder)
{
    std::vector<flatbuffers::Offset<fb::NodeState>> nodes;
    for (const VariantFields::NodeState& entry : set.nodes) {
        const auto path = builder.CreateVector(*entry.node);
        nodes.push_back(fb::CreateNodeState(builder, path, entry.state));
    }
    const auto viewpoints = builder.CreateVector(set.viewpoints);
    const auto materials = builder.CreateVectorOfStructs(set.materials);
    return fb::CreateVariantSet(builder, set.name, set.group, set.viewpoint, viewpoints, materials,
                                builder.CreateVector(nodes));
}

VariantTable::Set restoreSet(const fb::VariantSet& record, const NumberedObjects& objects)
{
    VariantTable::Set set;
    set.name = objects.text(record.name());
    set.group = textOf(record.group(), objects);
    set.viewpoint = textOf(record.viewpoint(), objects);
    set.viewpoints = textsOf(record.viewpoints(), objects);
    if (record.materials())
        for (const fb::MaterialState* entry : *record.materials())
            set.materials.push_back({objects.text(entry->material()), objects.text(entry->state())});
    if (record.nodes())
        for (const fb::NodeState* entry : *record.nodes()) {
            const auto* path = entry->node();
            set.nodes.push_back(
                {path ? NodePath(path->begin(), path->end()) : NodePath(), objects.text(entry->state())});
        }
    return set;
}

} // namespace

VariantFields variantFields(const VariantTable& table, ObjectNumbers& numbers)
{
    VariantFields fields;
    fields.groups = indicesOf(table.groups, numbers);
    for (const VariantTable::Set& set : table.sets)
        fields.sets.push_back(setFields(set, numbers));
    return fields;
}

std::uint64_t storedSize(const VariantFields& fields)
{
    std::uint64_t size = bytesPerRecord + 4 * fields.groups.size();
    for (const VariantFields::Set& set : fields.sets) {
        size += 2 * bytesPerRecord + 4 * set.viewpoints.size() + sizeof(fb::MaterialState) * set.materials.size();
        for (const VariantFields::NodeState& entry : set.nodes)
            size += bytesPerRecord + 4 * entry.node->size();
    }
    return size;
}

flatbuffers::Offset<fb::Variants> storeVariants(const VariantFields& fields, flatbuffers::FlatBufferBuilder& builder)
{
    std::vector<flatbuffers::Offset<fb::VariantSet>> sets;
    for (const VariantFields::Set& set : fields.sets)
        sets.push_back(storeSet(set, builder));
    const auto groups = builder.CreateVector(fields.groups);
    return fb::CreateVariants(builder, groups, builder.CreateVector(sets));
}

VariantTable restoreVariants(const fb::Variants& record, const NumberedObjects& objects)
{
    VariantTable table;
    table.groups = textsOf(record.groups(), objects);
    if (record.sets())
        for (const fb::VariantSet* set : *record.sets())
            table.sets.push_back(restoreSet(*set, objects));
    return table;
}

} // namespace osg::scenefile
