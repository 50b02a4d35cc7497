#include "ptx/readers/step/p21/EntityIndex.h"

#include "ptx/readers/step/p21/Scan.h"
#include "tests/ptx/readers/step/p21/RecordText.h"

#include <gmock/gmock.h>

using namespace ptx::step::p21;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

EntityIndex indexOf(const std::string& data)
{
    const std::string text = ptxtest::fileWith(data);
    return EntityIndex(scan(text, 1));
}

} // namespace

// The header's record is the first.
TEST(EntityIndex, FindsEntitiesBehindTheirLists)
{
    const EntityIndex index = indexOf("#4=A((1),(2));#2=(B()C());#7=D();");
    EXPECT_EQ(index.recordOf(4), 4U);
    EXPECT_EQ(index.recordOf(2), 5U);
    EXPECT_EQ(index.recordOf(7), 7U);
    EXPECT_EQ(index.recordOf(3), 0U);
    EXPECT_EQ(index.recordOf(8), 0U);
    EXPECT_THAT(index.repeated(), IsEmpty());
}

TEST(EntityIndex, FindsNumbersThatAreFarApart)
{
    const EntityIndex index = indexOf("#2147483647=A();#5=B();");
    EXPECT_EQ(index.recordOf(2147483647), 2U);
    EXPECT_EQ(index.recordOf(5), 3U);
    EXPECT_EQ(index.recordOf(6), 0U);
}

TEST(EntityIndex, KeepsTheFirstOfSeveralAndNamesTheOthers)
{
    const EntityIndex index = indexOf("#5=A();#6=B();#5=C((1));#5=D();");
    EXPECT_EQ(index.recordOf(5), 2U);
    EXPECT_THAT(index.repeated(), ElementsAre(5U, 6U));
}
