// What a STEP file tells beside shapes: attributes, validation properties, layers, materials.

#include "scene/Attributes.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace
{

std::string ref(int entity)
{
    return "#" + std::to_string(entity);
}

/// Gives the product or shape `definition` a property with one value.
void addProperty(StepText& step, int definition, const std::string& name, const std::string& item,
                 const std::string& representation = "")
{
    const int value = step.add(item);
    const int values =
        step.add("REPRESENTATION('" + representation + "',(" + ref(value) + ")," + ref(step.context()) + ")");
    const int property = step.add("PROPERTY_DEFINITION('" + name + "',''," + ref(definition) + ")");
    step.add("PROPERTY_DEFINITION_REPRESENTATION(" + ref(property) + "," + ref(values) + ")");
}

std::string textItem(const std::string& name, const std::string& text)
{
    return "DESCRIPTIVE_REPRESENTATION_ITEM('" + name + "','" + text + "')";
}

int kilogram(StepText& step)
{
    return step.add("(MASS_UNIT() NAMED_UNIT(*) SI_UNIT(.KILO.,.GRAM.))");
}

int millimetre(StepText& step)
{
    return step.add("(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.))");
}

int power(StepText& step, int unit, const std::string& exponent)
{
    return step.add("DERIVED_UNIT_ELEMENT(" + ref(unit) + "," + exponent + ")");
}

std::string measureItem(const std::string& name, const std::string& measure, int unit)
{
    return "MEASURE_REPRESENTATION_ITEM('" + name + "'," + measure + "," + ref(unit) + ")";
}

int density(StepText& step, int mass, const std::string& ofMass, int length, const std::string& ofLength)
{
    const int first = power(step, mass, ofMass);
    const int second = power(step, length, ofLength);
    return step.add("DERIVED_UNIT((" + ref(first) + "," + ref(second) + "))");
}

void addMaterial(StepText& step, const StepProduct& product, const std::string& name, const std::string& measure)
{
    addProperty(step, product.definition, "material property", textItem(name, "a text"), "material name");
    addProperty(step, product.definition, "material property", measure, "density");
}

std::vector<std::string> factsOf(const osg::NodePtr& node)
{
    std::vector<std::string> facts;
    for (const osg::Attribute& attribute : osg::attributesOf(osg::AttachmentContainerPtr(node)))
        facts.push_back(attribute.name + "=" + osg::textOf(attribute));
    return facts;
}

/// A part that is a box of 1 by 2 by 3 millimetres.
struct Part {
    StepText step;
    StepProduct product = step.product("box");

    Part() { step.box(product, {}, {1, 2, 3}); }

    /// What the node of the part tells, as "name=value unit".
    std::vector<std::string> facts()
    {
        EXPECT_EQ(m_run.convertText("box.stp", step.text()), 0) << m_run.log();
        return factsOf(nodeNamed(m_run.scene(), "box"));
    }

private:
    ConvertRun m_run;
};

} // namespace

TEST(ConvertFacts, AttributesOfAPartAreTextsAndNumbers)
{
    Part part;
    const int unit = kilogram(part.step);
    addProperty(part.step, part.product.definition, "first", textItem("Part Number", "A-17 \\X\\E4"));
    addProperty(part.step, part.product.definition, "second", measureItem("Mass", "MASS_MEASURE(2.5)", unit));
    addProperty(part.step, part.product.definition, "third", "VALUE_REPRESENTATION_ITEM('Count',COUNT_MEASURE(3.))");
    EXPECT_THAT(part.facts(), AllOf(Contains("Part Number=A-17 ä"), Contains("Mass=2.5 kg"), Contains("Count=3")));
}

TEST(ConvertFacts, AnAttributeWithoutANameHasThatOfItsProperty)
{
    Part part;
    addProperty(part.step, part.product.definition, "Finish", textItem("", "steel blue"));
    EXPECT_THAT(part.facts(), Contains("Finish=steel blue"));
}

