#pragma once

#include "protocol/Printable.h"

#include <QString>

#include <cstdio>

namespace znimport
{

/// What the program ends with.
///@{
inline constexpr int succeeded = 0;
inline constexpr int failed = 1;
inline constexpr int wrongUse = 2;
inline constexpr int partial = 3;
inline constexpr int interrupted = 130;
///@}

/// Writes a line to the standard error stream.
inline void complain(const QString& text)
{
    protocol::print(stderr, "znimport: " + text.toStdString() + '\n');
}

} // namespace znimport
