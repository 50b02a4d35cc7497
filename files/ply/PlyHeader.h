#pragma once

#include "files/ReadTask.h"

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace files::ply
{

enum class PlyType { Int8, Uint8, Int16, Uint16, Int32, Uint32, Float, Double };

/// The bytes of a number of this type.
std::size_t plyTypeSize(PlyType type);
/// What stands for 1 in a colour of this type: the largest number of a type of integers, 1 for others.
double plyTypeOne(PlyType type);

struct PlyProperty {
    std::string name;
    PlyType type = PlyType::Float;    ///< of the value, or of each value of a list
    std::optional<PlyType> countType; ///< of the length, for a list
};

struct PlyElement {
    std::string name;
    std::uint64_t count = 0;
    std::vector<PlyProperty> properties;
};

enum class PlyFormat { Text, LittleEndian, BigEndian };

struct PlyHeader {
    PlyFormat format = PlyFormat::Text;
    std::vector<PlyElement> elements;
    std::vector<QString> textures; ///< of comments "TextureFile NAME", as the file has them
    std::size_t size = 0;          ///< of the header in bytes; the data follow
    std::uint64_t lines = 0;       ///< of the header
};

/// Fails through `task` with the line when `file` does not begin with a sound header.
PlyHeader readPlyHeader(std::string_view file, const ReadTask& task);

} // namespace files::ply
