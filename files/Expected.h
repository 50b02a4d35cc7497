#pragma once

#include "files/Error.h"

#include <utility>
#include <variant>
#include <vector>

namespace files
{

/// A value, or the error because of which there is none.
template <class T>
class [[nodiscard]] Expected
{
public:
    /// A success.
    Expected(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
    /// A failure.
    Expected(Error error) : m_content(std::in_place_index<1>, std::move(error)) {}

    /// Whether there is a value.
    explicit operator bool() const { return m_content.index() == 0; }
    ///@{
    /// The value; throws `std::bad_variant_access` after a failure.
    const T& value() const& { return std::get<0>(m_content); }
    T& value() & { return std::get<0>(m_content); }
    T&& value() && { return std::get<0>(std::move(m_content)); }
    const T* operator->() const { return &value(); }
    T* operator->() { return &value(); }
    ///@}
    ///@{
    /// What went wrong; throws `std::bad_variant_access` after a success.
    const Error& error() const { return std::get<1>(m_content); }
    Error& error() { return std::get<1>(m_content); }
    ///@}

private:
    std::variant<T, Error> m_content;
};

/// What a step without a value gives back: nothing when it went well, or the error.
template <>
class [[nodiscard]] Expected<void>
{
public:
    /// A success.
    Expected() = default;
    /// A failure.
    Expected(Error error) : m_content(std::in_place_index<1>, std::move(error)) {}

    /// Whether it went well.
    explicit operator bool() const { return m_content.index() == 0; }
    ///@{
    /// What went wrong; throws `std::bad_variant_access` after a success.
    const Error& error() const { return std::get<1>(m_content); }
    Error& error() { return std::get<1>(m_content); }
    ///@}

private:
    std::variant<std::monostate, Error> m_content;
};

/// What reading or writing a whole file gave. What there is to tell besides is there after a failure, too.
template <class T>
struct [[nodiscard]] Result : Expected<T> {
    /// A result with nothing to tell besides.
    Result(T value) : Expected<T>(std::move(value)) {}
    /// The same without a value.
    Result(Error error) : Expected<T>(std::move(error)) {}
    /// A step's outcome, with what the steps before had to tell.
    Result(Expected<T> outcome, std::vector<Note> told) : Expected<T>(std::move(outcome)), warnings(std::move(told)) {}

    std::vector<Note> warnings; ///< what is not in the tree as it is in the file, or the other way round
};

} // namespace files
