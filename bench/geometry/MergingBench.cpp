// Merging the geometries of 80,000 siblings, of two materials or of one for each pair: the time as the counter "ratio"
// to that of half as many in the same run.

#include "bench/support/Ratio.h"
#include "geometry/GeometryMerging.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Mesh.h"

#include <vector>

namespace
{

constexpr unsigned siblingCount = 80'000;

osg::NodePtr triangleOf(const osg::MaterialPtr& material)
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh->triangles = std::vector<std::uint32_t>{0, 1, 2};
    const osg::GeometryPtr core = osg::Geometry::create();
    osg::GeometryAccess::setMesh(*core, std::move(mesh));
    core->setMaterial(material);
    return osg::makeNodeFor(core);
}

/// Siblings of one material lie as far apart as there are materials. Negative when the number that is left is wrong.
double secondsFor(unsigned count, unsigned materialCount)
{
    std::vector<osg::RefPtr<osg::MaterialPtr>> materials;
    for (unsigned i = 0; i < materialCount; ++i)
        materials.emplace_back(osg::MaterialPtr(osg::SimpleMaterial::create()));
    const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
    for (unsigned i = 0; i < count; ++i)
        root->addChild(triangleOf(materials[i % materialCount].get()));
    const double seconds = secondsOf([&root] { geometry::mergeGeometry(root); });
    return root->getNChildren() == materialCount ? seconds : -1;
}

void merge(benchmark::State& state, unsigned siblingsOfEach)
{
    const auto seconds = [siblingsOfEach](unsigned count) {
        return secondsFor(count, siblingsOfEach == 0 ? 2 : count / siblingsOfEach);
    };
    reportRatio(
        state, [&seconds] { return seconds(siblingCount / 2); },
        [&state, &seconds] {
            const double taken = seconds(siblingCount);
            if (taken < 0)
                state.SkipWithError("a wrong number of siblings is left");
            return taken;
        });
}

BENCHMARK_CAPTURE(merge, twoMaterials, 0)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);
BENCHMARK_CAPTURE(merge, pairs, 2)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

} // namespace

BENCHMARK_MAIN();
