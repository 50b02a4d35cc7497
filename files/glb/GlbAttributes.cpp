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

/// Looks at all letters whatever they are, which a processor does several at a time.
bool isPlain(const std::string& text)
{
    bool arePlain = true;
    for (const char c : text)
        arePlain &= isPlain(c);
    return arePlain;
}

void addQuoted(const std::string& text, std::string& json)
{
    if (!isPlain(text)) {
        json += textOf(Json(text));
        return;
    }
    const std::size_t start = json.size();
    json.resize(start + text.size() + 2, '"');
    text.copy(json.data() + start + 1, text.size());
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

void addAttributesMember(const osg::AttributeList& attributes, AttributeWriter& writer, std::string& members)
{
    if (attributes.empty())
        return;
    members += "\"attributes\":";
    writer.add(attributes, members);
}

} // namespace

void AttributeWriter::add(const osg::AttributeList& attributes, std::string& json)
{
    const auto isNamed = [](const osg::Attribute& attribute, const std::string& name) {
        return attribute.name == name;
    };
    if (!std::equal(attributes.begin(), attributes.end(), m_names.begin(), m_names.end(), isNamed))
        lookAtNames(attributes);
    json += '{';
    for (const Member& member : m_members) {
        json += member.before;
        addValue(attributes[member.index], json);
        if (member.isLastOfSeveral)
            json += ']';
    }
    json += '}';
}

/// Equal names stay in their order.
void AttributeWriter::lookAtNames(const osg::AttributeList& attributes)
{
    m_names.clear();
    m_members.clear();
    for (const osg::Attribute& attribute : attributes) {
        m_members.push_back({m_names.size(), {}, false});
        m_names.push_back(attribute.name);
    }
    std::stable_sort(m_members.begin(), m_members.end(),
                     [this](const Member& a, const Member& b) { return m_names[a.index] < m_names[b.index]; });
    const auto isAsBefore = [this](std::size_t i) {
        return i > 0 && i < m_members.size() && m_names[m_members[i].index] == m_names[m_members[i - 1].index];
    };
    for (std::size_t i = 0; i < m_members.size(); ++i) {
        const bool isFirst = !isAsBefore(i);
        const bool isLast = !isAsBefore(i + 1);
        m_members[i].before = i == 0 ? "" : ",";
        if (isFirst) {
            addQuoted(m_names[m_members[i].index], m_members[i].before);
            m_members[i].before += isLast ? ":" : ":[";
        }
        m_members[i].isLastOfSeveral = isLast && !isFirst;
    }
}

std::string attributesText(const osg::AttributeList& attributes)
{
    std::string json;
    AttributeWriter().add(attributes, json);
    return json;
}

std::string GlbAttributes::members(const osg::AttributeAttachment::Ptr& occurrence,
                                   const osg::AttributeAttachment::Ptr& product)
{
    std::string members;
    if (occurrence)
        occurrence->visit([&](const osg::AttributeList& list) { addAttributesMember(list, m_writer, members); });
    if (product) {
        members += members.empty() ? "\"product\":" : ",\"product\":";
        addDigits(numberOf(*product), members);
    }
    return members;
}

std::size_t GlbAttributes::numberOf(const osg::AttributeAttachment& product)
{
    // Who holds the only reference is the only one to meet it.
    if (product.getRefCount() == 1)
        return add(product);
    const auto known = m_numbers.find(&product);
    return known == m_numbers.end() ? m_numbers.emplace(&product, add(product)).first->second : known->second;
}

/// Equal products of several files become one.
std::size_t GlbAttributes::add(const osg::AttributeAttachment& product)
{
    m_entry = ',';
    product.visit([this](const osg::AttributeList& list) { m_writer.add(list, m_entry); });
    return m_products.add(m_entry);
}

std::string materialMembers(const osg::MaterialPtr& material)
{
    std::string members;
    AttributeWriter writer;
    if (material)
        addAttributesMember(osg::attributesOf(osg::AttachmentContainerPtr(material)), writer, members);
    return members;
}

std::string withExtras(Json json, const std::string& members)
{
    if (members.empty())
        return textOf(json);
    std::string own = "{";
    if (const auto found = json.find("extras"); found != json.end()) {
        if (!found->empty()) {
            own = textOf(*found);
            own.back() = ',';
        }
        json.erase(found);
    }
    std::string text = textOf(json);
    text.back() = ',';
    if (text.size() == 2)
        text.pop_back();
    return text.append("\"extras\":").append(own).append(members).append("}}");
}

} // namespace files::glb
