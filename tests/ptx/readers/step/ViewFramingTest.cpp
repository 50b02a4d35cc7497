#include "ptx/readers/step/ViewFraming.h"

#include <gmock/gmock.h>

#include <cmath>

using ptx::model::Bounds;
using ptx::model::View;
using ptx::step::WrittenCamera;
using testing::ElementsAre;
using testing::FloatEq;
using testing::FloatNear;

namespace
{

Bounds box(const osg::Vec3f& low, const osg::Vec3f& high)
{
    Bounds bounds;
    bounds.add(low);
    bounds.add(high);
    return bounds;
}

/// Stands before a box at y = -100 and has X to the left of the picture, as it is when one looks along Z.
WrittenCamera front()
{
    WrittenCamera camera;
    camera.origin = {15, -100, 5};
    camera.right = {-1, 0, 0};
    camera.up = {0, 0, 1};
    camera.axis = {0, 1, 0};
    camera.planeDistance = 100;
    camera.width = 60;
    camera.height = 50;
    return camera;
}

const Bounds Part = box({0, 0, 0}, {30, 20, 10});
const float Diagonal = std::sqrt(30.F * 30 + 20 * 20 + 10 * 10);

View framed(const WrittenCamera& camera, const Bounds& shown)
{
    View view;
    frame(view, camera, shown);
    return view;
}

std::vector<float> column(const View& view, unsigned number)
{
    const auto& values = view.placement.values;
    return {values[number * 4], values[number * 4 + 1], values[number * 4 + 2]};
}

std::vector<float> direction(const View& view)
{
    std::vector<float> back = column(view, 2);
    for (float& each : back)
        each = 0 - each;
    return back;
}

void expectFromTheFront(const View& view)
{
    EXPECT_THAT(direction(view), ElementsAre(0, 1, 0));
    EXPECT_THAT(column(view, 0), ElementsAre(1, 0, 0));
    EXPECT_THAT(column(view, 1), ElementsAre(0, 0, 1));
    EXPECT_THAT(column(view, 3), ElementsAre(15, FloatNear(-Diagonal, 1e-3F), 5));
    EXPECT_TRUE(view.isParallel);
    EXPECT_EQ(view.height, 50);
}

} // namespace

TEST(ViewFraming, LooksAlongTheAxisFromTheOrigin)
{
    expectFromTheFront(framed(front(), Part));
}

TEST(ViewFraming, OriginMayBeThePointLookedAt)
{
    WrittenCamera camera = front();
    camera.origin.y = 10;
    expectFromTheFront(framed(camera, Part));
}

TEST(ViewFraming, PointInTheModelMeansThatTheAxisPointsAtTheViewer)
{
    WrittenCamera camera = front();
    camera.origin = {15, 0, 5};
    camera.axis = {0, -1, 0};
    camera.right = {1, 0, 0};
    camera.projectionPoint = {15, -300, 5};
    camera.planeDistance = 0;
    expectFromTheFront(framed(camera, Part));
}

TEST(ViewFraming, TurnsRoundWhenEverythingIsBehindTheEye)
{
    WrittenCamera camera = front();
    camera.axis = {0, -1, 0};
    camera.right = {1, 0, 0};
    expectFromTheFront(framed(camera, Part));
}

/// The origin of the model lies on the axis of this camera.
TEST(ViewFraming, PointZeroIsNotOneOfTheModel)
{
    WrittenCamera camera = front();
    camera.origin = {0, -500, 0};
    EXPECT_THAT(direction(framed(camera, Part)), ElementsAre(0, 1, 0));
}

TEST(ViewFraming, WindowOutOfProportionIsReplacedByOneAroundTheBox)
{
    for (const float height : {0.F, 0.05F, 5000.F}) {
        WrittenCamera camera = front();
        camera.height = height;
        camera.width = height * 2;
        const View view = framed(camera, Part);
        EXPECT_THAT(column(view, 3), ElementsAre(15, FloatNear(-Diagonal, 1e-3F), 5)) << height;
        EXPECT_THAT(view.height, FloatEq(height == 0 ? 33.F : 16.5F)) << height;
    }
}

