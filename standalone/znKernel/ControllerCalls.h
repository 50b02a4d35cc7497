#pragma once

#include "standalone/znUtils/CallTable.h"

namespace zn::kernel
{

/// What `znController::call` knows in one session. A host adds its own, or puts them in place of what is there.
struct ControllerCalls {
    CallTable table;
};

} // namespace zn::kernel
