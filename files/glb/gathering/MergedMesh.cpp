#include "files/glb/gathering/MergedMesh.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace files::glb::gathering
{

namespace
{

using packing::Affine;
using packing::Json;
using packing::PackedFile;
using packing::Vector;

constexpr int trianglesMode = 4;
constexpr const char* colors = "COLOR_0";

int modeOf(const Json& primitive)
{
    return primitive.value("mode", trianglesMode);
}

std::size_t cornersOf(int mode)
{
    return mode == trianglesMode ? 3 : mode == 1 ? 2 : 1;
}

/// Directions of surfaces turn by the inverse transposed, which is this but for the length.
Affine normalPlace(const Affine& m)
{
    const double sign = packing::determinant(m) < 0 ? -1 : 1;
    const auto cross = [sign](const Vector& a, const Vector& b) -> Vector {
        return {sign * (a[1] * b[2] - a[2] * b[1]), sign * (a[2] * b[0] - a[0] * b[2]),
                sign * (a[0] * b[1] - a[1] * b[0])};
    };
    return {cross(m[1], m[2]), cross(m[2], m[0]), cross(m[0], m[1]), {0, 0, 0}};
}

Vector unit(const Vector& v)
{
    const double length = std::hypot(v[0], v[1], v[2]);
    return length > 0 ? Vector{v[0] / length, v[1] / length, v[2] / length} : v;
}

/// The first three numbers of each element, of `components` numbers, become what `convert` makes of them.
template <class Convert>
void convert(std::vector<float>& values, std::size_t components, const Convert& convert)
{
    for (std::size_t i = 0; i + components <= values.size(); i += components) {
        const Vector v = convert({values[i], values[i + 1], values[i + 2]});
        std::transform(v.begin(), v.end(), values.begin() + static_cast<std::ptrdiff_t>(i),
                       [](double number) { return static_cast<float>(number); });
    }
}

void moveTo(const Affine& place, const std::string& name, std::vector<float>& values)
{
    if (name == "POSITION")
        convert(values, 3, [&](const Vector& v) { return packing::transformed(place, v, 1); });
    if (name == "NORMAL")
        convert(values, 3,
                [turn = normalPlace(place)](const Vector& v) { return unit(packing::transformed(turn, v, 0)); });
    if (name != "TANGENT")
        return;
    convert(values, 4, [&](const Vector& v) { return unit(packing::transformed(place, v, 0)); });
    for (std::size_t i = 3; i < values.size() && packing::determinant(place) < 0; i += 4)
        values[i] = -values[i];
}

void turnAround(std::vector<std::uint32_t>& triangles)
{
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        std::swap(triangles[i + 1], triangles[i + 2]);
}

/// The accessor of positions has to tell their box.
void addBounds(const std::vector<float>& positions, Json& accessor)
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        float least = std::numeric_limits<float>::max();
        float most = std::numeric_limits<float>::lowest();
        for (std::size_t i = axis; i < positions.size(); i += 3) {
            least = std::min(least, positions[i]);
            most = std::max(most, positions[i]);
        }
        accessor["min"].push_back(least);
        accessor["max"].push_back(most);
    }
}

} // namespace

std::string mergeKey(const PackedFile& file, const MaterialGroups& groups, const Json& primitive)
{
    const auto material = primitive.at("material").get<std::size_t>();
    const bool isSwitched = primitive.contains("extensions");
    std::string key =
        std::to_string(modeOf(primitive)) + ' ' +
        (isSwitched ? "own " + std::to_string(material) : "group " + std::to_string(groups.group(material)));
    for (const auto& [name, accessor] : primitive.at("attributes").items())
        key += ' ' + name + file.accessors.at(accessor.get<std::size_t>()).at("type").get<std::string>();
    if (const auto extensions = primitive.find("extensions"); extensions != primitive.end())
        key += extensions->dump();
    return key;
}

void MergedMesh::append(const PackedFile& file, const Json& attributes, const Affine& place, Vertices& vertices)
{
    for (const auto& [name, number] : attributes.items()) {
        const Json& accessor = file.accessors.at(number.get<std::size_t>());
        std::vector<float> values = packing::floatsOf(file, accessor);
        moveTo(place, name, values);
        std::vector<float>& all = vertices.attributes[name];
        all.insert(all.end(), values.begin(), values.end());
        vertices.types[name] = accessor.at("type").get<std::string>();
    }
    vertices.count += file.accessors.at(attributes.at("POSITION").get<std::size_t>()).at("count").get<std::size_t>();
}

