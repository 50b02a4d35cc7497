// The same for a structure of the size that systems export.

#include "tests/roads/PlmxmlForms.h"

namespace
{

class PlmxmlLargeFormsTest : public PlmxmlForms
{
};

TEST_F(PlmxmlLargeFormsTest, AHundredThousandOccurrencesAreTheTreeOfTheirGraph)
{
    m_longestImport = 280000;
    constexpr unsigned seedOfAHundredThousand = 3;
    EXPECT_GT(expectTheSame(seedOfAHundredThousand, 100000), 50000u);
    EXPECT_GE(m_placesOfTree, 100000);
}

} // namespace
