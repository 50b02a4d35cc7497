#pragma once

#include <Message_ProgressRange.hxx>

#include <cstddef>

class STEPControl_Reader;

namespace ptx::step::placements
{

/// Translates each product of the file that `reader` has read once, parts before their assemblies, and places its
/// occurrences by an AssemblyIndex, so that the reader's own transfer finds them done. Occurrences with anything odd
/// about their place, products that fail, and the topmost products are left to it.
/// @return how many occurrences were placed
std::size_t placeOccurrences(STEPControl_Reader& reader, const Message_ProgressRange& progress);

} // namespace ptx::step::placements