/// Primitives that share their vertices within the part, as triangles and the edges between them, do it here too.
void MergedMesh::add(const PackedFile& file, const Json& mesh, const Affine& place, std::size_t part)
{
    const bool isMirrored = packing::determinant(place) < 0;
    std::map<std::string, std::pair<std::string, Run>> known; ///< by attributes: the key of the vertices, and which
    for (const Json& primitive : mesh.at("primitives")) {
        const std::string key = mergeKey(file, m_groups, primitive);
        const Json& attributes = primitive.at("attributes");
        const auto [vertices, isNew] = known.try_emplace(attributes.dump(), key, Run());
        auto& [vertexKey, run] = vertices->second;
        if (isNew) {
            Vertices& to = m_vertices[key];
            run.first = to.count;
            append(file, attributes, place, to);
            run.count = to.count - run.first;
        }
        run.material = primitive.at("material").get<std::size_t>();
        const auto [number, isFirst] = m_numbers.try_emplace({key, vertexKey}, m_primitives.size());
        if (isFirst) {
            Json members = primitive;
            members.erase("extras");
            m_primitives.push_back({std::move(members), vertexKey, {}, Json::array(), {}});
        }
        Primitive& to = m_primitives[number->second];
        std::vector<std::uint32_t> indices =
            packing::indicesOf(file, file.accessors.at(primitive.at("indices").get<std::size_t>()));
        const int mode = modeOf(primitive);
        if (isMirrored && mode == trianglesMode)
            turnAround(indices);
        for (const std::uint32_t index : indices)
            to.indices.push_back(static_cast<std::uint32_t>(run.first) + index);
        Json entry = {part, indices.size() / cornersOf(mode)};
        if (const auto extras = primitive.find("extras"); extras != primitive.end())
            entry.push_back(*extras);
        to.parts.push_back(std::move(entry));
        to.runs.push_back(run);
    }
}

bool MergedMesh::Primitive::hasSeveralMaterials() const
{
    return std::any_of(runs.begin(), runs.end(), [&](const Run& run) { return run.material != runs[0].material; });
}

/// `primitive` has its attributes.
void MergedMesh::colorByMaterial(PackedFile& file, Primitive& primitive)
{
    const Vertices& vertices = m_vertices.at(primitive.vertices);
    const auto own = vertices.attributes.find(colors);
    std::vector<float> values =
        own == vertices.attributes.end() ? std::vector<float>(vertices.count * 4, 1.0f) : own->second;
    for (std::size_t i = 0; i < primitive.runs.size(); ++i) {
        const Run& run = primitive.runs[i];
        const Color color = m_groups.color(run.material);
        for (std::size_t at = run.first * 4; at < (run.first + run.count) * 4; ++at)
            values[at] = (own == vertices.attributes.end() ? 1 : own->second[at]) * color[at % 4];
        Json& entry = primitive.parts[i];
        if (entry.size() < 3)
            entry.push_back(Json::object());
        entry[2]["material"] = file.materials[run.material].value("name", std::string());
    }
    const std::size_t accessor = packing::addFloats(file, values, "VEC4");
    file.accessors[accessor][packing::isFine] = true;
    primitive.members["attributes"][colors] = accessor;
    primitive.members["material"] = m_groups.white(m_groups.group(primitive.runs[0].material), file.materials);
}

Json MergedMesh::take(PackedFile& file)
{
    std::map<std::string, Json> attributes;
    for (const auto& [key, vertices] : m_vertices)
        for (const auto& [name, values] : vertices.attributes) {
            const std::size_t accessor = packing::addFloats(file, values, vertices.types.at(name).c_str());
            if (name == "POSITION")
                addBounds(values, file.accessors[accessor]);
            attributes[key][name] = accessor;
        }
    Json mesh = {{"primitives", Json::array()}};
    for (Primitive& primitive : m_primitives) {
        primitive.members["attributes"] = attributes.at(primitive.vertices);
        if (primitive.hasSeveralMaterials())
            colorByMaterial(file, primitive);
        primitive.members["indices"] = packing::addIndices(file, primitive.indices);
        primitive.members["extras"]["parts"] = std::move(primitive.parts);
        mesh["primitives"].push_back(std::move(primitive.members));
    }
    m_vertices.clear();
    m_primitives.clear();
    m_numbers.clear();
    return mesh;
}

} // namespace files::glb::gathering
