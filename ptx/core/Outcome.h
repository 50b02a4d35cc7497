#pragma once

#include "protocol/ExitCode.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace ptx::core
{

using protocol::ExitCode;

/// Why a conversion ended without output: the exit code and one sentence for a person.
struct Failure {
    ExitCode code = ExitCode::Damaged;
    std::string message;
};

/// A value, or the reason why there is none.
template <class T>
class Outcome
{
public:
    Outcome(T value) : m_content(std::move(value)) {}
    Outcome(Failure failure) : m_content(std::move(failure)) {}

    explicit operator bool() const { return std::holds_alternative<T>(m_content); }
    /// Only when there is a value.
    T& value() { return std::get<T>(m_content); }
    const T& value() const { return std::get<T>(m_content); }
    /// Only when there is none.
    const Failure& failure() const { return std::get<Failure>(m_content); }

private:
    std::variant<T, Failure> m_content;
};

/// What a step without a value gives back: nothing when it went well.
using Trouble = std::optional<Failure>;

} // namespace ptx::core
