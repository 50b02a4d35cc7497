// How the time to write a GLB file with levels of detail, or with fewer triangles, grows with the triangles.
//
// "ratio" is the time for a mesh of twice the triangles over the time for the mesh, in the same run; the bound is 2.3.

#include "bench/support/Ratio.h"
#include "files/SceneBuilding.h"
#include "files/glb/GlbWriter.h"
#include "scene/Mesh.h"

#include <QTemporaryDir>

#include <cmath>
#include <cstdlib>

namespace
{

/// A wavy plate of 200 mm with `side` x `side` cells.
osg::Mesh plate(unsigned side)
{
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    for (unsigned row = 0; row <= side; ++row)
        for (unsigned column = 0; column <= side; ++column) {
            const float x = float(column) / float(side), y = float(row) / float(side);
            positions.push_back({x * 200, y * 200, std::sin(x * 25) * std::sin(y * 20) * 8});
        }
    for (std::uint32_t row = 0; row < side; ++row)
        for (std::uint32_t column = 0; column < side; ++column) {
            const std::uint32_t a = row * (side + 1) + column, b = a + side + 1;
            triangles.insert(triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.triangles = triangles;
    return mesh;
}

class Plate
{
public:
    explicit Plate(unsigned side) : m_root(files::makeNode("plate", files::makeGeometry("plate", plate(side), {}))) {}

    double writingSeconds(const files::glb::WriteOptions& options) const
    {
        return processorSecondsOf([&] {
            if (!files::glb::write(m_root.get(), m_folder.filePath(QStringLiteral("out.glb")), options))
                std::abort();
        });
    }

private:
    osg::RefPtr<osg::NodePtr> m_root;
    QTemporaryDir m_folder;
};

/// 180,000 triangles, and 360,000.
void growth(benchmark::State& state, const files::glb::WriteOptions& options)
{
    const Plate once(300), twice(424);
    reportRatio(
        state, [&] { return once.writingSeconds(options); }, [&] { return twice.writingSeconds(options); });
}

void writeWithLevels(benchmark::State& state)
{
    files::glb::WriteOptions options;
    options.levels.shares = {0.5, 0.1};
    growth(state, options);
}

void writeSimplified(benchmark::State& state)
{
    files::glb::WriteOptions options;
    options.levels.simplify = 0.1;
    growth(state, options);
}

BENCHMARK(writeWithLevels)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(writeSimplified)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

BENCHMARK_MAIN();
