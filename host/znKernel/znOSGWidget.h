#pragma once

#include "host/HostExport.h"

/// The host's views of the scene.
class ZN_HOST_EXPORT znOSGWidget
{
public:
    /// Ends the slow refinement of resting pictures, because the scene is about to change.
    static void cancelAntialiasing();

    /// Lets the main views show the whole scene.
    /// @param animated whether their cameras travel there; the open host has no views to move
    static void showAllMains(bool animated);
};
