#include "ptx/readers/jt/graph/PropertyElements.h"
#include "ptx/readers/jt/container/CountedText.h"

#include "ptx/readers/jt/container/BlockVersion.h"

#include <charconv>
#include <cstdio>

namespace ptx::jt::graph
{

namespace
{

std::string numberText(float value)
{
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

// Months count from 0 in the file.
std::string dateText(container::Cursor& in)
{
    std::array<int, 6> parts{};
    for (int& part : parts)
        part = in.i16();
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", parts[0], parts[1] + 1, parts[2], parts[3],
                  parts[4], parts[5]);
    return text;
}

LateLoaded readLateLoaded(container::Cursor& in)
{
    LateLoaded late;
    late.segment = container::readGuid(in);
    late.type = in.i32();
    return late;
}

enum ProxyType { ProxyNothing, ProxyText, ProxyInteger, ProxyFloat, ProxyDate };

PropertyValue proxyValue(container::Cursor& in, int type)
{
    switch (type) {
    case ProxyNothing:
        return {};
    case ProxyText:
        return {container::readText(in)};
    case ProxyInteger:
        return {std::to_string(in.i32()), PropertyType::Integer};
    case ProxyFloat:
        return {numberText(in.f32()), PropertyType::Real};
    case ProxyDate:
        return {dateText(in), PropertyType::Date};
    default:
        in.fail("a property has a value of an unknown type");
        return {};
    }
}

Properties readProxy(container::Cursor& in, int major)
{
    if (major >= 9) {
        in.i32();
        container::skipBlockVersion(in, major);
    }
    Properties properties;
    for (std::string key = container::readText(in); in.isOk() && !key.empty(); key = container::readText(in)) {
        const int type = in.u8();
        PropertyValue value = proxyValue(in, type);
        if (in.isOk())
            properties.emplace_back(std::move(key), std::move(value));
    }
    return properties;
}

// One atom may be named by many tables; a hostile file must not multiply a long text.
constexpr std::size_t MostText = 256u << 20;

void addPair(Id key, Id value, const Atoms& atoms, SceneNode& node, std::size_t& text)
{
    if (const auto late = atoms.lateLoaded.find(value); late != atoms.lateLoaded.end())
        node.lateLoaded.push_back(late->second);
    const auto keyText = atoms.texts.find(key);
    const auto valueText = atoms.texts.find(value);
    if (keyText == atoms.texts.end() || valueText == atoms.texts.end())
        return;
    text += keyText->second.text.size() + valueText->second.text.size();
    if (text <= MostText)
        node.properties.emplace_back(keyText->second, valueText->second);
}

} // namespace

void readAtom(container::Cursor& in, int major, ElementKind kind, Id id, Atoms& atoms)
{
    container::skipBlockVersion(in, major);
    in.u32();
    container::skipBlockVersion(in, major);
    switch (kind) {
    case ElementKind::StringAtom:
        atoms.texts.try_emplace(id, PropertyValue{container::readText(in)});
        break;
    case ElementKind::IntegerAtom:
        atoms.texts.try_emplace(id, PropertyValue{std::to_string(in.i32()), PropertyType::Integer});
        break;
    case ElementKind::FloatAtom:
        atoms.texts.try_emplace(id, PropertyValue{numberText(in.f32()), PropertyType::Real});
        break;
    case ElementKind::DateAtom:
        atoms.texts.try_emplace(id, PropertyValue{dateText(in), PropertyType::Date});
        break;
    case ElementKind::LateLoadedAtom:
        atoms.lateLoaded.try_emplace(id, readLateLoaded(in));
        break;
    default:
        break;
    }
}

void readPropertyTable(container::Cursor& in, const Atoms& atoms, SceneGraph& graph)
{
    if (in.left() == 0)
        return;
    in.i16();
    SceneNode nobody;
    std::size_t text = 0;
    for (std::size_t left = in.count(2 * sizeof(Id)); left > 0 && in.isOk(); --left) {
        const auto at = graph.nodes.find(in.i32());
        nobody = {};
        SceneNode& node = at == graph.nodes.end() ? nobody : at->second;
        for (Id key = in.i32(); key != 0; key = in.i32())
            addPair(key, in.i32(), atoms, node, text);
    }
    if (text > MostText)
        graph.warnings.emplace_back("properties repeat more text than is kept; the rest is left out");
}

Properties readPropertyProxy(container::Bytes data, int major, bool isBigEndian, container::Damage& damage)
{
    container::Cursor list(data, isBigEndian);
    container::Element element{{}, 0, list};
    if (!container::nextElement(list, element) || kindOf(element.type) != ElementKind::PropertyProxy)
        return {};
    Properties properties = readProxy(element.data, major);
    damage = element.data.damage();
    return properties;
}

} // namespace ptx::jt::graph
