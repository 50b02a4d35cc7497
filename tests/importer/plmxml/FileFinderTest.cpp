#include "importer/plmxml/FileFinder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace importer::plmxml;

namespace
{

QString clean(const char* location)
{
    return cleanLocation(QString::fromUtf8(location));
}

TEST(FileFinderTest, LocationsLoseEscapesBackslashesAndScheme)
{
    EXPECT_EQ(clean("a b\\SOLID$_XML2.jt"), QStringLiteral("a b/SOLID$_XML2.jt"));
    EXPECT_EQ(clean("./x/../a%23b.jt"), QStringLiteral("a#b.jt"));
    EXPECT_EQ(clean("50%.jt"), QStringLiteral("50%.jt"));
    EXPECT_EQ(clean("T%C3%BCr.jt"), QString::fromUtf8("Tür.jt"));
    EXPECT_EQ(clean("file:///C:/lib/x.jt"), QStringLiteral("C:/lib/x.jt"));
    EXPECT_EQ(clean("file:///lib/x.jt"), QStringLiteral("/lib/x.jt"));
    EXPECT_EQ(clean("\\\\server\\lib\\x.jt"), QStringLiteral("//server/lib/x.jt"));
    EXPECT_EQ(clean(""), QString());
}

class FileFinderSearchTest : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }

    void make(const char* name)
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }

    FoundFile find(const char* location, const QStringList& searchPaths = {})
    {
        FileFinder finder(path("car.plmxml"), searchPaths);
        return finder.find(clean(location));
    }

    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/finder äö XXXXXX")};
};

TEST_F(FileFinderSearchTest, WhatTheLocationSaysComesFirst)
{
    make("parts/a.jt");
    make("a.jt");
    EXPECT_EQ(find("parts\\a.jt").path, path("parts/a.jt"));
    EXPECT_EQ(find("parts\\a.jt").by, FoundBy::Location);
}

TEST_F(FileFinderSearchTest, LetterCaseDoesNotCount)
{
    make("Parts/Oak Crate.JT");
    EXPECT_EQ(find("parts/oak%20crate.jt").path, path("Parts/Oak Crate.JT"));
    EXPECT_EQ(find("parts/oak%20crate.jt").by, FoundBy::LetterCase);
}

TEST_F(FileFinderSearchTest, PathsOfOtherSystemsAreLookedForByName)
{
    make("Clamp.jt");
    make("car/robot.jt");
    EXPECT_EQ(find("C:\\lib\\clamp.jt").path, path("Clamp.jt"));
    EXPECT_EQ(find("C:\\lib\\clamp.jt").by, FoundBy::BesideIt);
    EXPECT_EQ(find("\\\\host\\lib\\Robot.jt").path, path("car/robot.jt"));
    EXPECT_EQ(find("/not/there/robot.jt").by, FoundBy::InItsFolder);
}

TEST_F(FileFinderSearchTest, SearchPathsHoldWholeLocationsAndNames)
{
    make("library/steel/bolt.jt");
    make("library/nut.jt");
    const QStringList library = {QStringLiteral("library")};
    EXPECT_EQ(find("steel/bolt.jt", library).path, path("library/steel/bolt.jt"));
    EXPECT_EQ(find("X:/any/nut.jt", library).by, FoundBy::SearchPath);
}

TEST_F(FileFinderSearchTest, WhatIsNowhereIsNamedWhereItWouldStand)
{
    EXPECT_EQ(find("parts/none.jt").path, path("parts/none.jt"));
    EXPECT_EQ(find("parts/none.jt").by, FoundBy::Nowhere);
    EXPECT_EQ(find("C:\\lib\\none.jt").path, path("none.jt"));
    EXPECT_FALSE(find("parts/none.jt").isRefused);
}

TEST_F(FileFinderSearchTest, OnlyRegularFilesAreTaken)
{
    ASSERT_EQ(mkfifo(path("pipe.jt").toUtf8().constData(), 0600), 0);
    for (const char* location : {"pipe.jt", "/dev/zero"}) {
        const FoundFile found = find(location);
        EXPECT_EQ(found.by, FoundBy::Nowhere) << location;
        EXPECT_FALSE(QFile::exists(found.path)) << location;
    }
    EXPECT_TRUE(find("pipe.jt").isRefused);
}

TEST_F(FileFinderSearchTest, WhatMayNotBeTakenIsNotThere)
{
    make("a.jt");
    FileFinder finder(path("car.plmxml"), {}, {{files::references::Rule::None, {}}, path("car.plmxml"), {}});
    for (const char* location : {"a.jt", "none.jt"}) {
        const FoundFile found = finder.find(QString::fromUtf8(location));
        EXPECT_EQ(found.by, FoundBy::Nowhere);
        EXPECT_TRUE(found.isClosed);
        EXPECT_FALSE(found.isRefused) << "whether it is there";
        EXPECT_EQ(found.path, path(location) + QStringLiteral("/refused by files.references"));
        EXPECT_EQ(importer::plmxml::withoutClosedMark(found.path), path(location));
        EXPECT_FALSE(QFile::exists(found.path));
    }
    EXPECT_EQ(importer::plmxml::withoutClosedMark(path("a.jt")), path("a.jt"));
}

} // namespace
