#include "ptx/readers/step/placements/AssemblyIndex.h"
#include "tests/ptx/readers/step/placements/ReadText.h"
#include "tests/support/StepText.h"

#include <StepBasic_ProductDefinition.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepRepr_Representation.hxx>
#include <TCollection_HAsciiString.hxx>

#include <gmock/gmock.h>

using namespace ptx::step::placements;
using namespace ptxtest;
using testing::ElementsAre;

namespace
{

/// A box that stands in an assembly twice.
std::string twoPlaces()
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {}, {1, 2, 3});
    const StepProduct top = step.product("top");
    step.place(top, box, "left", {-5, 0, 0});
    step.place(top, box, "right", {7, 0, 0});
    return step.text();
}

/// Whether the first occurrence of `text` has a plain place.
bool isPlain(const std::string& text)
{
    STEPControl_Reader reader;
    readText(reader, text);
    PlainPlacement placement;
    return AssemblyIndex(*reader.WS()->Model()).placementOf(usagesOf(reader).at(0), placement);
}

} // namespace

TEST(AssemblyIndex, ListsTheOccurrencesOfAnAssemblyInTheOrderOfTheFile)
{
    STEPControl_Reader reader;
    readText(reader, twoPlaces());
    const AssemblyIndex index(*reader.WS()->Model());
    const auto usages = usagesOf(reader);
    ASSERT_EQ(usages.size(), 2U);
    const auto& top = index.usagesIn(usages[0]->RelatingProductDefinition().get());
    ASSERT_EQ(top.size(), 2U);
    EXPECT_STREQ(top[0]->Name()->ToCString(), "left");
    EXPECT_STREQ(top[1]->Name()->ToCString(), "right");
    EXPECT_TRUE(index.usagesIn(usages[0]->RelatedProductDefinition().get()).empty());
}

TEST(AssemblyIndex, GivesThePlacementsOfPartAndAssembly)
{
    STEPControl_Reader reader;
    readText(reader, twoPlaces());
    const AssemblyIndex index(*reader.WS()->Model());
    PlainPlacement placement;
    ASSERT_TRUE(index.placementOf(usagesOf(reader).at(1), placement));
    EXPECT_EQ(placement.to->Location()->CoordinatesValue(1), 7);
    EXPECT_EQ(placement.from->Location()->CoordinatesValue(1), 0);
    EXPECT_NE(placement.part, placement.assembly);
}

TEST(AssemblyIndex, APlaceThatLeavesAnythingToDecideIsNotPlain)
{
    const std::string text = twoPlaces();
    ASSERT_TRUE(isPlain(text));
    const std::string place = "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION\\((#\\d+),(#\\d+)\\)";
    EXPECT_FALSE(isPlain(edited(text, "(#\\d+)=" + place, "$1=PRODUCT('','','',())"))) << "no place";
    EXPECT_FALSE(isPlain(edited(text, place + ";",
                                "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION($1,$2);"
                                "#9001=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION($1,$2);")))
        << "two places";
    EXPECT_FALSE(isPlain(edited(text, "REPRESENTATION_RELATIONSHIP\\('','',(#\\d+),(#\\d+)\\)",
                                "REPRESENTATION_RELATIONSHIP('','',$2,$1)")))
        << "against the direction of the usage";
    EXPECT_FALSE(isPlain(edited(text, "ITEM_DEFINED_TRANSFORMATION\\('','',(#\\d+),(#\\d+)\\)",
                                "ITEM_DEFINED_TRANSFORMATION('','',$2,$1)")))
        << "placements in the wrong order";
    EXPECT_FALSE(isPlain(edited(text, "(PRODUCT_DEFINITION_SHAPE\\('Placement','',(#\\d+)\\);)",
                                "$1#9001=PRODUCT_DEFINITION_SHAPE('Placement','',$2);")))
        << "two shapes of one usage";
}

TEST(AssemblyIndex, ARepresentationOfTwoProductsIsNotPlain)
{
    const std::string text = twoPlaces();
    const std::string second = edited(text, "(#\\d+)=SHAPE_DEFINITION_REPRESENTATION\\((#\\d+),(#\\d+)\\);",
                                      "$&#9001=PRODUCT_DEFINITION('other','',$$,$$);"
                                      "#9002=PRODUCT_DEFINITION_SHAPE('','',#9001);"
                                      "#9003=SHAPE_DEFINITION_REPRESENTATION(#9002,$3);");
    EXPECT_FALSE(isPlain(second));
}
