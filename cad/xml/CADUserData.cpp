// The classes of free attributes: user data, its values, their lists and the items of those.

#include "cad/xml/CADUserData.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADUserList.h"
#include "cad/xml/CADUserListItem.h"
#include "cad/xml/CADUserValue.h"

namespace HB::XML::CAD
{

namespace
{
constexpr Keywords<CADUserValue::Type, 11> typeWords{
    {"int", "ints", "real", "reals", "boolean", "booleans", "string", "reference", "enum", "list", "dateTime"}};
}

void CADUserData::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (auto* value = createUserValue(child))
            m_userValues.push_back(value);
    }
}

void CADUserValue::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (const auto* list = createUserList(child))
            m_userListRef = list->getId();
    }
}

void CADUserValue::loadAttributes(const TiXmlElement& element)
{
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "title")
            setName(value);
        else if (name == "value")
            m_value = value;
        else if (name == "format")
            m_format = value;
        else if (name == "type")
            typeWords.read(value, m_type);
    }
}

void CADUserList::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (auto* item = createUserListItem(child))
            m_items.push_back(item);
    }
}

void CADUserListItem::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlText& text : TextNodesOf(element))
        m_text = text.Value();
}

} // namespace HB::XML::CAD
