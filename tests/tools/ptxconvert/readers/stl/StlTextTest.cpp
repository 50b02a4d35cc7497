#include "tools/ptxconvert/readers/stl/StlText.h"
#include "tools/ptxconvert/readers/stl/StlBinary.h"
#include "tools/ptxconvert/readers/stl/StlMesh.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <limits>

using namespace ptx;
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

std::string binary(std::uint32_t announced, const std::vector<std::array<float, 12>>& facets)
{
    std::string content(80, 's');
    for (int i = 0; i < 4; ++i)
        content += static_cast<char>(announced >> 8 * i & 0xFF);
    for (const auto& facet : facets) {
        content.append(reinterpret_cast<const char*>(facet.data()), 48);
        content.append(2, '\0');
    }
    return content;
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

TEST(StlBinary, ReadsTheAnnouncedTriangles)
{
    Progress progress;
    const Outcome<Solid> solid =
        readBinary(binary(1, {{0, 0, 1, 1, 2, 3, 4.5f, 2, 3, 1, 60, 3}}) + "bytes of its writer", progress);
    ASSERT_TRUE(solid);
    ASSERT_EQ(solid.value().facets.size(), 1u);
    EXPECT_EQ(solid.value().facets[0].corners[1], (osg::Vec3f{4.5f, 2, 3}));
    EXPECT_EQ(solid.value().facets[0].normal, (osg::Vec3f{0, 0, 1}));
}

TEST(StlBinary, CountIsHeldAgainstTheSizeBeforeAnythingIsMade)
{
    Progress progress;
    const Outcome<Solid> solid = readBinary(binary(0xFFFFFFFF, {{}}), progress);
    ASSERT_FALSE(solid);
    EXPECT_EQ(solid.failure().message,
              "the binary STL file is cut off: 214748364834 bytes are announced, 134 are there");
    EXPECT_FALSE(readBinary("short", progress));
}

TEST(StlBinary, CornersThatAreNoNumbersAreDamage)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Progress progress;
    const Outcome<Solid> solid = readBinary(binary(2, {{}, {0, 0, 1, 1, 2, 3, nan, 2, 3, 1, 60, 3}}), progress);
    ASSERT_FALSE(solid);
    EXPECT_EQ(solid.failure().message, "triangle 2 at byte 134 has a corner that is no number");
}

TEST(StlMesh, SharesCornersOfTheSamePlaceAndNormal)
{
    const Facet lower{{}, {{{0, 0, 5}, {1, 0, 5}, {1, 1, 5}}}};
    const Facet upper{{}, {{{0, 0, 5}, {1, 1, 5}, {0, 1, 5}}}};
    const Facet other{{}, {{{0, 0, 5}, {0, 0, 6}, {1, 0, 5}}}};
    const auto mesh = meshOf({"", {lower, upper, other}}, 2);
    EXPECT_EQ(mesh->positions.size(), 4u + 3u);
    EXPECT_EQ(mesh->triangles.size(), 9u);
    EXPECT_EQ(mesh->positions[1], (osg::Vec3f{2, 0, 10}));
    EXPECT_EQ(mesh->normals[0], (osg::Vec3f{0, 0, 1}));
}

TEST(StlMesh, TriangleWithoutAreaKeepsItsPlace)
{
    const Facet flat{{0, 1, 0}, {{{7, 0, 0}, {7, 0, 0}, {8, 0, 0}}}};
    const auto mesh = meshOf({"", {flat}}, 1);
    EXPECT_EQ(mesh->triangles.size(), 3u);
    EXPECT_EQ(mesh->normals[0], (osg::Vec3f{0, 1, 0}));
}
