#pragma once

#include <utility>

namespace parts
{

/// Calls a function at the end of its scope, also when an exception leaves it.
template <class Function>
class ScopeExit
{
public:
    /// `function` is called once and must not throw.
    explicit ScopeExit(Function function) : m_function(std::move(function)) {}
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;
    ~ScopeExit() { m_function(); }

private:
    Function m_function;
};

} // namespace parts
