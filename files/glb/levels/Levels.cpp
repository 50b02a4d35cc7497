#include "files/glb/levels/Levels.h"

#include "files/glb/levels/LevelNodes.h"
#include "files/glb/levels/SurfaceLevels.h"
#include "files/glb/packing/MeshPlaces.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <string>

namespace files::glb::levels
{

namespace
{

using packing::Json;
using packing::PackedFile;

bool hasTriangles(const Json& primitive)
{
    return primitive.value("mode", 4) == 4;
}

bool hasEdges(const Json& primitive)
{
    return primitive.contains(Json::json_pointer("/extras/edges"));
}

/// Primitives with the same key have the same surface.
std::string keyOf(const Json& primitive)
{
    return primitive.at("attributes").dump() + primitive.at("indices").dump();
}

/// One mesh in all levels.
struct MeshLevels {
    std::vector<LevelNumbers> numbers; ///< errors in the space of the mesh
    std::vector<std::size_t> used;     ///< of each level the one that takes its place
};

/// One run over a file.
class Maker
{
public:
    Maker(PackedFile& file, const LevelOptions& options, double millimetres)
        : m_file(file), m_before(file.meshes), m_options(options), m_millimetres(millimetres),
          m_boxes(packing::boxesOf(file)), m_scales(packing::placesOfMeshes(file, m_boxes).scales),
          m_watch(m_progress, nullptr), m_device(1, m_watch)
    {
    }

    Levels run();

private:
    std::size_t levels() const { return m_options.shares.size() + 1; }
    std::uint64_t trianglesBefore() const;
    void makeDetails();
    MeshLevels levelsOf(const Json& mesh) const;
    Json meshIn(const Json& mesh, std::size_t level) const;
    Json meshesIn(std::size_t level) const;
    void sum(Levels& result) const;
    std::vector<double> coverageOf(std::size_t mesh, const std::vector<std::size_t>& lower) const;
    void addNodes(Levels& result);

