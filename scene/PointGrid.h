#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace osg
{

/// A point of a plane.
struct PlanePoint {
    double x = 0, y = 0;

    bool operator==(const PlanePoint&) const = default;
};

/// The smallest rectangle along the axes that holds some points.
struct PlaneBox {
    PlanePoint low, high;

    /// Grows so that it holds `point` too.
    void extend(const PlanePoint& point);
};

/// Points in the cells of a grid, about one a cell, so that those of a small box are found without a look at the
/// others. The points themselves belong to the caller, and must outlive it unchanged.
class PointGrid
{
public:
    explicit PointGrid(const std::vector<PlanePoint>& points);

    /// Takes the point up, or takes it out. A point is in the grid once at most.
    void insert(std::size_t point);
    void remove(std::size_t point);

    /// Calls `visit` with the number of each point of the cells that `box` touches, until it returns true; true then.
    template <class Visitor>
    bool anyIn(const PlaneBox& box, Visitor visit) const
    {
        const std::size_t left = columnOf(box.low.x), right = columnOf(box.high.x);
        const std::size_t bottom = rowOf(box.low.y), top = rowOf(box.high.y);
        for (std::size_t row = bottom; row <= top; ++row)
            for (std::size_t column = left; column <= right; ++column)
                for (const std::uint32_t point : m_cells[row * m_side + column])
                    if (visit(point))
                        return true;
        return false;
    }

    /// How many cells `box` touches: the least work of a search in it.
    std::size_t cellsIn(const PlaneBox& box) const;

private:
    std::size_t columnOf(double x) const { return place(x, m_box.low.x, m_columnsPerLength); }
    std::size_t rowOf(double y) const { return place(y, m_box.low.y, m_rowsPerLength); }
    std::size_t place(double value, double low, double cellsPerLength) const;
    std::vector<std::uint32_t>& cellOf(std::size_t point);

    const std::vector<PlanePoint>& m_points;
    PlaneBox m_box;
    std::size_t m_side = 1; ///< cells along each axis
    double m_columnsPerLength = 0;
    double m_rowsPerLength = 0;
    std::vector<std::vector<std::uint32_t>> m_cells;
    std::vector<std::uint32_t> m_places; ///< of each point in its cell, for a removal without a search
};

} // namespace osg
