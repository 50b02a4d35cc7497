#pragma once

#include "scene/Attributes.h"

#include <cstddef>

namespace osg
{

inline constexpr std::size_t MostAttributes = 100'000;             ///< of one product or occurrence; of texts of a list
inline constexpr std::size_t MostTextBytes = std::size_t(1) << 20; ///< of one text, whatever it is

/// `attributes` within these limits. Those beyond are left out, and texts cut between letters of UTF-8; the attributes
/// "Attributes left out" and "Attributes cut short" at the end tell how many there were of these.
AttributeList bounded(AttributeList attributes);

} // namespace osg
