// What is left of STEP files whose text cannot be read everywhere.

#include "files/scenefile/ConvertedTree.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

/// A box with twelve triangles and a colour.
std::string boxText()
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {1, 2, 3}, {11, 22, 33});
    step.color(box.solid, {0.25, 0.5, 0.75});
    return step.text();
}

/// The text with `to` in the place of the first `from` behind the first `behind`.
std::string changed(std::string text, const std::string& behind, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from, text.find(behind));
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

std::vector<std::string> reasonsOf(const osg::NodePtr& node)
{
    std::vector<std::string> reasons;
    for (const std::string& tag : osg::tagsOf(node))
        if (const auto part = osg::scenefile::converted::missingPart(tag))
            reasons.push_back(part->reason);
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        for (const std::string& reason : reasonsOf(node->getChild(i)))
            reasons.push_back(reason);
    return reasons;
}

} // namespace

TEST(ConvertDamagedText, RecordThatCannotBeReadIsMissingAndTheRestComesIn)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", changed(boxText(), "=PLANE(", ");", ";")), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 10U);
    EXPECT_THAT(reasonsOf(run.scene()), Contains(HasSubstr(": a comma or a closing bracket is missing")));
    EXPECT_THAT(run.log(), HasSubstr("Warning: left out: #"));
}

TEST(ConvertDamagedText, TextWithoutItsEndComesInAndSaysSo)
{
    ConvertRun run;
    const std::string text = boxText();
    ASSERT_EQ(run.convertText("box.stp", text.substr(0, text.rfind("ENDSEC;"))), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 12U);
    EXPECT_THAT(reasonsOf(run.scene()), Contains("the text ends without END-ISO-10303-21"));
}

TEST(ConvertDamagedText, SeveralDataSectionsAreOneModel)
{
    ConvertRun run;
    const std::string text = boxText();
    const std::size_t middle = text.find("\n#", text.size() / 2);
    ASSERT_EQ(run.convertText("box.stp", std::string(text).insert(middle, "\nENDSEC;\nDATA('b',('S'));")), 0);
    EXPECT_EQ(measure(run.scene()).triangles, 12U);
    EXPECT_THAT(reasonsOf(run.scene()), IsEmpty());
    EXPECT_THAT(run.log(), Not(HasSubstr("Warning")));
}

TEST(ConvertDamagedText, TextThatOcctReadsWithoutComplaintIsWhole)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", changed(boxText(), "=PLANE(", "''", "'5' wide'")), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 12U);
    EXPECT_THAT(reasonsOf(run.scene()), IsEmpty());
    EXPECT_THAT(run.log(), HasSubstr("the text was read by OCCT's own parser, because #"));
}

TEST(ConvertDamagedText, NothingThatCanBeReadIsAFailure)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("box.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=oops;\n"), 7);
    EXPECT_THAT(run.log(), HasSubstr("Error: the text is not a STEP file that can be read"));
}
