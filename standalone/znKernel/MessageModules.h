#pragma once

#include "host/znUtils/znMessage.h"

#include <functional>
#include <vector>

namespace zn::kernel
{

/// The modules of a host that `znModuleBase::sendMessage` asks, in this order. The open host has none; whoever embeds
/// it adds its own.
struct MessageModules {
    /// Puts its answer into a message that it knows and gives true; leaves any other as it is and gives false.
    using Module = std::function<bool(znMessage& message)>;

    std::vector<Module> modules;
};

} // namespace zn::kernel
