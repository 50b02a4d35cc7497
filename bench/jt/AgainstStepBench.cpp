// The whole converter process on JT files and on STEP files with about as many distinct triangles, in turn.
//
// ZN_CORPUS=FOLDER ptx_jt_against_step_bench: pairs of real files below FOLDER. They are not the same models: no public
// model was found in both formats. ptx_jt_against_step_bench JT_FILE STEP_FILE ... takes pairs that are.
//
// Counters: cpu, wall and memory are the JT file's share of what the STEP file takes (medians over the runs), triangles
// the ratio of their distinct triangles, cpu_per_triangle the share of processor time for one triangle.

#include "bench/converter/ProgramShares.h"
#include "bench/support/BenchFolder.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <utility>

namespace
{

namespace fs = std::filesystem;

constexpr int Pairs = 5;

constexpr std::pair<const char*, const char*> PairsOfCorpus[] = {
    {"CoffeeMaker.jt", "Bowden_Module.step"},
    {"conrod.jt", "RPi_or_BTT-Pico_Din_Mount.STEP"},
    {"butterflyvalve_v10.0.jt", "Hall_Effect_XY_Endstop.step"}};

/// The converter on one file, which writes into a folder of its own.
class Conversion
{
public:
    explicit Conversion(std::string file) : m_file(std::move(file)) {}

    ProgramRun run() const
    {
        const fs::path converter = fs::read_symlink("/proc/self/exe").parent_path() / "ptxconvert";
        return runProgram({converter.string(), m_file, m_folder.file("out.osb")}, m_folder.file("out.txt"));
    }

    double triangles() const
    {
        static const std::regex pattern(R"((\d+) triangles)");
        std::ifstream stream(m_folder.file("out.osb.log"));
        const std::string log{std::istreambuf_iterator<char>(stream), {}};
        double sum = 0;
        for (std::sregex_iterator match(log.begin(), log.end(), pattern), end; match != end; ++match)
            sum += std::stod((*match)[1]);
        return sum;
    }

private:
    std::string m_file;
    BenchFolder m_folder;
};

void compare(benchmark::State& state, const std::string& jtFile, const std::string& stepFile)
{
    const Conversion jt(jtFile);
    const Conversion step(stepFile);
    const double cpu = reportShares(
        state, [&] { return step.run(); }, [&] { return jt.run(); });
    const double triangles = jt.triangles() / step.triangles();
    state.counters["triangles"] = triangles;
    state.counters["cpu_per_triangle"] = cpu / triangles;
}

void add(const fs::path& jt, const fs::path& step)
{
    const std::string name = jt.filename().string() + "/" + step.filename().string();
    benchmark::RegisterBenchmark(name.c_str(),
                                 [jt, step](benchmark::State& state) { compare(state, jt.string(), step.string()); })
        ->UseManualTime()
        ->Iterations(Pairs)
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (const char* corpus = std::getenv("ZN_CORPUS"))
        for (const auto& [jt, step] : PairsOfCorpus)
            add(fs::path(corpus) / "jt" / jt, fs::path(corpus) / "step" / step);
    for (int i = 1; i + 1 < argc; i += 2)
        add(argv[i], argv[i + 1]);
    if (benchmark::RunSpecifiedBenchmarks() == 0)
        std::fprintf(stderr, "no file: set ZN_CORPUS or name pairs of files\n");
    return 0;
}
