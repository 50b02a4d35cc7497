// Annotations of small files.

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "scene/Attributes.h"
#include "scene/Mesh.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/DraughtingText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::Contains;
using testing::ElementsAre;
using testing::FloatEq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

osg::GeometryPtr geometryAt(const osg::NodePtr& callout, unsigned number)
{
    return osg::fcCast<osg::Geometry>(callout->getChild(number)->getCore());
}

} // namespace

TEST(ConvertPmi, ACalloutIsBelowItsPartAndNotActive)
{
    DraughtingText step(LengthUnit::Inch);
    step.draw({step.callout("Datum A"), step.mappedShape()});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const osg::NodePtr pmi = nodeNamed(run.scene(), "PMI");
    ASSERT_TRUE(pmi);
    EXPECT_FALSE(pmi->isActive());
    EXPECT_EQ(nameOf(pmi->getParent()), "part");
    EXPECT_THAT(osg::tagsOf(pmi), ElementsAre(osg::scenefile::converted::PmiTag));
    ASSERT_EQ(pmi->getNChildren(), 1u);
    const osg::NodePtr callout = pmi->getChild(0);
    EXPECT_EQ(nameOf(callout), "Datum A");
    EXPECT_EQ(osg::findText(osg::attributesOf(callout), "Kind"), "datum");
    ASSERT_EQ(callout->getNChildren(), 2u);
    const osg::Mesh& line = osg::GeometryAccess::mesh(*geometryAt(callout, 0));
    ASSERT_EQ(line.positions.size(), 2u);
    EXPECT_THAT((std::vector<float>{line.positions[0].x, line.positions[0].y, line.positions[1].x}),
                ElementsAre(FloatEq(25.4F), FloatEq(50.8F), FloatEq(101.6F)));
    EXPECT_EQ(lookOf(geometryAt(callout, 0)).diffuse, (osg::Color3f{0, 0, 1}));
    const osg::Mesh& square = osg::GeometryAccess::mesh(*geometryAt(callout, 1));
    EXPECT_EQ(square.triangles.size(), 6u);
    EXPECT_EQ(lookOf(geometryAt(callout, 1)).diffuse, (osg::Color3f{1, 0, 0}));
    EXPECT_THAT(run.log(), HasSubstr("1 annotations in 1 callouts: 1 polylines of 2 points, 2 triangles"));
}

TEST(ConvertPmi, EachPlaceOfAPartHasItsCalloutsInTheirOwnColour)
{
    DraughtingText step;
    step.draw({step.callout("Datum A"), step.mappedShape()});
    step.overrideColor(step.hold({"left", "right"})[1]);
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const std::vector<osg::NodePtr> all = nodesNamed(run.scene(), "PMI");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(nameOf(all[0]->getParent()), "left");
    EXPECT_EQ(nameOf(all[1]->getParent()), "right");
    EXPECT_EQ(geometryAt(all[0]->getChild(0), 1), geometryAt(all[1]->getChild(0), 1));
    EXPECT_EQ(lookOf(geometryAt(all[1]->getChild(0), 1)).diffuse, (osg::Color3f{1, 0, 0}));
}

TEST(ConvertPmi, WhatNobodyKnowsThePartOfBelongsToTheWhole)
{
    DraughtingText step;
    step.callout("Note");
    step.hold({"left", "right"});
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const std::vector<osg::NodePtr> all = nodesNamed(run.scene(), "PMI");
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(nameOf(all[0]->getParent()), "top");
}

TEST(ConvertPmi, TheSettingSwitchesThemOff)
{
    DraughtingText step;
    step.draw({step.callout("Datum A"), step.mappedShape()});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text(), {"--set", "convert.pmi=0"}), 0) << run.log();
    EXPECT_THAT(nodesNamed(run.scene(), "PMI"), IsEmpty());
    EXPECT_THAT(run.log(), Not(HasSubstr("annotations")));
}

TEST(ConvertPmi, WhatIsNotDrawnIsToldAndTheRestComes)
{
    DraughtingText step;
    step.draw({step.callout("Datum A"), step.mappedShape()});
    const int text = step.add("TEXT_LITERAL('','Contact Face',$,'baseline left',.RIGHT.,$)");
    step.add("ANNOTATION_TEXT_OCCURRENCE('Note',()," + ref(text) + ")");
    step.add("ANNOTATION_SYMBOL_OCCURRENCE('',()," + ref(step.add("ANNOTATION_SYMBOL('',$,$)")) + ")");
    const int far = step.add("CARTESIAN_POINT('',(1.E200,0.,0.))");
    const int curve = step.add("POLYLINE('',(" + ref(far) + "," + ref(far) + "))");
    step.add("ANNOTATION_CURVE_OCCURRENCE('Far',()," + ref(curve) + ")");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("1 contents of annotations are not drawn: ANNOTATION_SYMBOL"));
    EXPECT_THAT(osg::tagsOf(nodeNamed(run.scene(), "part")),
                Contains("ptx::left-out=1 contents of annotations\n" + run.folder().file("part.stp")));
    const osg::NodePtr note = nodeNamed(run.scene(), "Note");
    ASSERT_TRUE(note);
    EXPECT_EQ(osg::findText(osg::attributesOf(note), "Text"), "Contact Face");
    ASSERT_TRUE(nodeNamed(run.scene(), "Far"));
    EXPECT_EQ(nodeNamed(run.scene(), "Far")->getNChildren(), 0u);
    EXPECT_TRUE(nodeNamed(run.scene(), "Datum A"));
}
