#include "files/scenefile/AttributeTags.h"

#include "files/scenefile/ConvertedTree.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

namespace osg::scenefile::converted
{

namespace
{

constexpr std::string_view UserPrefix = "ptx::attribute:";
constexpr std::string_view NameMark = "::";

/// How the value of a tag is read; none where it is not of the type.
using ReadValue = std::optional<AttributeValue> (*)(const std::string& text);

template <class Number>
std::optional<AttributeValue> readNumber(const std::string& text)
{
    Number number{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::optional<AttributeValue> readText(const std::string& text)
{
    return text;
}

std::optional<AttributeValue> readBoolean(const std::string& text)
{
    if (text != "true" && text != "false")
        return std::nullopt;
    return text == "true";
}

std::optional<AttributeValue> readDate(const std::string& text)
{
    return AttributeDate{text};
}

std::vector<std::string> split(const std::string& text, char mark)
{
    std::vector<std::string> items;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(mark, start), text.size());
        items.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return items;
}

std::optional<AttributeValue> readList(const std::string& text)
{
    return split(text, '\n');
}

std::optional<AttributeValue> readNumbers(const std::string& text)
{
    return split(text, ' ');
}

struct TypeWord {
    std::string_view word;
    ReadValue read;
};

/// In the order of the alternatives of AttributeValue; a text with a unit needs a word.
constexpr std::size_t WordOfText = 6;
constexpr TypeWord types[] = {{"", readText},
                              {"integer", readNumber<std::int64_t>},
                              {"real", readNumber<double>},
                              {"boolean", readBoolean},
                              {"date", readDate},
                              {"list", readList},
                              {"text", readText}};

struct KnownKey {
    std::string_view key;
    const char* name;
    ReadValue read;
    const char* unit;
};

constexpr KnownKey knownKeys[] = {
    {ProductKey, ProductName, readText, ""},
    {ProductIdKey, ProductIdName, readText, ""},
    {DescriptionKey, "Description", readText, ""},
    {VersionKey, VersionName, readText, ""},
    {DocumentKey, "Document", readText, ""},
    {DesignatorKey, DesignatorName, readText, ""},
    {OccurrenceKey, OccurrenceName, readText, ""},
    {LayerKey, "Layer", readText, ""},
    {MaterialKey, MaterialName, readText, ""},
    {DensityKey, DensityName, readNumber<double>, "g/cm3"},
    {VolumeKey, "Validation volume", readNumber<double>, "mm3"},
    {AreaKey, "Validation area", readNumber<double>, "mm2"},
    {CentroidKey, "Validation centroid", readNumbers, "mm"},
};

constexpr std::pair<char, std::string_view> escapes[] = {{'%', "%25"}, {'=', "%3D"}, {':', "%3A"}};

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        const auto* escape =
            std::find_if(std::begin(escapes), std::end(escapes), [c](const auto& each) { return each.first == c; });
        if (escape == std::end(escapes))
            result += c;
        else
            result += escape->second;
    }
    return result;
}

std::string unescaped(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const auto* escape = std::find_if(std::begin(escapes), std::end(escapes),
                                          [text](const auto& each) { return text.starts_with(each.second); });
        const bool isPlain = escape == std::end(escapes);
        result += isPlain ? text.front() : escape->first;
        text.remove_prefix(isPlain ? 1 : escape->second.size());
    }
    return result;
}

Attribute attributeFrom(std::string name, ReadValue read, const std::string& value, std::string unit)
{
    if (std::optional<AttributeValue> typed = read(value))
        return {std::move(name), std::move(*typed), std::move(unit)};
    return {std::move(name), value, std::move(unit)};
}

/// `key` without the prefix: "[TYPE[:UNIT]]::NAME", whose first colon is the prefix's.
std::optional<Attribute> userAttribute(std::string_view key, const std::string& value)
{
    const std::size_t mark = key.starts_with(':') ? 0 : key.find(NameMark);
    if (mark == std::string_view::npos)
        return std::nullopt;
    const std::string_view type = key.substr(0, key.find(':'));
    const std::string_view unit = mark > type.size() ? key.substr(type.size() + 1, mark - type.size() - 1) : "";
    const std::string_view name = key.substr(mark + (mark == 0 ? 1 : NameMark.size()));
    for (const TypeWord& each : types)
        if (each.word == type)
            return attributeFrom(unescaped(name), each.read, value, unescaped(unit));
    return std::nullopt;
}

std::string listText(const std::vector<std::string>& items)
{
    std::string text;
    for (const std::string& item : items)
        text += (&item == items.data() ? "" : "\n") + item;
    return text;
}

} // namespace

std::string attributeTag(const Attribute& attribute)
{
    const auto* list = std::get_if<std::vector<std::string>>(&attribute.value);
    const std::size_t index =
        attribute.value.index() == 0 && !attribute.unit.empty() ? WordOfText : attribute.value.index();
    const std::string_view type = types[index].word;
    std::string key(UserPrefix);
    key += type;
    if (!attribute.unit.empty())
        key += ":" + escaped(attribute.unit);
    key += type.empty() ? ":" : NameMark;
    return tag(key + escaped(attribute.name), list ? listText(*list) : textOf(attribute.value));
}

std::optional<Attribute> attributeOf(const std::string& tag)
{
    const std::size_t equals = tag.find('=');
    if (!tag.starts_with("ptx::") || equals == std::string::npos)
        return std::nullopt;
    const std::string_view key = std::string_view(tag).substr(0, equals);
    const std::string value = tag.substr(equals + 1);
    if (key.starts_with(UserPrefix))
        return userAttribute(key.substr(UserPrefix.size()), value);
    for (const KnownKey& known : knownKeys)
        if (known.key == key)
            return attributeFrom(known.name, known.read, value, known.unit);
    return std::nullopt;
}

AttributeList takeAttributes(std::vector<std::string>& tags)
{
    AttributeList attributes;
    std::vector<std::string> others;
    for (std::string& tag : tags)
        if (std::optional<Attribute> attribute = attributeOf(tag))
            attributes.push_back(std::move(*attribute));
        else
            others.push_back(std::move(tag));
    tags = std::move(others);
    return attributes;
}

} // namespace osg::scenefile::converted
