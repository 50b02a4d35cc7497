// Annotations of real files against a table that was made without this reader.

#include "tests/ptx/readers/step/annotations/DrawnText.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

using namespace ptx::step::annotations;

namespace
{

struct Row {
    std::string path;
    std::size_t occurrences, placeholders, polylines, circles;
    std::size_t points; ///< of the polylines; 0 where nobody counted
    std::size_t triangles;
    std::map<std::string, std::size_t> colors; ///< of the callouts, by name

    friend std::ostream& operator<<(std::ostream& stream, const Row& row) { return stream << row.path; }
};

const std::vector<Row> Rows = {
    {"step/nist_ctc_01_asme1_ap242-e1.stp", 23, 0, 146, 0, 748, 2754, {{"black", 23}}},
    {"step/nist_ctc_03_asme1_ap242-e2.stp", 29, 29, 219, 0, 1462, 5027, {{"black", 29}}},
    {"step/nist_ctc_05_asme1_ap242-e1.stp", 22, 0, 573, 77, 0, 0, {}},
    {"step/nist_ftc_06_asme1_ap242-e2.stp", 67, 67, 498, 0, 3026, 19341, {{"black", 67}}},
    {"step/nist_stc_06_asme1_ap242-e3.stp", 42, 41, 2574, 0, 10018, 0, {{"black", 42}}},
    {"step/nist_stc_08_asme1_ap242-e3.stp", 44, 44, 401, 0, 2972, 21073, {{"black", 44}}},
    {"step-views/nist_ctc_02_asme1_ap242-2015.stp", 46, 0, 1114, 0, 0, 0, {{"black", 45}, {"blue", 1}}},
    {"step/no_sign.stp", 2, 0, 8, 0, 54, 279, {{"black", 2}}},
};

std::string nameOf(const osg::Color4f& color)
{
    if (color == osg::Color4f{0, 0, 0, 1})
        return "black";
    return color.blue > color.red && color.blue > color.green ? "blue" : "another";
}

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class AnnotationsCorpus : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(AnnotationsCorpus, TheFileDrawsWhatTheTableSays)
{
    const Row& row = GetParam();
    const char* corpus = std::getenv("ZN_CORPUS");
    const std::filesystem::path path = std::filesystem::path(corpus ? corpus : "") / row.path;
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << row.path << " in it";
    const Drawing drawing = ptxtest::drawn(contentOf(path));
    EXPECT_EQ(drawing.counts.occurrences, row.occurrences);
    EXPECT_EQ(drawing.counts.placeholders, row.placeholders);
    EXPECT_EQ(drawing.counts.polylines - drawing.counts.circles, row.polylines);
    EXPECT_EQ(drawing.counts.circles, row.circles);
    if (row.points > 0) {
        EXPECT_EQ(drawing.counts.points, row.points);
    }
    EXPECT_EQ(drawing.counts.triangles + drawing.counts.joints, row.triangles);
    EXPECT_EQ(drawing.counts.outOfRange, 0u);
    EXPECT_TRUE(drawing.unread.empty());
    EXPECT_EQ(drawing.callouts.size(), row.occurrences);
    std::map<std::string, std::size_t> colors;
    for (const Callout& callout : drawing.callouts) {
        EXPECT_NE(callout.product, 0u) << callout.name;
        EXPECT_NE(callout.context, 0u) << callout.name;
        ++colors[nameOf(callout.strokes.at(0).color)];
    }
    if (!row.colors.empty()) {
        EXPECT_EQ(colors, row.colors);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, AnnotationsCorpus, testing::ValuesIn(Rows));

TEST(AnnotationsCorpusOld, LeadersAreDrawnWithTheirHeadsAndTextsAreKept)
{
    struct Old {
        const char* path;
        std::size_t occurrences, leaders, filledHeads, openHeads;
    };
    for (const Old& old : {Old{"step/io1-cm-214.stp", 9, 3, 3, 0}, Old{"step/io1-tu-203.stp", 6, 2, 0, 2}}) {
        const char* corpus = std::getenv("ZN_CORPUS");
        const std::filesystem::path path = std::filesystem::path(corpus ? corpus : "") / old.path;
        if (!std::filesystem::exists(path))
            GTEST_SKIP() << "ZN_CORPUS names no folder with " << old.path << " in it";
        const Drawing drawing = ptxtest::drawn(contentOf(path));
        EXPECT_EQ(drawing.counts.occurrences, old.occurrences) << old.path;
        EXPECT_EQ(drawing.counts.polylines, old.leaders + old.openHeads) << old.path;
        EXPECT_EQ(drawing.counts.triangles, old.filledHeads) << old.path;
        EXPECT_EQ(drawing.callouts.size(), old.leaders) << old.path;
        for (const Callout& callout : drawing.callouts)
            EXPECT_FALSE(callout.texts.empty()) << old.path;
    }
}
