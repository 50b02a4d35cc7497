#include "ptx/readers/jt/shapes/Directions.h"

#include "ptx/readers/jt/codec/Hash.h"

#include <cmath>

namespace ptx::jt::shapes
{

namespace
{

constexpr unsigned MostBits = 13;

using Code = std::array<std::uint32_t, 4>;

Code unpacked(std::uint32_t packed, unsigned bits)
{
    const std::uint32_t mask = (1u << bits) - 1;
    return {packed >> (2 * bits + 3), packed >> (2 * bits) & 7, packed >> bits & mask, packed & mask};
}

} // namespace

codec::Vector directionOf(std::uint32_t sextant, std::uint32_t octant, std::uint32_t theta, std::uint32_t psi,
                          unsigned bits)
{
    constexpr double Widest = 0.615479709;
    const double range = std::ldexp(1.0, static_cast<int>(bits));
    const double up = std::tan(Widest * (range - theta - (sextant & 1)) / range);
    const double t = std::asin(std::clamp(up, -1.0, 1.0));
    const double p = Widest * psi / range;
    const auto x = static_cast<float>(std::cos(t) * std::cos(p));
    const auto y = static_cast<float>(std::sin(p));
    const auto z = static_cast<float>(std::sin(t) * std::cos(p));
    const std::array<codec::Vector, 6> orders = {{{x, y, z}, {z, y, x}, {y, z, x}, {y, x, z}, {z, x, y}, {x, z, y}}};
    codec::Vector direction = orders[sextant % 6];
    for (unsigned axis = 0; axis < 3; ++axis)
        if (!(octant & (4u >> axis)))
            direction[axis] = -direction[axis];
    return direction;
}

std::vector<codec::Vector> readDirections(ShapeInput& input, codec::Predictor predictor, unsigned bits,
                                          std::uint32_t& hash)
{
    std::vector<codec::Vector> directions;
    if (bits < 1 || bits > MostBits) {
        input.in.fail("normals have an impossible number of bits");
        return directions;
    }
    const bool isPacked = input.major >= 10;
    std::array<codec::Values, 4> parts;
    for (std::size_t i = 0; i < (isPacked ? 1u : 4u); ++i) {
        parts[i] = input.array(predictor);
        hash = codec::hash32(parts[i], hash);
        if (parts[i].size() != parts[0].size()) {
            input.in.fail("the components of an array differ in number");
            return directions;
        }
    }
    directions.reserve(parts[0].size());
    for (std::size_t i = 0; i < parts[0].size(); ++i) {
        const auto part = [&](std::size_t k) { return static_cast<std::uint32_t>(parts[k][i]); };
        const Code code = isPacked ? unpacked(part(0), bits) : Code{part(0), part(1), part(2), part(3)};
        if (code[0] > 5) {
            input.in.fail("a normal lies in no sextant");
            return {};
        }
        directions.push_back(directionOf(code[0], code[1], code[2], code[3], bits));
    }
    return directions;
}

} // namespace ptx::jt::shapes
