// Dissolving 100,000 references without a transform, all under one parent or each below the other: the time as the
// counter "ratio" to that of half as many in the same run.

#include "bench/support/Ratio.h"
#include "host/OSGSystem/Group.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "optimization/SourceReferences.h"

namespace
{

constexpr unsigned referenceCount = 100'000;
constexpr unsigned partsOfEach = 2;

osg::NodePtr addNode(const osg::NodePtr& parent, const osg::NodeCorePtr& core)
{
    const osg::NodePtr node = osg::Node::create();
    node->setCore(core);
    parent->addChild(node);
    return node;
}

osg::NodePtr addReference(const osg::NodePtr& parent)
{
    const osg::ExtReferencePtr core = osg::ExtReference::create();
    core->setSourceFile(osg::FileReference::create());
    const osg::NodePtr node = addNode(parent, core);
    for (unsigned i = 0; i < partsOfEach; ++i)
        addNode(node, osg::Group::create());
    return node;
}

osg::RefPtr<osg::NodePtr> newRoot()
{
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    root->setCore(osg::Group::create());
    return root;
}

/// The seconds of the dissolving; negative when something is left of it.
double secondsFor(const osg::RefPtr<osg::NodePtr>& root, unsigned count)
{
    const double seconds = secondsOf([&] { optimization::removeSourceReferences(root); });
    return root->getNChildren() == count * partsOfEach ? seconds : -1;
}

double wideSeconds(unsigned count)
{
    const osg::RefPtr<osg::NodePtr> root = newRoot();
    for (unsigned i = 0; i < count; ++i)
        addReference(root);
    return secondsFor(root, count);
}

double deepSeconds(unsigned count)
{
    const osg::RefPtr<osg::NodePtr> root = newRoot();
    osg::NodePtr last = root;
    for (unsigned i = 0; i < count; ++i)
        last = addReference(last);
    return secondsFor(root, count);
}

void dissolve(benchmark::State& state, double (*seconds)(unsigned count))
{
    reportRatio(
        state, [=] { return seconds(referenceCount / 2); },
        [&] {
            const double taken = seconds(referenceCount);
            if (taken < 0)
                state.SkipWithError("references were left");
            return taken;
        });
}

BENCHMARK_CAPTURE(dissolve, underOneParent, wideSeconds)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);
BENCHMARK_CAPTURE(dissolve, inAChain, deepSeconds)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

} // namespace

BENCHMARK_MAIN();
