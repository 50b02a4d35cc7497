#pragma once

#include <string>

namespace ptx::step::damage
{

/// An entity that cannot be used as it is.
struct Fault {
    int ident = 0;      ///< its number in the text, "#12"
    std::string reason; ///< why, for a person
};

} // namespace ptx::step::damage
