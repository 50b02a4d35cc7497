#pragma once

#include "files/obj/ObjText.h"

#include <map>

namespace files::obj
{

/// The material libraries of an OBJ file, checked and rewritten as one: the material with the number n has the name
/// "n", and each has all of Ka, Kd, Ks, Ke, Ns and d.
struct MtlText {
    std::string text;
    std::map<std::string, std::size_t> numbers; ///< from the names in the files, UTF-8
};

/// Looks for the libraries beside the OBJ file. What cannot be read or understood in them is a warning.
MtlText checkMtl(const std::vector<ObjLibrary>& libraries, ReadTask& task);

} // namespace files::obj
