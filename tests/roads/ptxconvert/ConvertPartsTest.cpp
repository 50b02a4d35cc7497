#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Attributes.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace ptxtest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{

const std::vector<std::string> ExternalParts = {"--external-parts"};

std::string boxText(const std::string& name, Triple low, Triple high)
{
    StepText step;
    StepProduct part = step.product(name);
    step.box(part, low, high);
    return step.text();
}

/// An assembly "top" whose parts lie in other files, each at its own place: the first at x = 10, the next at 20, turned
/// by a quarter around z.
std::string assemblyOf(const std::vector<std::string>& files)
{
    StepText step;
    const StepProduct top = step.product("top");
    double x = 0;
    for (const std::string& file : files) {
        const StepProduct part = step.product("part in " + std::filesystem::path(file).filename().string());
        step.keepIn(part, file);
        step.place(top, part, "use of " + std::filesystem::path(file).filename().string(), {x += 10, 2, 3}, {0, 0, 1},
                   {0, 1, 0});
    }
    return step.text();
}

osg::ExtReferencePtr referenceOf(const osg::NodePtr& node)
{
    return node ? osg::fcCast<osg::ExtReference>(node->getCore()) : osg::ExtReferencePtr();
}

void expectBox(const Measures& measures, osg::Vec3f low, osg::Vec3f high)
{
    EXPECT_EQ(measures.low, low);
    EXPECT_EQ(measures.high, high);
}

std::vector<osg::scenefile::converted::MissingPart> missingParts(const osg::NodePtr& node)
{
    std::vector<osg::scenefile::converted::MissingPart> parts;
    if (node)
        for (const std::string& tag : osg::tagsOf(node))
            if (const auto part = osg::scenefile::converted::missingPart(tag))
                parts.push_back(*part);
    return parts;
}

std::string entry(const std::string& file, const std::string& reason)
{
    return file + ": " + reason;
}

std::vector<std::string> missingAnywhere(const osg::NodePtr& root)
{
    std::vector<std::string> result;
    for (const auto& part : missingParts(root))
        result.push_back(entry(part.file, part.reason));
    for (unsigned i = 0; root && i < root->getNChildren(); ++i)
        for (std::string& part : missingAnywhere(root->getChild(i)))
            result.push_back(std::move(part));
    return result;
}

} // namespace

TEST(ConvertExternalParts, NodesReferToTheFilesAtTheirPlacesWithoutLoadingThem)
{
    ConvertRun run;
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"box.stp"}), ExternalParts), 0) << run.log();
    const osg::NodePtr node = nodeNamed(run.scene(), "use of box.stp");
    const auto reference = referenceOf(node);
    ASSERT_TRUE(reference);
    EXPECT_EQ(node->getNChildren(), 0u);
    EXPECT_EQ(reference->getState(), 0u);
    EXPECT_EQ(reference->getSourceFile()->getPath(), run.folder().file("box.stp"));
    EXPECT_EQ(reference->getSourceFile()->getRelativePath(), "box.stp");
    EXPECT_THAT(reference->getMatrix().values, ElementsAre(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 2, 3, 1));
    EXPECT_EQ(osg::findText(osg::attributesOf(node, osg::AttributeOwner::Product), "Product"), "part in box.stp");
    EXPECT_TRUE(geometries(run.scene()).empty());
}

/// OCCT looks for the files, is kept from them and complains; to the reader of the log nothing is wrong.
TEST(ConvertExternalParts, LogDoesNotWarnOfFilesThatAreKeptForLater)
{
    ConvertRun run;
    run.folder().write("one.stp", boxText("one", {0, 0, 0}, {1, 1, 1}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"one.stp"}), ExternalParts), 0) << run.log();
    EXPECT_THAT(run.log(), Not(HasSubstr("Warning")));
    EXPECT_THAT(run.log(), HasSubstr("0 warnings"));
}

