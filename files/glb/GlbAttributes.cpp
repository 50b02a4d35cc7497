#include "files/glb/GlbAttributes.h"

#include <algorithm>
#include <cmath>

namespace files::glb
{

namespace
{

bool isPlain(char c)
{
    return c >= ' ' && c < 0x7F && c != '"' && c != '\\';
}

void addQuoted(const std::string& text, std::string& json)
{
    if (std::all_of(text.begin(), text.end(), isPlain))
        json.append("\"").append(text).append("\"");
    else
        json += textOf(Json(text));
}

/// Adds a value to a text; numbers keep all their digits, which Json would not.
struct ValueWriter {
    std::string& json;

    void operator()(const std::string& text) const { addQuoted(text, json); }
    void operator()(std::int64_t number) const { json += osg::textOf(number); }
    void operator()(double number) const
    {
        if (std::isfinite(number))
            json += osg::textOf(number);
        else
            addQuoted(osg::textOf(number), json);
    }
    void operator()(bool isTrue) const { json += isTrue ? "true" : "false"; }
    void operator()(const osg::AttributeDate& date) const { addQuoted(date.text, json); }
    void operator()(const std::vector<std::string>& items) const
    {
        json += "{\"value\":[";
        for (const std::string& item : items) {
            json += &item == items.data() ? "" : ",";
            addQuoted(item, json);
        }
        json += "]}";
    }
};

void addValue(const osg::Attribute& attribute, std::string& json)
{
    if (attribute.unit.empty() || std::holds_alternative<std::vector<std::string>>(attribute.value))
        return std::visit(ValueWriter{json}, attribute.value);
    json += "{\"value\":";
    std::visit(ValueWriter{json}, attribute.value);
    json += ",\"unit\":";
    addQuoted(attribute.unit, json);
    json += '}';
}

using Places = std::vector<const osg::Attribute*>;

/// By name; equal names stay in their order.
Places sorted(const osg::AttributeList& attributes)
{
    Places places;
    places.reserve(attributes.size());
    for (const osg::Attribute& attribute : attributes)
        places.push_back(&attribute);
    std::stable_sort(places.begin(), places.end(), [](const auto* a, const auto* b) { return a->name < b->name; });
    return places;
}

void addMember(Places::const_iterator first, Places::const_iterator last, std::string& json)
{
    addQuoted((*first)->name, json);
    json += last - first > 1 ? ":[" : ":";
    for (auto each = first; each != last; ++each) {
        json += each == first ? "" : ",";
        addValue(**each, json);
    }
    json += last - first > 1 ? "]" : "";
}

std::string attributesMember(const osg::AttributeList& attributes)
{
    return attributes.empty() ? std::string() : "\"attributes\":" + attributesText(attributes);
}

} // namespace

std::string attributesText(const osg::AttributeList& attributes)
{
    const Places places = sorted(attributes);
    std::string json = "{";
    for (auto first = places.begin(); first != places.end();) {
        const auto last =
            std::find_if(first, places.end(), [first](const auto* each) { return each->name != (*first)->name; });
        json += first == places.begin() ? "" : ",";
        addMember(first, last, json);
        first = last;
    }
    return json + "}";
}

std::string GlbAttributes::membersOf(const osg::NodePtr& node)
{
    std::string members = attributesMember(osg::attributesOf(node, osg::AttributeOwner::Occurrence));
    if (const auto product = osg::attributeAttachment(node, osg::AttributeOwner::Product))
        members += (members.empty() ? "" : ",") + ("\"product\":" + std::to_string(numberOf(product)));
    return members;
}

/// Equal products of several files become one.
std::size_t GlbAttributes::numberOf(const osg::AttributeAttachment::Ptr& product)
{
    const auto [entry, isNew] = m_numbers.try_emplace(product.get());
    if (!isNew)
        return entry->second;
    const std::string text = attributesText(product->attributes());
    const auto [known, isNewText] = m_known.try_emplace(text, m_products.size());
    if (isNewText)
        m_products.addText(text);
    return entry->second = known->second;
}

std::string materialMembers(const osg::MaterialPtr& material)
{
    return material ? attributesMember(osg::attributesOf(osg::AttachmentContainerPtr(material))) : std::string();
}

std::string withExtras(const Json& json, const std::string& members)
{
    if (members.empty())
        return textOf(json);
    Json others = json;
    const Json own = others.value("extras", Json::object());
    others.erase("extras");
    std::string text = textOf(others);
    text.pop_back();
    text += (text.size() > 1 ? ",\"extras\":" : "\"extras\":") + textOf(own);
    text.pop_back();
    return text + (own.empty() ? "" : ",") + members + "}}";
}

} // namespace files::glb
