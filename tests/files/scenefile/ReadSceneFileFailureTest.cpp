// Paths that lead to no scene file, and limits on the file itself.

#include "tests/files/scenefile/SceneFileTest.h"

#include <sys/stat.h>

namespace
{

class OpenFailureTest : public SceneFileTest
{
protected:
    static void expectError(const QString& file, Code code, const osg::scenefile::SceneFileReadOptions& options = {})
    {
        const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(file, options);
        EXPECT_FALSE(result);
        ASSERT_FALSE(result);
        EXPECT_STREQ(files::errorName(result.error().code), files::errorName(code));
        EXPECT_EQ(result.error().file, file);
        EXPECT_FALSE(result.error().message.isEmpty());
    }

    void put(const char* content) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

TEST_F(OpenFailureTest, AMissingFile)
{
    expectError(path("missing.osb"), Code::NotFound);
    expectError(QString(), Code::NotFound);
}

TEST_F(OpenFailureTest, AFolderAPipeAndADevice)
{
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    expectError(path("folder"), Code::NotRegular);
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    expectError(path("pipe"), Code::NotRegular);
    expectError(QStringLiteral("/dev/zero"), Code::NotRegular);
}

TEST_F(OpenFailureTest, AnEmptyFileAndATextFile)
{
    put("");
    expectError(path(), Code::NotASceneFile);
    put("solid ascii\n  facet normal 0 0 1\n    outer loop\n      vertex 0 0 0\n      vertex 1 0 0\n");
    expectError(path(), Code::NotASceneFile);
    osg::scenefile::SceneFileReadOptions options;
    options.copyIntoMemory = true;
    expectError(path(), Code::NotASceneFile, options);
}

TEST_F(OpenFailureTest, AFileBeyondTheLimit)
{
    const std::vector<std::byte> bytes = written(NodeRef(osg::Node::create()));
    osg::scenefile::SceneFileReadOptions options;
    options.maxFileBytes = bytes.size();
    const NodeRef root(osg::scenefile::readSceneFile(path(), options).value());
    EXPECT_TRUE(root);
    options.maxFileBytes = bytes.size() - 1;
    expectError(path(), Code::LimitExceeded, options);
}

TEST_F(OpenFailureTest, EachCodeHasItsName)
{
    EXPECT_STREQ(files::errorName(Code::NotFound), "NotFound");
    EXPECT_STREQ(files::errorName(Code::OutOfMemory), "OutOfMemory");
    EXPECT_STREQ(files::errorName(Code::ReadFailed), "ReadFailed");
    EXPECT_STREQ(files::errorName(Code::WriteFailed), "WriteFailed");
}

} // namespace
