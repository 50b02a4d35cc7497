#include "scene/Attributes.h"

#include "host/OSGSystem/Cast.h"
#include "scene/EditScope.h"

#include <charconv>
#include <utility>

namespace osg
{

FieldContainerType AttributeAttachment::_type("Attributes", &Attachment::_type, "Attributes");

AttributeSource::~AttributeSource() = default;

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

AttributeAttachment::AttributeAttachment(std::shared_ptr<const AttributeSource> source, const void* place)
    : m_source(std::move(source)), m_place(place)
{
}

AttributeAttachment::Ptr AttributeAttachment::create(AttributeList attributes)
{
    return create(std::make_shared<OwnAttributes>(std::move(attributes)), nullptr);
}

AttributeAttachment::Ptr AttributeAttachment::create(std::shared_ptr<const AttributeSource> source, const void* place)
{
    return Ptr(new AttributeAttachment(std::move(source), place));
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
