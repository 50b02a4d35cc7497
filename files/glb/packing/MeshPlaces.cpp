#include "files/glb/packing/MeshPlaces.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace files::glb::packing
{

namespace
{

/// Column by column, the last one the translation.
using Affine = std::array<Vector, 4>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Box nothing = {{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
constexpr Affine identity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}};

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

template <std::size_t N>
std::array<double, N> numbers(const Json& node, const char* member, std::array<double, N> otherwise)
{
    if (const auto found = node.find(member); found != node.end() && found->size() == N)
        for (std::size_t i = 0; i < N; ++i)
            otherwise[i] = (*found)[i].get<double>();
    return otherwise;
}

Affine rotation(const std::array<double, 4>& q)
{
    const auto [x, y, z, w] = q;
    return {{{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
             {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
             {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)},
             {0, 0, 0}}};
}

Affine placeOf(const Json& node)
{
    if (const auto matrix = node.find("matrix"); matrix != node.end()) {
        const auto m = numbers<16>(node, "matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
        return {{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}, {m[12], m[13], m[14]}}};
    }
    Affine result = rotation(numbers<4>(node, "rotation", {0, 0, 0, 1}));
    const Vector scale = numbers<3>(node, "scale", {1, 1, 1});
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (double& value : result[axis])
            value *= scale[axis];
    result[3] = numbers<3>(node, "translation", {0, 0, 0});
    return result;
}

const Json& shownAs(const Json& node)
{
    const Json::json_pointer shown("/extras/shown");
    return node.contains(shown) ? node.at(shown) : node;
}

/// No length grows more than by this: the largest sum of a row of M^T M bounds the square of its largest stretch, and
/// is it where the axes stay upright.
double stretch(const Affine& m)
{
    double most = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        double sum = 0;
        for (std::size_t j = 0; j < 3; ++j)
            sum += std::abs(m[i][0] * m[j][0] + m[i][1] * m[j][1] + m[i][2] * m[j][2]);
        most = std::max(most, sum);
    }
    return std::sqrt(most);
}

void include(Box& all, const Affine& place, const Box& box)
{
    for (unsigned corner = 0; corner < 8; ++corner) {
        Vector v;
        for (std::size_t axis = 0; axis < 3; ++axis)
            v[axis] = (corner >> axis) % 2 == 0 ? box.least[axis] : box.most[axis];
        v = transformed(place, v, 1);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            all.least[axis] = std::min(all.least[axis], v[axis]);
            all.most[axis] = std::max(all.most[axis], v[axis]);
        }
    }
}

std::vector<std::size_t> rootsOf(const Json& nodes)
{
    std::vector<bool> isChild(nodes.size());
    for (const Json& node : nodes) {
        for (const Json& child : node.value("children", Json::array()))
            isChild[child.get<std::size_t>()] = true;
        for (const std::size_t level : levelsOf(node))
            isChild[level] = true;
    }
    std::vector<std::size_t> roots;
    for (std::size_t i = 0; i < isChild.size(); ++i)
        if (!isChild[i])
            roots.push_back(i);
    return roots;
}

} // namespace

double Box::longestSide() const
{
    return std::max({most[0] - least[0], most[1] - least[1], most[2] - least[2]});
}

std::vector<Box> boxesOf(const PackedFile& file)
{
    std::vector<Box> boxes;
    for (const Json& mesh : file.meshes) {
        Box box = nothing;
        for (const Json& primitive : mesh.at("primitives")) {
            const Json& accessor = file.accessors.at(primitive.at("attributes").at("POSITION").get<std::size_t>());
            for (std::size_t axis = 0; axis < 3; ++axis) {
                box.least[axis] = std::min(box.least[axis], accessor.at("min").at(axis).get<double>());
                box.most[axis] = std::max(box.most[axis], accessor.at("max").at(axis).get<double>());
            }
        }
        boxes.push_back(box);
    }
    return boxes;
}

std::vector<std::size_t> levelsOf(const Json& node)
{
    const Json::json_pointer ids("/extensions/MSFT_lod/ids");
    return node.contains(ids) ? node.at(ids).get<std::vector<std::size_t>>() : std::vector<std::size_t>();
}

MeshPlaces placesOfMeshes(const Json& nodes, const std::vector<Box>& boxes)
{
    Box all = nothing;
    std::vector<double> scales(boxes.size(), 0);
    std::vector<std::pair<std::size_t, Affine>> open;
    for (const std::size_t root : rootsOf(nodes))
        open.emplace_back(root, identity);
    while (!open.empty()) {
        const auto [index, above] = open.back();
        open.pop_back();
        const Json& node = nodes[index];
        const Affine place = product(above, placeOf(shownAs(node)));
        if (const auto mesh = node.find("mesh"); mesh != node.end()) {
            double& scale = scales[mesh->get<std::size_t>()];
            scale = std::max(scale, stretch(place));
            include(all, place, boxes[mesh->get<std::size_t>()]);
        }
        for (const std::size_t level : levelsOf(node))
            open.emplace_back(level, above);
        if (const auto children = node.find("children"); children != node.end())
            for (const Json& child : *children)
                open.emplace_back(child.get<std::size_t>(), place);
    }
    std::replace_if(
        scales.begin(), scales.end(), [](double scale) { return !(scale > 0); }, 1.0);
    const double extent = all.longestSide();
    return {std::move(scales), std::isfinite(extent) ? extent : 0};
}

} // namespace files::glb::packing
