#pragma once

#include <string_view>

namespace ptx::jt::graph
{

/// The kinds of elements that the reader knows by name. Others are told by their base type alone.
enum class ElementKind {
    Unknown,
    Node,
    Group,
    Instance,
    Lod,
    Partition,
    Switch,
    Part,
    MetaData,
    Shape,
    Material,
    Texture,
    Transform,
    StringAtom,
    IntegerAtom,
    FloatAtom,
    DateAtom,
    LateLoadedAtom,
    PropertyProxy,
};

/// The base types that elements of unknown kinds are read by.
enum BaseType { BaseNode = 0, BaseGroup = 1, BaseShape = 2 };

/// The kind of the elements of type `guid`, a text with dashes in lower case.
ElementKind kindOf(std::string_view guid);

} // namespace ptx::jt::graph
