#pragma once

#include <QMetaType>

namespace zn
{

/// How far the part files of an assembly are. Those that wait are the rest of `total`.
struct PartCounts {
    unsigned total = 0;   ///< all part files that the import knows of so far
    unsigned running = 0; ///< conversions at work
    unsigned done = 0;    ///< in the tree
    unsigned failed = 0;  ///< those that did not come in

    /// How many of all have ended, in whole percent, rounded down; 0 without parts.
    unsigned percent() const { return total == 0 ? 0 : 100 * (done + failed) / total; }
    /// Whether no part is waited for any more; true without parts.
    bool allEnded() const { return done + failed == total; }
    /// Equal counts.
    friend bool operator==(const PartCounts&, const PartCounts&) = default;
};

} // namespace zn

Q_DECLARE_METATYPE(zn::PartCounts)
