// Turning 8,000 bookmarks into variants, each with a group and a material of its own, or with a material that is not
// there, or with a camera: the time as the counter "ratio" to that of half as many in the same run.

#include "bench/support/Ratio.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "optimization/BookmarkConversion.h"
#include "scene/Tags.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/SessionVariants.h"

#include <QCoreApplication>

#include <string>

namespace
{

constexpr unsigned bookmarkCount = 8'000;

osg::NodePtr addNode(const osg::NodePtr& parent, const osg::NodeCorePtr& core)
{
    const osg::NodePtr node = osg::makeNodeFor(core);
    parent->addChild(node);
    return node;
}

osg::NodePtr addBookmark(const osg::NodePtr& root, const std::string& number, const std::string& material)
{
    const osg::NodePtr node = addNode(root, osg::Group::create());
    osg::setName(node, "set " + number);
    osg::setTags(node,
                 {"stylar::bookmark", "bookmark_group[group " + number + "]", "switch_shader[" + material + "]:on"});
    return node;
}

void addMaterial(const osg::NodePtr& root, const std::string& name)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    osg::setName(material, name);
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    group->setMaterial(material);
    addNode(root, group);
}

void addCamera(const osg::NodePtr& bookmark, const std::string& number)
{
    osg::setTags(addNode(bookmark, osg::UberCamera::create()), {"camera " + number});
}

struct Shape {
    const char* wanted; ///< the material of each bookmark: this text and its number
    bool hasCameras;
};

/// The seconds of the conversion; negative when a set is missing.
double secondsFor(unsigned count, const Shape& shape)
{
    zn::StandaloneSession session;
    osg::NodePtr root = addNode(session.sceneRoot(), osg::Group::create());
    for (unsigned i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        const osg::NodePtr bookmark = addBookmark(root, number, shape.wanted + number);
        addMaterial(root, "material " + number);
        if (shape.hasCameras)
            addCamera(bookmark, number);
    }
    znScenegraph::getMaterialPool()->add(root);
    const double seconds = secondsOf([&] { optimization::convertStylarBookmarks(root, false); });
    return zn::variants::sessionVariants().sets().size() == count ? seconds : -1;
}

void convert(benchmark::State& state, const Shape& shape)
{
    reportRatio(
        state, [&shape] { return secondsFor(bookmarkCount / 2, shape); },
        [&state, &shape] {
            const double seconds = secondsFor(bookmarkCount, shape);
            if (seconds < 0)
                state.SkipWithError("sets are missing");
            return seconds;
        });
}

BENCHMARK_CAPTURE(convert, materials, {"material ", false})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7);
BENCHMARK_CAPTURE(convert, noMaterials, {"nothing ", false})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7);
BENCHMARK_CAPTURE(convert, cameras, {"material ", true})->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
