#include "tests/render/RenderTest.h"

#include <limits>

namespace render
{

/// A red square of 100 mm in the plane z = 0 around the origin, and a green one of 20 mm in front of it at z = 50.
class EyeTest : public RenderTest
{
protected:
    static osg::NodePtr square(float half, float z, const osg::Color3f& color)
    {
        auto mesh = std::make_shared<osg::Mesh>();
        mesh->positions =
            std::vector<osg::Vec3f>{{-half, -half, z}, {half, -half, z}, {half, half, z}, {-half, half, z}};
        mesh->triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
        return nodeOf(mesh, material(color));
    }

    static Root scene() { return Root(group({square(50, 0, {1, 0, 0}), square(10, 50, {0, 1, 0})})); }

    static SnapshotOptions from(const osg::Matrix& placement)
    {
        SnapshotOptions options = plainOptions();
        options.eye.emplace();
        options.eye->placement = placement;
        return options;
    }

    static char colorAt(const QImage& image, int x, int y)
    {
        const QColor color = image.pixelColor(x, y);
        return color.red() > 40 ? 'r' : color.green() > 40 ? 'g' : 'b';
    }

    /// The colours along the middle row, one letter a run.
    static std::string middleRow(const QImage& image)
    {
        std::string runs;
        for (int x = 0; x < image.width(); ++x)
            if (const char color = colorAt(image, x, image.height() / 2); runs.empty() || runs.back() != color)
                runs += color;
        return runs;
    }

    static int widthOf(const QImage& image, char color)
    {
        int count = 0;
        for (int x = 0; x < image.width(); ++x)
            count += colorAt(image, x, image.height() / 2) == color ? 1 : 0;
        return count;
    }

    static osg::Matrix above(float z) { return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, z, 1}}; }
};

TEST_F(EyeTest, AParallelEyeShowsItsHeight)
{
    SnapshotOptions options = from(above(300));
    options.eye->isPerspective = false;
    options.eye->height = 200;
    const QImage image = draw(scene(), options);
    EXPECT_EQ(middleRow(image), "brgrb");
    // 100 pixels are 200 mm: the squares take 50 and 10 of them.
    EXPECT_NEAR(widthOf(image, 'g'), 10, 1);
    EXPECT_NEAR(widthOf(image, 'g') + widthOf(image, 'r'), 50, 2);
}

TEST_F(EyeTest, ANarrowPictureHoldsTheWholeWindow)
{
    SnapshotOptions options = from(above(300));
    options.eye->isPerspective = false;
    options.eye->height = 60;
    options.eye->aspect = 2;
    options.width = 50;
    // The window is 120 mm wide and the square 100: it takes 42 of 50 pixels.
    const QImage image = draw(scene(), options);
    EXPECT_EQ(middleRow(image), "brgrb");
    EXPECT_NEAR(widthOf(image, 'g') + widthOf(image, 'r'), 42, 2);
    options.width = 400; // wider than the window, whose height is the picture's
    EXPECT_NEAR(widthOf(draw(scene(), options), 'g'), 33, 2);
}

TEST_F(EyeTest, SectionsCutInTheSpaceOfTheEye)
{
    SnapshotOptions options = from(above(300));
    options.eye->isPerspective = false;
    options.eye->height = 200;
    options.eye->sections = {{0, 0, -1, -260}}; // away with what is higher than 40
    EXPECT_EQ(middleRow(draw(scene(), options)), "brb");
    options.eye->sections = {{-1, 0, 0, 0}}; // the left half stays
    const QImage left = draw(scene(), options);
    EXPECT_EQ(middleRow(left), "brgb");
    EXPECT_NEAR(widthOf(left, 'r'), 20, 1);
    EXPECT_NEAR(widthOf(left, 'g'), 5, 1);
    options.eye->sections = {{-1, 0, 0, 0}, {0, 0, -1, -260}};
    EXPECT_EQ(middleRow(draw(scene(), options)), "brb");
    options.eye->sections = {{0, 0, 1, 0}}; // behind the eye
    EXPECT_EQ(middleRow(draw(scene(), options)), "b");
}

TEST_F(EyeTest, WhatASectionTakesAwayDarkensNothing)
{
    SnapshotOptions options = from(above(300));
    options.eye->isPerspective = false;
    options.eye->height = 200;
    options.ambientSamples = 64;
    const Root covered(group({square(50, 0, {1, 0, 0}), square(50, 1, {0, 1, 0})}));
    const Root open(group({square(50, 0, {1, 0, 0})}));
    options.eye->sections = {{0, 0, -1, -299.5F}};
    const QImage cut = draw(covered, options), alone = draw(open, options);
    EXPECT_EQ(colorAt(cut, 100, 50), 'r');
    EXPECT_NEAR(cut.pixelColor(100, 50).red(), alone.pixelColor(100, 50).red(), 6);
}

TEST_F(EyeTest, APerspectiveEyeShowsItsAngle)
{
    SnapshotOptions options = from(above(100));
    options.eye->fieldOfView = 90;
    const QImage image = draw(scene(), options);
    EXPECT_EQ(middleRow(image), "brgrb");
    // At 100 mm the picture is 200 mm high, at 50 mm it is 100 mm high: 50 pixels and 20.
    EXPECT_NEAR(widthOf(image, 'g'), 20, 1);
    EXPECT_NEAR(widthOf(image, 'g') + widthOf(image, 'r'), 50, 2);
}

TEST_F(EyeTest, WhatIsBehindTheEyeIsNotSeen)
{
    SnapshotOptions options = from(above(25));
    options.eye->fieldOfView = 90;
    EXPECT_EQ(middleRow(draw(scene(), options)), "r");
    options.eye->placement = above(-25);
    EXPECT_EQ(middleRow(draw(scene(), options)), "b");
}

TEST_F(EyeTest, AScaleInThePlacementDoesNotCount)
{
    SnapshotOptions options = from(above(100));
    options.eye->fieldOfView = 90;
    const QImage plain = draw(scene(), options);
    options.eye->placement = {{7, 0, 0, 0, 0, 7, 0, 0, 0, 0, 7, 0, 0, 0, 100, 1}};
    EXPECT_EQ(draw(scene(), options), plain);
}

TEST_F(EyeTest, AnEyeWithoutDirectionOrOpticsIsRefused)
{
    const Root root = scene();
    std::vector<SnapshotOptions> bad(5, from(above(100)));
    bad[0].eye->placement = {{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    bad[1].eye->placement[12] = std::numeric_limits<float>::quiet_NaN();
    bad[2].eye->fieldOfView = 180;
    bad[3].eye->fieldOfView = 0;
    bad[4].eye->isPerspective = false;
    bad[4].eye->height = -1;
    for (const SnapshotOptions& options : bad) {
        const SnapshotResult result = renderSnapshot(root, options);
        EXPECT_EQ(result.error.fault, SnapshotFault::BadOptions);
        EXPECT_EQ(result.error.message, QStringLiteral("The camera has no direction or impossible optics"));
    }
}

} // namespace render