TEST(ConvertFacts, HolesAndChecksOfAttributesAreNoAttributes)
{
    Part part;
    const int unit = kilogram(part.step);
    addProperty(part.step, part.product.definition, "hole", measureItem("Nothing", "$", unit));
    addProperty(part.step, part.product.definition, "hole", "DESCRIPTIVE_REPRESENTATION_ITEM('Nothing',$)");
    addProperty(part.step, part.product.definition, "attribute validation property", textItem("Checked", "yes"));
    EXPECT_THAT(part.facts(), UnorderedElementsAre("Product=box", "Product id=box"));
}

TEST(ConvertFacts, WholeNumbersAreIntegersAndMomentsAreKept)
{
    Part part;
    const int unit = kilogram(part.step);
    addProperty(part.step, part.product.definition, "inertia", measureItem("Ixx", "MASS_MEASURE(2.5)", unit));
    addProperty(part.step, part.product.definition, "count", "INTEGER_REPRESENTATION_ITEM('Teeth',17)");
    EXPECT_THAT(part.facts(), AllOf(Contains("Ixx=2.5 kg"), Contains("Teeth=17")));
}

TEST(ConvertFacts, AnAssemblyOfManyPartsKeepsItsOwnAttributes)
{
    StepText step;
    const StepProduct top = step.product("top");
    for (int i = 0; i < 40; ++i) {
        StepProduct part = step.product("part " + std::to_string(i));
        step.box(part, {}, {1, 2, 3});
        step.place(top, part, "place " + std::to_string(i), {double(i), 0, 0});
        addProperty(step, part.definition, "number", textItem("Number", "N" + std::to_string(i)));
    }
    addProperty(step, top.definition, "number", textItem("Number", "top"));
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    EXPECT_THAT(factsOf(nodeNamed(run.scene(), "top")), Contains("Number=top"));
    for (int i = 0; i < 40; ++i)
        EXPECT_THAT(factsOf(nodeNamed(run.scene(), "place " + std::to_string(i))),
                    Contains("Number=N" + std::to_string(i)));
}

TEST(ConvertFacts, ValidationPropertiesAreKeptAsTheFileGivesThem)
{
    Part part;
    StepText& step = part.step;
    const int length = millimetre(step);
    const int area = step.add("DERIVED_UNIT((" + ref(power(step, length, "2.")) + "))");
    const int volume = step.add("DERIVED_UNIT((" + ref(power(step, length, "3.")) + "))");
    const std::string name = "geometric validation property";
    const int shape = part.product.shapeDefinition;
    addProperty(step, shape, name, measureItem("volume measure", "VOLUME_MEASURE(6.25)", volume), "volume");
    addProperty(step, shape, name, measureItem("surface area measure", "AREA_MEASURE(22.5)", area), "surface area");
    addProperty(step, shape, name, "CARTESIAN_POINT('centre point',(0.5,1.,1.75))", "centroid");
    EXPECT_THAT(part.facts(), AllOf(Contains("Validation volume=6.25 mm3"), Contains("Validation area=22.5 mm2"),
                                    Contains("Validation centroid=0.5; 1; 1.75 mm")));
}

TEST(ConvertFacts, LayersOfASolidAreThoseOfItsPart)
{
    Part part;
    part.step.add("PRESENTATION_LAYER_ASSIGNMENT('sketch 7','',(" + ref(part.product.solid) + "))");
    EXPECT_THAT(part.facts(), Contains("Layer=sketch 7"));
}

TEST(ConvertFacts, DensityIsToldInGramsPerCubicCentimetre)
{
    Part part;
    StepText& step = part.step;
    const int metre = step.add("(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT($,.METRE.))");
    const int unit = density(step, kilogram(step), "1.", metre, "-3.");
    addMaterial(step, part.product, "Steel", measureItem("density measure", "POSITIVE_RATIO_MEASURE(7850.)", unit));
    EXPECT_THAT(part.facts(), AllOf(Contains("Material=Steel"), Contains("Density=7.85 g/cm3"), SizeIs(4)));
}

