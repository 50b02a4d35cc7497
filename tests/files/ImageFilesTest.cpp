#include "files/ImageFiles.h"

#include "files/References.h"
#include "files/TexturePlacement.h"
#include "tests/files/Pictures.h"
#include "tests/support/QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace
{

using files::ImageFiles;
using files::ReadOptions;

/// The file "model/scene.obj" names pictures.
class ImageFilesTest : public testing::Test
{
protected:
    ImageFilesTest()
    {
        QDir(m_folder.path()).mkpath(QStringLiteral("model/maps"));
        write("model/oak.png", pngOf("oak"));
        write("model/maps/oak.png", pngOf("oak of maps"));
        write("model/my oak #1.png", pngOf("mine"));
        write("outside.png", pngOf("outside"));
    }

    QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    void write(const char* name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QByteArray at(const QString& name) { return bytesOf(m_images.at(name, QStringLiteral("line 7"))); }
    QByteArray at(const char* name) { return at(QString::fromUtf8(name)); }
    QByteArray atAddress(const std::string& address, const std::string& kind = {})
    {
        m_taken = m_images.atAddress(address, kind, "name", QStringLiteral("/images/0"));
        return bytesOf(m_taken);
    }

    /// Of the warnings, the last; all are of the file that names the pictures.
    QString lastWarning() const
    {
        for (const files::Note& note : m_task.warnings())
            EXPECT_EQ(note.file, path("model/scene.obj"));
        const std::vector<files::Note> all = m_task.warnings();
        return all.empty() ? QString() : all.back().message + QStringLiteral(" @ ") + all.back().place;
    }
    std::size_t warnings() const { return m_task.warnings().size(); }

    QTemporaryDir m_folder;
    files::ReadTask m_task{path("model/scene.obj"), {}};
    ImageFiles m_images{m_task, path("model/scene.obj")};
    osg::EncodedImagePtr m_taken;
};

TEST_F(ImageFilesTest, APathIsRelativeToTheFileThatNamesIt)
{
    EXPECT_EQ(at("oak.png"), pngOf("oak"));
    EXPECT_EQ(at("maps/oak.png"), pngOf("oak of maps"));
    EXPECT_EQ(at("maps/../oak.png"), pngOf("oak"));
    EXPECT_EQ(at(path("model/maps/oak.png")), pngOf("oak of maps"));
    EXPECT_EQ(at("my oak #1.png"), pngOf("mine"));
    EXPECT_EQ(warnings(), 0u);
}

TEST_F(ImageFilesTest, AFileIsReadOnceAndNamedWithoutItsFolder)
{
    const osg::EncodedImagePtr first = m_images.at(QStringLiteral("maps/oak.png"), {});
    write("model/maps/oak.png", pngOf("changed meanwhile"));
    EXPECT_EQ(m_images.at(QStringLiteral("maps/oak.png"), {}), first);
    EXPECT_EQ(m_images.at(QStringLiteral("maps\\oak.png"), {}), first);
    EXPECT_EQ(first->name(), "oak.png");
    EXPECT_EQ(first->mimeType(), "image/png");
}

TEST_F(ImageFilesTest, PathsOfAnotherComputerStandForTheFileBeside)
{
    EXPECT_EQ(at("C:\\pictures\\oak.png"), pngOf("oak"));
    EXPECT_EQ(at("d:/pictures/oak.png"), pngOf("oak"));
    EXPECT_EQ(at("\\\\server\\share\\my oak #1.png"), pngOf("mine"));
    EXPECT_EQ(at("maps\\oak.png"), pngOf("oak of maps")) << "relative, with slashes of another system";
    EXPECT_EQ(at(".\\oak.png"), pngOf("oak"));
    EXPECT_EQ(warnings(), 0u);
    EXPECT_EQ(at("C:\\pictures\\elm.png"), "(none)");
    EXPECT_EQ(warnings(), 1u);
    EXPECT_EQ(at("/elsewhere/oak.png"), "(none)") << "one of this computer stands for itself";
}

TEST_F(ImageFilesTest, ANameMayHaveABackslash)
{
    write("model/a\\b.png", pngOf("backslash"));
    EXPECT_EQ(at("a\\b.png"), pngOf("backslash"));
}

TEST_F(ImageFilesTest, WhatIsOutsideTheFolderIsRefusedWithoutALook)
{
    const QString refused = files::textOf(files::references::Refusal::BytesOutside);
    EXPECT_EQ(at("../outside.png"), "(none)");
    EXPECT_EQ(lastWarning(),
              QStringLiteral("the picture %1 was left out: %2 @ line 7").arg(path("outside.png"), refused));
    EXPECT_EQ(at("../gone.png"), "(none)");
    EXPECT_EQ(lastWarning(), QStringLiteral("the picture %1 was left out: %2 @ line 7").arg(path("gone.png"), refused));
    QFile::link(path("outside.png"), path("model/link.png"));
    EXPECT_EQ(at("link.png"), "(none)");
    EXPECT_EQ(warnings(), 3u);
}

TEST_F(ImageFilesTest, AnAllowedFolderIsOpen)
{
    ReadOptions options;
    options.references.folders = {m_folder.path().toStdString()};
    files::ReadTask task(path("model/scene.obj"), options);
    EXPECT_EQ(bytesOf(ImageFiles(task, path("model/scene.obj")).at(QStringLiteral("../outside.png"), {})),
              pngOf("outside"));
}

TEST_F(ImageFilesTest, WhatIsNoPictureIsToldOnceForEachFile)
{
    write("model/empty.png", {});
    ASSERT_EQ(::mkfifo(path("model/pipe.png").toLocal8Bit().constData(), 0600), 0);
    for (const char* const name : {"gone.png", "empty.png", "maps", "pipe.png"}) {
        const std::size_t before = warnings();
        EXPECT_EQ(at(name), "(none)") << name;
        EXPECT_EQ(at(name), "(none)") << name;
        EXPECT_EQ(warnings(), before + 1) << name;
        EXPECT_TRUE(lastWarning().startsWith(
            QStringLiteral("the picture %1 was left out: ").arg(path("model/") + QString::fromUtf8(name))))
            << lastWarning().toStdString();
        EXPECT_TRUE(lastWarning().endsWith(QStringLiteral(" @ line 7")));
    }
}

TEST_F(ImageFilesTest, TheFirstOfSeveralThatIsThereIsTaken)
{
    const auto first = [this](const std::vector<QString>& paths) {
        return bytesOf(m_images.firstAt(paths, QStringLiteral("line 7")));
    };
    EXPECT_EQ(first({QStringLiteral("gone.png"), QStringLiteral("../outside.png"), QStringLiteral("maps"),
                     QStringLiteral("maps/oak.png"), QStringLiteral("oak.png")}),
              pngOf("oak of maps"));
    EXPECT_EQ(warnings(), 0u);
    EXPECT_EQ(first({QStringLiteral("gone.png"), QStringLiteral("lost.png")}), "(none)");
    EXPECT_EQ(warnings(), 1u);
    EXPECT_TRUE(lastWarning().contains(QLatin1String("gone.png")));
}

TEST_F(ImageFilesTest, AnAddressIsDecodedOrHoldsThePicture)
{
    EXPECT_EQ(atAddress("my%20oak%20%231.png"), pngOf("mine"));
    EXPECT_EQ(atAddress("data:image/jpeg;base64,YWJj"), "abc");
    EXPECT_EQ(m_taken->mimeType(), "image/jpeg");
    EXPECT_EQ(m_taken->name(), "name");
    EXPECT_EQ(atAddress("data:image/jpeg;base64,YWJjZA==", "image/png"), "abcd");
    EXPECT_EQ(m_taken->mimeType(), "image/png");
    EXPECT_EQ(warnings(), 0u);
}

TEST_F(ImageFilesTest, DamagedAndDistantAddressesAreTold)
{
    for (const char* const address :
         {"data:image/png;base64,YW!j", "data:image/png,YWJj", "data:image/png;base64,", "data:", "data:;base64"}) {
        const std::size_t before = warnings();
        EXPECT_EQ(atAddress(address), "(none)") << address;
        EXPECT_EQ(warnings(), before + 1) << address;
        EXPECT_EQ(lastWarning(),
                  QStringLiteral("the data of a picture are not in base 64; it was left out @ /images/0"));
    }
    EXPECT_EQ(atAddress("http://example.org/oak.png"), "(none)");
    EXPECT_EQ(lastWarning(), QStringLiteral("a picture is not on this computer and was left out: "
                                            "http://example.org/oak.png @ /images/0"));
}

TEST_F(ImageFilesTest, DataAddressesTellTheirKind)
{
    const auto kindOf = [this](const char* address) {
        const auto data = files::decodedAddress(address, m_task, {});
        return data ? data->mimeType : std::string("(none)");
    };
    EXPECT_EQ(kindOf("data:image/png;base64,YWJj"), "image/png");
    EXPECT_EQ(kindOf("data:image/png;charset=x;base64,YWJj"), "image/png");
    EXPECT_EQ(kindOf("data:;base64,YWJj"), "");
    EXPECT_EQ(kindOf("oak.png"), "(none)");
    EXPECT_EQ(kindOf("xdata:;base64,YWJj"), "(none)");
}

TEST(TexturePlacementTest, WithoutAChangeATextureLiesAsItDoes)
{
    osg::Texture texture;
    EXPECT_TRUE(files::place(texture, {}));
    EXPECT_EQ(texture, osg::Texture());
}

TEST(TexturePlacementTest, APlacementLeadsToTheSameCoordinatesUnlessItShears)
{
    using osg::Vec2f;
    for (const files::UpwardPlacement& p :
         {files::UpwardPlacement{2, 0, 0.5, 0, 3, 0.25}, files::UpwardPlacement{0, -2, 0.5, 3, 0, 0.25},
          files::UpwardPlacement{0.6, -1.6, 0, 0.8, 1.2, 0}, files::UpwardPlacement{0.6, 0.8, 1, 0.8, -0.6, 2},
          files::UpwardPlacement{-1, 0, 1, 0, 1, 0}}) {
        osg::Texture texture;
        EXPECT_TRUE(files::place(texture, p));
        for (const Vec2f& at : {Vec2f{0, 0}, Vec2f{1, 0}, Vec2f{0, 1}}) {
            EXPECT_NEAR(lookedUp(texture, at).x, p.uu * at.x + p.uv * at.y + p.u0, 1e-5);
            EXPECT_NEAR(lookedUp(texture, at).y, p.vu * at.x + p.vv * at.y + p.v0, 1e-5);
        }
    }
    osg::Texture texture;
    EXPECT_FALSE(files::place(texture, {1, 0.5, 0, 0, 1, 0}));
    EXPECT_FALSE(files::place(texture, {1, 0, 0, 0.5, 1, 0}));
}

} // namespace
