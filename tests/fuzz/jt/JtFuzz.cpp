// Any bytes as a JT file: an error or meshes, within memory and time that its size allows.
//
// ptx_jt_fuzz <a folder for findings> <a folder with real files>

#include "ptx/model/MeshBuilder.h"
#include "ptx/readers/jt/graph/PropertyElements.h"
#include "ptx/readers/jt/graph/SceneGraph.h"
#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeMesh.h"

#include <cstdlib>

using namespace ptx::jt::container;
using namespace ptx::jt::graph;
using namespace ptx::jt::shapes;

namespace
{

constexpr int GraphType = 1;
constexpr int MetadataType = 4;
constexpr int FirstShapeType = 6;
constexpr int LastShapeType = 16;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void readMesh(const Segment& segment, const Framing& framing)
{
    const Shape shape = readShape(segment, framing.major, framing.isBigEndian);
    require(!shape.damage || (shape.triangles.empty() && shape.lines.empty() && shape.points.empty()));
    ptx::model::MeshBuilder mesh;
    addShape(mesh, shape, NoMove, 25.4);
    require(mesh.take()->triangles.size() <= 3 * shape.triangles.size());
}

void readPacked(const Segment& segment, const Framing& framing)
{
    Damage damage;
    const std::vector<std::uint8_t> data = unpack(segment, framing.isBigEndian, damage);
    require(!damage || data.empty());
    if (segment.type == GraphType)
        readSceneGraph(data, framing.major, framing.isBigEndian);
    else
        readPropertyProxy(data, framing.major, framing.isBigEndian, damage);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Framing framing = readFraming({data, size});
    for (const auto& [id, segment] : framing.segments)
        if (segment.type >= FirstShapeType && segment.type <= LastShapeType)
            readMesh(segment, framing);
        else if (segment.type == GraphType || segment.type == MetadataType)
            readPacked(segment, framing);
    return 0;
}
