// The whole converter process against the CAD kernel as it comes, on the same files with the same tolerance, in turn.
//
// The files are the STEP files of 2 MB or more below the folder that ZN_CORPUS names, and those named on the command
// line. Counters: wall, cpu and memory are the converter's share of what the kernel chain takes (medians over the
// pairs), triangles is the ratio of their numbers, lost the number of faces without mesh that only the converter has.

#include "bench/converter/ProgramShares.h"
#include "bench/support/BenchFolder.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

namespace
{

namespace fs = std::filesystem;

constexpr std::uintmax_t LeastSize = 2'000'000;
constexpr int Pairs = 7;
constexpr const char* Deviation = "0.1";
constexpr const char* Angle = "20";

struct Counts {
    double without = 0;
    double triangles = 0;
};

fs::path programFolder()
{
    return fs::read_symlink("/proc/self/exe").parent_path();
}

std::string contentOf(const std::string& path)
{
    std::ifstream stream(path);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class Comparison
{
public:
    explicit Comparison(std::string file) : m_file(std::move(file)) {}

    ProgramRun chain() const
    {
        return runProgram(
            {(programFolder() / "zn_kernel_chain").string(), m_file, m_folder.file("out.glb"), Deviation, Angle},
            m_folder.file("chain.txt"));
    }

    ProgramRun converter() const
    {
        return runProgram({(programFolder() / "ptxconvert").string(), "--set",
                           std::string("tessellation.deviation=") + Deviation, "--set",
                           std::string("tessellation.angle=") + Angle, m_file, m_folder.file("out.osb")},
                          m_folder.file("converter.txt"));
    }

    Counts chainCounts() const
    {
        Counts counts;
        double faces = 0;
        std::ifstream(m_folder.file("chain.txt")) >> faces >> counts.without >> counts.triangles;
        return counts;
    }

    Counts converterCounts() const
    {
        static const std::regex pattern(R"((\d+) without mesh\), (\d+) triangles)");
        const std::string log = contentOf(m_folder.file("out.osb.log"));
        std::smatch match;
        if (!std::regex_search(log, match, pattern))
            return {};
        return {std::stod(match[1]), std::stod(match[2])};
    }

private:
    std::string m_file;
    BenchFolder m_folder;
};

void compare(benchmark::State& state, const std::string& file)
{
    const Comparison comparison(file);
    reportShares(
        state, [&] { return comparison.chain(); }, [&] { return comparison.converter(); });
    const Counts base = comparison.chainCounts();
    const Counts own = comparison.converterCounts();
    state.counters["triangles"] = own.triangles / base.triangles;
    state.counters["lost"] = own.without - base.without;
}

void add(const fs::path& file)
{
    benchmark::RegisterBenchmark(file.filename().string().c_str(),
                                 [file](benchmark::State& state) { compare(state, file.string()); })
        ->UseManualTime()
        ->Iterations(Pairs)
        ->Unit(benchmark::kMillisecond);
}

void addCorpus()
{
    const char* corpus = std::getenv("ZN_CORPUS");
    std::error_code missing;
    if (corpus)
        for (const auto& entry : fs::directory_iterator(fs::path(corpus) / "step", missing))
            if (entry.is_regular_file() && entry.file_size() >= LeastSize)
                add(entry.path());
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    addCorpus();
    for (int i = 1; i < argc; ++i)
        add(argv[i]);
    if (benchmark::RunSpecifiedBenchmarks() == 0)
        std::fprintf(stderr, "no file: set ZN_CORPUS or name files\n");
    return 0;
}
