#pragma once

#include "importer/plmxml/FileTable.h"
#include "importer/plmxml/Matrix4.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace importer::plmxml
{

/// No part, no placement, no material.
inline constexpr std::uint32_t Nothing = ~std::uint32_t(0);

/// What a document says of a place's visibility.
enum class Visibility : std::uint8_t { AsAbove, Shown, Hidden, Last = Hidden };

/// A file of a part, moved within it.
struct ShapePiece {
    std::string name;
    Matrix4 placed = Identity4;
    bool isMoved = false;
    std::uint32_t file = FileTable::None;
    std::size_t element = 0; ///< the hash value of the element that names the file
};

/// What stands at places.
struct StructurePart {
    std::string id;       ///< of the element; may be empty
    std::size_t view = 0; ///< the hash value of its part view; 0 without one
    std::string name;
    std::vector<std::uint32_t> placements;
    std::vector<ShapePiece> pieces;
    std::vector<std::string> tags;
    std::uint32_t shapeNodes = 0; ///< nodes for pieces before those of the placements; only where nothing is rewritten
};

/// A part in its parent.
struct StructurePlacement {
    std::string id;          ///< of the element; may be empty
    std::size_t element = 0; ///< its hash value
    std::string name;
    std::uint32_t part = Nothing;
    Matrix4 placed = Identity4;
    std::uint32_t material = Nothing;
    Visibility visibility = Visibility::AsAbove;
    bool hasNode = true; ///< a node of its own above the part's; not always where nothing is rewritten
    std::vector<std::string> tags;
};

/// What holds at one place instead of what its last placement says.
struct StructureOverride {
    std::vector<std::uint32_t> path; ///< placements from the root down
    std::size_t element = 0;         ///< the hash value of its occurrence
    std::uint32_t part = Nothing;    ///< instead of the placement's; Nothing to keep that
    std::string name;                ///< empty to keep the other
    bool isMoved = false;
    Matrix4 placed = Identity4; ///< in the parent
    std::uint32_t material = Nothing;
    Visibility visibility = Visibility::AsAbove;
    std::vector<ShapePiece> pieces; ///< instead of the part's; empty to keep those
    std::vector<std::string> tags;
};

/// A material of a document.
struct StructureMaterial {
    std::string name;
    std::vector<std::pair<const char*, std::vector<double>>> numbers; ///< by attribute
};

/// A product structure, however its document writes it.
struct Structure {
    std::vector<StructurePart> parts;
    std::vector<StructurePlacement> placements;
    std::vector<std::vector<std::uint32_t>> graphs; ///< the placements at the top, by graph
    std::vector<StructureOverride> overrides;
    std::vector<StructureMaterial> materials;
    std::vector<std::vector<std::string>> materialTags; ///< of each material
};

} // namespace importer::plmxml
