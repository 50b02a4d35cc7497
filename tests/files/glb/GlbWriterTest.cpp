#include "files/glb/GlbWriter.h"

#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class GlbWriterTest : public GlbTest
{
protected:
    GlbWriterTest() { add(files::makeNode("Part", geometry("Shape", triangle()))); }

    /// The error of a write that must fail, in one line.
    QString errorOf(const osg::NodePtr& tree, const QString& path)
    {
        const files::Result<files::glb::Written> failed = files::glb::write(tree, path);
        if (failed)
            return QStringLiteral("none");
        EXPECT_EQ(failed.error().file, path);
        return QString::fromLatin1(files::errorName(failed.error().code)) + QStringLiteral(" ") +
               failed.error().message;
    }

    QString fileWith(const QString& name, const QByteArray& content) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return file.fileName();
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
};

TEST_F(GlbWriterTest, TheFrameIsThatOfABinaryFile)
{
    const GlbFile file = written();
    EXPECT_EQ(file.bytes().left(4), "glTF");
    EXPECT_EQ(file.word(4), 2u);
    EXPECT_EQ(file.word(8), file.size());
    EXPECT_EQ(file.bytes().mid(16, 4), "JSON");
    EXPECT_EQ(file.word(12) % 4, 0u);
    EXPECT_EQ(file.bytes().mid(file.binaryChunk() + 4, 4), QByteArray("BIN\0", 4));
    EXPECT_EQ(file.word(file.binaryChunk()), 44u); // 36 bytes of positions, 6 of indices, 2 of padding
    EXPECT_EQ(file.binaryChunk() + 8 + 44, file.size());
    EXPECT_EQ(result->bytes, static_cast<std::uint64_t>(file.size()));
    EXPECT_EQ(file.json["asset"]["version"], "2.0");
    EXPECT_EQ(file.json["asset"]["generator"], "znCADImport " ZN_VERSION);
}

TEST_F(GlbWriterTest, TheSameTreeGivesTheSameBytes)
{
    EXPECT_EQ(written().bytes(), written().bytes());
}

TEST_F(GlbWriterTest, AFormerFileIsReplacedAndNothingElseIsLeft)
{
    fileWith(QString::fromUtf8("Größe 大小.glb"), "former");
    EXPECT_EQ(written().bytes().left(4), "glTF");
    EXPECT_THAT(filesInFolder(), ElementsAre(QString::fromUtf8("Größe 大小.glb")));
}

TEST_F(GlbWriterTest, AReadFileComesBackWithItsSizeAndColours)
{
    files::MaterialLook look;
    look.diffuse = {0.5f, 0.25f, 0.125f};
    add(files::makeNode("Painted", geometry("", triangle(), files::makeMaterial("paint", look))));
    written();
    const files::ReadResult read = readScene(pathOf(QString::fromUtf8("Größe 大小.glb")));
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> kept(read.value());
    const osg::NodePtr metres = read.value()->getChild(0);
    const osg::NodePtr top = metres->getChild(0);
    const osg::Matrix& outer = osg::fcCast<osg::Transform>(metres->getCore())->getMatrix();
    const osg::Matrix& inner = osg::fcCast<osg::Transform>(top->getCore())->getMatrix();
    EXPECT_FLOAT_EQ(outer[0] * inner[0], 1);
    EXPECT_FLOAT_EQ(outer[6] * inner[9], 1);
    EXPECT_FLOAT_EQ(outer[9] * inner[6], 1);
    const auto painted = osg::fcCast<osg::Geometry>(top->getChild(1)->getCore());
    const osg::Color3f& color = osg::fcCast<osg::SimpleMaterial>(painted->getMaterial())->getDiffuse();
    EXPECT_NEAR(color.red, 0.5, 1e-5);
    EXPECT_NEAR(color.green, 0.25, 1e-5);
    EXPECT_NEAR(color.blue, 0.125, 1e-5);
}

TEST_F(GlbWriterTest, NoTreeIsAnError)
{
    EXPECT_EQ(errorOf({}, pathOf(QStringLiteral("none.glb"))),
              QStringLiteral("NothingToWrite there is no tree to write"));
    EXPECT_THAT(filesInFolder(), IsEmpty());
}

TEST_F(GlbWriterTest, AMissingFolderIsAnError)
{
    EXPECT_EQ(errorOf(root.get(), pathOf(QStringLiteral("not there/a.glb"))),
              QStringLiteral("CannotCreate No such file or directory"));
}

