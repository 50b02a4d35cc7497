#include "scene/AttributeLimits.h"

#include <algorithm>
#include <utility>

namespace osg
{

namespace
{

/// @return whether something was cut, here and below
bool cut(std::string& text)
{
    if (text.size() <= MostTextBytes)
        return false;
    std::size_t end = MostTextBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    text.resize(end);
    text.shrink_to_fit();
    return true;
}

bool cut(std::vector<std::string>& list)
{
    bool isCut = list.size() > MostAttributes;
    list.resize(std::min(list.size(), MostAttributes));
    for (std::string& item : list)
        isCut = cut(item) || isCut;
    return isCut;
}

bool cut(Attribute& attribute)
{
    bool isCut = cut(attribute.name);
    isCut = cut(attribute.unit) || isCut;
    if (auto* text = std::get_if<std::string>(&attribute.value))
        isCut = cut(*text) || isCut;
    else if (auto* date = std::get_if<AttributeDate>(&attribute.value))
        isCut = cut(date->text) || isCut;
    else if (auto* list = std::get_if<std::vector<std::string>>(&attribute.value))
        isCut = cut(*list) || isCut;
    return isCut;
}

} // namespace

AttributeList bounded(AttributeList attributes)
{
    const std::size_t leftOut = attributes.size() - std::min(attributes.size(), MostAttributes);
    attributes.resize(attributes.size() - leftOut);
    std::int64_t cuts = 0;
    for (Attribute& attribute : attributes)
        cuts += cut(attribute);
    if (leftOut > 0)
        attributes.push_back({"Attributes left out", static_cast<std::int64_t>(leftOut)});
    if (cuts > 0)
        attributes.push_back({"Attributes cut short", cuts});
    return attributes;
}

} // namespace osg
