#pragma once

#include "host/znUtils/znMessage.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace zn
{

/// Functions that are called by a name and speak through a message, for hosts that offer more than the contract names.
class CallTable
{
public:
    /// Answers a call through its message; false when it failed.
    using Function = std::function<bool(znMessage& message, int caller)>;

    /// Offers `function` under `name`, in place of what was offered under it before.
    void offer(const std::string& name, Function function) { m_functions[name] = std::move(function); }

    /// False when the function failed, or nothing goes by this name.
    bool call(const std::string& name, znMessage& message, int caller) const;

private:
    std::map<std::string, Function> m_functions;
};

} // namespace zn
