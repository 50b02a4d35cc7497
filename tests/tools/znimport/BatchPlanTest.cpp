#include "tools/znimport/BatchPlan.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace znimport;

namespace
{

class BatchPlanTest : public testing::Test
{
protected:
    void make(const char* name) const
    {
        const QString path = m_folder.filePath(QString::fromUtf8(name));
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    }

    BatchPlan plan(const QString& output = QStringLiteral("/out")) const
    {
        return planBatch(m_folder.path(), output, [](const QString& extension) {
            return extension == QLatin1String("stp") || extension == QLatin1String("jt");
        });
    }

    std::vector<std::string> lines() const
    {
        std::vector<std::string> lines;
        for (const BatchItem& item : plan().items)
            lines.push_back(item.name.toStdString() + " > " + item.output.toStdString());
        return lines;
    }

    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/zn bätch XXXXXX")};
};

TEST_F(BatchPlanTest, FilesOfAllFoldersGoToTheirNames)
{
    make("b.STP");
    make("sub/ä b.jt");
    make("a.stp.gz");
    EXPECT_THAT(lines(), testing::ElementsAre("a.stp.gz > /out/a.stp.glb", "b.STP > /out/b.glb",
                                              "sub/ä b.jt > /out/sub/ä b.glb"));
}

TEST_F(BatchPlanTest, FilesThatWouldMeetKeepTheirExtensions)
{
    make("a.stp");
    make("A.jt");
    make("b.jt");
    EXPECT_THAT(lines(), testing::ElementsAre("A.jt > /out/A.jt.glb", "a.stp > /out/a.stp.glb", "b.jt > /out/b.glb"));
}

TEST_F(BatchPlanTest, APackedFileMeetsNoneWhoseNameItHolds)
{
    make("a.jt");
    make("a.stp");
    make("a.stp.gz");
    EXPECT_THAT(lines(),
                testing::ElementsAre("a.jt > /out/a.jt.glb", "a.stp > /out/a.stp.glb", "a.stp.gz > /out/a.stp.gz.glb"));
}

TEST_F(BatchPlanTest, OtherFilesAreCountedAndThoseOfTheOutputAreNone)
{
    make("a.stp");
    make("notes.txt");
    make("out/x.stp");
    make("out/x.txt");
    const BatchPlan planned = plan(m_folder.filePath(QStringLiteral("out")));
    EXPECT_EQ(planned.items.size(), 1U);
    EXPECT_EQ(planned.passedOver, 1);
}

} // namespace
