// What is left of files that hold one broken entity.

#include "files/scenefile/ConvertedTree.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <regex>
#include <sstream>

using namespace ptxtest;
using osg::scenefile::converted::MissingPart;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace
{

/// "plate" once and "block" twice in "press"; each box is twelve triangles.
std::string pressText()
{
    StepText step;
    const StepProduct press = step.product("press");
    StepProduct plate = step.product("plate");
    step.box(plate, {1, 2, 3}, {11, 22, 33});
    StepProduct block = step.product("block");
    step.box(block, {0, 0, 0}, {5, 6, 7});
    step.color(block.solid, {0.25, 0.5, 0.75});
    step.add("CARTESIAN_POINT('',(1.,2.))"); // of a curve in the plane of a surface: nothing is wrong with it
    step.place(press, plate, "plate below", {10, 20, 30});
    step.place(press, block, "block left", {100, 0, 0}, {1, 0, 0}, {0, 1, 0});
    step.place(press, block, "block right", {0, 200, 0}, {0, 1, 0}, {1, 0, 0});
    return step.text();
}

/// One change to an entity of the text.
struct Break {
    const char* name;
    const char* entity; ///< its beginning, "LINE("
    int which;          ///< of those that begin so, from 1
    std::string from;   ///< a regular expression of what is replaced in it; empty: all of it, the entity is gone
    std::string to;

    std::string what;                               ///< the entity that is named, empty when nothing is missing
    std::string node;                               ///< where it is missing
    std::size_t plates = 12, left = 12, right = 12; ///< triangles that are left

    friend std::ostream& operator<<(std::ostream& stream, const Break& each) { return stream << each.name; }
};

/// The first edge of "plate" as a B-spline with these fields behind the degree's; #99990 and #99989 are its ends.
Break edgeSpline(const char* name, const std::string& degree, const std::string& points, const std::string& knots)
{
    Break change{name,
                 "LINE(",
                 1,
                 "LINE.*",
                 "B_SPLINE_CURVE_WITH_KNOTS(''," + degree + "," + points + ",.UNSPECIFIED.,.F.,.F.," + knots +
                     ",.UNSPECIFIED.);\n#99990=CARTESIAN_POINT('',(1.,2.,3.));\n"
                     "#99989=CARTESIAN_POINT('',(1.,2.,33.));",
                 "B_SPLINE_CURVE_WITH_KNOTS",
                 "plate below"};
    change.plates = 8;
    return change;
}

/// The first face of "plate" on a B-spline surface with these points, knots and, where there are any, weights.
Break faceSpline(const char* name, const std::string& points, const std::string& knots, const std::string& weights = {})
{
    const std::string degrees = "1,1," + points + ",.UNSPECIFIED.,.F.,.F.,.F.";
    const std::string plain = "B_SPLINE_SURFACE_WITH_KNOTS(''," + degrees + "," + knots + ",.UNSPECIFIED.)";
    const std::string complex = "(BOUNDED_SURFACE()B_SPLINE_SURFACE(" + degrees + ")B_SPLINE_SURFACE_WITH_KNOTS(" +
                                knots + ",.UNSPECIFIED.)GEOMETRIC_REPRESENTATION_ITEM()RATIONAL_B_SPLINE_SURFACE(" +
                                weights + ")REPRESENTATION_ITEM('')SURFACE())";
    Break change{name,
                 "PLANE(",
                 1,
                 "PLANE.*",
                 (weights.empty() ? plain : complex) +
                     ";\n#99988=CARTESIAN_POINT('',(1.,2.,3.));\n#99987=CARTESIAN_POINT('',(1.,22.,3.));\n"
                     "#99986=CARTESIAN_POINT('',(1.,2.,33.));\n#99985=CARTESIAN_POINT('',(1.,22.,33.));",
                 weights.empty() ? "B_SPLINE_SURFACE_WITH_KNOTS" : "#",
                 "plate below"};
    change.plates = 10;
    return change;
}

Break sound(Break change)
{
    change.what = change.node = "";
    change.plates = 12;
    return change;
}

constexpr const char* ends = "(#99990,#99989)";
constexpr const char* corners = "((#99988,#99987),(#99986,#99985))";
constexpr const char* ramp = "(2,2),(0.,1.)";
constexpr const char* ramps = "(2,2),(2,2),(0.,1.),(0.,1.)";

/// The text with the change, and the line that was changed.
std::string broken(const std::string& text, const Break& change, int& line)
{
    std::string result;
    int count = 0;
    std::istringstream lines(text);
    int number = 0;
    for (std::string each; std::getline(lines, each);) {
        ++number;
        const std::size_t start = each.find('=');
        if (start != std::string::npos && each.substr(start + 1).starts_with(change.entity) &&
            ++count == change.which) {
            line = number;
            const std::string head = each.substr(0, start + 1);
            each = change.from.empty() ? std::string()
                                       : head + std::regex_replace(each.substr(start + 1), std::regex(change.from),
                                                                   change.to, std::regex_constants::format_first_only);
        }
        result += each + "\n";
    }
    return result;
}

void collect(const osg::NodePtr& node, std::vector<std::pair<std::string, MissingPart>>& found)
{
    for (const std::string& tag : osg::tagsOf(node))
        if (const auto part = osg::scenefile::converted::missingPart(tag))
            found.emplace_back(nameOf(node), *part);
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        collect(node->getChild(i), found);
}

std::vector<std::pair<std::string, MissingPart>> missing(const osg::NodePtr& root)
{
    std::vector<std::pair<std::string, MissingPart>> found;
    if (root)
        collect(root, found);
    return found;
}

std::size_t trianglesOf(const osg::NodePtr& root, const std::string& name)
{
    const osg::NodePtr node = nodeNamed(root, name);
    return node ? measure(node).triangles : 0;
}

class ConvertBroken : public testing::TestWithParam<Break>
{
};

} // namespace

