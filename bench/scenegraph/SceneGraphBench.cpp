// Creating, walking, cloning and destroying a tree of a million nodes, each as a ratio to as many plain allocations of
// the same sizes in the same run.

#include "bench/support/Ratio.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/ContainerRegistry.h"

#include <malloc.h>

namespace
{

constexpr int nodeCount = 1'000'000;
constexpr int fanOut = 10;

/// A tree in which each inner node has ten children and each node a transform of its own, or one shared by all.
osg::RefPtr<osg::NodePtr> buildTree(bool ownCores)
{
    const osg::TransformPtr shared = osg::TransformBase::create();
    const osg::RefPtr<osg::TransformPtr> holder(shared);
    std::vector<osg::NodePtr> nodes;
    nodes.reserve(nodeCount);
    for (int i = 0; i < nodeCount; ++i) {
        const osg::NodePtr node = osg::Node::create();
        node->setCore(ownCores ? osg::TransformBase::create() : shared);
        if (i > 0)
            nodes[static_cast<std::size_t>((i - 1) / fanOut)]->addChild(node);
        nodes.push_back(node);
    }
    return osg::RefPtr<osg::NodePtr>(nodes.front());
}

/// The reference: blocks of the size of a node, and of a transform if `withCores`, kept and written to.
class Blocks
{
public:
    explicit Blocks(bool withCores) : m_withCores(withCores) { m_blocks.reserve(2 * nodeCount); }
    ~Blocks() { release(); }

    void allocate()
    {
        for (int i = 0; i < nodeCount; ++i) {
            add(sizeof(osg::Node));
            if (m_withCores)
                add(sizeof(osg::Transform));
        }
    }
    void release()
    {
        for (void* block : m_blocks)
            operator delete(block);
        m_blocks.clear();
    }
    void read() const
    {
        for (void* block : m_blocks)
            benchmark::DoNotOptimize(*static_cast<char*>(block));
    }

private:
    void add(std::size_t size)
    {
        void* block = operator new(size);
        std::fill_n(static_cast<char*>(block), size, char(1));
        m_blocks.push_back(block);
    }

    std::vector<void*> m_blocks;
    bool m_withCores;
};

double allocationSeconds(bool withCores)
{
    Blocks blocks(withCores);
    return secondsOf([&] { blocks.allocate(); });
}

double releaseSeconds()
{
    Blocks blocks(true);
    blocks.allocate();
    return secondsOf([&] { blocks.release(); });
}

void create(benchmark::State& state)
{
    reportRatio(
        state, [] { return allocationSeconds(true); },
        [] {
            osg::RefPtr<osg::NodePtr> root;
            return secondsOf([&] { root = buildTree(true); });
        });
}

void cloneSharedCores(benchmark::State& state)
{
    const osg::RefPtr<osg::NodePtr> root = buildTree(true);
    reportRatio(
        state, [] { return allocationSeconds(false); },
        [&] {
            osg::RefPtr<osg::NodePtr> clone;
            return secondsOf([&] { clone = osg::cloneTree(root, true); });
        });
}

void walk(benchmark::State& state)
{
    const osg::RefPtr<osg::NodePtr> root = buildTree(true);
    reportRatio(
        state, [] { return allocationSeconds(true); },
        [&] {
            std::size_t count = 0;
            const double seconds = secondsOf([&] {
                osg::traverse(root, [&](const osg::NodePtr& node) {
                    count += node->getCore() ? 1 : 0;
                    return osg::Action::Continue;
                });
            });
            if (count != nodeCount)
                state.SkipWithError("the walk missed nodes");
            return seconds;
        });
}

void destroy(benchmark::State& state)
{
    reportRatio(state, releaseSeconds, [] {
        osg::RefPtr<osg::NodePtr> root = buildTree(true);
        return secondsOf([&] { root = osg::NodePtr(); });
    });
}

void bytesPerNode(benchmark::State& state)
{
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const osg::RefPtr<osg::NodePtr> root = buildTree(true);
        const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        state.SetIterationTime(1e-3);
        state.counters["bytes"] = double(after - before) / nodeCount;
    }
}

BENCHMARK(create)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(cloneSharedCores)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(walk)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(destroy)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(bytesPerNode)->UseManualTime()->Iterations(1);

} // namespace

BENCHMARK_MAIN();
