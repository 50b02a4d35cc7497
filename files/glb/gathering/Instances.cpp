#include "files/glb/gathering/Instances.h"

#include "files/glb/packing/InstanceArrays.h"
#include "scene/MatrixMath.h"

#include <algorithm>
#include <cmath>

namespace files::glb::gathering
{

namespace
{

osg::Matrix matrixOf(const packing::Affine& place)
{
    osg::Matrix matrix;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 3; ++row)
            matrix[4 * column + row] = static_cast<float>(place[std::size_t(column)][std::size_t(row)]);
    return matrix;
}

/// How far an axis may be from what the parts make of it, of its length.
constexpr double maxDeviation = 1e-5;

bool tells(const InstancePlace& parts, const packing::Affine& place)
{
    const packing::Affine told = packing::composed(parts.translation, parts.rotation, parts.scale);
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t row = 0; row < 3; ++row)
            if (!(std::abs(told[axis][row] - place[axis][row]) <= maxDeviation * std::abs(parts.scale[axis])))
                return false;
    return std::all_of(parts.scale.begin(), parts.scale.end(), [](double scale) { return std::abs(scale) > 1e-9; });
}

} // namespace

std::optional<InstancePlace> instancePlace(const packing::Affine& place)
{
    const osg::Components found = osg::decomposed(matrixOf(place));
    const osg::Quaternion& turn = found.rotation;
    const InstancePlace parts = {
        place[3], {turn.x, turn.y, turn.z, turn.w}, {found.scale.x, found.scale.y, found.scale.z}};
    return tells(parts, place) ? std::optional(parts) : std::nullopt;
}

packing::Json instancesNode(packing::PackedFile& file, std::size_t mesh, const std::vector<InstancePlace>& places)
{
    std::vector<float> translations;
    std::vector<float> rotations;
    std::vector<float> scales;
    for (const InstancePlace& place : places) {
        translations.insert(translations.end(), place.translation.begin(), place.translation.end());
        rotations.insert(rotations.end(), place.rotation.begin(), place.rotation.end());
        scales.insert(scales.end(), place.scale.begin(), place.scale.end());
    }
    const auto areAll = [](const std::vector<float>& values, float value) {
        return std::all_of(values.begin(), values.end(), [value](float v) { return v == value; });
    };
    packing::Json attributes = {{"TRANSLATION", packing::addFloats(file, translations, "VEC3")}};
    const bool isTurned = std::any_of(places.begin(), places.end(), [](const InstancePlace& place) {
        return place.rotation != std::array<double, 4>{0, 0, 0, 1};
    });
    if (isTurned)
        attributes["ROTATION"] = packing::addFloats(file, rotations, "VEC4");
    if (!areAll(scales, 1))
        attributes["SCALE"] = packing::addFloats(file, scales, "VEC3");
    packing::Json node = {{"mesh", mesh}};
    node["extensions"][packing::instancing]["attributes"] = std::move(attributes);
    return node;
}

} // namespace files::glb::gathering
