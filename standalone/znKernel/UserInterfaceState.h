#pragma once

#include <string>

namespace zn::kernel
{

/// What was asked of the parts of a host that its user sees. The open host has no window; it keeps the wishes.
struct UserInterfaceState {
    bool busy = false;
    bool inputBlocked = false;         ///< only while busy
    unsigned cancelledRefinements = 0; ///< times that the views were told to stop refining
    unsigned shownWholes = 0;          ///< times that the views were told to show the whole scene
    std::string textureBase;           ///< the file whose folder searches for pictures begin in; empty for none
};

} // namespace zn::kernel
