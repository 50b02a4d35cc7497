#pragma once

#include <Standard_Handle.hxx>

#include <string>

class TCollection_ExtendedString;
class TCollection_HAsciiString;
class TDF_Label;

namespace ptx::occt
{

/// As UTF-8, without control characters and blanks at its ends.
std::string utf8(const TCollection_ExtendedString& text);
/// The same; empty for a null.
std::string utf8(const Handle(TCollection_HAsciiString) & text);

/// The name that `label` bears, empty if none.
std::string nameOf(const TDF_Label& label);

} // namespace ptx::occt
