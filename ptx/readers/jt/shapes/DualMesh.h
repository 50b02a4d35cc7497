#pragma once

#include "ptx/readers/jt/codec/Packets.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ptx::jt::shapes
{

/// The decoded arrays from which the connectivity of a mesh is rebuilt.
struct Topology {
    std::array<codec::Values, 8> degrees;
    codec::Values valences;
    codec::Values groups;
    codec::Values flags;
    std::array<std::vector<std::uint64_t>, 8> masks;
    std::vector<std::uint32_t> largeMasks;
    codec::Values splitSymbols;
    codec::Values splitPositions;
};

/// A corner of a polygon: numbers into the positions and into the attribute records.
struct Corner {
    static constexpr std::uint32_t NoRecord = 0xFFFFFFFFu;
    std::uint32_t position = 0;
    std::uint32_t record = NoRecord;
};

struct Triangle {
    std::array<Corner, 3> corners;
    std::int32_t group = 0; ///< triangles of one surface share it
};

/// Polygons as triangles, with how many positions they were made over.
struct Connectivity {
    std::vector<Triangle> triangles;
    std::size_t positions = 0;
    const char* error = nullptr; ///< set when the arrays contradict each other; there are no triangles then
};

/// Rebuilds the triangles. Polygons that only close open borders are left out; others are cut into fans.
Connectivity rebuild(const Topology& topology);

} // namespace ptx::jt::shapes
