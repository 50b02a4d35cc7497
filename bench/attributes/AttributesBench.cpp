// 100,000 nodes with ten attributes each, every list another: reading and writing scene files and writing GLB files, as
// ratios to the same nodes without attributes, and the time and the bytes of an attribute.

#include "bench/support/Ratio.h"
#include "files/glb/GlbWriter.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Attributes.h"
#include "scene/NodeWalk.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <ctime>

namespace
{

using NodeRef = osg::RefPtr<osg::NodePtr>;

constexpr int nodeCount = 100'000;
constexpr int fanOut = 10;
constexpr int pairsPerNode = 10;
constexpr double pairs = double(nodeCount) * pairsPerNode;

osg::AttributeList attributesOfNode(int i)
{
    const std::string number = std::to_string(i);
    return {{"Part number", "A-" + number},
            {"Description", "part " + number + " of the assembly"},
            {"Author", std::string(i % 3 == 0 ? "Ada" : "Grace")},
            {"Material", std::string(i % 2 == 0 ? "Steel" : "Brass")},
            {"Revision", std::int64_t(i % 17)},
            {"Supplier", std::int64_t(i)},
            {"Mass", i * 0.001, "kg"},
            {"Length", i * 0.5, "mm"},
            {"Bought", i % 5 == 0},
            {"Released", osg::AttributeDate{"2024-05-31"}}};
}

NodeRef tree(bool withAttributes)
{
    std::vector<osg::NodePtr> nodes;
    nodes.reserve(nodeCount);
    for (int i = 0; i < nodeCount; ++i) {
        const osg::Transform3DPtr core = osg::Transform3DBase::create();
        core->setTranslation({float(i), 2, 3});
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::setName(node, "node " + std::to_string(i));
        if (withAttributes)
            osg::addAttributes(node, osg::AttributeOwner::Product, attributesOfNode(i));
        if (i > 0)
            nodes[static_cast<std::size_t>((i - 1) / fanOut)]->addChild(node);
        nodes.push_back(node);
    }
    return NodeRef(nodes.front());
}

/// The same tree without and with attributes, and a folder for both.
struct Trees {
    NodeRef plain = tree(false);
    NodeRef full = tree(true);
    QTemporaryDir folder;

    QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    double size(const char* name) const { return static_cast<double>(QFileInfo(path(name)).size()); }
};

const Trees& trees()
{
    static const Trees both;
    return both;
}

/// Seconds of the processor, which other programs beside this one change little.
template <class Work>
double processorSecondsOf(const Work& work)
{
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Takes a timing, the least of all, which it gives back.
double least(double& best, double seconds)
{
    best = std::min(best, seconds);
    return seconds;
}

/// Runs `work` for the plain tree and the full one in turn, and tells what an attribute takes of it.
template <class Work>
void compare(benchmark::State& state, const Work& work)
{
    double plain = 1e9;
    double full = 1e9;
    reportRatio(
        state, [&] { return least(plain, work(trees().plain, "plain")); },
        [&] { return least(full, work(trees().full, "full")); });
    state.counters["ns/attribute"] = (full - plain) * 1e9 / pairs;
}

double writeScene(const NodeRef& root, const std::string& name)
{
    return processorSecondsOf(
        [&] { (void)osg::scenefile::writeSceneFile(root, trees().path((name + ".osb").c_str())); });
}

void writeSceneFiles(benchmark::State& state)
{
    compare(state, writeScene);
    state.counters["bytes/attribute"] = (trees().size("full.osb") - trees().size("plain.osb")) / pairs;
}

void readSceneFiles(benchmark::State& state)
{
    writeScene(trees().plain, "plain");
    writeScene(trees().full, "full");
    compare(state, [](const NodeRef&, const std::string& name) {
        NodeRef root;
        return processorSecondsOf(
            [&] { root = osg::scenefile::readSceneFile(trees().path((name + ".osb").c_str())).value(); });
    });
}

void writeGlbFiles(benchmark::State& state)
{
    compare(state, [](const NodeRef& root, const std::string& name) {
        return processorSecondsOf([&] { (void)files::glb::write(root.get(), trees().path((name + ".glb").c_str())); });
    });
    state.counters["bytes/attribute"] = (trees().size("full.glb") - trees().size("plain.glb")) / pairs;
}

/// What it takes to ask for all that was read.
void unfoldAttributes(benchmark::State& state)
{
    writeScene(trees().full, "full");
    const NodeRef root(osg::scenefile::readSceneFile(trees().path("full.osb")).value());
    double best = 1e9;
    for (auto _ : state)
        state.SetIterationTime(least(best, processorSecondsOf([&] {
                                         std::size_t count = 0;
                                         for (const osg::NodePtr& node : osg::parentsFirst(root.get()))
                                             count += osg::attributesOf(node, osg::AttributeOwner::Product).size();
                                         benchmark::DoNotOptimize(count);
                                     })));
    state.counters["ns/attribute"] = best * 1e9 / pairs;
}

BENCHMARK(writeSceneFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(readSceneFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK(writeGlbFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(unfoldAttributes)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

BENCHMARK_MAIN();