TEST_F(GlbWriterTest, AFolderOfThatNameStaysAsItWas)
{
    QDir().mkpath(pathOf(QStringLiteral("folder.glb")));
    EXPECT_EQ(errorOf(root.get(), pathOf(QStringLiteral("folder.glb"))),
              QStringLiteral("CannotCreate the target is no regular file"));
    EXPECT_THAT(filesInFolder(), ElementsAre(QStringLiteral("folder.glb")));
}

TEST_F(GlbWriterTest, APipeOfThatNameStaysAsItWas)
{
    const QString pipe = pathOf(QStringLiteral("pipe.glb"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(errorOf(root.get(), pipe), QStringLiteral("CannotCreate the target is no regular file"));
    EXPECT_FALSE(QFileInfo(pipe).isFile());
}

TEST_F(GlbWriterTest, AFolderThatMayNotBeWrittenStaysAsItWas)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";
    const QString folder = pathOf(QStringLiteral("locked"));
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(errorOf(root.get(), folder + QStringLiteral("/a.glb")), QStringLiteral("CannotCreate Permission denied"));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
}

TEST_F(GlbWriterTest, AFullDiskLeavesTheFormerFileAndNothingElse)
{
    const QString path = fileWith(QStringLiteral("former.glb"), "former");
    osg::Mesh mesh = triangle();
    mesh.positions = std::vector<osg::Vec3f>(10'000, osg::Vec3f{1, 2, 3});
    add(files::makeNode("Large", geometry("", mesh)));
    {
        const SmallDisk disk(20'000);
        EXPECT_EQ(errorOf(root.get(), path), QStringLiteral("WriteFailed File too large"));
    }
    EXPECT_EQ(contentOf(path), "former");
    EXPECT_THAT(filesInFolder(), ElementsAre(QStringLiteral("former.glb")));
}

TEST_F(GlbWriterTest, AFullDiskAtTheLastByteIsNoticed)
{
    const QString path = pathOf(QStringLiteral("last.glb"));
    osg::Mesh mesh = triangle();
    mesh.positions = std::vector<osg::Vec3f>(1'700, osg::Vec3f{1, 2, 3}); // more than 20 000 bytes with the rest
    add(files::makeNode("Large", geometry("", mesh)));
    {
        const SmallDisk disk(20'000);
        EXPECT_EQ(errorOf(root.get(), path), QStringLiteral("WriteFailed File too large"));
    }
    EXPECT_THAT(filesInFolder(), IsEmpty());
}

TEST_F(GlbWriterTest, MeshesThatBreakTheirPromisesAreNamed)
{
    osg::Mesh shortNormals = triangle();
    shortNormals.normals = std::vector<osg::Vec3f>{{0, 0, 1}};
    osg::Mesh wideIndex = triangle();
    wideIndex.triangles = std::vector<std::uint32_t>{0, 1, 3};
    osg::Mesh halfTriangle = triangle();
    halfTriangle.triangles = std::vector<std::uint32_t>{0, 1};
    osg::Mesh halfLine = triangle();
    halfLine.lines = std::vector<std::uint32_t>{0, 1, 2};
    for (const osg::Mesh& mesh : {shortNormals, wideIndex, halfTriangle, halfLine}) {
        const osg::NodePtr bad = add(files::makeNode("", geometry("Bad 坏", mesh)));
        EXPECT_EQ(errorOf(root.get(), pathOf(QStringLiteral("bad.glb"))),
                  QString::fromUtf8("InvalidMesh the arrays of the mesh 'Bad 坏' do not fit together"));
        root->subChild(bad);
    }
    EXPECT_THAT(filesInFolder(), IsEmpty());
}

TEST_F(GlbWriterTest, MoreThanFourGigabytesAreRefusedBeforeAFileIsMade)
{
    constexpr std::size_t count = 1'000'000;
    constexpr std::size_t meshes = 300; // of 16 MB each
    const auto zeros = std::make_shared<std::vector<osg::Color4f>>(count + meshes);
    osg::Mesh mesh = triangle();
    mesh.positions = std::vector<osg::Vec3f>(count);
    for (std::size_t i = 0; i < meshes; ++i) {
        mesh.colors = osg::Buffer<osg::Color4f>(zeros, zeros->data() + i, count);
        add(files::makeNode("", geometry("", mesh)));
    }
    EXPECT_THAT(errorOf(root.get(), pathOf(QStringLiteral("huge.glb"))).toStdString(),
                testing::MatchesRegex("TooLarge the file would have 48[0-9]+ bytes; "
                                      "a binary glTF file can have 4294967295"));
    EXPECT_THAT(filesInFolder(), IsEmpty());
}

} // namespace
