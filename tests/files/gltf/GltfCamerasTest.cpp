#include "files/gltf/GltfCameras.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "tests/files/ReaderTest.h"
#include "tests/files/gltf/GltfFixture.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class GltfCamerasTest : public ReaderTest
{
protected:
    /// A document with a triangle at its first node and these cameras and further nodes; all nodes are roots.
    files::ReadResult readWith(const QByteArray& cameras, const QByteArray& nodes)
    {
        const GltfBytes bytes = GltfBytes().floats({0, 0, 0, 1, 0, 0, 0, 1, 0});
        return read(write(QStringLiteral("cameras.gltf"), R"({"asset": {"version": "2.0"}, "buffers": [)" +
                                                              bytes.embedded() + R"(],
            "bufferViews": [{"buffer": 0, "byteLength": 36}],
            "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0],
                           "max": [1, 1, 0]}],
            "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}],
            "cameras": [)" + cameras + R"(], "nodes": [{"mesh": 0}, )" +
                                                              nodes + "]}"));
    }

    /// The node of the document after the first one.
    osg::NodePtr second() const { return root()->getChild(0)->getChild(1); }
    static osg::UberCameraPtr cameraOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::UberCamera>(node->getCore());
    }
};

TEST_F(GltfCamerasTest, APerspectiveCameraComesInMillimetresBelowItsNode)
{
    const auto result = readWith(R"({"type": "perspective", "name": "Vorn", "perspective": {"yfov": 0.5,
        "znear": 0.25, "zfar": 20}})",
                                 R"({"camera": 0, "name": "mast", "translation": [1, 2, 3]})");
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_STREQ(osg::getName(second()), "mast");
    ASSERT_EQ(second()->getNChildren(), 1u);
    const osg::UberCameraPtr camera = cameraOf(second()->getChild(0));
    ASSERT_TRUE(camera);
    EXPECT_STREQ(osg::getName(camera), "Vorn");
    EXPECT_STREQ(osg::getName(second()->getChild(0)), "Vorn");
    EXPECT_EQ(camera->getProjection(), osg::UberCameraBase::Perspective);
    EXPECT_NEAR(camera->getFieldOfView(), 28.6479, 1e-4);
    EXPECT_EQ(camera->getNear(), 250);
    EXPECT_EQ(camera->getFar(), 20000);
}

TEST_F(GltfCamerasTest, AParallelCameraHasTheHeightOfItsPicture)
{
    ASSERT_TRUE(readWith(R"({"type": "orthographic", "orthographic": {"xmag": 9, "ymag": 1.5, "znear": 0, "zfar": 4}})",
                         R"({"camera": 0})"));
    const osg::UberCameraPtr camera = cameraOf(second()->getChild(0));
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->getProjection(), osg::UberCameraBase::Parallel);
    EXPECT_EQ(camera->getHeight(), 3000);
    EXPECT_EQ(camera->getNear(), 0);
    EXPECT_EQ(camera->getFar(), 4000);
}

TEST_F(GltfCamerasTest, ACameraWithoutAnEndSeesAsFarAsANewOne)
{
    ASSERT_TRUE(readWith(R"({"type": "perspective", "perspective": {"yfov": 1, "znear": 0.01}})", R"({"camera": 0})"));
    EXPECT_EQ(cameraOf(second()->getChild(0))->getFar(), 1'000'000);
}

TEST_F(GltfCamerasTest, ImpossibleLensesAreLeftOutWithAWarningEach)
{
    const auto result = readWith(
        R"({"type": "perspective", "perspective": {"yfov": 4, "znear": 1}},
           {"type": "perspective", "perspective": {"yfov": 1, "znear": 0}},
           {"type": "perspective", "perspective": {"yfov": 1, "znear": 5, "zfar": 2}},
           {"type": "orthographic", "orthographic": {"xmag": 1, "ymag": 0, "znear": 0, "zfar": 4}},
           {"type": 7}, 5,
           {"type": "perspective", "name": "good", "perspective": {"yfov": 1, "znear": 1}})",
        R"({"camera": 0}, {"camera": 6}, {"camera": 99})");
    ASSERT_TRUE(result);
    EXPECT_EQ(result.warnings.size(), 6u);
    EXPECT_EQ(texts(result.warnings)[5], QStringLiteral("a camera without a possible lens was left out @ /cameras/5"));
    const osg::NodePtr place = root()->getChild(0);
    EXPECT_EQ(place->getChild(1)->getNChildren(), 0u);
    EXPECT_EQ(place->getChild(2)->getNChildren(), 1u);
    EXPECT_EQ(place->getChild(3)->getNChildren(), 0u);
}

} // namespace