/// 0.1 pounds (453.59237 g) for a cubic inch (16.387064 cm3).
TEST(ConvertFacts, DensityInPoundsPerCubicInchIsConverted)
{
    Part part;
    StepText& step = part.step;
    const int exponents = step.add("DIMENSIONAL_EXPONENTS(0.,1.,0.,0.,0.,0.,0.)");
    const int grams = step.add("MASS_MEASURE_WITH_UNIT(MASS_MEASURE(453.59237)," +
                               ref(step.add("(MASS_UNIT() NAMED_UNIT(*) SI_UNIT($,.GRAM.))")) + ")");
    const int pound =
        step.add("(CONVERSION_BASED_UNIT('POUND'," + ref(grams) + ") MASS_UNIT() NAMED_UNIT(" + ref(exponents) + "))");
    const int millimetres = step.add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4)," + ref(millimetre(step)) + ")");
    const int inch = step.add("(CONVERSION_BASED_UNIT('INCH'," + ref(millimetres) + ") LENGTH_UNIT() NAMED_UNIT(" +
                              ref(exponents) + "))");
    const int unit = density(step, pound, "1.", inch, "-3.");
    addMaterial(step, part.product, "Aluminium", measureItem("density measure", "POSITIVE_RATIO_MEASURE(0.1)", unit));
    EXPECT_THAT(part.facts(), Contains("Density=2.76799047 g/cm3"));
}

TEST(ConvertFacts, NumberInAUnitThatIsNoneOfADensityIsNone)
{
    Part part;
    StepText& step = part.step;
    const int unit = density(step, kilogram(step), "3.", millimetre(step), "2.");
    addMaterial(step, part.product, "Steel", measureItem("density measure", "POSITIVE_RATIO_MEASURE(7.)", unit));
    EXPECT_THAT(part.facts(), AllOf(Contains("Material=Steel"), Each(Not(StartsWith("Density="))),
                                    Contains("density measure=7 kg3.mm2")));
}

TEST(ConvertFacts, UnitThatIsToldByItselfEndsTheSearch)
{
    Part part;
    StepText& step = part.step;
    const int exponents = step.add("DIMENSIONAL_EXPONENTS(0.,1.,0.,0.,0.,0.,0.)");
    const int circle = step.add("MASS_MEASURE_WITH_UNIT(MASS_MEASURE(2.)," + ref(exponents + 2) + ")");
    const int odd =
        step.add("(CONVERSION_BASED_UNIT('ODD'," + ref(circle) + ") MASS_UNIT() NAMED_UNIT(" + ref(exponents) + "))");
    ASSERT_EQ(odd, exponents + 2);
    const int unit = density(step, odd, "1.", millimetre(step), "-3.");
    addMaterial(step, part.product, "Steel", measureItem("density measure", "POSITIVE_RATIO_MEASURE(7.)", unit));
    EXPECT_THAT(part.facts(), AllOf(Contains("Material=Steel"), Each(Not(StartsWith("Density=")))));
}

TEST(ConvertFacts, ARawMaterialThatIsAProductItselfIsThatOfThePart)
{
    Part part;
    StepText& step = part.step;
    const int product = step.add("PRODUCT('B1','bronze','',())");
    const int formation = step.add("PRODUCT_DEFINITION_FORMATION('',''," + ref(product) + ")");
    const int raw = step.add("PRODUCT_DEFINITION('raw',''," + ref(formation) + ",$)");
    addProperty(step, raw, "supplier", textItem("Supplier", "foundry"));
    step.add("MAKE_FROM_USAGE_OPTION('u','make from',''," + ref(part.product.definition) + "," + ref(raw) + ",1,''," +
             ref(step.add("MEASURE_WITH_UNIT(COUNT_MEASURE(1.)," + ref(kilogram(step)) + ")")) + ")");
    EXPECT_THAT(part.facts(), AllOf(Contains("Material=bronze"), Contains("Supplier=foundry")));
}

TEST(ConvertFacts, ATextAloneIsNoMaterial)
{
    Part part;
    addProperty(part.step, part.product.definition, "CAD_SOURCE", textItem("CAD_SOURCE", "hand"));
    EXPECT_THAT(part.facts(), AllOf(Each(Not(StartsWith("Material="))), Each(Not(StartsWith("Density=")))));
}
