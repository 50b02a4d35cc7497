#pragma once

#include "files/ReadTask.h"

#include <string>
#include <string_view>
#include <vector>

namespace files::obj
{

/// The faces, lines and points of one object, group and material that carry the same data. Names are UTF-8, empty where
/// the file gives none.
struct ObjSection {
    std::string object;
    std::string group;
    std::string material;
    std::string elements; ///< statements `f`, `l` and `p`
};

/// A statement `mtllib`.
struct ObjLibrary {
    QString name; ///< as the file has it: one file name or more
    std::uint64_t line = 0;
};

/// An OBJ file, checked and rewritten so that a parser meets nothing unusual in it: one statement a line, numbers in
/// their shortest form, vertices of three or six numbers, indices that count from 1 and exist, corners of one kind
/// within a section, polygons that can be cut up in sensible time.
struct ObjText {
    std::string vertices; ///< statements `v`, `vt` and `vn`
    std::vector<ObjSection> sections;
    std::vector<ObjLibrary> libraries;
};

/// Fails through `task` with the line where `text` is damaged or beyond the limits, or when there is nothing in it.
ObjText checkObj(std::string_view text, ReadTask& task);

} // namespace files::obj
