#include "files/glb/GlbAttributes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

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

template <class Number>
void addDigits(Number number, std::string& json)
{
    char text[32];
    json.append(text, std::to_chars(text, text + sizeof text, number).ptr);
}

/// With a point or an exponent, which tell it from an integer.
void addReal(double number, std::string& json)
{
    const std::size_t start = json.size();
    addDigits(number, json);
    if (json.find_first_of(".e", start) == std::string::npos)
        json += ".0";
}

/// Adds a value to a text; numbers keep all their digits, which Json would not.
struct ValueWriter {
    std::string& json;

    void operator()(const std::string& text) const { addQuoted(text, json); }
    void operator()(std::int64_t number) const { addDigits(number, json); }
    void operator()(double number) const
    {
        if (std::isfinite(number))
            addReal(number, json);
        else
            addQuoted(osg::textOf(number), json);
    }
    void operator()(bool isTrue) const { json += isTrue ? "true" : "false"; }
    void operator()(const osg::AttributeDate& date) const { addQuoted(date.text, json); }
    void operator()(const std::vector<std::string>& items) const
    {
        json += '[';
        for (const std::string& item : items) {
            json += &item == items.data() ? "" : ",";
            addQuoted(item, json);
        }
        json += ']';
    }
};

/// The type of a value that JSON has no type for; empty for others.
std::string_view typeWord(const osg::AttributeValue& value)
{
    const double* real = std::get_if<double>(&value);
    if (real && !std::isfinite(*real))
        return "real";
    return std::holds_alternative<osg::AttributeDate>(value) ? "date" : "";
}

void addValue(const osg::Attribute& attribute, std::string& json)
{
    const std::string_view type = typeWord(attribute.value);
    const bool isList = std::holds_alternative<std::vector<std::string>>(attribute.value);
    if (attribute.unit.empty() && type.empty() && !isList)
        return std::visit(ValueWriter{json}, attribute.value);
    json += "{\"value\":";
    std::visit(ValueWriter{json}, attribute.value);
    if (!attribute.unit.empty()) {
        json += ",\"unit\":";
        addQuoted(attribute.unit, json);
    }
    if (!type.empty())
        json.append(",\"type\":\"").append(type).append("\"");
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

void addAttributes(const osg::AttributeList& attributes, std::string& json)
{
    const Places places = sorted(attributes);
    json += '{';
    for (auto first = places.begin(); first != places.end();) {
        const auto last =
            std::find_if(first, places.end(), [first](const auto* each) { return each->name != (*first)->name; });
        json += first == places.begin() ? "" : ",";
        addMember(first, last, json);
        first = last;
    }
    json += '}';
}

void addAttributesMember(const osg::AttributeList& attributes, std::string& members)
{
    if (attributes.empty())
        return;
    members += "\"attributes\":";
    addAttributes(attributes, members);
}

} // namespace

std::string attributesText(const osg::AttributeList& attributes)
{
    constexpr std::size_t usualBytes = 40; // of one
    std::string json;
    json.reserve(attributes.size() * usualBytes);
    addAttributes(attributes, json);
    return json;
}

std::string GlbAttributes::membersOf(const osg::NodePtr& node)
{
    std::string members;
    if (const auto occurrence = osg::attributeAttachment(node, osg::AttributeOwner::Occurrence))
        occurrence->visit([&members](const osg::AttributeList& list) { addAttributesMember(list, members); });
    if (const auto product = osg::attributeAttachment(node, osg::AttributeOwner::Product)) {
        members += members.empty() ? "\"product\":" : ",\"product\":";
        addDigits(numberOf(product), members);
    }
    return members;
}

/// Equal products of several files become one.
std::size_t GlbAttributes::numberOf(const osg::AttributeAttachment::Ptr& product)
{
    const auto [entry, isNew] = m_numbers.try_emplace(product.get());
    if (!isNew)
        return entry->second;
    const auto [known, isNewText] = m_known.try_emplace(product->visit(attributesText), m_products.size());
    if (isNewText)
        m_products.push_back(&known->first);
    return entry->second = known->second;
}

void GlbAttributes::addProducts(std::string& json) const
{
    json += '[';
    for (const std::string* product : m_products) {
        json += product == m_products.front() ? "" : ",";
        json += *product;
    }
    json += ']';
}

std::string materialMembers(const osg::MaterialPtr& material)
{
    std::string members;
    if (material)
        addAttributesMember(osg::attributesOf(osg::AttachmentContainerPtr(material)), members);
    return members;
}

std::string withExtras(Json json, const std::string& members)
{
    if (members.empty())
        return textOf(json);
    const auto found = json.find("extras");
    std::string own = "{";
    if (found != json.end() && !found->empty()) {
        own = textOf(*found);
        own.back() = ',';
    }
    if (found != json.end())
        json.erase(found);
    std::string text = textOf(json);
    text.back() = ',';
    if (text.size() == 2)
        text.pop_back();
    return text.append("\"extras\":").append(own).append(members).append("}}");
}

} // namespace files::glb
