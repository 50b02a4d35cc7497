#include "files/glb/packing/MeshPlaces.h"

#include "files/glb/packing/InstanceArrays.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace files::glb::packing
{

namespace
{

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

Box emptyBox()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
}

Box boxOf(const PackedFile& file, const Json& mesh)
{
    Box box = emptyBox();
    for (const Json& primitive : mesh.at("primitives")) {
        const Json& accessor = file.accessors.at(primitive.at("attributes").at("POSITION").get<std::size_t>());
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.least[axis] = std::min(box.least[axis], accessor.at("min").at(axis).get<double>());
            box.most[axis] = std::max(box.most[axis], accessor.at("max").at(axis).get<double>());
        }
    }
    return box;
}

std::vector<Box> boxesOf(const PackedFile& file)
{
    std::vector<Box> boxes;
    for (const Json& mesh : file.meshes)
        boxes.push_back(boxOf(file, mesh));
    return boxes;
}

std::vector<std::size_t> levelsOf(const Json& node)
{
    const Json::json_pointer ids("/extensions/MSFT_lod/ids");
    return node.contains(ids) ? node.at(ids).get<std::vector<std::size_t>>() : std::vector<std::size_t>();
}

MeshPlaces placesOfMeshes(const PackedFile& file, const std::vector<Box>& boxes)
{
    Box all = emptyBox();
    std::vector<double> scales(boxes.size(), 0);
    std::vector<std::pair<std::size_t, Affine>> open;
    for (const std::size_t root : rootsOf(file.nodes))
        open.emplace_back(root, identityAffine);
    while (!open.empty()) {
        const auto [index, above] = open.back();
        open.pop_back();
        const Json& node = file.nodes[index];
        const Affine place = product(above, placeOf(shownAs(node)));
        if (const auto mesh = node.find("mesh"); mesh != node.end()) {
            double& scale = scales[mesh->get<std::size_t>()];
            for (const Affine& instance : instancesOf(file, node)) {
                const Affine at = product(place, instance);
                scale = std::max(scale, stretch(at));
                include(all, at, boxes[mesh->get<std::size_t>()]);
            }
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
