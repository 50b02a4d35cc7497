#include "tests/house/LayerScanner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

using testing::Contains;
using testing::IsEmpty;

namespace house
{

void PrintTo(const BrokenLayer& broken, std::ostream* output)
{
    *output << broken.file << ':' << broken.line << " includes " << broken.included;
}

} // namespace house

TEST(SourceTree, NoIncludePointsTheWrongWay)
{
    const auto report = house::scanLayers(ZN_SOURCE_ROOT);

    ASSERT_THAT(report.files, Contains("import/filetypes/znCADFileTypes.h"));
    EXPECT_THAT(report.broken, IsEmpty());
}
