#include "files/gltf/ExtrasValues.h"

#include "scene/AttributeLimits.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

/// Names are put together of those around them no further than this: each of many values in an object with a long name
/// would repeat it.
constexpr std::size_t maxJoinedName = 1000;

std::optional<osg::AttributeValue> scalarOf(const Json& json)
{
    if (json.is_string())
        return json.get_ref<const std::string&>();
    if (json.is_boolean())
        return json.get<bool>();
    const bool isHuge = json.is_number_unsigned() && json.get<std::uint64_t>() >> 63 != 0;
    if (json.is_number_integer() && !isHuge)
        return json.get<std::int64_t>();
    if (json.is_number())
        return json.get<double>();
    return std::nullopt;
}

std::optional<osg::AttributeValue> listOf(const Json& array)
{
    std::vector<std::string> items;
    for (const Json& each : array) {
        const auto item = scalarOf(each);
        if (!item)
            return std::nullopt;
        items.push_back(osg::textOf(*item));
    }
    return items;
}

std::string textIn(const Json& object, const char* member)
{
    const auto found = object.find(member);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

/// The value of an object with "value" and no other members than "unit" and "type".
std::optional<osg::AttributeValue> wrappedValue(const Json& object)
{
    const auto value = object.find("value");
    if (value == object.end() || object.size() != 1 + object.count("unit") + object.count("type"))
        return std::nullopt;
    if (value->is_array())
        return listOf(*value);
    auto scalar = scalarOf(*value);
    const auto* text = scalar ? std::get_if<std::string>(&*scalar) : nullptr;
    const std::string type = textIn(object, "type");
    if (text && type == "date")
        return osg::AttributeDate{*text};
    if (double number = 0; text && type == "real") {
        const auto end = std::from_chars(text->data(), text->data() + text->size(), number);
        if (end.ec == std::errc() && end.ptr == text->data() + text->size())
            return number;
    }
    return scalar;
}

class Collector
{
public:
    Collector(bool isOurs, std::size_t& leftOut) : m_isOurs(isOurs), m_leftOut(leftOut) {}

    void addMembers(const Json& object, const std::string& prefix)
    {
        for (auto member = object.begin(); member != object.end(); ++member) {
            if (!prefix.empty() && prefix.size() + member.key().size() > maxJoinedName)
                ++m_leftOut;
            else
                add(prefix + member.key(), member.value());
        }
    }

    void add(const std::string& name, const Json& json)
    {
        if (json.is_array())
            return addArray(name, json);
        if (auto scalar = scalarOf(json))
            return addValue(name, std::move(*scalar));
        if (!json.is_object())
            return;
        if (auto value = wrappedValue(json))
            return addValue(name, std::move(*value), textIn(json, "unit"));
        addMembers(json, name + ".");
    }

    osg::AttributeList take() { return osg::bounded(std::move(m_attributes)); }

private:
    void addValue(const std::string& name, osg::AttributeValue value, std::string unit = {})
    {
        m_attributes.push_back({name, std::move(value), std::move(unit)});
    }

    void addArray(const std::string& name, const Json& array)
    {
        if (!m_isOurs) {
            if (auto list = listOf(array))
                addValue(name, std::move(*list));
            else
                ++m_leftOut;
            return;
        }
        for (const Json& each : array) {
            if (each.is_array())
                ++m_leftOut;
            else
                add(name, each);
        }
    }

    bool m_isOurs;
    std::size_t& m_leftOut;
    osg::AttributeList m_attributes;
};

osg::AttributeList collected(const Json& json, bool isOurs, std::size_t& leftOut)
{
    Collector collector(isOurs, leftOut);
    if (json.is_object())
        collector.addMembers(json, {});
    else
        collector.add("extras", json);
    return collector.take();
}

} // namespace

osg::AttributeList attributesIn(const Json& object, std::size_t& leftOut)
{
    return collected(object, true, leftOut);
}

osg::AttributeList foreignAttributesIn(const Json& extras, std::size_t& leftOut)
{
    return collected(extras, false, leftOut);
}

} // namespace files::gltf
