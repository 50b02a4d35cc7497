// Whatever fails, what stood there before stands there still, and nothing else.

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "tests/files/scenefile/SceneFileTest.h"
#include "tests/support/SmallDisk.h"

#include <sys/stat.h>
#include <unistd.h>

namespace
{

class WriteFailureTest : public SceneFileTest
{
protected:
    static NodeRef sample(std::size_t vertices = 4)
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>(vertices, osg::Vec3f{1, 2, 3});
        return NodeRef(osg::makeNodeFor(geometryOf(std::make_shared<const osg::Mesh>(std::move(mesh)))));
    }

    static void expectError(const files::Result<std::uint64_t>& result, Code code)
    {
        EXPECT_FALSE(result);
        ASSERT_FALSE(result);
        EXPECT_STREQ(files::errorName(result.error().code), files::errorName(code));
        EXPECT_FALSE(result.error().message.isEmpty());
    }
};

TEST_F(WriteFailureTest, NoSceneIsAnError)
{
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(osg::NodePtr(), path());
    expectError(result, Code::NothingToWrite);
    EXPECT_EQ(result.error().file, path());
    EXPECT_EQ(filesLeft(), QStringList());
}

TEST_F(WriteFailureTest, TheSizeIsTold)
{
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(sample(), path());
    EXPECT_EQ(result.value(), contentOf(path()).size());
    EXPECT_GT(result.value(), 64u);
}

TEST_F(WriteFailureTest, OnlyTheFileIsLeft)
{
    const char* name = "\xC3\x9C"
                       "ber uns \xE2\x82\xAC.osb";
    EXPECT_TRUE(osg::scenefile::writeSceneFile(sample(), path(name)));
    EXPECT_EQ(filesLeft(), QStringList(QString::fromUtf8(name)));
    const NodeRef back(osg::scenefile::readSceneFile(path(name)).value());
    EXPECT_TRUE(back);
}

TEST_F(WriteFailureTest, ANameMayBeAsLongAsTheSystemAllows)
{
    const std::string name = std::string(251, 'n') + ".osb";
    EXPECT_TRUE(osg::scenefile::writeSceneFile(sample(), path(name.c_str())));
    const std::string longer = "n" + name;
    expectError(osg::scenefile::writeSceneFile(sample(), path(longer.c_str())), Code::CannotCreate);
    EXPECT_EQ(filesLeft(), QStringList(QString::fromStdString(name)));
}

TEST_F(WriteFailureTest, AMissingFolderIsAnError)
{
    expectError(osg::scenefile::writeSceneFile(sample(), path("missing/scene.osb")), Code::CannotCreate);
    expectError(osg::scenefile::writeSceneFile(sample(), QString()), Code::CannotCreate);
    EXPECT_EQ(filesLeft(), QStringList());
}

TEST_F(WriteFailureTest, AFolderOrADeviceIsNotReplaced)
{
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    expectError(osg::scenefile::writeSceneFile(sample(), path("folder")), Code::CannotCreate);
    expectError(osg::scenefile::writeSceneFile(sample(), QStringLiteral("/dev/full")), Code::CannotCreate);
    EXPECT_EQ(filesLeft(), QStringList(QStringLiteral("folder")));
    EXPECT_TRUE(QFile::exists(QStringLiteral("/dev/full")));
}

/// In a child that is nobody, since root may write everywhere.
TEST_F(WriteFailureTest, AReadOnlyFolderIsAnError)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path()).path());
    ASSERT_EQ(chmod(folder.constData(), 0555), 0);
    const auto writeAsNobody = [&] {
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(2);
        const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(sample(), path());
        _exit(!result && result.error().code == Code::CannotCreate ? 0 : 1);
    };
    EXPECT_EXIT(writeAsNobody(), testing::ExitedWithCode(0), "");
    ASSERT_EQ(chmod(folder.constData(), 0700), 0);
    EXPECT_EQ(filesLeft(), QStringList());
}

TEST_F(WriteFailureTest, AFullDiskLeavesNothing)
{
    const NodeRef root = sample(100'000);
    for (const rlim_t limit : {0u, 10u, 100u, 70'000u, 1'200'000u}) {
        const SmallDisk full(limit);
        expectError(osg::scenefile::writeSceneFile(root, path()), Code::WriteFailed);
        EXPECT_EQ(filesLeft(), QStringList()) << limit;
    }
}

TEST_F(WriteFailureTest, AFullDiskLeavesTheOldFile)
{
    ASSERT_TRUE(osg::scenefile::writeSceneFile(sample(), path()));
    const std::vector<std::byte> before = contentOf(path());
    {
        const SmallDisk full(100'000);
        expectError(osg::scenefile::writeSceneFile(sample(100'000), path()), Code::WriteFailed);
    }
    EXPECT_EQ(contentOf(path()), before);
    EXPECT_EQ(filesLeft(), QStringList(QStringLiteral("scene.osb")));
}

TEST_F(WriteFailureTest, AnUnsoundMeshIsNotWritten)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>(3);
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 3};
    const NodeRef root(osg::makeNodeFor(geometryOf(std::make_shared<const osg::Mesh>(std::move(mesh)))));
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(root, path());
    expectError(result, Code::InvalidMesh);
    EXPECT_EQ(result.error().message, QStringLiteral("A mesh has the index 3 and only 3 vertices"));
    EXPECT_EQ(filesLeft(), QStringList());
}

TEST_F(WriteFailureTest, AGraphBeyondTheLimitIsNotWritten)
{
    const NodeRef root(osg::Node::create());
    for (unsigned i = 0; i < 1'000; ++i) {
        root->addChild(osg::Node::create());
        osg::setName(root->getChild(i), "node " + std::to_string(i));
    }
    osg::scenefile::SceneFileWriteOptions options;
    options.maxGraphBytes = 39'000;
    expectError(osg::scenefile::writeSceneFile(root, path(), options), Code::LimitExceeded);
    options.maxGraphBytes = 41'000;
    EXPECT_TRUE(osg::scenefile::writeSceneFile(root, path(), options));
    EXPECT_LT(contentOf(path()).size(), 41'000u);
    EXPECT_GT(contentOf(path()).size(), 39'000u);
}

} // namespace
