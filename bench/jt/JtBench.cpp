// How fast meshes of JT files are decoded, as bytes of the vertices that come out (position and normal, 24 bytes each).
//
// ZN_CORPUS=FOLDER ptx_jt_bench: real files from FOLDER/jt. Without them there is nothing to measure.

#include "ptx/model/MeshBuilder.h"
#include "ptx/readers/jt/graph/SceneGraph.h"
#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeMesh.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

using namespace ptx::jt::container;
using namespace ptx::jt::graph;
using namespace ptx::jt::shapes;

namespace
{

constexpr std::int64_t BytesOfVertex = 24;
constexpr int FirstShapeType = 6;
constexpr int LastShapeType = 16;

std::vector<std::uint8_t> contentOf(const std::string& name)
{
    const char* corpus = std::getenv("ZN_CORPUS");
    std::ifstream in(std::string(corpus ? corpus : "") + "/jt/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

template <class Visit>
void eachShape(const Framing& framing, Visit visit)
{
    for (const auto& [id, segment] : framing.segments)
        if (segment.type >= FirstShapeType && segment.type <= LastShapeType)
            visit(readShape(segment, framing.major, framing.isBigEndian));
}

/// Decodes the meshes of a file.
void decodeMeshes(benchmark::State& state, const std::string& name)
{
    const std::vector<std::uint8_t> content = contentOf(name);
    const Framing framing = readFraming(content);
    std::int64_t vertices = 0;
    for ([[maybe_unused]] auto step : state)
        eachShape(framing, [&](const Shape& shape) {
            vertices += static_cast<std::int64_t>(std::max(shape.positions.size(), shape.normals.size()));
        });
    state.SetBytesProcessed(vertices * BytesOfVertex);
    if (vertices == 0)
        state.SkipWithError("the file is not in the corpus");
}

/// Makes meshes of the scene out of decoded ones.
void makeMeshes(benchmark::State& state, const std::string& name)
{
    const std::vector<std::uint8_t> content = contentOf(name);
    std::vector<Shape> shapes;
    eachShape(readFraming(content), [&](Shape shape) { shapes.push_back(std::move(shape)); });
    std::int64_t vertices = 0;
    for ([[maybe_unused]] auto step : state)
        for (const Shape& shape : shapes) {
            ptx::model::MeshBuilder mesh;
            addShape(mesh, shape, NoMove, 1);
            vertices += static_cast<std::int64_t>(mesh.take()->positions.size());
        }
    state.SetBytesProcessed(vertices * BytesOfVertex);
    if (vertices == 0)
        state.SkipWithError("the file is not in the corpus");
}

/// Unpacks and reads the scene graph.
void readGraph(benchmark::State& state, const std::string& name)
{
    const std::vector<std::uint8_t> content = contentOf(name);
    const Framing framing = readFraming(content);
    const auto segment = framing.segments.find(framing.sceneGraph);
    if (segment == framing.segments.end())
        return state.SkipWithError("the file is not in the corpus");
    std::int64_t bytes = 0;
    for ([[maybe_unused]] auto step : state) {
        Damage damage;
        const std::vector<std::uint8_t> data = unpack(segment->second, framing.isBigEndian, damage);
        bytes += static_cast<std::int64_t>(data.size());
        benchmark::DoNotOptimize(readSceneGraph(data, framing.major, framing.isBigEndian).nodes.size());
    }
    state.SetBytesProcessed(bytes);
}

BENCHMARK_CAPTURE(decodeMeshes, strips_8_0, "conrod.jt");
BENCHMARK_CAPTURE(decodeMeshes, topology_9_5, "CoffeeMaker.jt");
BENCHMARK_CAPTURE(decodeMeshes, topology_10_0, "butterflyvalve_v10.0.jt");
BENCHMARK_CAPTURE(makeMeshes, of_9_5, "CoffeeMaker.jt");
BENCHMARK_CAPTURE(readGraph, zlib_9_5, "CoffeeMaker.jt");
BENCHMARK_CAPTURE(readGraph, lzma_10_0, "butterflyvalve_v10.0.jt");

} // namespace

BENCHMARK_MAIN();
