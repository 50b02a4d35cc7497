#include "ptx/readers/jt/graph/NodeFacts.h"

#include "files/scenefile/AttributeTags.h"
#include "files/scenefile/ConvertedTree.h"
#include "ptx/readers/jt/graph/GivenNames.h"

#include <array>
#include <charconv>
#include <unordered_set>

namespace ptx::jt::graph
{

namespace
{

constexpr std::array<std::string_view, 5> NameKeys = {"JT_PROP_NAME", "Name", "Part Name", "CAD_PARTNAME",
                                                      "SEOccurrenceName"};
constexpr std::string_view UnitKey = "JT_PROP_MEASUREMENT_UNITS";
constexpr std::string_view LayerKey = "LAYER";
constexpr std::string_view OwnPrefix = "JT_PROP_";

constexpr std::array<std::pair<std::string_view, double>, 11> Units = {{{"micrometers", 0.001},
                                                                        {"millimeters", 1},
                                                                        {"centimeters", 10},
                                                                        {"decimeters", 100},
                                                                        {"meters", 1000},
                                                                        {"kilometers", 1e6},
                                                                        {"inches", 25.4},
                                                                        {"feet", 304.8},
                                                                        {"yards", 914.4},
                                                                        {"mils", 0.0254},
                                                                        {"miles", 1609344}}};

std::optional<Unit> unitNamed(const std::string& name)
{
    for (const auto& [word, millimetres] : Units)
        if (isSameWord(word, name))
            return Unit{name, millimetres};
    return std::nullopt;
}

template <class Number>
osg::AttributeValue numberOr(const std::string& text)
{
    Number number{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() ? osg::AttributeValue(number) : osg::AttributeValue(text);
}

osg::AttributeValue typedValue(const PropertyValue& value)
{
    switch (value.type) {
    case PropertyType::Integer:
        return numberOr<std::int64_t>(value.text);
    case PropertyType::Real:
        return numberOr<double>(value.text);
    case PropertyType::Date:
        return osg::AttributeDate{value.text};
    case PropertyType::Text:
        break;
    }
    return value.text;
}

} // namespace

std::string nameOf(const SceneNode& node)
{
    for (const std::string_view key : NameKeys)
        for (const auto& [name, value] : node.properties)
            if (bareKey(name) == key && !value.text.empty())
                return shownName(value.text);
    return {};
}

std::vector<std::string> tagsOf(const SceneNode& node)
{
    std::vector<std::string> tags;
    for (const auto& [name, value] : node.properties) {
        const std::string_view key = bareKey(name);
        if (key == LayerKey)
            tags.push_back(osg::scenefile::converted::tag(osg::scenefile::converted::LayerKey, value.text));
        else if (isUserKey(name) && !key.starts_with(OwnPrefix))
            tags.push_back(osg::scenefile::converted::attributeTag({std::string(key), typedValue(value)}));
    }
    return tags;
}

std::vector<Id> nodesFromRootDown(const SceneGraph& graph)
{
    std::vector<Id> order = {graph.root};
    std::unordered_set<Id> seen = {graph.root};
    for (std::size_t i = 0; i < order.size(); ++i)
        if (const SceneNode* node = graph.find(order[i]))
            for (const Id child : node->children)
                if (graph.find(child) && seen.insert(child).second)
                    order.push_back(child);
    return order;
}

std::optional<Unit> unitOf(const SceneGraph& graph)
{
    for (const Id id : nodesFromRootDown(graph))
        for (const auto& [name, value] : graph.nodes.at(id).properties)
            if (isSameWord(bareKey(name), UnitKey))
                if (std::optional<Unit> unit = unitNamed(value))
                    return unit;
    return std::nullopt;
}

} // namespace ptx::jt::graph
