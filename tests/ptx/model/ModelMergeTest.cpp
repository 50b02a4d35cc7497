#include "ptx/model/ModelMerge.h"

#include <gmock/gmock.h>

using namespace ptx::model;
using testing::ElementsAre;
using testing::Pair;

namespace
{

Occurrence occurrenceOf(std::size_t product, int appearance = NoAppearance)
{
    Occurrence result;
    result.product = product;
    result.appearance = appearance;
    return result;
}

} // namespace

TEST(ModelMerge, NumbersOfThePartMoveBehindThoseOfTheWhole)
{
    Model whole;
    whole.products.resize(3);
    whole.appearances.indexOf({0.1f, 0.2f, 0.3f, 1});
    Model part;
    part.appearances.indexOf({0.9f, 0.8f, 0.7f, 1});
    part.appearances.indexOf({0.1f, 0.2f, 0.3f, 1});
    part.products.resize(2);
    part.products[0].children = {occurrenceOf(1, 0)};
    part.products[1].body = 4;
    part.products[1].appearance = 1;
    part.overrides.push_back({{{0, 0}}, 0});
    part.roots = {occurrenceOf(0)};

    const std::vector<Occurrence> roots = mergeModel(whole, part, 10);

    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(roots[0].product, 3u);
    ASSERT_EQ(whole.products.size(), 5u);
    EXPECT_EQ(whole.products[3].children[0].product, 4u);
    EXPECT_EQ(whole.products[3].children[0].appearance, 1);
    EXPECT_EQ(whole.products[3].body, NoBody);
    EXPECT_EQ(whole.products[4].body, 14u);
    EXPECT_EQ(whole.products[4].appearance, 0);
    EXPECT_EQ(whole.appearances.size(), 2);
    ASSERT_EQ(whole.overrides.size(), 1u);
    EXPECT_THAT(whole.overrides[0].path, ElementsAre(Pair(3u, 0u)));
    EXPECT_EQ(whole.overrides[0].appearance, 1);
    EXPECT_TRUE(whole.roots.empty());
}
