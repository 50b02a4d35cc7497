// How the time to fold a tree grows with its wrappers: in the scene, as after an import, and in a GLB file.
//
// "ratio" is the processor time for 200,000 wrappers over that for 100,000, in the same run; the bound is 2.3.

#include "bench/fold/WrappedTrees.h"
#include "bench/support/Ratio.h"
#include "files/glb/GlbWriter.h"
#include "importer/TreeFold.h"
#include "standalone/startup/StandaloneSession.h"

#include <QTemporaryDir>

namespace
{

constexpr unsigned wrapperCount = 200'000;

/// Negative when other nodes went than the wrappers.
double foldingSeconds(Wrapping wrapping, unsigned wrappers)
{
    zn::StandaloneSession session;
    const osg::RefPtr<osg::NodePtr> root = wrappedTree(wrapping, wrappers);
    std::size_t gone = 0;
    const double seconds = processorSecondsOf([&] { gone = importer::foldTree(session, root.get()); });
    return gone == wrappers ? seconds : -1;
}

double writingSeconds(Wrapping wrapping, unsigned wrappers)
{
    const QTemporaryDir folder;
    const osg::RefPtr<osg::NodePtr> root = wrappedTree(wrapping, wrappers);
    bool isWritten = false;
    const double seconds = processorSecondsOf(
        [&] { isWritten = bool(files::glb::write(root.get(), folder.filePath(QStringLiteral("out.glb")), {})); });
    return isWritten ? seconds : -1;
}

void growth(benchmark::State& state, double (*seconds)(Wrapping, unsigned), Wrapping wrapping)
{
    reportRatio(
        state, [=] { return seconds(wrapping, wrapperCount / 2); },
        [=, &state] {
            const double taken = seconds(wrapping, wrapperCount);
            if (taken < 0)
                state.SkipWithError("the tree was not folded as it should");
            return taken;
        });
}

#define FOLD_BENCH(name, seconds, wrapping)                                                                            \
    BENCHMARK_CAPTURE(growth, name, seconds, wrapping)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7)

FOLD_BENCH(sceneBeside, foldingSeconds, Wrapping::Beside);
FOLD_BENCH(sceneNested, foldingSeconds, Wrapping::Nested);
FOLD_BENCH(scenePaired, foldingSeconds, Wrapping::Paired);
FOLD_BENCH(fileBeside, writingSeconds, Wrapping::Beside);
FOLD_BENCH(fileNested, writingSeconds, Wrapping::Nested);
FOLD_BENCH(filePaired, writingSeconds, Wrapping::Paired);

} // namespace

BENCHMARK_MAIN();
