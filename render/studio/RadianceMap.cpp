#include "render/studio/RadianceMap.h"

#include <algorithm>
#include <cmath>

namespace render::studio
{

namespace
{

float signOf(float value)
{
    return value < 0 ? -1.0f : 1.0f;
}

/// On the octahedron, where the absolute coordinates add up to 1.
Eigen::Vector3f onOctahedron(float column, float row, int side)
{
    const float x = 2 * column / float(side) - 1, y = 2 * row / float(side) - 1;
    const float z = 1 - std::abs(x) - std::abs(y);
    if (z >= 0)
        return {x, y, z};
    return {(1 - std::abs(y)) * signOf(x), (1 - std::abs(x)) * signOf(y), z};
}

} // namespace

RadianceMap::RadianceMap(int side)
    : m_side(side), m_values(std::size_t(side + 2) * std::size_t(side + 2), Eigen::Vector3f::Zero())
{
}

Eigen::Vector3f RadianceMap::directionAt(float column, float row, int side)
{
    return onOctahedron(column, row, side).normalized();
}

float RadianceMap::weightAt(float column, float row, int side)
{
    const float distance = onOctahedron(column, row, side).norm();
    return 1 / (distance * distance * distance);
}

RadianceMap RadianceMap::halved() const
{
    RadianceMap result(m_side / 2);
    for (int row = 0; row < result.m_side; ++row)
        for (int column = 0; column < result.m_side; ++column) {
            Eigen::Vector3f sum = Eigen::Vector3f::Zero();
            float weights = 0;
            for (int i = 0; i < 4; ++i) {
                const int x = 2 * column + i % 2, y = 2 * row + i / 2;
                const float weight = weightAt(float(x) + 0.5f, float(y) + 0.5f, m_side);
                sum += value(x, y) * weight;
                weights += weight;
            }
            result.setValue(column, row, sum / weights);
        }
    result.closeBorders();
    return result;
}

/// Beyond each border the square goes on at the same border, backwards.
void RadianceMap::closeBorders()
{
    const int last = m_side - 1;
    for (int i = 0; i < m_side; ++i) {
        setValue(-1, i, value(0, last - i));
        setValue(m_side, i, value(last, last - i));
        setValue(i, -1, value(last - i, 0));
        setValue(i, m_side, value(last - i, last));
    }
    setValue(-1, -1, value(last, last));
    setValue(m_side, m_side, value(0, 0));
    setValue(-1, m_side, value(last, 0));
    setValue(m_side, -1, value(0, last));
}

Eigen::Vector3f RadianceMap::at(const Eigen::Vector3f& direction) const
{
    const Eigen::Vector3f p = direction / direction.cwiseAbs().sum();
    const bool isBelow = p.z() < 0;
    const float x = isBelow ? (1 - std::abs(p.y())) * signOf(p.x()) : p.x();
    const float y = isBelow ? (1 - std::abs(p.x())) * signOf(p.y()) : p.y();
    const float across = std::clamp((x + 1) / 2 * float(m_side), 0.0f, float(m_side)) + 0.5f;
    const float down = std::clamp((y + 1) / 2 * float(m_side), 0.0f, float(m_side)) + 0.5f;
    const int column = int(across), row = int(down); // of the value to the upper left, with the border counted
    const float right = across - float(column), lower = down - float(row);
    const Eigen::Vector3f* first = &m_values[index(column - 1, row - 1)];
    const Eigen::Vector3f* second = first + m_side + 2;
    return (first[0] * (1 - right) + first[1] * right) * (1 - lower) +
           (second[0] * (1 - right) + second[1] * right) * lower;
}

} // namespace render::studio
