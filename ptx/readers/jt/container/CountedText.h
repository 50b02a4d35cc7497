#pragma once

#include "ptx/readers/jt/container/Cursor.h"

#include <string>

namespace ptx::jt::container
{

/// A counted text of 16-bit units as UTF-8. Ends at the first run of zeros at its end; what is no text becomes U+FFFD.
std::string readText(Cursor& in);

} // namespace ptx::jt::container
