#pragma once

#include "files/Error.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace files
{

/// What a read has to tell beside its tree, as bytes that one process hands to another.
struct ReadReport {
    std::optional<Error> error; ///< why there is no tree
    std::vector<Note> warnings; ///< in their order

    QByteArray toBytes() const;
    /// Nothing when `bytes` are no whole report; they may come from a process that a file has taken over.
    static std::optional<ReadReport> fromBytes(const QByteArray& bytes);
};

} // namespace files
