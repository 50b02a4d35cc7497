#include "files/scenefile/AttributeFields.h"

#include <bit>
#include <utility>

namespace osg::scenefile
{

namespace
{

using Type = fb::AttributeType;

/// The bits of a value and its type.
struct ValueFields {
    ObjectNumbers& numbers;
    std::vector<std::uint32_t>& items;

    using Stored = std::pair<std::uint64_t, Type>;
    Stored operator()(const std::string& text) const { return {numbers.passingText(text), Type::Text}; }
    Stored operator()(std::int64_t number) const { return {std::bit_cast<std::uint64_t>(number), Type::Integer}; }
    Stored operator()(double number) const { return {std::bit_cast<std::uint64_t>(number), Type::Real}; }
    Stored operator()(bool isTrue) const { return {isTrue ? 1 : 0, Type::Boolean}; }
    Stored operator()(const AttributeDate& date) const { return {numbers.passingText(date.text), Type::Date}; }
    Stored operator()(const std::vector<std::string>& list) const
    {
        for (const std::string& item : list)
            items.push_back(numbers.passingText(item));
        return {list.size(), Type::List};
    }
};

class MappedAttributes final : public AttributeSource
{
public:
    MappedAttributes(const fb::Scene& scene, std::shared_ptr<const void> owner)
        : m_scene(scene), m_owner(std::move(owner))
    {
    }

    AttributeList list(const void* place) const override
    {
        const auto& record = *static_cast<const fb::Attachment*>(place);
        AttributeList attributes;
        if (!record.attributes())
            return attributes;
        attributes.reserve(record.attributes()->size());
        std::uint32_t item = 0;
        for (const fb::Attribute* attribute : *record.attributes())
            attributes.push_back({text(attribute->name()), valueOf(*attribute, record, item),
                                  attribute->unit() == 0 ? std::string() : text(attribute->unit() - 1)});
        return attributes;
    }

    /// Looks at names only, so that a search through a file makes no lists.
    std::string text(const void* place, std::string_view name) const override
    {
        const auto& record = *static_cast<const fb::Attachment*>(place);
        std::uint32_t item = 0;
        for (std::uint32_t i = 0; record.attributes() && i < record.attributes()->size(); ++i) {
            const fb::Attribute& attribute = *record.attributes()->Get(i);
            if (textAt(attribute.name()).string_view() == name)
                return textOf(valueOf(attribute, record, item));
            item += attribute.type() == Type::List ? static_cast<std::uint32_t>(attribute.bits()) : 0;
        }
        return {};
    }

private:
    const flatbuffers::String& textAt(std::uint64_t index) const
    {
        return *m_scene.texts()->Get(static_cast<flatbuffers::uoffset_t>(index));
    }
    std::string text(std::uint64_t index) const { return textAt(index).str(); }

    AttributeValue valueOf(const fb::Attribute& attribute, const fb::Attachment& record, std::uint32_t& item) const
    {
        switch (attribute.type()) {
        case Type::Integer:
            return std::bit_cast<std::int64_t>(attribute.bits());
        case Type::Real:
            return std::bit_cast<double>(attribute.bits());
        case Type::Boolean:
            return attribute.bits() != 0;
        case Type::Date:
            return AttributeDate{text(attribute.bits())};
        case Type::List:
            return itemsOf(record, item, attribute.bits());
        case Type::Text:
            break;
        }
        return text(attribute.bits());
    }

    std::vector<std::string> itemsOf(const fb::Attachment& record, std::uint32_t& next, std::uint64_t count) const
    {
        std::vector<std::string> items;
        for (; count > 0; --count)
            items.push_back(text(record.items()->Get(next++)));
        return items;
    }

    const fb::Scene& m_scene;
    std::shared_ptr<const void> m_owner;
};

} // namespace

void addAttributeFields(const AttributeList& attributes, ObjectNumbers& numbers, AttachmentFields& fields)
{
    fields.attributes.reserve(attributes.size());
    for (const Attribute& attribute : attributes) {
        const auto [bits, type] = std::visit(ValueFields{numbers, fields.items}, attribute.value);
        const std::uint32_t name = numbers.passingText(attribute.name);
        const std::uint32_t unit = attribute.unit.empty() ? 0 : numbers.passingText(attribute.unit) + 1;
        fields.attributes.emplace_back(bits, name, unit, type);
    }
}

std::shared_ptr<const AttributeSource> makeAttributeSource(const fb::Scene& scene, std::shared_ptr<const void> owner)
{
    return std::make_shared<MappedAttributes>(scene, std::move(owner));
}

} // namespace osg::scenefile
