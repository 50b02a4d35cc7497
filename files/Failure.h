#pragma once

#include "files/Error.h"

#include <exception>
#include <utility>

namespace files
{

/// How the inner parts of a reader or writer leave their work; the function for the whole file turns it into a value.
class Failure : public std::exception
{
public:
    explicit Failure(Error error) : m_error(std::move(error)) {}
    const Error& error() const { return m_error; }
    const char* what() const noexcept override { return "files::Failure"; }

private:
    Error m_error;
};

} // namespace files
