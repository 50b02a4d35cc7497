#include "importer/AttributeText.h"

#include "protocol/Printable.h"

#include <string_view>

namespace importer
{

namespace
{

constexpr std::size_t mostShown = 200;

/// Cut between letters of UTF-8.
std::size_t cutPlace(const std::string& text)
{
    std::size_t place = mostShown;
    while (place > 0 && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80)
        --place;
    return place;
}

std::string shown(const std::string& text)
{
    if (text.size() <= mostShown)
        return protocol::printableLine(text);
    return protocol::printableLine(std::string_view(text).substr(0, cutPlace(text))) + "... (" +
           std::to_string(text.size()) + " bytes)";
}

std::string linesOf(const osg::AttributeList& attributes, const std::string& start)
{
    std::string text;
    for (const osg::Attribute& attribute : attributes)
        text += start + shown(attribute.name) + " = " + shown(osg::textOf(attribute)) + "\n";
    return text;
}

} // namespace

std::string AttributeText::of(const osg::NodePtr& node, const std::string& indentation)
{
    std::string text;
    const auto product = osg::attributeAttachment(node, osg::AttributeOwner::Product);
    if (product && m_told.insert(product.get()).second)
        text = linesOf(product->attributes(), indentation + "product: ");
    return text + linesOf(osg::attributesOf(node, osg::AttributeOwner::Occurrence), indentation + "occurrence: ");
}

} // namespace importer
