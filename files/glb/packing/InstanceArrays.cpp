#include "files/glb/packing/InstanceArrays.h"

#include <cstring>

namespace files::glb::packing
{

namespace
{

constexpr int floatType = 5126;

/// The places of a node's instances as the file has them.
struct Lists {
    std::vector<float> translations;
    std::vector<float> rotations;
    std::vector<float> scales;

    std::size_t count() const { return translations.size() / 3; }
    Vector translation(std::size_t i) const
    {
        return {translations[3 * i], translations[3 * i + 1], translations[3 * i + 2]};
    }
    std::array<double, 4> rotation(std::size_t i) const
    {
        if (rotations.empty())
            return {0, 0, 0, 1};
        return {rotations[4 * i], rotations[4 * i + 1], rotations[4 * i + 2], rotations[4 * i + 3]};
    }
    Vector scale(std::size_t i) const
    {
        return scales.empty() ? Vector{1, 1, 1} : Vector{scales[3 * i], scales[3 * i + 1], scales[3 * i + 2]};
    }
    Affine place(std::size_t i) const { return composed(translation(i), rotation(i), scale(i)); }
};

const Json& attributesOf(const Json& node)
{
    return node.at("extensions").at(instancing).at("attributes");
}

Lists listsOf(const PackedFile& file, const Json& node)
{
    const Json& attributes = attributesOf(node);
    const auto list = [&](const char* name) {
        const auto found = attributes.find(name);
        return found == attributes.end() ? std::vector<float>()
                                         : floatsOf(file, file.accessors.at(found->get<std::size_t>()));
    };
    return {list("TRANSLATION"), list("ROTATION"), list("SCALE")};
}

} // namespace

bool isInstanced(const Json& node)
{
    const auto extensions = node.find("extensions");
    return extensions != node.end() && extensions->contains(instancing);
}

std::vector<Affine> instancesOf(const PackedFile& file, const Json& node)
{
    if (!isInstanced(node))
        return {identityAffine};
    const Lists lists = listsOf(file, node);
    std::vector<Affine> places;
    for (std::size_t i = 0; i < lists.count(); ++i)
        places.push_back(lists.place(i));
    return places;
}

void InstanceArrays::pack(Json& node, const PositionGrid& grid)
{
    const auto [known, isNew] = m_known.try_emplace({attributesOf(node).dump(), grid});
    if (isNew) {
        Lists lists = listsOf(m_file, node);
        if (grid.isOn()) {
            const Affine ofGrid = grid.toMesh();
            std::vector<float> scales;
            for (std::size_t i = 0; i < lists.count(); ++i) {
                const Vector origin = transformed(lists.place(i), ofGrid[3], 1);
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    lists.translations[3 * i + axis] = static_cast<float>(origin[axis]);
                    scales.push_back(static_cast<float>(lists.scale(i)[axis] * grid.step));
                }
            }
            lists.scales = std::move(scales);
        }
        known->second = {{"TRANSLATION", add("TRANSLATION", "VEC3", lists.translations)}};
        if (!lists.rotations.empty())
            known->second["ROTATION"] = add("ROTATION", "VEC4", lists.rotations);
        if (!lists.scales.empty())
            known->second["SCALE"] = add("SCALE", "VEC3", lists.scales);
    }
    node["extensions"][instancing]["attributes"] = known->second;
}

std::size_t InstanceArrays::add(const char* name, const char* type, const std::vector<float>& values)
{
    std::vector<std::byte> bytes(values.size() * sizeof(float));
    std::memcpy(bytes.data(), values.data(), bytes.size());
    Json accessor = {{"componentType", floatType}, {"type", type}};
    const std::size_t width = componentsOf(accessor) * sizeof(float);
    return m_streams.addVertices(name, width, PackedStreams::Filter::None, bytes, std::move(accessor));
}

} // namespace files::glb::packing
