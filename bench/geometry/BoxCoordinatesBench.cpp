// Box coordinates of a wavy sheet of 2,000,000 triangles whose neighbours are seen from different sides: the time as
// the counter "ratio" to that of one of half as many in the same run.

#include "bench/support/Ratio.h"
#include "geometry/BoxCoordinates.h"

#include <cstdint>
#include <vector>

namespace
{

constexpr std::uint32_t rows = 1000;
constexpr std::uint32_t columns = 1000;

/// Two triangles for each column and row.
osg::Mesh sheet(std::uint32_t height)
{
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    for (std::uint32_t row = 0; row <= height; ++row)
        for (std::uint32_t column = 0; column <= columns; ++column)
            positions.push_back({static_cast<float>(column), static_cast<float>(row),
                                 static_cast<float>((row * 7 + column * 5) % 4 * 3)});
    for (std::uint32_t row = 0; row < height; ++row)
        for (std::uint32_t column = 0; column < columns; ++column) {
            const std::uint32_t a = row * (columns + 1) + column;
            const std::uint32_t above = a + columns + 1;
            triangles.insert(triangles.end(), {a, a + 1, above + 1, a, above + 1, above});
        }
    osg::Mesh mesh;
    mesh.positions = std::move(positions);
    mesh.triangles = std::move(triangles);
    return mesh;
}

void boxCoordinates(benchmark::State& state)
{
    const osg::Mesh half = sheet(rows / 2), whole = sheet(rows);
    const auto seconds = [](const osg::Mesh& mesh) {
        return secondsOf([&mesh] { benchmark::DoNotOptimize(geometry::withBoxCoordinates(mesh)); });
    };
    reportRatio(
        state, [&] { return seconds(half); }, [&] { return seconds(whole); });
    if (geometry::withBoxCoordinates(whole).positions.size() < whole.positions.size() * 5 / 4)
        state.SkipWithError("too few vertices are split");
}

BENCHMARK(boxCoordinates)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

} // namespace

BENCHMARK_MAIN();
