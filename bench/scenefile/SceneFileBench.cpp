// Opening a file with 100 MB of vertices, mapped and copied, as a ratio to read(2) of the same cached file into memory
// that is there already; writing and reading a graph of a million nodes, as a ratio to building the same tree without
// a file.

#include "bench/support/Ratio.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Mesh.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <fcntl.h>
#include <unistd.h>

namespace
{

using NodeRef = osg::RefPtr<osg::NodePtr>;

constexpr int nodeCount = 1'000'000;
constexpr int fanOut = 10;
constexpr std::uint32_t gridSide = 2'042; ///< 4.17 million vertices of 24 bytes: 100 MB

/// A waved sheet, as a mesher would leave it: each vertex is used by six triangles.
std::shared_ptr<const osg::Mesh> sheet()
{
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    for (std::uint32_t row = 0; row < gridSide; ++row)
        for (std::uint32_t column = 0; column < gridSide; ++column) {
            positions.push_back({float(column), float(row), 10 * std::sin(float(row + column) / 100)});
            if (row == 0 || column == 0)
                continue;
            const std::uint32_t corner = row * gridSide + column;
            for (const std::uint32_t back : {gridSide + 1, gridSide, 0u, gridSide + 1, 0u, 1u})
                triangles.push_back(corner - back);
        }
    osg::Mesh mesh;
    mesh.normals = std::vector<osg::Vec3f>(positions.size(), osg::Vec3f{0, 0, 1});
    mesh.positions = std::move(positions);
    mesh.triangles = std::move(triangles);
    return std::make_shared<const osg::Mesh>(std::move(mesh));
}

NodeRef sheetTree()
{
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*geometry, sheet());
    return NodeRef(osg::makeNodeFor(geometry));
}

/// Each node with a name and a transform of its own.
NodeRef millionNodes()
{
    std::vector<osg::NodePtr> nodes;
    nodes.reserve(nodeCount);
    for (int i = 0; i < nodeCount; ++i) {
        const osg::Transform3DPtr core = osg::Transform3DBase::create();
        core->setTranslation({float(i), 2, 3});
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::setName(node, "node " + std::to_string(i));
        if (i > 0)
            nodes[static_cast<std::size_t>((i - 1) / fanOut)]->addChild(node);
        nodes.push_back(node);
    }
    return NodeRef(nodes.front());
}

/// A scene file in a folder of its own.
class SceneOnDisk
{
public:
    void write(const NodeRef& root) { m_good = bool(osg::scenefile::writeSceneFile(root, path())); }
    QString path() const { return m_folder.filePath(QStringLiteral("scene.osb")); }
    std::size_t size() const { return static_cast<std::size_t>(QFileInfo(path()).size()); }

    /// Reads `buffer.size()` bytes.
    double plainReadSeconds(std::vector<char>& buffer) const
    {
        return secondsOf([&] {
            const int file = open(QFile::encodeName(path()).constData(), O_RDONLY | O_CLOEXEC);
            for (std::size_t done = 0; done < buffer.size();) {
                const ssize_t got = read(file, buffer.data() + done, buffer.size() - done);
                if (got <= 0)
                    std::abort();
                done += static_cast<std::size_t>(got);
            }
            close(file);
        });
    }

    double openSeconds(const osg::scenefile::SceneFileReadOptions& options = {}) const
    {
        files::Result<osg::NodePtr> result = osg::NodePtr();
        const double seconds = secondsOf([&] { result = osg::scenefile::readSceneFile(path(), options); });
        if (!result || !m_good)
            std::abort();
        const NodeRef root(result.value());
        return seconds;
    }

private:
    QTemporaryDir m_folder;
    bool m_good = false;
};

void openMesh(benchmark::State& state, bool copies)
{
    osg::scenefile::SceneFileReadOptions options;
    options.copyIntoMemory = copies;
    SceneOnDisk scene;
    scene.write(sheetTree());
    std::vector<char> buffer(scene.size());
    scene.plainReadSeconds(buffer);
    reportRatio(
        state, [&] { return scene.plainReadSeconds(buffer); }, [&] { return scene.openSeconds(options); });
    state.counters["MB"] = double(scene.size()) / 1e6;
}

void readGraph(benchmark::State& state)
{
    SceneOnDisk scene;
    scene.write(millionNodes());
    const auto build = [] {
        NodeRef root;
        return secondsOf([&] { root = millionNodes(); });
    };
    double best = 1e9;
    reportRatio(state, build, [&] {
        const double seconds = scene.openSeconds();
        best = std::min(best, seconds);
        return seconds;
    });
    state.counters["MB"] = double(scene.size()) / 1e6;
    state.counters["MB/s"] = double(scene.size()) / 1e6 / best;
}

void writeGraph(benchmark::State& state)
{
    SceneOnDisk scene;
    double best = 1e9;
    NodeRef root;
    const auto build = [&] { return secondsOf([&] { root = millionNodes(); }); };
    reportRatio(state, build, [&] {
        const double seconds = secondsOf([&] { scene.write(root); });
        best = std::min(best, seconds);
        return seconds;
    });
    state.counters["MB"] = double(scene.size()) / 1e6;
    state.counters["MB/s"] = double(scene.size()) / 1e6 / best;
}

BENCHMARK_CAPTURE(openMesh, mapped, false)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);
BENCHMARK_CAPTURE(openMesh, copied, true)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);
BENCHMARK(readGraph)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(writeGraph)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

BENCHMARK_MAIN();
