#pragma once

#include "standalone/znUtils/CallTable.h"

namespace zn::nodes
{

/// What `znOpenSGUtils::call` knows in one session. A host adds its own, or puts them in place of what is there.
struct HelperCalls {
    CallTable table;
};

} // namespace zn::nodes