TEST_P(ConvertBroken, EntityCostsItselfAndIsNamed)
{
    const Break& change = GetParam();
    int line = 0;
    ConvertRun run;
    const std::string text = broken(pressText(), change, line);
    ASSERT_GT(line, 0) << "no such entity in the text";
    ASSERT_EQ(run.convertText("press.stp", text), 0) << run.log();
    EXPECT_EQ(trianglesOf(run.scene(), "plate below"), change.plates) << run.log();
    EXPECT_EQ(trianglesOf(run.scene(), "block left"), change.left) << run.log();
    EXPECT_EQ(trianglesOf(run.scene(), "block right"), change.right) << run.log();
    const auto parts = missing(run.scene());
    if (change.what.empty()) {
        EXPECT_THAT(parts, IsEmpty());
        return;
    }
    ASSERT_THAT(parts, Not(IsEmpty())) << run.log();
    EXPECT_EQ(parts[0].first, change.node);
    EXPECT_EQ(parts[0].second.file, run.folder().file("press.stp"));
    const std::string& reason = parts[0].second.reason;
    for (const auto& [node, part] : parts)
        EXPECT_EQ(part.reason, reason) << "one fault is told as several";
    EXPECT_THAT(reason, HasSubstr(change.what));
    if (std::string(change.entity).starts_with(change.what) && !change.from.empty()) {
        EXPECT_THAT(reason, HasSubstr(" in line " + std::to_string(line) + ":"));
    }
    EXPECT_THAT(run.log(), HasSubstr("Warning: left out: " + reason));
}

