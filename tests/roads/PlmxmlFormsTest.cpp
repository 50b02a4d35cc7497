// The same structure as a tree of occurrences and as a graph: both come in as the same tree.

#include "tests/roads/PlmxmlForms.h"

namespace
{

constexpr unsigned Documents = 50;

class PlmxmlFormsTest : public PlmxmlForms
{
};

TEST_F(PlmxmlFormsTest, OccurrencesAndGraphsOfOneStructureAreTheSameTree)
{
    std::size_t shapes = 0;
    for (unsigned seed = 1; seed <= Documents && !HasFailure(); ++seed)
        shapes += expectTheSame(seed, 1);
    EXPECT_GT(shapes, 2 * Documents);
}

TEST_F(PlmxmlFormsTest, AndSoAreThoseOfALargeOne)
{
    EXPECT_GT(expectTheSame(1, 2000), 1000u);
}

} // namespace
