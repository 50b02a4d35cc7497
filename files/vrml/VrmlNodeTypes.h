#pragma once

#include "files/vrml/VrmlNodes.h"

namespace files::vrml
{

/// The built-in type of this name; null for others.
const NodeType* builtInType(std::string_view name);

} // namespace files::vrml