// The first box has the points, edges and faces with the lower numbers. An edge belongs to two faces, and a corner to
// three. The first line of every box is a straight one.
INSTANTIATE_TEST_SUITE_P(
    Entities, ConvertBroken,
    testing::Values(
        Break{"FaceWithoutSurface", "ADVANCED_FACE(", 1, R"(#\d+,\.T\.)", "$$,.T.", "ADVANCED_FACE", "plate below", 10},
        Break{"FaceWithoutBounds", "ADVANCED_FACE(", 7, R"(\(#\d+\))", "($$)", "ADVANCED_FACE", "block left", 12, 10,
              10},
        Break{"FaceOfTooFewFields", "ADVANCED_FACE(", 2, R"(\(.*\))", "()", "ADVANCED_FACE", "plate below", 10},
        Break{"FaceThatIsGone", "ADVANCED_FACE(", 2, "", "", "CLOSED_SHELL", "plate below", 10},
        Break{"BoundWithoutLoop", "FACE_BOUND(", 1, R"(#\d+)", "$$", "FACE_BOUND", "plate below", 10},
        Break{"LoopWithoutEdges", "EDGE_LOOP(", 1, R"(\(#[^)]*\))", "()", "EDGE_LOOP", "plate below", 10},
        Break{"EdgeWithoutCurve", "EDGE_CURVE(", 1, R"(#\d+,\.T\.)", "$$,.T.", "EDGE_CURVE", "plate below", 8},
        Break{"EdgeWithoutStart", "EDGE_CURVE(", 1, R"(#\d+)", "$$", "EDGE_CURVE", "plate below", 8},
        Break{"VertexWithoutPoint", "VERTEX_POINT(", 1, R"(#\d+)", "$$", "VERTEX_POINT", "plate below", 6},
        Break{"LineToNowhere", "LINE(", 1, R"(,#\d+\))", ",#99999)", "LINE", "plate below", 8},
        Break{"VectorWithoutDirection", "VECTOR(", 1, R"(#\d+)", "$$", "VECTOR", "plate below", 8},
        Break{"CircleOfNegativeRadius", "LINE(", 1, R"(LINE.*)",
              "CIRCLE('',#99994,-1.);\n#99994=AXIS2_PLACEMENT_3D('',#99993,$$,$$);\n#99993=CARTESIAN_POINT('',(1.,2.,3."
              "));",
              "CIRCLE", "plate below", 8},
        Break{"PointOutOfAllProportion", "VERTEX_POINT(", 2, R"(VERTEX_POINT.*)",
              "VERTEX_POINT('',#99998);\n#99998=CARTESIAN_POINT('',(1.E300,0.,0.));", "CARTESIAN_POINT", "plate below",
              6},
        Break{"CylinderOutOfAllProportion", "PLANE(", 1, R"(PLANE(.*)\);)", "CYLINDRICAL_SURFACE$1,1.E300);",
              "CYLINDRICAL_SURFACE", "plate below", 10},
        Break{"PlaneWithoutPlace", "PLANE(", 1, R"(#\d+)", "$$", "PLANE", "plate below", 10},
        Break{"DirectionWithoutNumbers", "PLANE(", 1, R"(PLANE.*)",
              "PLANE('',#99997);\n#99997=AXIS2_PLACEMENT_3D('',#99995,#99996,$$);\n#99995=CARTESIAN_POINT('',(1.,2.,3.)"
              ");\n#99996=DIRECTION('',());",
              "DIRECTION", "plate below", 10},
        Break{"SolidWithoutShell", "MANIFOLD_SOLID_BREP(", 1, R"(#\d+)", "$$", "MANIFOLD_SOLID_BREP", "plate below", 0},
        Break{"PlacementWithoutItsPlace", "ITEM_DEFINED_TRANSFORMATION(", 2, R"(#\d+\))", "$$)",
              "ITEM_DEFINED_TRANSFORMATION", "press", 12, 0, 12},
        Break{"RelationWithoutTransformation", "(REPRESENTATION_RELATIONSHIP(", 3, R"(TRANSFORMATION\(#\d+\))",
              "TRANSFORMATION($$)", "#", "press", 12, 12, 0},
        Break{"OccurrenceWithoutParent", "NEXT_ASSEMBLY_USAGE_OCCURRENCE(", 1, R"(#\d+,(#\d+,\$\)))", "$$,$1",
              "NEXT_ASSEMBLY_USAGE_OCCURRENCE", "press", 0},
        Break{"OccurrenceThatCanStillBePlaced", "NEXT_ASSEMBLY_USAGE_OCCURRENCE(", 1, R"(#\d+,\$\))", "$$,$$)", "", ""},
        Break{"PlaceThatIsGone", "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(", 3, "", "", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
              "press", 12, 12, 0},
        Break{"ColourWithoutStyle", "SURFACE_STYLE_USAGE(", 1, R"(#\d+)", "$$", "", ""},
        Break{"CurveOnASurfaceThatIsKnownInSpaceToo", "LINE(", 1, R"(LINE(.*)\);)",
              "SURFACE_CURVE('',#99992,(#99991),.CURVE_3D.);\n#99992=LINE$1);\n#99991=PCURVE('',#99999,$$);", "", ""},
        Break{"CurveOnASurfaceWithoutIt", "LINE(", 1, R"(LINE(.*)\);)",
              "SURFACE_CURVE('',#99992,(),.CURVE_3D.);\n#99992=LINE$1);", "SURFACE_CURVE", "plate below", 8},
        Break{"TrimmedCurveWithoutEnds", "LINE(", 1, R"(LINE(.*)\);)",
              "TRIMMED_CURVE('',#99992,(),(),.T.,.PARAMETER.);\n#99992=LINE$1);", "TRIMMED_CURVE", "plate below", 8},
        Break{"PlaneCurveWithoutAny", "LINE(", 1, R"(LINE(.*)\);)",
              "SURFACE_CURVE('',#99992,(#99991),.CURVE_3D.);\n#99992=LINE$1);\n#99991=PCURVE('',#99994,#99993);\n"
              "#99993=DEFINITIONAL_REPRESENTATION('',(),#99984);\n#99994=PLANE('',#99983);\n"
              "#99984=(GEOMETRIC_REPRESENTATION_CONTEXT(2)PARAMETRIC_REPRESENTATION_CONTEXT()"
              "REPRESENTATION_CONTEXT('',''));\n#99983=AXIS2_PLACEMENT_3D('',#99982,$$,$$);\n"
              "#99982=CARTESIAN_POINT('',(1.,2.,3.));",
              "", ""},
        Break{"NothingIsInvisible", "LINE(", 1, R"(\);)", ");\n#99978=INVISIBILITY(());", "", ""},
        Break{"PointWithoutCoordinates", "VERTEX_POINT(", 2, R"(VERTEX_POINT.*)",
              "VERTEX_POINT('',#99977);\n#99977=CARTESIAN_POINT('',());", "VERTEX_POINT", "plate below", 6},
        Break{"PlacementAtAPointWithoutCoordinates", "PLANE(", 1, R"(PLANE.*)",
              "PLANE('',#99976);\n#99976=AXIS2_PLACEMENT_3D('',#99975,$$,$$);\n#99975=CARTESIAN_POINT('',());",
              "AXIS2_PLACEMENT_3D", "plate below", 10},
        Break{"ApprovalOfNothing", "LINE(", 1, R"(\);)",
              ");\n#99981=CC_DESIGN_APPROVAL(#99980,());\n#99980=APPROVAL(#99979,'');\n#99979=APPROVAL_STATUS('');", "",
              ""},
        Break{"NameThatIsNone", "ADVANCED_FACE(", 1, R"('')", "$$", "", ""}),
    [](const auto& each) { return std::string(each.param.name); });