TEST(ConvertExternalParts, PathsAreResolvedAgainstTheAssembly)
{
    ConvertRun run;
    std::filesystem::create_directories(run.folder().file("asm"));
    std::filesystem::create_directories(run.folder().file("parts"));
    run.folder().write("parts/box.stp", boxText("box", {}, {1, 2, 3}));
    const std::string top = run.folder().write("asm/top.stp", assemblyOf({"../parts/box.stp"}));
    ASSERT_EQ(run.convert(top, ExternalParts), 0) << run.log();
    const auto reference = referenceOf(nodeNamed(run.scene(), "use of box.stp"));
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getSourceFile()->getPath(), run.folder().file("parts/box.stp"));
}

TEST(ConvertExternalParts, EmbeddedPartsStayBesideThem)
{
    ConvertRun run;
    StepText step;
    const StepProduct top = step.product("top");
    StepProduct inside = step.product("inside");
    step.box(inside, {}, {1, 2, 3});
    const StepProduct outside = step.product("outside");
    step.keepIn(outside, "outside.stp");
    step.place(top, inside, "here", {5, 0, 0});
    step.place(top, outside, "there", {50, 0, 0});
    ASSERT_EQ(run.convertText("top.stp", step.text(), ExternalParts), 0) << run.log();
    const osg::NodePtr root = run.scene();
    expectBox(measure(nodeNamed(root, "here")), {5, 0, 0}, {6, 2, 3});
    EXPECT_FALSE(referenceOf(nodeNamed(root, "here")));
    EXPECT_TRUE(referenceOf(nodeNamed(root, "there")));
}

TEST(ConvertExternalParts, FileThatIsNotThereIsAReferenceAllTheSame)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"gone.stp"}), ExternalParts), 0) << run.log();
    const auto reference = referenceOf(nodeNamed(run.scene(), "use of gone.stp"));
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getSourceFile()->getPath(), run.folder().file("gone.stp"));
    EXPECT_THAT(run.log(), HasSubstr("gone.stp of \"part in gone.stp\": there is no such file"));
}

TEST(ConvertExternalParts, LetterCaseAndSeparatorsAreForgiven)
{
    ConvertRun run;
    std::filesystem::create_directories(run.folder().file("Teile"));
    run.folder().write("Teile/Gehäuse.STP", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"teile\\\\GEH\\X2\\00C4\\X0\\USE.stp"}), ExternalParts), 0)
        << run.log();
    const auto reference = referenceOf(run.scene()->getChild(0)->getChild(0));
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getSourceFile()->getPath(), run.folder().file("Teile/Gehäuse.STP"));
}

TEST(ConvertExternalParts, AbsolutePathOfAnotherMachineMeansTheFileBeside)
{
    ConvertRun run;
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"C:\\\\work\\\\box.stp"}), ExternalParts), 0) << run.log();
    const auto reference = referenceOf(run.scene()->getChild(0)->getChild(0));
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getSourceFile()->getPath(), run.folder().file("box.stp"));
}

TEST(ConvertExternalParts, DocumentsOfTheOlderWayAreFollowed)
{
    ConvertRun run;
    StepText step;
    const StepProduct top = step.product("top");
    StepProduct part = step.product("part");
    step.keepInDocument(part, "box.stp");
    step.place(top, part, "use", {10, 0, 0});
    ASSERT_EQ(run.convertText("top.stp", step.text(), ExternalParts), 0) << run.log();
    const auto reference = referenceOf(nodeNamed(run.scene(), "use"));
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getSourceFile()->getPath(), run.folder().file("box.stp"));
}

TEST(ConvertExternalParts, FileWithoutThemEndsWith5)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("box.stp", boxText("box", {}, {1, 2, 3}), ExternalParts), 5);
    EXPECT_THAT(run.log(), HasSubstr("Error: the file names no part in another file"));
    EXPECT_THAT(run.folder().names(), ElementsAre("box.stp", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertExternalParts, TextWithoutThemIsNotEvenRead)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("broken.stp", "ISO-10303-21;\nDATA;\n#1=PRODUCT(", ExternalParts), 5);
}

