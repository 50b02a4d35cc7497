#include "ptx/readers/step/placements/Placing.h"
#include "tests/ptx/readers/step/placements/ReadText.h"
#include "tests/support/StepText.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <TopoDS_Shape.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <gp_Trsf.hxx>

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace ptx::step::placements;
using namespace ptxtest;

namespace
{

/// Where things stand after a transfer: twelve numbers for each occurrence, none for one without a place, and the box
/// of the whole.
struct Places {
    std::vector<std::vector<double>> ofUsages;
    std::vector<double> box;
    std::size_t placed = 0;
    std::vector<std::vector<double>> partBoxes; ///< of what was told to be translated, in that order
    friend bool operator==(const Places& a, const Places& b) { return a.ofUsages == b.ofUsages && a.box == b.box; }
};

std::vector<double> numbersOf(const gp_Trsf& move)
{
    std::vector<double> numbers;
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 4; ++column)
            numbers.push_back(move.Value(row, column));
    return numbers;
}

std::vector<double> boxOf(const TopoDS_Shape& shape)
{
    Bnd_Box box;
    BRepBndLib::Add(shape, box);
    if (box.IsVoid())
        return {};
    std::vector<double> numbers(6);
    box.Get(numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]);
    return numbers;
}

Places transferred(const std::string& text, bool isPlacedFirst)
{
    STEPControl_Reader reader;
    readText(reader, text);
    Places places;
    if (isPlacedFirst)
        places.placed =
            placeOccurrences(reader, {}, [&](const TopoDS_Shape& part) { places.partBoxes.push_back(boxOf(part)); });
    reader.TransferRoots();
    for (const auto& usage : usagesOf(reader)) {
        const TopoDS_Shape shape = TransferBRep::ShapeResult(reader.WS()->TransferReader()->TransientProcess(), usage);
        places.ofUsages.push_back(shape.IsNull() ? std::vector<double>()
                                                 : numbersOf(shape.Location().Transformation()));
    }
    places.box = boxOf(reader.OneShape());
    return places;
}

Triple randomDirection(std::mt19937& random)
{
    std::uniform_real_distribution<double> number(-1, 1);
    return {number(random), number(random), 1.5 + number(random)};
}

/// Products in layers, each with occurrences of those below, in a unit of its own for the whole text.
std::string randomAssembly(unsigned seed, std::size_t& usages)
{
    std::mt19937 random(seed);
    StepText step(static_cast<LengthUnit>(seed % 3));
    std::vector<StepProduct> products;
    for (int i = 0; i < 3; ++i)
        step.box(products.emplace_back(step.product("part" + std::to_string(i))), {}, {1.0 + i, 2, 3});
    const std::size_t assemblies = 1 + random() % 6;
    for (std::size_t i = 0; i < assemblies; ++i) {
        StepProduct assembly = step.product("asm" + std::to_string(i));
        if (random() % 3 == 0)
            step.box(assembly, {}, {0.5, 0.5, 0.5});
        for (std::size_t count = 1 + random() % 5; count > 0; --count, ++usages)
            step.place(assembly, products[random() % products.size()], "i" + std::to_string(count),
                       {double(random() % 50), double(random() % 50), 1}, randomDirection(random),
                       {1, 0.25 * double(random() % 3), 0});
        products.push_back(assembly);
    }
    return step.text();
}

std::string chain(int depth)
{
    StepText step;
    StepProduct inner = step.product("part");
    step.box(inner, {}, {1, 2, 3});
    for (int i = 0; i < depth; ++i) {
        const StepProduct outer = step.product("level" + std::to_string(i));
        step.place(outer, inner, "in", {1, 0, 0});
        inner = outer;
    }
    return step.text();
}

} // namespace

TEST(Placing, PutsOccurrencesWhereTheReaderPutsThem)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::size_t usages = 0;
        const std::string text = randomAssembly(seed, usages);
        const Places own = transferred(text, true);
        EXPECT_EQ(own, transferred(text, false)) << seed;
        EXPECT_FALSE(own.box.empty()) << seed;
        EXPECT_LE(own.placed, usages) << seed;
        EXPECT_GT(own.placed, 0U) << seed;
    }
}

TEST(Placing, PlacesEveryPlainOccurrenceBelowTheTop)
{
    EXPECT_EQ(transferred(chain(30), true).placed, 30U);
    EXPECT_EQ(transferred(chain(30), true), transferred(chain(30), false));
}

TEST(Placing, TellsOfEachProductWithoutComponentsOnce)
{
    StepText step;
    const StepProduct all = step.product("all");
    std::vector<StepProduct> parts;
    for (int size = 1; size <= 2; ++size)
        step.box(parts.emplace_back(step.product("part" + std::to_string(size))), {}, {1.0 * size, 1, 1});
    for (const int part : {0, 1, 0})
        step.place(all, parts[static_cast<std::size_t>(part)], "in", {10, 0, 0});
    StepProduct alone = step.product("alone");
    step.box(alone, {}, {3, 1, 1});
    std::vector<int> lengths;
    for (const std::vector<double>& box : transferred(step.text(), true).partBoxes)
        lengths.push_back(static_cast<int>(std::lround(box.at(3) - box.at(0))));
    EXPECT_THAT(lengths, testing::ElementsAre(1, 2, 3));
}

TEST(Placing, LeavesOddPlacesToTheReader)
{
    std::size_t usages = 0;
    const std::string text = randomAssembly(7, usages);
    const std::size_t all = transferred(text, true).placed;
    for (const auto& [pattern, replacement] :
         {std::pair("REPRESENTATION_RELATIONSHIP\\('','',(#\\d+),(#\\d+)\\)",
                    "REPRESENTATION_RELATIONSHIP('','',$2,$1)"),
          std::pair("ITEM_DEFINED_TRANSFORMATION\\('','',(#\\d+),(#\\d+)\\)",
                    "ITEM_DEFINED_TRANSFORMATION('','',$2,$1)"),
          std::pair("(#\\d+)=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION\\((#\\d+),(#\\d+)\\)",
                    "$1=PRODUCT('','','',())")}) {
        const std::string odd = edited(text, pattern, replacement);
        ASSERT_NE(odd, text);
        const Places own = transferred(odd, true);
        EXPECT_EQ(own, transferred(odd, false)) << pattern;
        EXPECT_LT(own.placed, all) << pattern;
    }
}
