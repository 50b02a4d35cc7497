#pragma once

#include "ptx/readers/jt/codec/Vectors.h"
#include "ptx/readers/jt/container/Segments.h"
#include "ptx/readers/jt/graph/ElementKind.h"
#include "ptx/readers/jt/graph/Placement.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ptx::jt::graph
{

/// Number of an element within its file.
using Id = std::int32_t;

/// A segment that an element says is to be loaded when it is needed.
struct LateLoaded {
    container::Guid segment{};
    int type = 0;
};

/// What kind of value a property has in the file.
enum class PropertyType { Text, Integer, Real, Date };

/// The value of a property in words, and the type that the file gives it.
struct PropertyValue {
    std::string text;
    PropertyType type = PropertyType::Text;
    operator const std::string&() const { return text; }
    friend bool operator==(const PropertyValue& value, const std::string& other) { return value.text == other; }
};

/// Key and value of what a node is given; keys as the file writes them.
using Properties = std::vector<std::pair<std::string, PropertyValue>>;

struct SceneNode {
    ElementKind kind = ElementKind::Unknown;
    bool isIgnored = false;
    std::vector<Id> attributes;
    std::vector<Id> children;  ///< the one child of an instance, the alternatives of a level of detail
    std::int32_t selected = 0; ///< of a switch: the one child that is shown, -1 for none
    std::string file;          ///< of a partition: the file that holds it, as written
    Properties properties;
    std::vector<LateLoaded> lateLoaded;
};

/// The fields of a material that are read, as bits.
enum MaterialField : unsigned { ColourField = 1, AlphaField = 2, VertexColourField = 4, AllFields = 7 };

/// A material. It changes what nodes further up say, field by field.
struct Material {
    codec::Colour diffuse{};
    bool hidesVertexColours = false; ///< its colour counts where vertices have one of their own
    unsigned given = AllFields;      ///< the fields that it changes
    unsigned final = 0;              ///< the fields that materials further down do not change
    bool isForced = false;           ///< unless they are forced
};

/// An attribute that counts for its node and whatever is below.
struct Attribute {
    std::optional<Material> material;
    std::optional<Placement> placement;
};

/// The scene graph segment of a file. References may lead nowhere.
struct SceneGraph {
    Id root = 0;
    std::unordered_map<Id, SceneNode> nodes;
    std::unordered_map<Id, Attribute> attributes;
    std::size_t textures = 0; ///< elements with pictures for materials, which are not read
    std::vector<std::string> warnings;
    container::Damage damage;

    /// Null when there is none.
    const SceneNode* find(Id id) const
    {
        const auto at = nodes.find(id);
        return at == nodes.end() ? nullptr : &at->second;
    }
};

/// Reads `data`, the unpacked scene graph segment of a file of version `major`.
SceneGraph readSceneGraph(container::Bytes data, int major, bool isBigEndian);

} // namespace ptx::jt::graph