TEST(ConvertExternalParts, DocumentOfAPartWithGeometryIsNoExternalPart)
{
    ConvertRun run;
    StepText step;
    StepProduct part = step.product("box");
    step.box(part, {}, {1, 2, 3});
    step.keepIn(part, "drawing.pdf");
    EXPECT_EQ(run.convertText("box.stp", step.text(), ExternalParts), 5);
    EXPECT_EQ(run.convertText("box.stp", step.text()), 0);
    EXPECT_THAT(missingAnywhere(run.scene()), ElementsAre());
}

TEST(ConvertExternalParts, FormatsWithoutReferencesEndWith5)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("a.stl", "solid a\nendsolid a\n", ExternalParts), 5);
}

TEST(ConvertExternalParts, ReferenceToTheFileItselfStaysEmpty)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"top.stp"}), ExternalParts), 0) << run.log();
    const osg::NodePtr node = nodeNamed(run.scene(), "use of top.stp");
    ASSERT_TRUE(referenceOf(node));
    EXPECT_EQ(referenceOf(node)->getSourceFile()->getPath(), "");
    EXPECT_EQ(referenceOf(node)->getSourceFile()->getRelativePath(), "top.stp");
    EXPECT_THAT(missingAnywhere(run.scene()),
                ElementsAre(entry(run.folder().file("top.stp"), "it leads back to this file")));
}

TEST(ConvertExternalParts, ReferenceThatLeadsBackStaysEmptyAndOthersDoNot)
{
    ConvertRun run;
    run.folder().write("round.stp", assemblyOf({"further.stp"}));
    run.folder().write("further.stp", assemblyOf({"TOP.stp"}));
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"round.stp", "box.stp"}), ExternalParts), 0) << run.log();
    const osg::NodePtr root = run.scene();
    ASSERT_TRUE(referenceOf(nodeNamed(root, "use of round.stp")));
    EXPECT_EQ(referenceOf(nodeNamed(root, "use of round.stp"))->getSourceFile()->getPath(), "");
    ASSERT_TRUE(referenceOf(nodeNamed(root, "use of box.stp")));
    EXPECT_EQ(referenceOf(nodeNamed(root, "use of box.stp"))->getSourceFile()->getPath(), run.folder().file("box.stp"));
}

TEST(ConvertInlinedParts, PartsComeInAtTheirPlaces)
{
    ConvertRun run;
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"box.stp"})), 0) << run.log();
    const osg::NodePtr root = run.scene();
    expectBox(measure(root), {8, 2, 3}, {10, 3, 6});
    const osg::NodePtr use = nodeNamed(root, "use of box.stp");
    ASSERT_EQ(use->getNChildren(), 1u);
    EXPECT_FALSE(referenceOf(use));
    EXPECT_EQ(nameOf(use->getChild(0)), "box");
}

TEST(ConvertInlinedParts, LogDoesNotWarnOfFilesThatCameIn)
{
    ConvertRun run;
    run.folder().write("one.stp", boxText("one", {0, 0, 0}, {1, 1, 1}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"one.stp"})), 0) << run.log();
    EXPECT_THAT(run.log(), Not(HasSubstr("Warning")));
}

