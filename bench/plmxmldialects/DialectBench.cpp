#include "bench/plmxmldialects/DialectDocuments.h"
#include "bench/support/ChildRun.h"
#include "importer/Importer.h"
#include "importer/plmxml/Normaliser.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

constexpr auto Untouched = importer::plmxml::NormalisedDocument::Way::AsItStands;

QString write(const QTemporaryDir& folder, const char* name, const std::string& text)
{
    QFile file(folder.filePath(QString::fromUtf8(name)));
    if (file.open(QIODevice::WriteOnly))
        file.write(text.data(), static_cast<qint64>(text.size()));
    return file.fileName();
}

/// The structure alone; part files stay references.
ChildRun importOf(const QString& file)
{
    return runInChild([file] {
        zn::StandaloneSession session;
        session.settings().set(QStringLiteral("import.PLMXML.referencedFiles"), QStringLiteral("off"));
        // The time and memory of this process are what counts.
        session.settings().set(QStringLiteral("files.reading"), QStringLiteral("process"));
        zn::Importer importer(session);
        QEventLoop loop;
        QObject::connect(&importer, &zn::Importer::finished, &loop, &QEventLoop::quit);
        const double begin = processorSeconds();
        importer.import({file});
        loop.exec();
        return processorSeconds() - begin;
    });
}

/// "time_ratio" and "memory_ratio" are what an export of `range(0)` places takes over what the same structure takes in
/// the form that the loader reads; "growth" is its time over that of a tenth.
void exportAgainstPlain(benchmark::State& state)
{
    const QTemporaryDir folder;
    const DialectDocuments large{static_cast<int>(state.range(0))};
    const DialectDocuments small{large.places / 10};
    const QString exported = write(folder, "exported.plmxml", large.exported());
    const QString tenth = write(folder, "tenth.plmxml", small.exported());
    const QString plain = write(folder, "plain.plmxml", large.plain());
    for (auto _ : state) {
        const ChildRun of = importOf(exported);
        const ChildRun other = importOf(plain);
        const ChildRun few = importOf(tenth);
        if (!of.succeeded || !other.succeeded || !few.succeeded)
            return state.SkipWithError("an import failed");
        state.SetIterationTime(of.seconds);
        state.counters["time_ratio"] = of.seconds / other.seconds;
        state.counters["memory_ratio"] = of.mebibytes / other.mebibytes;
        state.counters["growth"] = of.seconds / few.seconds;
    }
}

/// The look at a document that is then read as it stands, alone.
ChildRun lookAt(const QString& file)
{
    return runInChild([&file] {
        const double begin = processorSeconds();
        const bool isUntouched = importer::plmxml::normalise(file, {}).way == Untouched;
        return isUntouched ? processorSeconds() - begin : -1;
    });
}

/// What it costs to find that a document can be read as it stands: "ratio" is the time of its import over what is left
/// of that without the normalising step. Of seven pairs the median, since other programs run beside this one.
void untouchedDocument(benchmark::State& state, const DialectDocuments::Sayings& says)
{
    constexpr std::size_t pairs = 7;
    const QTemporaryDir folder;
    const DialectDocuments document{static_cast<int>(state.range(0))};
    const QString file = write(folder, "fitting.plmxml", document.fitting(says));
    for (auto _ : state) {
        std::array<std::pair<double, double>, pairs> ratios; // and the time of the look
        for (auto& [ratio, seconds] : ratios) {
            const ChildRun whole = importOf(file);
            const ChildRun look = lookAt(file);
            if (!whole.succeeded || !look.succeeded || look.seconds < 0)
                return state.SkipWithError("the document did not pass through untouched");
            ratio = whole.seconds / (whole.seconds - look.seconds);
            seconds = look.seconds;
        }
        std::sort(ratios.begin(), ratios.end());
        state.SetIterationTime(ratios[pairs / 2].second);
        state.counters["ratio"] = ratios[pairs / 2].first;
        state.counters["ratio_least"] = ratios.front().first;
        state.counters["ratio_most"] = ratios.back().first;
    }
}

BENCHMARK(exportAgainstPlain)->Arg(100000)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(untouchedDocument, plain, {})->Arg(100000)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(untouchedDocument, userData, {true, false})
    ->Arg(100000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(untouchedDocument, occurrences, {false, true})
    ->Arg(100000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(untouchedDocument, both, {true, true})
    ->Arg(100000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
