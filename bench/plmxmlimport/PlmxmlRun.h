#pragma once

#include <QString>

#include <cstddef>

/// What one import of a PLMXML document took, in seconds.
struct PlmxmlRun {
    double total = 0;
    double document = 0;   ///< reading the text and building the tree
    double conversion = 0; ///< of the wall clock, while converters were at work and nothing else was done
    double loading = 0;    ///< of converted files
    double merging = 0;    ///< hanging copies of loaded parts into the tree
    double waiting = 0;    ///< sum over conversions, from the end of one until it was noticed
    double converters = 0; ///< sum over conversions, from the launch until the end was noticed
    std::size_t geometries = 0;
    std::size_t placedGeometries = 0;
    std::size_t placedTriangles = 0;
    bool succeeded = false;
};

/// Imports `file` by its loader job in a session of its own, with at most `processes` converters at a time. Needs an
/// application object.
PlmxmlRun runDocument(const QString& file, int processes);
