// Meshing the exact surfaces of a scene anew, in its process of its own, against what the CAD kernel alone takes for
// the same shapes in the same run, on as many threads. The scene file comes from ptxconvert --set keep-brep=1.

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Group.h"
#include "host/znTessellation/znRetessellation.h"
#include "ptx/occt/meshing/Meshing.h"
#include "scene/BrepPack.h"
#include "scene/GeometryWalk.h"
#include "standalone/startup/StandaloneSession.h"

#include <BinTools.hxx>
#include <TopoDS_Shape.hxx>

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <numbers>
#include <sstream>

namespace
{

constexpr double deviation = 0.1;
constexpr double degrees = 15;
constexpr int rounds = 5;

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::vector<TopoDS_Shape> shapesBelow(const osg::NodePtr& root)
{
    std::vector<TopoDS_Shape> shapes;
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root)) {
        const auto breps = osg::unpackBreps(osg::GeometryAccess::mesh(*geometry).brep);
        for (const osg::Buffer<std::byte>& brep : breps.value()) {
            std::istringstream stream(std::string(reinterpret_cast<const char*>(brep.data()), brep.size()));
            TopoDS_Shape shape;
            BinTools::Read(shape, stream);
            shapes.push_back(shape);
        }
    }
    return shapes;
}

double bareMeshing(const std::vector<TopoDS_Shape>& shapes)
{
    const auto start = std::chrono::steady_clock::now();
    for (const TopoDS_Shape& shape : shapes)
        ptx::occt::meshing::tessellate(shape, {deviation, degrees * std::numbers::pi / 180}, true);
    return secondsSince(start);
}

double retessellation(const osg::NodePtr& root)
{
    const auto start = std::chrono::steady_clock::now();
    znRetessellation::copySettings();
    znRetessellation retessellation;
    retessellation.addNodes({root});
    retessellation.setupTessellation(deviation, degrees, 0, false, 0);
    retessellation.applyTessellation();
    retessellation.rebuildSurfaces();
    retessellation.finalize();
    return secondsSince(start);
}

std::size_t trianglesBelow(const osg::NodePtr& root)
{
    std::size_t count = 0;
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root))
        count += osg::GeometryAccess::mesh(*geometry).triangles.size() / 3;
    return count;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measure(zn::StandaloneSession& session, const char* file)
{
    const osg::RefPtr<osg::NodePtr> root(osg::scenefile::readSceneFile(QString::fromLocal8Bit(file)).value());
    if (!root) {
        std::printf("%s cannot be read\n", file);
        return;
    }
    session.setLogSink([](const char* text) { std::printf("  %s\n", text); });
    const std::vector<TopoDS_Shape> shapes = shapesBelow(root);
    std::vector<double> bare, ours;
    for (int i = 0; i < rounds; ++i) {
        bare.push_back(bareMeshing(shapes));
        ours.push_back(retessellation(root));
    }
    std::printf("%s: %zu shapes, %zu triangles, bare %.3f s, retessellation %.3f s, ratio %.2f\n", file, shapes.size(),
                trianglesBelow(root), median(bare), median(ours), median(ours) / median(bare));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    zn::StandaloneSession session;
    for (int i = 1; i < argc; ++i)
        measure(session, argv[i]);
    return 0;
}
