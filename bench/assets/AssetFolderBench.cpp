// Asking for each asset of a folder of 2,000 files, and for as many that are not there: the time as the counter "ratio"
// to that of half as many in the same run.

#include "bench/support/BenchFolder.h"
#include "bench/support/Ratio.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znAssets/SessionAssets.h"

#include <QCoreApplication>

#include <fstream>

namespace
{

constexpr unsigned fileCount = 2'000;

QString uuidOf(unsigned number)
{
    return QStringLiteral("uuid-%1").arg(number);
}

void writeAsset(const std::string& file, unsigned number)
{
    std::ofstream(file) << R"({"asset":{"version":"2.0"},"materials":[{"name":"m","extras":{"uuid":")"
                        << uuidOf(number).toStdString() << R"(","name":"m"}}]})";
}

/// Seconds for the first question and `count` more of each kind; negative when an answer is wrong.
double secondsFor(unsigned count)
{
    const BenchFolder folder;
    for (unsigned i = 0; i < count; ++i)
        writeAsset(folder.file("asset-" + std::to_string(i) + ".gltf"), i);
    const QString path = QString::fromStdString(folder.file(""));
    zn::StandaloneSession session;
    bool isRight = true;
    const double seconds = secondsOf([&] {
        zn::assets::AssetItems& assets = zn::assets::sessionAssets();
        for (unsigned i = 0; i < count; ++i) {
            isRight = assets.materialByUuid(path, uuidOf(i)) && isRight;
            isRight = !assets.materialByUuid(path, uuidOf(count + i)) && isRight;
        }
    });
    return isRight ? seconds : -1;
}

void ask(benchmark::State& state)
{
    reportRatio(
        state, [] { return secondsFor(fileCount / 2); },
        [&state] {
            const double seconds = secondsFor(fileCount);
            if (seconds < 0)
                state.SkipWithError("an answer was wrong");
            return seconds;
        });
}

BENCHMARK(ask)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
