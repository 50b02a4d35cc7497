// Real assemblies whose parts lie in other files, through the real converter. The expected places are the numbers of
// the files' own placements, added up by hand and in millimetres.

#include "tests/roads/CorpusImport.h"

#include <QFileInfo>

#include <gmock/gmock.h>

using namespace corpustest;

namespace
{

struct Assembly {
    const char* file;
    std::vector<std::string> places; ///< of the geometries: the part's name and its origin
};

void PrintTo(const Assembly& assembly, std::ostream* stream)
{
    *stream << assembly.file;
}

class ExtrefCorpusTest : public testing::TestWithParam<Assembly>
{
protected:
    const QString m_file =
        qEnvironmentVariable("ZN_CORPUS") + QStringLiteral("/step/") + QString::fromUtf8(GetParam().file);
};

TEST_P(ExtrefCorpusTest, EveryPartIsInItsPlaceWhateverTheNumberOfProcesses)
{
    if (!QFileInfo::exists(m_file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam().file << " in it";
    const Import inlined = import(m_file, "1");
    const Import two = import(m_file, "2");
    const Import four = import(m_file, "4");
    for (const Import* one : {&inlined, &two, &four}) {
        EXPECT_EQ(one->result.state, znCADFileTypes::JobSucceeded) << one->result.error.toStdString();
        EXPECT_TRUE(one->result.missing.empty());
        EXPECT_THAT(one->places, testing::ElementsAreArray(GetParam().places));
    }
    EXPECT_EQ(two.tree, four.tree);
    EXPECT_EQ(inlined.matrices, two.matrices);
    EXPECT_THAT(two.tree, testing::HasSubstr("[ExtReference]"));
    const Import dissolved = import(m_file, "2", "dissolve");
    EXPECT_EQ(dissolved.matrices, two.matrices);
    EXPECT_THAT(dissolved.tree, testing::Not(testing::HasSubstr("[ExtReference]")));
}

TEST_P(ExtrefCorpusTest, TheTreeDoesNotTellTheNumberOfProcesses)
{
    if (!QFileInfo::exists(m_file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam().file << " in it";
    const Import inlined = import(m_file, "1", "dissolve");
    EXPECT_THAT(inlined.tags, testing::Contains(testing::HasSubstr("; ")));
    for (const char* processes : {"2", "4"}) {
        const Import parallel = import(m_file, processes, "dissolve");
        EXPECT_EQ(parallel.tree, inlined.tree) << processes;
        EXPECT_EQ(parallel.tags, inlined.tags) << processes;
        EXPECT_EQ(parallel.ids, inlined.ids) << processes;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sets, ExtrefCorpusTest,
    testing::Values(
        // Inches in the file, and files that refer to files.
        Assembly{"extref-s1-c5-214/s1-c5-214.stp",
                 {"FOOT_BACK_000 0.00 -36.48 -0.23", "FOOT_BACK_000 0.00 36.48 -0.23",
                  "FOOT_FRONT_000 0.00 -36.48 -0.23", "FOOT_FRONT_000 0.00 36.48 -0.23", "HEAD_BACK -48.00 0.00 0.00",
                  "HEAD_FRONT -48.00 0.00 0.00", "MAINBODY_BACK 50.00 0.00 0.00", "MAINBODY_FRONT -30.00 0.00 0.00",
                  "TAIL_MIDDLE_PART -102.00 0.00 0.00", "TAIL_TURBINE 41.00 -24.00 0.00",
                  "TAIL_TURBINE 41.00 24.00 0.00"}},
        Assembly{"extref-s1-tu-203/s1-tu-203.stp",
                 {"FOOTBACK 227.20 -31.75 -70.68", "FOOTBACK 227.20 42.25 -73.18", "FOOTFRONT 227.20 -31.75 -70.68",
                  "FOOTFRONT 227.20 42.25 -73.18", "HEADBACK 125.00 0.00 0.00", "HEADFRONT 60.00 0.00 0.00",
                  "MAINBODYBACK 257.20 0.00 0.00", "MAINBODYFRONT 207.20 0.00 0.00", "TAILMIDDLEPART 362.20 0.00 0.00",
                  "TAILTURBINE::1 314.93 -75.00 0.00", "TAILTURBINE::2 314.93 75.00 0.00"}}));

} // namespace
