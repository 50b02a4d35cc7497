#pragma once

#include "files/vrml/VrmlLexer.h"
#include "files/vrml/VrmlNodes.h"

namespace files::vrml
{

/// Takes the value of a field that holds no nodes: one value, or for a list several of them in brackets. Fails through
/// the source of `lexer`.
Value takeValue(Lexer& lexer, const FieldSpec& spec);

} // namespace files::vrml