// Where the lists of a B-spline do not fit, OCCT counts beyond them. Knots in wrong order it notices itself.
INSTANTIATE_TEST_SUITE_P(
    Splines, ConvertBroken,
    testing::Values(sound(edgeSpline("SoundEdge", "1", ends, ramp)), edgeSpline("EdgeWithoutPoints", "1", "()", ramp),
                    edgeSpline("EdgeWithoutKnots", "1", ends, "(2,2),()"),
                    edgeSpline("EdgeWithoutMultiplicities", "1", ends, "(),(0.,1.)"),
                    edgeSpline("EdgeOfTooFewKnots", "1", ends, "(2,2),(0.)"),
                    edgeSpline("EdgeOfNoDegree", "$$", ends, ramp), edgeSpline("EdgeOfDegree0", "0", ends, ramp),
                    edgeSpline("EdgeOfTooHighDegree", "2", ends, ramp),
                    edgeSpline("EdgeWithAKnotThatIsLeftOut", "1", ends, "(2,2),(0.,$$)"),
                    sound(faceSpline("SoundFace", corners, ramps)), faceSpline("FaceWithoutPoints", "()", ramps),
                    faceSpline("FaceWithAnEmptyRow", "((#99988,#99987),())", ramps),
                    faceSpline("FaceWithAnEmptyFirstRow", "((),(#99988,#99987))", ramps),
                    faceSpline("FaceOfUnequalRows", "((#99988,#99987),(#99986))", ramps),
                    faceSpline("FaceWithoutKnots", corners, "(2,2),(2,2),(),(0.,1.)"),
                    faceSpline("FaceWithoutMultiplicities", corners, "(2,2),(),(0.,1.),(0.,1.)"),
                    sound(faceSpline("SoundWeights", corners, ramps, "((1.,1.),(1.,1.))")),
                    faceSpline("FaceWithoutWeights", corners, ramps, "()"),
                    faceSpline("WeightedFaceWithoutKnots", corners, "(2,2),(2,2),(0.,1.),()", "((1.,1.),(1.,1.))"),
                    faceSpline("FaceOfTooFewWeights", corners, ramps, "((1.,1.))")),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ConvertBrokenFile, TheBreaksHitAFileThatIsWhole)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("press.stp", pressText()), 0) << run.log();
    EXPECT_EQ(trianglesOf(run.scene(), "plate below"), 12u);
    EXPECT_EQ(trianglesOf(run.scene(), "block right"), 12u);
    EXPECT_THAT(missing(run.scene()), IsEmpty());
    EXPECT_THAT(run.log(), HasSubstr("0 warnings"));
}

