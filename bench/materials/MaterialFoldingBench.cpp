// Folding the materials of a tree of 200,000 nodes: the time for twice as many distinct materials, as the counter
// "ratio" to the time for half as many in the same run.

#include "bench/support/Ratio.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "optimization/MaterialFolding.h"

#include <string>

namespace
{

constexpr unsigned nodeCount = 200'000;
constexpr unsigned fanOut = 100;

struct Shape {
    unsigned materials;
    unsigned classSize; ///< how many of them are equal
    bool oneName;
};

osg::SimpleMaterialPtr makeMaterial(unsigned index, const Shape& shape)
{
    const unsigned kind = index / shape.classSize;
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    material->setDiffuse({float(kind % 256) / 256, float(kind / 256 % 256) / 256, float(kind / 65536) / 256});
    osg::setName(material, shape.oneName ? "material" : "material " + std::to_string(kind));
    return material;
}

osg::NodePtr makePart(const osg::MaterialPtr& material)
{
    const osg::GeometryPtr core = osg::Geometry::create();
    core->setMaterial(material);
    const osg::NodePtr node = osg::Node::create();
    node->setCore(core);
    return node;
}

/// Groups of geometries; each material is used as often as the others.
osg::RefPtr<osg::NodePtr> buildTree(const Shape& shape)
{
    std::vector<osg::MaterialPtr> materials;
    for (unsigned i = 0; i < shape.materials; ++i)
        materials.emplace_back(makeMaterial(i, shape));
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    root->setCore(osg::Group::create());
    for (unsigned i = 0; i < nodeCount; ++i) {
        if (i % fanOut == 0)
            root->addChild(osg::Node::create());
        root->getChild(root->getNChildren() - 1)->addChild(makePart(materials[i % shape.materials]));
    }
    return root;
}

double foldingSeconds(const Shape& shape)
{
    const osg::RefPtr<osg::NodePtr> root = buildTree(shape);
    optimization::MaterialFolding folding;
    return secondsOf([&] { folding.optimizeMaterials(root); });
}

/// 20,000 materials against 10,000.
void fold(benchmark::State& state, unsigned classSize, bool oneName)
{
    reportRatio(
        state,
        [=] {
            return foldingSeconds({10'000, classSize, oneName});
        },
        [=] {
            return foldingSeconds({20'000, classSize, oneName});
        });
}

BENCHMARK_CAPTURE(fold, ownNamesClassesOfTwo, 2, false)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(fold, ownNamesClassesOfOne, 1, false)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(fold, oneNameClassesOfTwo, 2, true)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(fold, oneNameClassesOfOne, 1, true)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

BENCHMARK_MAIN();
