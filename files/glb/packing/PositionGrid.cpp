#include "files/glb/packing/PositionGrid.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace files::glb::packing
{

namespace
{

constexpr double steps = 16384;
/// 16 bits hold a box of so many errors: a step is 2 / sqrt(3) of them, less up to a tenth for its two digits. That is
/// more than sqrt(3) times what may be merged.
constexpr double mostSteps = 68000;

/// Down to two digits: short numbers make short documents.
double twoDigits(double value)
{
    const double unit = std::pow(10, std::floor(std::log10(value)) - 1);
    const double digits = std::floor(value / unit * (1 + 1e-12));
    return unit < 1 ? digits / std::round(1 / unit) : digits * unit;
}

bool fits(const Box& box, double step)
{
    constexpr double most = 32767;
    return std::all_of(box.least.begin(), box.least.end(), [&](double v) { return std::round(v / step) >= -most; }) &&
           std::all_of(box.most.begin(), box.most.end(), [&](double v) { return std::round(v / step) <= most; });
}

} // namespace

/// Half a step along each axis.
double PositionGrid::error() const
{
    return step / 2 * std::numbers::sqrt3;
}

Affine PositionGrid::toMesh() const
{
    // As readers take it, which have floats.
    const double size = static_cast<float>(step);
    Affine place = {{{size, 0, 0}, {0, size, 0}, {0, 0, size}, {0, 0, 0}}};
    for (std::size_t axis = 0; axis < 3; ++axis)
        place[3][axis] = size * static_cast<double>(origin[axis]);
    return place;
}

PositionGrid gridFor(const Box& box, double error, GridOf of)
{
    const double allowed = std::max(error, box.longestSide() / (of == GridOf::Merged ? mostSteps : steps));
    if (!(allowed > 0) || !std::isfinite(allowed))
        return {};
    PositionGrid grid;
    grid.step = twoDigits(allowed * 2 / std::numbers::sqrt3);
    grid.isSigned = fits(box, grid.step);
    for (std::size_t axis = 0; axis < 3 && !grid.isSigned; ++axis)
        grid.origin[axis] = std::llround(std::floor(box.least[axis] / grid.step));
    return grid;
}

} // namespace files::glb::packing
