#pragma once

#include <Eigen/Core>

#include <cstddef>
#include <functional>
#include <vector>

namespace render::studio
{

/// Light by its direction.
using RadianceFunction = std::function<Eigen::Vector3f(const Eigen::Vector3f& direction)>;

/// Light from all directions, on a square: the octahedron |x| + |y| + |z| = 1, its lower half folded out over the
/// corners. Looking something up needs no angles.
class RadianceMap
{
public:
    /// Black, `side` x `side` values; `side` is 1 or more.
    explicit RadianceMap(int side);

    /// Half the side, each value the mean of four by the part of the sphere that they stand for. The side is even.
    RadianceMap halved() const;

    int side() const { return m_side; }
    const Eigen::Vector3f& value(int column, int row) const { return m_values[index(column, row)]; }
    void setValue(int column, int row, const Eigen::Vector3f& value) { m_values[index(column, row)] = value; }
    /// Once all values are set: lets `at` read across the borders of the square.
    void closeBorders();

    /// Between the four values around a direction, which need not be of length 1.
    Eigen::Vector3f at(const Eigen::Vector3f& direction) const;

    /// The direction, of length 1, of a place on the square of this side; the middle of a value lies at its half.
    static Eigen::Vector3f directionAt(float column, float row, int side);
    /// What part of the sphere the value at a place stands for, but for a factor that all have.
    static float weightAt(float column, float row, int side);

private:
    std::size_t index(int column, int row) const
    {
        return std::size_t(row + 1) * std::size_t(m_side + 2) + std::size_t(column + 1);
    }

    int m_side;
    std::vector<Eigen::Vector3f> m_values; ///< with a border of one value around
};

} // namespace render::studio
