#pragma once

#include <Message_ProgressRange.hxx>

#include <cstddef>
#include <functional>

class STEPControl_Reader;
class TopoDS_Shape;

namespace ptx::step::placements
{

/// Translates each product of the file that `reader` has read once, parts before their assemblies, and places its
/// occurrences by an AssemblyIndex, so that the reader's own transfer finds them done. Occurrences with anything odd
/// about their place, products that fail, and the topmost assemblies are left to it. `translated` gets the shape of
/// each product without components as soon as there is one.
/// @return how many occurrences were placed
std::size_t placeOccurrences(STEPControl_Reader& reader, const Message_ProgressRange& progress,
                             const std::function<void(const TopoDS_Shape&)>& translated);

} // namespace ptx::step::placements
