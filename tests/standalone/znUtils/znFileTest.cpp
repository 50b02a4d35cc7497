#include "host/znUtils/znFile.h"

#include "standalone/znUtils/TemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

/// A folder of its own whose name has a blank, an umlaut and Chinese letters.
class FileTest : public testing::Test
{
protected:
    FileTest() : m_folder(QDir::tempPath() + QString::fromUtf8("/zn file ä 壳 XXXXXX")) {}

    std::string path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)).toStdString(); }
    std::string make(const char* name) const
    {
        QFile file(m_folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
        return path(name);
    }
    std::string makeFolder(const char* name) const
    {
        EXPECT_TRUE(QDir(m_folder.path()).mkdir(QString::fromUtf8(name)));
        return path(name);
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(FileTest, ExistsKnowsFilesAndFoldersByTheirUtf8Names)
{
    EXPECT_TRUE(znFile::exists(make("Gehäuse 壳体.stp"), false, false));
    EXPECT_TRUE(znFile::exists(makeFolder("Größe"), false, false));
    EXPECT_FALSE(znFile::exists(path("missing"), false, false));
    EXPECT_FALSE(znFile::exists("", false, false));
}

TEST_F(FileTest, ExistsLooksThroughLinks)
{
    const std::string target = make("target");
    ASSERT_EQ(symlink(target.c_str(), path("link").c_str()), 0);
    ASSERT_EQ(symlink(path("nowhere").c_str(), path("dangling").c_str()), 0);
    EXPECT_TRUE(znFile::exists(path("link"), false, false));
    EXPECT_FALSE(znFile::exists(path("dangling"), false, false));
}

TEST_F(FileTest, ExistsCanLeaveOutFolders)
{
    EXPECT_FALSE(znFile::exists(makeFolder("folder"), true, false));
    EXPECT_TRUE(znFile::exists(make("file"), true, false));
}

TEST_F(FileTest, ExistsCanLeaveOutUnreadableFiles)
{
    const std::string file = make("secret");
    EXPECT_TRUE(znFile::exists(file, false, true));
    ASSERT_TRUE(QFile::setPermissions(QString::fromStdString(file), QFile::WriteOwner));
    if (geteuid() == 0)
        GTEST_SKIP() << "root reads everything";
    EXPECT_FALSE(znFile::exists(file, false, true));
    EXPECT_TRUE(znFile::exists(file, false, false));
}

TEST_F(FileTest, RemoveTakesAFileAndTheLinkItselfAway)
{
    const std::string file = make("Öl.osb");
    ASSERT_EQ(symlink(file.c_str(), path("link").c_str()), 0);
    znFile::remove(path("link"));
    EXPECT_FALSE(znFile::exists(path("link"), false, false));
    EXPECT_TRUE(znFile::exists(file, false, false));
    znFile::remove(file);
    EXPECT_FALSE(znFile::exists(file, false, false));
}

TEST_F(FileTest, RemoveIgnoresWhatItCannotRemove)
{
    const std::string folder = makeFolder("folder");
    testing::internal::CaptureStderr();
    znFile::remove("");
    znFile::remove(path("missing"));
    znFile::remove(folder);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(znFile::exists(folder, false, false));
}

TEST(FileNames, TheTemporaryFolderIsTheSystemsUntilAnotherIsNamed)
{
    EXPECT_EQ(znFile::getTmpDir(), QDir::tempPath().toStdString());
    zn::utils::setTemporaryFolder("/tmp/zn Sitzung ä");
    EXPECT_EQ(znFile::getTmpDir(), "/tmp/zn Sitzung ä");
    zn::utils::setTemporaryFolder({});
    EXPECT_EQ(znFile::getTmpDir(), QDir::tempPath().toStdString());
}

TEST(FileNames, SeparatorsBecomeSingleSlashes)
{
    EXPECT_EQ(znFile::convertSeparators("C:\\Teile\\Gehäuse 1.stp"), "C:/Teile/Gehäuse 1.stp");
    EXPECT_EQ(znFile::convertSeparators("parts\\\\sub//a/\\b.stp"), "parts/sub/a/b.stp");
    EXPECT_EQ(znFile::convertSeparators("/home/a.stp"), "/home/a.stp");
    EXPECT_EQ(znFile::convertSeparators("folder\\"), "folder/");
    EXPECT_EQ(znFile::convertSeparators(""), "");
}

TEST(FileNames, TwoLeadingSeparatorsNameAComputer)
{
    EXPECT_EQ(znFile::convertSeparators("\\\\server\\share\\\\a.stp"), "//server/share/a.stp");
    EXPECT_EQ(znFile::convertSeparators("//server/a.stp"), "//server/a.stp");
    EXPECT_EQ(znFile::convertSeparators("///a.stp"), "/a.stp");
    EXPECT_EQ(znFile::convertSeparators("\\\\"), "//");
}

TEST(FileNames, TheExtensionIsWhatFollowsTheLastDotAsItIsWritten)
{
    EXPECT_EQ(znFile::getExtension("/teile/gear.v2.STP"), "STP");
    EXPECT_EQ(znFile::getExtension("C:\\parts.d\\gear.Qlb"), "Qlb");
    EXPECT_EQ(znFile::getExtension("/parts.d/gear"), "");
    EXPECT_EQ(znFile::getExtension("C:\\parts.d\\gear"), "");
    EXPECT_EQ(znFile::getExtension("gear."), "");
    EXPECT_EQ(znFile::getExtension(".profile"), "");
    EXPECT_EQ(znFile::getExtension(".profile.osb"), "osb");
    EXPECT_EQ(znFile::getExtension(""), "");
}

TEST(FileNames, TheBaseNameHasNeitherFolderNorExtension)
{
    EXPECT_EQ(znFile::getBaseName("/teile/Gehäuse.v2.stp"), "Gehäuse.v2");
    EXPECT_EQ(znFile::getBaseName("C:\\parts.d\\gear.Qlb"), "gear");
    EXPECT_EQ(znFile::getBaseName("gear"), "gear");
    EXPECT_EQ(znFile::getBaseName("gear."), "gear");
    EXPECT_EQ(znFile::getBaseName("/parts.d/.profile"), ".profile");
    EXPECT_EQ(znFile::getBaseName("/parts.d/"), "");
}

} // namespace
