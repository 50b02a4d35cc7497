#pragma once

#include "ptx/readers/jt/container/Cursor.h"

namespace ptx::jt::container
{

/// The version that each block of an element begins with: nothing in version 8, then 16 bits, then 8.
inline void skipBlockVersion(Cursor& in, int major)
{
    if (major >= 10)
        in.u8();
    else if (major == 9)
        in.i16();
}

} // namespace ptx::jt::container