TEST(ConvertInlinedParts, NestedAssembliesOfOtherFoldersComeInWithTheirColours)
{
    ConvertRun run;
    std::filesystem::create_directories(run.folder().file("a"));
    std::filesystem::create_directories(run.folder().file("b"));
    run.folder().write("a/sub.stp", assemblyOf({"part.stp"}));
    run.folder().write("b/sub.stp", assemblyOf({"part.stp"}));
    StepText step;
    StepProduct part = step.product("red");
    step.box(part, {}, {1, 2, 3});
    step.color(part.solid, {0.75, 0.25, 0});
    run.folder().write("a/part.stp", step.text());
    run.folder().write("b/part.stp", boxText("plain", {}, {4, 4, 4}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"a/sub.stp", "b/sub.stp"})), 0) << run.log();
    const osg::NodePtr root = run.scene();
    const auto red = geometries(nodeNamed(root, "red"));
    ASSERT_EQ(red.size(), 1u);
    EXPECT_EQ(lookOf(red[0]).diffuse, (osg::Color3f{0.75f, 0.25f, 0}));
    // Twice a quarter turn: (x, y, z) goes to (8 - x, 12 - y, 6 + z) and, with the second at 20, to (18 - x, 12 - y,
    // ...).
    expectBox(measure(nodeNamed(root, "top")->getChild(0)), {7, 10, 6}, {8, 12, 9});
    expectBox(measure(nodeNamed(root, "top")->getChild(1)), {14, 8, 6}, {18, 12, 10});
}

TEST(ConvertInlinedParts, FileUsedManyTimesIsOneMesh)
{
    ConvertRun run;
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"box.stp", "./BOX.stp", "box.STP"})), 0) << run.log();
    const auto all = geometries(run.scene());
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0], all[1]);
    EXPECT_EQ(all[0], all[2]);
}

TEST(ConvertInlinedParts, PartThatIsNotThereIsLeftOutAndNamed)
{
    ConvertRun run;
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"box.stp", "gone.stp"})), 0) << run.log();
    const osg::NodePtr root = run.scene();
    EXPECT_THAT(missingAnywhere(root), ElementsAre(entry(run.folder().file("gone.stp"), "there is no such file")));
    EXPECT_THAT(missingParts(nodeNamed(root, "use of gone.stp")), testing::SizeIs(1));
    EXPECT_THAT(run.log(), HasSubstr("gone.stp of \"part in gone.stp\" is left out: there is no such file"));
}

TEST(ConvertInlinedParts, DamagedPartIsLeftOutAndNamed)
{
    ConvertRun run;
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    run.folder().write("bad.stp", "no STEP at all");
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"bad.stp", "box.stp"})), 0) << run.log();
    EXPECT_THAT(missingParts(nodeNamed(run.scene(), "use of bad.stp")), testing::SizeIs(1));
    EXPECT_EQ(geometries(run.scene()).size(), 1u);
}

TEST(ConvertInlinedParts, CircleIsCutAndTheRestComesIn)
{
    ConvertRun run;
    StepText step;
    const StepProduct top = step.product("middle");
    StepProduct part = step.product("solid part");
    step.box(part, {}, {1, 2, 3});
    const StepProduct back = step.product("back");
    step.keepIn(back, "top.stp");
    step.place(top, part, "solid use", {5, 0, 0});
    step.place(top, back, "back use", {6, 0, 0});
    run.folder().write("middle.stp", step.text());
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"middle.stp"})), 0) << run.log();
    EXPECT_EQ(geometries(run.scene()).size(), 1u);
    EXPECT_THAT(missingAnywhere(run.scene()),
                ElementsAre(entry(run.folder().file("top.stp"), "it leads round in a circle")));
}

TEST(ConvertInlinedParts, CircleBesideARoadIntoItIsCutOnce)
{
    ConvertRun run;
    run.folder().write("left.stp", assemblyOf({"right.stp", "box.stp"}));
    run.folder().write("right.stp", assemblyOf({"left.stp", "box.stp"}));
    run.folder().write("box.stp", boxText("box", {}, {1, 2, 3}));
    ASSERT_EQ(run.convertText("top.stp", assemblyOf({"left.stp", "right.stp"})), 0) << run.log();
    EXPECT_FALSE(geometries(run.scene()).empty());
    EXPECT_THAT(run.log(), HasSubstr("left.stp of \"part in left.stp\" is left out: it leads round in a circle"));
}

TEST(ConvertInlinedParts, WithoutAnyPartEndsWith25)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("top.stp", assemblyOf({"gone.stp"})), 25);
    EXPECT_THAT(run.log(), Not(HasSubstr("crashed")));
}
