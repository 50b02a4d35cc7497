#include "ptx/readers/stl/StlText.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace ptx::core;
using namespace ptx::stl;

namespace
{

const std::string FacetText = "facet normal 0 0 1\n outer loop\n  vertex 1 2 3\n  vertex 4.5 2 3\n  vertex 1 6e1 +3\n"
                              " endloop\nendfacet\n";

std::vector<Solid> solids(const std::string& text)
{
    Progress progress;
    Outcome<TextResult> result = readText(text, progress);
    EXPECT_TRUE(result) << (result ? "" : result.failure().message);
    return result ? result.value().solids : std::vector<Solid>();
}

std::string complaint(const std::string& text)
{
    Progress progress;
    const Outcome<TextResult> result = readText(text, progress);
    EXPECT_FALSE(result);
    return result ? "" : result.failure().message;
}

} // namespace

TEST(StlText, SolidsStayApartWithTheirNames)
{
    const auto found = solids("solid left wheel\n" + FacetText + "endsolid left wheel\nsolid \xE8\xBD\xAE\n" +
                              FacetText + FacetText + "endsolid\n");
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].name, "left wheel");
    EXPECT_EQ(found[0].facets.size(), 1u);
    EXPECT_EQ(found[1].name, "\xE8\xBD\xAE");
    EXPECT_EQ(found[1].facets.size(), 2u);
    EXPECT_EQ(found[0].facets[0].corners[1], (osg::Vec3f{4.5f, 2, 3}));
    EXPECT_EQ(found[0].facets[0].corners[2], (osg::Vec3f{1, 60, 3}));
}

TEST(StlText, KeywordsMayBeInAnyCaseAndLinesMayEndAnyHow)
{
    std::string text = "SOLID x\r\nFACET NORMAL 0 0 1\r\nOUTER LOOP\r\nVERTEX 1 2 3\r\nVERTEX 4 2 3\r\nVERTEX 1 6 3\r\n"
                       "ENDLOOP\r\nENDFACET\r\nENDSOLID x";
    const auto found = solids(text);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].name, "x");
    EXPECT_EQ(found[0].facets.size(), 1u);
}

TEST(StlText, NumbersHaveADotUnderEveryLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ(solids("solid x\n" + FacetText + "endsolid x\n")[0].facets[0].corners[1].x, 4.5f);
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(StlText, ErrorsNameTheirLineAndWhatIsThere)
{
    EXPECT_EQ(complaint("solid x\nfacet normal 0 0 1\nouter loop\nvertx 1 2 3\n"),
              "line 4 of the STL text: expected \"vertex\", found \"vertx\"");
    EXPECT_EQ(complaint("solid x\nfacet normal 0 0 1\nouter loop\nvertex 1 2,5 3\n"),
              "line 4 of the STL text: expected \"a number\", found \"2,5\"");
    EXPECT_EQ(complaint("solid x\nfacet normal 0 0 1\nouter loop\nvertex 1 inf 3\n"),
              "line 4 of the STL text: expected \"a number\", found \"inf\"");
    EXPECT_EQ(complaint("solid x\nendsolid x\nhello"), "line 3 of the STL text: expected \"solid\", found \"hello\"");
    EXPECT_EQ(complaint("solid x\n" + std::string(1000, 'q')),
              "line 2 of the STL text: expected \"facet\", found \"" + std::string(40, 'q') + "\"");
}

TEST(StlText, NormalsThatAreNoNumbersDoNoHarm)
{
    const auto found =
        solids("solid x\nfacet normal nan nan nan\nouter loop\nvertex 1 2 3\nvertex 4 2 3\nvertex 1 6 3\n"
               "endloop\nendfacet\nendsolid");
    EXPECT_EQ(found.at(0).facets.size(), 1u);
}

TEST(StlText, CutOffFileKeepsItsCompleteTriangles)
{
    const std::string whole = "solid x\n" + FacetText + FacetText;
    for (std::size_t length = 8 + FacetText.size(); length < whole.size() - 1; ++length) {
        Progress progress;
        const Outcome<TextResult> result = readText(std::string_view(whole).substr(0, length), progress);
        if (!result)
            continue; // cut within a word
        EXPECT_TRUE(result.value().isCutOff) << length;
        EXPECT_EQ(result.value().solids.at(0).facets.size(), 1u) << length;
    }
}
