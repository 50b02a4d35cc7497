#pragma once

#include "ptx/readers/step/p21/Entities.h"

#include <array>
#include <cstdint>
#include <functional>

namespace ptx::step::facets
{

/// A triangulated face or set of surfaces, as its record writes it: triangles, or strips and fans, of entries that name
/// points by way of an index or without one. All these numbers begin with 1.
class Surface
{
public:
    /// Whether entities of `type` can be read as one.
    static bool isOne(std::string_view type);

    /// `record` is one.
    explicit Surface(const p21::Fields& record);

    /// The number of the list of its points.
    std::uint32_t points() const { return m_record.reference(1); }
    /// A list of lists of three numbers.
    p21::Fields normals() const { return m_record.list(3); }
    /// How many entries there are when the list has `points` points.
    std::size_t entries(std::size_t points) const;
    /// The point of an entry; 0 when there is none.
    std::size_t pointOf(std::size_t entry) const;

    /// Three entries, none of them known to be there.
    using Corners = std::array<std::size_t, 3>;
    /// Calls `take` for each triangle, with its front turned the way the record turns it, until that says false.
    void forEachTriangle(const std::function<bool(const Corners&)>& take) const;

private:
    bool forTriangles(const p21::Fields& triangles, const std::function<bool(const Corners&)>& take) const;
    bool forStrips(const p21::Fields& strips, const std::function<bool(const Corners&)>& take) const;
    bool forFans(const p21::Fields& fans, const std::function<bool(const Corners&)>& take) const;

    p21::Fields m_record;
    std::size_t m_indexAt;
    p21::Fields m_index;
};

} // namespace ptx::step::facets
