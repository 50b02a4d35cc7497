#include "protocol/Stage.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using namespace protocol;

TEST(Stage, EachHasItsWordInTheOrderInWhichTheyCome)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < StageCount; ++i)
        words.emplace_back(stageWord(static_cast<Stage>(i)));
    EXPECT_THAT(words, testing::ElementsAre("Unknown", "ReadAndProcess", "Convert", "ProcessStructure", "Merge",
                                            "Stitch", "FixSurfaceOrientation", "Tessellate", "BuildOsgTree", "Finalize",
                                            "Write", "Finished"));
    EXPECT_STREQ(stageWord(Stage::Tessellate), "Tessellate");
    EXPECT_STREQ(stageWord(Stage::Finished), "Finished");
}
