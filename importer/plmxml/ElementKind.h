#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace importer::plmxml
{

/// What an element says. Ids are looked up among the elements of one kind.
enum class ElementKind : std::uint8_t {
    ProductDef,
    InstanceGraph,
    Instance,
    Part,
    Representation,
    CompoundRep,
    Transform,
    Material,
    ProductView,
    Occurrence,
    UserData,
    UserValue,
    Other ///< revisions, items, data sets, files, forms, and all that says nothing of the structure
};

/// How many kinds there are.
inline constexpr std::size_t ElementKindCount = static_cast<std::size_t>(ElementKind::Other) + 1;

/// The kind of an element by its name without prefix.
ElementKind kindOfName(std::string_view name);

} // namespace importer::plmxml
