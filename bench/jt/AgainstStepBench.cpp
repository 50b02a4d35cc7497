// The whole converter process on JT files and on STEP files with about as many distinct triangles, in turn.
//
// ZN_CORPUS=FOLDER ptx_jt_against_step_bench: pairs of real files below FOLDER. They are not the same models: no public
// model was found in both formats. ptx_jt_against_step_bench JT_FILE STEP_FILE ... takes pairs that are.
//
// Counters: cpu, wall and memory are the JT file's share of what the STEP file takes (medians over the runs), triangles
// the ratio of their distinct triangles, cpu_per_triangle the share of processor time for one triangle.

#include "bench/converter/ProgramRun.h"
#include "bench/support/Ratio.h"

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
    explicit Conversion(std::string file) : m_file(std::move(file))
    {
        std::string pattern = (fs::temp_directory_path() / "jt-bench-XXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
    }
    ~Conversion() { fs::remove_all(m_folder); }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    ProgramRun run() const
    {
        const fs::path converter = fs::read_symlink("/proc/self/exe").parent_path() / "ptxconvert";
        return runProgram({converter.string(), m_file, m_folder + "/out.osb"}, m_folder + "/out.txt");
    }

    double triangles() const
    {
        static const std::regex pattern(R"((\d+) triangles)");
        std::ifstream stream(m_folder + "/out.osb.log");
        const std::string log{std::istreambuf_iterator<char>(stream), {}};
        double sum = 0;
        for (std::sregex_iterator match(log.begin(), log.end(), pattern), end; match != end; ++match)
            sum += std::stod((*match)[1]);
        return sum;
    }

private:
    std::string m_file;
    std::string m_folder;
};

void compare(benchmark::State& state, const std::string& jtFile, const std::string& stepFile)
{
    const Conversion jt(jtFile);
    const Conversion step(stepFile);
    std::vector<double> wall, cpu, memory;
    for ([[maybe_unused]] auto run : state) {
        const ProgramRun base = step.run();
        const ProgramRun own = jt.run();
        if (!base.succeeded || !own.succeeded)
            return state.SkipWithError(base.succeeded ? "the JT file failed" : "the STEP file failed");
        state.SetIterationTime(own.seconds);
        wall.push_back(own.seconds / base.seconds);
        cpu.push_back(own.cpuSeconds / base.cpuSeconds);
        memory.push_back(own.mebibytes / base.mebibytes);
    }
    const double triangles = jt.triangles() / step.triangles();
    state.counters["wall"] = median(wall);
    state.counters["cpu"] = median(cpu);
    state.counters["memory"] = median(memory);
    state.counters["triangles"] = triangles;
    state.counters["cpu_per_triangle"] = median(cpu) / triangles;
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
