#include "tools/ptxconvert/series/SeriesPlan.h"

#include <gmock/gmock.h>

namespace
{

using ptxconvert::planSeries;

std::vector<std::string> outputs(const std::vector<std::string>& inputs)
{
    std::vector<std::string> found;
    const auto items = planSeries(inputs, "/out");
    if (!items)
        return {items.failure().message};
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        EXPECT_EQ(items.value()[i].input, inputs[i]);
        found.push_back(items.value()[i].output);
    }
    return found;
}

TEST(SeriesPlan, OutputsBearTheNamesOfTheInputs)
{
    EXPECT_THAT(outputs({"/a/rod.stp", "/b/wheel.v2.jt", "/c/none"}),
                testing::ElementsAre("/out/rod.osb", "/out/wheel.v2.osb", "/out/none.osb"));
}

TEST(SeriesPlan, WhereTwoWouldMeetTheExtensionStays)
{
    EXPECT_THAT(outputs({"/a/rod.stp", "/b/rod.jt", "/c/wheel.stl"}),
                testing::ElementsAre("/out/rod.stp.osb", "/out/rod.jt.osb", "/out/wheel.osb"));
    EXPECT_THAT(outputs({"/a/rod.stp", "/b/rod"}), testing::ElementsAre("/out/rod.stp.osb", "/out/rod.osb"));
}

TEST(SeriesPlan, OneNameTwiceIsRefused)
{
    EXPECT_THAT(outputs({"/a/rod.stp", "/b/rod.stp"}),
                testing::ElementsAre("/a/rod.stp and /b/rod.stp would both become /out/rod.stp.osb"));
}

TEST(SeriesPlan, AnInputIsNoOutput)
{
    EXPECT_THAT(outputs({"/a/rod.stp", "/out/rod.osb"}), testing::ElementsAre("/out/rod.stp.osb", "/out/rod.osb.osb"));
    EXPECT_THAT(outputs({"/a/rod.stp", "/b/rod.jt", "/out/rod.stp.osb"}),
                testing::ElementsAre("/a/rod.stp would take the place of the input /out/rod.stp.osb"));
}

} // namespace
