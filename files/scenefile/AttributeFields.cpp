#include "files/scenefile/AttributeFields.h"

#include <bit>
#include <utility>

namespace osg::scenefile
{

namespace
{

using Type = fb::AttributeType;

/// The lists of a record take its items one after the other.
class RecordItems
{
public:
    RecordItems(const fb::Attachment& record, const NumberedObjects& objects) : m_record(record), m_objects(objects) {}

    std::vector<std::string> take(std::uint64_t count)
    {
        std::vector<std::string> items;
        for (; count > 0; --count)
            items.push_back(m_objects.text(m_record.items()->Get(m_next++)));
        return items;
    }

private:
    const fb::Attachment& m_record;
    const NumberedObjects& m_objects;
    std::uint32_t m_next = 0;
};

AttributeValue valueOf(const fb::Attribute& attribute, const NumberedObjects& objects, RecordItems& items)
{
    switch (attribute.type()) {
    case Type::Integer:
        return std::bit_cast<std::int64_t>(attribute.bits());
    case Type::Real:
        return std::bit_cast<double>(attribute.bits());
    case Type::Boolean:
        return attribute.bits() != 0;
    case Type::Date:
        return AttributeDate{objects.text(static_cast<std::uint32_t>(attribute.bits()))};
    case Type::List:
        return items.take(attribute.bits());
    case Type::Text:
        break;
    }
    return objects.text(static_cast<std::uint32_t>(attribute.bits()));
}

} // namespace

AttributeList attributesIn(const fb::Attachment& record, const NumberedObjects& objects)
{
    AttributeList attributes;
    if (!record.attributes())
        return attributes;
    RecordItems items(record, objects);
    attributes.reserve(record.attributes()->size());
    for (const fb::Attribute* attribute : *record.attributes())
        attributes.push_back({objects.text(attribute->name()), valueOf(*attribute, objects, items),
                              attribute->unit() == 0 ? std::string() : objects.text(attribute->unit() - 1)});
    return attributes;
}

} // namespace osg::scenefile