    PackedFile& m_file;
    const Json m_before; ///< its meshes
    const LevelOptions& m_options;
    double m_millimetres;
    std::vector<packing::Box> m_boxes;
    std::vector<double> m_scales;
    std::function<void(double)> m_progress;
    geometry::rays::Watch m_watch;
    geometry::rays::RayDevice m_device;
    std::map<std::string, std::vector<Detail>> m_details; ///< by key of a primitive
    std::vector<MeshLevels> m_meshes;
};

std::uint64_t Maker::trianglesBefore() const
{
    std::uint64_t corners = 0;
    for (const Json& mesh : m_before)
        for (const Json& primitive : mesh.at("primitives"))
            if (hasTriangles(primitive))
                corners +=
                    m_file.accessors[primitive.at("indices").get<std::size_t>()].at("count").get<std::uint64_t>();
    return corners / 3;
}

/// A surface that several meshes have must please the one that is drawn largest.
void Maker::makeDetails()
{
    std::map<std::string, double> scales;
    for (std::size_t i = 0; i < m_before.size(); ++i)
        for (const Json& primitive : m_before[i].at("primitives"))
            if (double& scale = scales[keyOf(primitive)]; hasTriangles(primitive))
                scale = std::max(scale, m_scales[i]);
    for (const Json& mesh : m_before)
        for (const Json& primitive : mesh.at("primitives")) {
            const std::string key = keyOf(primitive);
            if (!hasTriangles(primitive) || m_details.contains(key))
                continue;
            const double error = m_options.simplify / m_millimetres / scales.at(key);
            m_details[key] = detailsOf(m_file, primitive, {error, m_options.shares}, m_device);
        }
}

MeshLevels Maker::levelsOf(const Json& mesh) const
{
    constexpr double mostShare = 0.9; // of the triangles of the level before
    MeshLevels result;
    result.numbers.resize(levels());
    for (const Json& primitive : mesh.at("primitives"))
        for (std::size_t level = 0; hasTriangles(primitive) && level < levels(); ++level) {
            const Detail& detail = m_details.at(keyOf(primitive))[level];
            result.numbers[level].triangles += detail.triangles;
            result.numbers[level].error = std::max(result.numbers[level].error, detail.error);
        }
    result.used = {0};
    for (std::size_t level = 1; level < levels(); ++level) {
        const std::size_t before = result.used.back();
        const bool saves =
            double(result.numbers[level].triangles) <= mostShare * double(result.numbers[before].triangles);
        result.used.push_back(saves && result.numbers[level].triangles > 0 ? level : before);
    }
    return result;
}

/// Faces have no triangles of their own any more where these are fewer, and parts have other numbers of them.
void tellFewer(const Detail& detail, Json& primitive)
{
    Json& extras = primitive["extras"];
    extras.erase("faces");
    for (std::size_t i = 0; i < detail.parts.size(); ++i) {
        Json& part = extras["parts"][i];
        part[1] = detail.parts[i];
        if (part.size() > 2)
            part[2].erase("faces");
    }
    if (extras.empty())
        primitive.erase("extras");
}

Json Maker::meshIn(const Json& mesh, std::size_t level) const
{
    Json result = mesh;
    result["primitives"] = Json::array();
    for (Json primitive : mesh.at("primitives")) {
        if (level > 0 && hasEdges(primitive))
            continue;
        if (hasTriangles(primitive)) {
            const std::size_t indices = m_details.at(keyOf(primitive))[level].indices;
            if (indices != primitive.at("indices").get<std::size_t>() && primitive.contains("extras"))
                tellFewer(m_details.at(keyOf(primitive))[level], primitive);
            primitive["indices"] = indices;
        }
        result["primitives"].push_back(std::move(primitive));
    }
    return result;
}

/// What draws the file in one level.
Json Maker::meshesIn(std::size_t level) const
{
    Json result = Json::array();
    for (std::size_t i = 0; i < m_meshes.size(); ++i)
        result.push_back(meshIn(m_before[i], m_meshes[i].used[level]));
    return result;
}

void Maker::sum(Levels& result) const
{
    result.numbers.resize(levels());
    for (std::size_t i = 0; i < m_meshes.size(); ++i) {
        const MeshLevels& mesh = m_meshes[i];
        for (std::size_t level = 0; level < levels(); ++level) {
            const LevelNumbers& used = mesh.numbers[mesh.used[level]];
            result.numbers[level].triangles += used.triangles;
            result.numbers[level].error =
                std::max(result.numbers[level].error, used.error * m_scales[i] * m_millimetres);
            if (mesh.used[level] != level && mesh.numbers[0].triangles > 0)
                ++result.leftOut;
        }
    }
}

/// A level will do while its error is no more than a pixel: the mesh then covers as many pixels, squared, as the error
/// is in its longest side.
std::vector<double> Maker::coverageOf(std::size_t mesh, const std::vector<std::size_t>& lower) const
{
    constexpr double pixels = 1920.0 * 1080;
    std::vector<double> coverage;
    double before = 1;
    for (const std::size_t level : lower) {
        const double error = m_meshes[mesh].numbers[level].error;
        const double sides = error > 0 ? m_boxes[mesh].longestSide() / error : std::sqrt(pixels);
        before = std::min(before, std::round(sides * sides / pixels * 1e6) / 1e6);
        coverage.push_back(before);
    }
    coverage.push_back(0); // nothing vanishes
    return coverage;
}

void Maker::addNodes(Levels& result)
{
    std::vector<LowerLevels> lower(m_meshes.size());
    for (std::size_t i = 0; i < m_meshes.size(); ++i) {
        std::vector<std::size_t> used = m_meshes[i].used;
        used.erase(std::unique(used.begin(), used.end()), used.end());
        used.erase(used.begin());
        for (const std::size_t level : used) {
            lower[i].meshes.push_back(m_file.meshes.size());
            m_file.meshes.push_back(meshIn(m_before[i], level));
        }
        lower[i].coverage = coverageOf(i, used);
        result.hasNodes = result.hasNodes || !used.empty();
    }
    lower.resize(m_file.meshes.size());
    addLevelNodes(m_file.nodes, lower);
}

Levels Maker::run()
{
    Levels result;
    result.trianglesBefore = trianglesBefore();
    makeDetails();
    for (const Json& mesh : m_before)
        m_meshes.push_back(levelsOf(mesh));
    sum(result);
    m_file.meshes = meshesIn(0);
    for (std::size_t level = 1; m_options.asFiles && level < levels(); ++level)
        result.meshes.push_back(meshesIn(level));
    if (!m_options.asFiles)
        addNodes(result);
    return result;
}

} // namespace

Levels makeLevels(PackedFile& file, const LevelOptions& options, double millimetres)
{
    return options.isOn() ? Maker(file, options, millimetres).run() : Levels();
}

} // namespace files::glb::levels