TEST(ViewFraming, WindowBesideTheBoxIsReplacedToo)
{
    WrittenCamera camera = front();
    camera.origin.x = 400;
    const View view = framed(camera, Part);
    EXPECT_THAT(column(view, 3), ElementsAre(15, FloatNear(-Diagonal, 1e-3F), 5));
    EXPECT_THAT(view.height, FloatEq(1.1F * 30 * 50 / 60));
}

TEST(ViewFraming, PerspectiveStaysWhereItIsWithTheAngleOfItsWindow)
{
    WrittenCamera camera = front();
    camera.isParallel = false;
    camera.height = 200;
    const View view = framed(camera, Part);
    EXPECT_FALSE(view.isParallel);
    EXPECT_THAT(view.fieldOfView, FloatNear(90, 1e-3F));
    EXPECT_THAT(column(view, 3), ElementsAre(15, -100, 5));
    EXPECT_THAT(direction(view), ElementsAre(0, 1, 0));
}

TEST(ViewFraming, PerspectiveFromAPointInTheModel)
{
    WrittenCamera camera = front();
    camera.isParallel = false;
    camera.origin = {15, 0, 5};
    camera.axis = {0, -1, 0};
    camera.right = {1, 0, 0};
    camera.projectionPoint = {15, -25, 5};
    camera.planeDistance = 0;
    const View view = framed(camera, Part);
    EXPECT_THAT(column(view, 3), ElementsAre(15, -25, 5));
    EXPECT_THAT(direction(view), ElementsAre(0, 1, 0));
    EXPECT_THAT(view.fieldOfView, FloatNear(90, 1e-3F));
}

TEST(ViewFraming, PerspectiveFromAPointOfTheViewSystem)
{
    WrittenCamera camera = front();
    camera.isParallel = false;
    camera.projectionPoint = {2, 3, -4};
    const View view = framed(camera, Part);
    EXPECT_THAT(column(view, 3), ElementsAre(13, -104, 8));
}

TEST(ViewFraming, WithNothingToSeeTheWrittenCameraStands)
{
    const View view = framed(front(), {});
    EXPECT_THAT(direction(view), ElementsAre(0, 1, 0));
    EXPECT_THAT(column(view, 3), ElementsAre(15, -100, 5));
    EXPECT_EQ(view.height, 50);
}

TEST(ViewFraming, OfASectionTheSideOfTheEyeGoes)
{
    WrittenCamera camera = front();
    camera.sections = {{{0, 8, 0}, {0, 1, 0}}, {{0, 8, 0}, {0, -1, 0}}, {{10, 0, 0}, {1, 0, 0}}};
    const View view = framed(camera, Part);
    ASSERT_EQ(view.facts.sections.size(), 3u);
    const float depth = 8 + Diagonal; // from the eye to the plane
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(view.facts.sections[i], ElementsAre(0, 0, -1, FloatNear(-depth, 1e-3F)));
    // One that the eye looks along stays as it is; 10 is 5 to the left of the middle.
    EXPECT_THAT(view.facts.sections[2], ElementsAre(1, 0, 0, FloatNear(5, 1e-3F)));
    EXPECT_FLOAT_EQ(view.facts.aspect, 1.2F);
}

TEST(ViewFraming, OfASectionInPerspectiveTheSideOfTheEyeGoesToo)
{
    WrittenCamera camera = front();
    camera.isParallel = false;
    camera.height = 0;
    camera.sections = {{{10, 0, 0}, {1, 0, 0}}, {{10, 0, 0}, {-1, 0, 0}}};
    const View view = framed(camera, Part);
    for (const osg::HalfSpace& section : view.facts.sections)
        EXPECT_THAT(section, ElementsAre(-1, 0, 0, FloatNear(-5, 1e-3F)));
    EXPECT_EQ(view.facts.aspect, 0);
}
