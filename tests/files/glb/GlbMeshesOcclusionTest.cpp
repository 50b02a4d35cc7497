#include "tests/files/glb/GlbTest.h"

#include <gmock/gmock.h>

using testing::FloatNear;
using testing::Pointwise;

namespace
{

class GlbOcclusionTest : public GlbTest
{
protected:
    /// The file of a triangle of which the corners see the whole sky, a quarter and nothing.
    GlbFile writtenWith(std::vector<osg::Color4f> colors, bool asColors)
    {
        osg::Mesh mesh = triangle();
        mesh.occlusion = std::vector<float>{1, 0.25f, 0};
        mesh.colors = std::move(colors);
        add(files::makeNode("", geometry("part", mesh)));
        options.occlusionAsColors = asColors;
        const QString path = pathOf(QStringLiteral("dark.glb"));
        result = files::glb::write(root.get(), path, options);
        EXPECT_TRUE(result) << (result ? "" : result.error().toString().toStdString());
        return GlbFile(path);
    }
};

TEST_F(GlbOcclusionTest, IsNotWrittenUnlessAskedFor)
{
    EXPECT_FALSE(writtenWith({}, false).primitive(0)["attributes"].contains("COLOR_0"));
}

TEST_F(GlbOcclusionTest, BecomesAmountsOfLightOnRequest)
{
    const GlbFile file = writtenWith({}, true);
    const std::vector<float> wanted = {1, 1, 1, 1, 0.25f, 0.25f, 0.25f, 1, 0, 0, 0, 1};
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["COLOR_0"]), Pointwise(FloatNear(1e-5f), wanted));
}

TEST_F(GlbOcclusionTest, DarkensColoursThatAreThere)
{
    const GlbFile file = writtenWith({{0.5f, 1, 0, 0.75f}, {1, 0.5f, 0, 0.5f}, {1, 1, 1, 1}}, true);
    const std::vector<float> wanted = {0.214041f, 1, 0, 0.75f, 0.25f, 0.053510f, 0, 0.5f, 0, 0, 0, 1};
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["COLOR_0"]), Pointwise(FloatNear(1e-5f), wanted));
}

} // namespace
