#pragma once

#include <QMetaType>

/// How far the part files of an assembly are. Those that wait are the rest of `total`.
struct znPartCounts {
    unsigned total = 0;
    unsigned running = 0; ///< conversions at work
    unsigned done = 0;    ///< in the tree
    unsigned failed = 0;

    unsigned percent() const { return total == 0 ? 0 : 100 * (done + failed) / total; }
    bool allEnded() const { return done + failed == total; }
    friend bool operator==(const znPartCounts&, const znPartCounts&) = default;
};

Q_DECLARE_METATYPE(znPartCounts)
