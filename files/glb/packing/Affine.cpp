#include "files/glb/packing/Affine.h"

namespace files::glb::packing
{

namespace
{

template <std::size_t N>
std::array<double, N> numbers(const Json& node, const char* member, std::array<double, N> otherwise)
{
    if (const auto found = node.find(member); found != node.end() && found->size() == N)
        for (std::size_t i = 0; i < N; ++i)
            otherwise[i] = (*found)[i].get<double>();
    return otherwise;
}

} // namespace

Vector transformed(const Affine& m, const Vector& v, double w)
{
    Vector result = {};
    for (std::size_t row = 0; row < 3; ++row)
        result[row] = m[0][row] * v[0] + m[1][row] * v[1] + m[2][row] * v[2] + m[3][row] * w;
    return result;
}

Affine product(const Affine& a, const Affine& b)
{
    return {transformed(a, b[0], 0), transformed(a, b[1], 0), transformed(a, b[2], 0), transformed(a, b[3], 1)};
}

Affine composed(const Vector& translation, const std::array<double, 4>& rotation, const Vector& scale)
{
    const auto [x, y, z, w] = rotation;
    Affine result = {{{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
                      {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
                      {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)},
                      translation}};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (double& value : result[axis])
            value *= scale[axis];
    return result;
}

Affine placeOf(const Json& node)
{
    if (const auto matrix = node.find("matrix"); matrix != node.end()) {
        const auto m = numbers<16>(node, "matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
        return {{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}, {m[12], m[13], m[14]}}};
    }
    return composed(numbers<3>(node, "translation", {0, 0, 0}), numbers<4>(node, "rotation", {0, 0, 0, 1}),
                    numbers<3>(node, "scale", {1, 1, 1}));
}

double determinant(const Affine& m)
{
    return m[0][0] * (m[1][1] * m[2][2] - m[2][1] * m[1][2]) - m[1][0] * (m[0][1] * m[2][2] - m[2][1] * m[0][2]) +
           m[2][0] * (m[0][1] * m[1][2] - m[1][1] * m[0][2]);
}

} // namespace files::glb::packing
