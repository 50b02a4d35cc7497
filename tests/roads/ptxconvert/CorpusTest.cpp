#include "host/OSGSystem/Geometry.h"
#include "tests/roads/ptxconvert/ConvertRun.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <map>

using namespace ptxtest;
using testing::HasSubstr;

namespace
{

std::vector<std::filesystem::path> filesIn(const std::string& folder)
{
    std::vector<std::filesystem::path> files;
    const char* corpus = std::getenv("ZN_CORPUS");
    std::error_code missing;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(corpus ? corpus : "") / folder, missing))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

/// Every file of `folder` ends with its code in `others`, or with 0 and a scene that has geometry in it.
void convertAll(const std::string& folder, const std::map<std::string, int>& others)
{
    const auto files = filesIn(folder);
    if (files.empty())
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << folder << " in it";
    for (const std::filesystem::path& file : files) {
        SCOPED_TRACE(file.string());
        ConvertRun run;
        const auto other = others.find(file.filename().string());
        const int code = run.convert(file.string());
        EXPECT_EQ(code, other == others.end() ? 0 : other->second) << run.log();
        if (code == 0)
            EXPECT_FALSE(geometries(run.scene()).empty());
        else
            EXPECT_THAT(run.log(), HasSubstr("Error: "));
    }
}

} // namespace

TEST(Corpus, StepFilesConvert)
{
    // Finite elements without any solid.
    convertAll("step", {{"ATS1-out.stp", 25}});
}

TEST(Corpus, OddStepFilesEndWithACodeAndASentence)
{
    convertAll("step/odd", {{"Ad050.stp", 25}, // its edge loops are empty
                            {"advanced-face-bounds-multi-aggregate.step", 7},
                            {"advanced-face-inline-cone-valid.step", 7},
                            {"advanced-face-inline-non-plane.step", 7},
                            {"comments.p21.stp", 25},
                            {"missing_and_required.p21.stp", 25},
                            {"planar-degenerate-loop.step", 7},
                            {"typed-parameter-values.step", 7}});
}
