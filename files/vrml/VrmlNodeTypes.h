#pragma once

#include "files/vrml/VrmlNodes.h"

namespace formats::vrml
{

/// The built-in type of this name; null for others.
const NodeType* builtInType(std::string_view name);

} // namespace formats::vrml
