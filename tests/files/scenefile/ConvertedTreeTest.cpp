#include "files/scenefile/ConvertedTree.h"

#include <gtest/gtest.h>

using namespace osg::scenefile::converted;

TEST(ConvertedTree, TellsWhatIsLeftOut)
{
    const LeftOut pmi = {"/cad/a b\nc.jt", "segments of PMI", 12};
    EXPECT_EQ(leftOutTag(pmi), "ptx::left-out=12 segments of PMI\n/cad/a b\nc.jt");
    EXPECT_EQ(leftOut(leftOutTag(pmi)), pmi);
}

TEST(ConvertedTree, OtherTagsLeaveNothingOut)
{
    for (const char* tag : {"ptx::left-out=12 segments", "ptx::left-out=segments of PMI\n/x.jt",
                            "ptx::left-out=12\n/x.jt", "ptx::left-out=12x\n/x.jt", "ptx::left-out=-1 x\n/x.jt",
                            "ptx::missing=12 x\n/x.jt", "ptx::left-out=99999999999999999999 x\n/x.jt", ""})
        EXPECT_EQ(leftOut(tag), std::nullopt) << tag;
}
