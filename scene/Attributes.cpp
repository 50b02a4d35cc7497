#include "scene/Attributes.h"

#include "host/OSGSystem/Cast.h"
#include "scene/EditScope.h"

#include <charconv>
#include <utility>

namespace osg
{

FieldContainerType AttributeAttachment::_type("Attributes", &Attachment::_type, "Attributes");

AttributeSource::AttributeSource() = default;
AttributeSource::~AttributeSource() = default;

void AttributeSource::subUser()
{
    if (--m_users == 0)
        delete this;
}

const AttributeList* AttributeSource::kept(const void*) const
{
    return nullptr;
}

std::string AttributeSource::text(const void* place, std::string_view name) const
{
    const AttributeList* own = kept(place);
    return own ? findText(*own, name) : findText(list(place), name);
}

namespace
{

class OwnAttributes final : public AttributeSource
{
public:
    explicit OwnAttributes(AttributeList attributes) : m_attributes(std::move(attributes)) {}
    AttributeList list(const void*) const override { return m_attributes; }
    const AttributeList* kept(const void*) const override { return &m_attributes; }

private:
    AttributeList m_attributes;
};

template <class Number>
std::string digits(Number number)
{
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

struct ValueText {
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(std::int64_t number) const { return digits(number); }
    std::string operator()(double number) const { return digits(number); }
    std::string operator()(bool isTrue) const { return isTrue ? "true" : "false"; }
    std::string operator()(const AttributeDate& date) const { return date.text; }
    std::string operator()(const std::vector<std::string>& items) const
    {
        std::string text;
        for (const std::string& item : items)
            text += (&item == items.data() ? "" : "; ") + item;
        return text;
    }
};

unsigned short bindingOf(AttributeOwner owner)
{
    return static_cast<unsigned short>(owner);
}

} // namespace

AttributeAttachment::Ptr AttributeAttachment::create(AttributeList attributes)
{
    auto source = std::make_unique<OwnAttributes>(std::move(attributes));
    const Ptr attachment(new AttributeAttachment(*source, nullptr));
    (void)source.release(); // the attachment ends it
    return attachment;
}

void AttributeAttachment::operator delete(AttributeAttachment* attachment, std::destroying_delete_t)
{
    AttributeSource* source = attachment->m_source;
    attachment->~AttributeAttachment();
    if (!source->m_room)
        ::operator delete(attachment);
    source->subUser();
}

AttributeBlock::AttributeBlock(std::unique_ptr<AttributeSource> source, std::size_t size)
{
    source->m_room = std::make_unique_for_overwrite<std::byte[]>(size * sizeof(AttributeAttachment));
    ++source->m_users;
    m_source = source.release();
}

AttributeBlock::~AttributeBlock()
{
    m_source->subUser();
}

AttributeAttachment::Ptr AttributeBlock::create(const void* place)
{
    return AttributeAttachment::Ptr(::new (at(m_size++)) AttributeAttachment(*m_source, place));
}

AttributeAttachment::Ptr AttributeBlock::operator[](std::size_t index) const
{
    return AttributeAttachment::Ptr(std::launder(static_cast<AttributeAttachment*>(at(index))));
}

bool AttributeAttachment::equalFields(const FieldContainer& other) const
{
    const auto& attachment = static_cast<const AttributeAttachment&>(other);
    return (m_source == attachment.m_source && m_place == attachment.m_place) ||
           attributes() == attachment.attributes();
}

FieldContainerPtr AttributeAttachment::copy() const
{
    return Ptr(const_cast<AttributeAttachment*>(this));
}

AttributeAttachment::Ptr attributeAttachment(const AttachmentContainerPtr& container, AttributeOwner owner)
{
    if (!container)
        return {};
    return fcCast<AttributeAttachment>(
        container->findAttachment(AttributeAttachment::_type.getGroupId(), bindingOf(owner)));
}

AttributeList attributesOf(const AttachmentContainerPtr& container, AttributeOwner owner)
{
    const AttributeAttachment::Ptr attachment = attributeAttachment(container, owner);
    return attachment ? attachment->attributes() : AttributeList();
}

AttributeList attributesOf(const AttachmentContainerPtr& container)
{
    AttributeList all = attributesOf(container, AttributeOwner::Product);
    for (Attribute& attribute : attributesOf(container, AttributeOwner::Occurrence))
        all.push_back(std::move(attribute));
    return all;
}

void setAttributes(const AttachmentContainerPtr& container, AttributeOwner owner,
                   const AttributeAttachment::Ptr& attributes)
{
    const AttributeAttachment::Ptr before = attributeAttachment(container, owner);
    if (!container || before == attributes)
        return;
    const EditScope edit(container, AttachmentContainer::AttachmentsFieldMask);
    if (attributes)
        container->addAttachment(attributes, bindingOf(owner));
    else
        container->subAttachment(before, bindingOf(owner));
}

void addAttributes(const AttachmentContainerPtr& container, AttributeOwner owner, AttributeList attributes)
{
    if (attributes.empty())
        return;
    AttributeList all = attributesOf(container, owner);
    for (Attribute& attribute : attributes)
        all.push_back(std::move(attribute));
    setAttributes(container, owner, AttributeAttachment::create(std::move(all)));
}

std::string textOf(const AttributeValue& value)
{
    return std::visit(ValueText(), value);
}

std::string textOf(const Attribute& attribute)
{
    return textOf(attribute.value) + (attribute.unit.empty() ? "" : " " + attribute.unit);
}

std::string findText(const AttributeList& attributes, std::string_view name)
{
    for (const Attribute& attribute : attributes)
        if (attribute.name == name)
            return textOf(attribute.value);
    return {};
}

} // namespace osg