TEST(ConvertBrokenFile, WhatIsBrokenInOneWayIsOneMark)
{
    ConvertRun run;
    std::string text = pressText();
    int line = 0;
    for (int plane = 1; plane <= 5; ++plane)
        text = broken(text, {"", "PLANE(", plane, R"(#\d+)", "$$", "", ""}, line);
    ASSERT_EQ(run.convertText("press.stp", text), 0) << run.log();
    EXPECT_EQ(trianglesOf(run.scene(), "plate below"), 2u);
    const auto parts = missing(run.scene());
    ASSERT_THAT(parts, SizeIs(1));
    EXPECT_EQ(parts[0].first, "plate below");
    EXPECT_THAT(parts[0].second.reason, HasSubstr(" and 4 more like it: "));
}

TEST(ConvertBrokenFile, IsDamagedWhenNothingIsLeft)
{
    ConvertRun run;
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {0, 0, 0}, {1, 2, 3});
    const std::string text = std::regex_replace(step.text(), std::regex(R"((VERTEX_POINT\('',)#\d+)"), "$1$$");
    EXPECT_EQ(run.convertText("box.stp", text), 7) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("Error: nothing of the file could be translated: #"));
    EXPECT_THAT(run.log(), HasSubstr(" VERTEX_POINT in line "));
}

TEST(ConvertBrokenFile, AProductWithinItselfCostsTheOccurrenceThatClosesTheRing)
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {}, {1, 2, 3});
    const StepProduct inner = step.product("inner");
    const StepProduct middle = step.product("middle");
    const StepProduct top = step.product("top");
    step.place(inner, box, "b", {3, 0, 0});
    const StepOccurrence again = step.place(inner, middle, "again", {4, 0, 0});
    step.place(middle, inner, "i", {2, 0, 0});
    step.place(top, middle, "m", {1, 0, 0});
    step.place(top, box, "beside", {});
    ConvertRun run;
    ASSERT_EQ(run.convertText("ring.stp", step.text()), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 24U);
    const auto found = missing(run.scene());
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].first, HasSubstr("i"));
    EXPECT_THAT(found[0].second.reason,
                HasSubstr("#" + std::to_string(again.usage) + " NEXT_ASSEMBLY_USAGE_OCCURRENCE"));
    EXPECT_THAT(found[0].second.reason, HasSubstr("it puts a product into itself"));
}

TEST(ConvertBrokenFile, ARingWithoutATopIsOpened)
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {}, {1, 2, 3});
    const StepProduct first = step.product("first");
    const StepProduct second = step.product("second");
    step.place(first, second, "a", {1, 0, 0});
    step.place(second, first, "b", {2, 0, 0});
    step.place(second, box, "c", {});
    ConvertRun run;
    ASSERT_EQ(run.convertText("ring.stp", step.text()), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 12U);
    EXPECT_THAT(missing(run.scene()), SizeIs(1));
}

TEST(ConvertBrokenFile, LossesOfAPartFileStandInTheAssembly)
{
    ConvertRun run;
    StepText part;
    StepProduct box = part.product("box");
    part.box(box, {0, 0, 0}, {1, 2, 3});
    int line = 0;
    run.folder().write("box.stp", broken(part.text(), {"", "PLANE(", 1, R"(#\d+)", "$$", "", ""}, line));
    StepText step;
    const StepProduct top = step.product("top");
    const StepProduct inner = step.product("inner");
    step.keepIn(inner, "box.stp");
    step.place(top, inner, "use", {1, 2, 3});
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 10u);
    const auto parts = missing(run.scene());
    ASSERT_THAT(parts, SizeIs(1));
    EXPECT_EQ(parts[0].second.file, run.folder().file("box.stp"));
    EXPECT_THAT(parts[0].second.reason, HasSubstr(" PLANE in line " + std::to_string(line) + ": "));
}

TEST(ConvertBrokenFile, ColoursBeyondTheirRangeAreLimited)
{
    ConvertRun run;
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {0, 0, 0}, {1, 2, 3});
    step.color(box.solid, {-1, 2.5, 0.5});
    ASSERT_EQ(run.convertText("box.stp", step.text()), 0) << run.log();
    ASSERT_THAT(geometries(run.scene()), SizeIs(1));
    EXPECT_EQ(lookOf(geometries(run.scene())[0]).diffuse, (osg::Color3f{0, 1, 0.5F}));
    EXPECT_THAT(run.log(), HasSubstr("1 colours with parts beyond 0 to 1 are limited"));
    EXPECT_THAT(missing(run.scene()), IsEmpty());
}
